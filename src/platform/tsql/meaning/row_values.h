#pragma once

#include "platform/tsql/meaning/bound.h"
#include "platform/tsql/meaning/slot.h"
#include "platform/tsql/reading/arena.h"

#include <functional>
#include <span>
#include <vector>

namespace zel::tsql {

/// Parts values that a select assigns to variables, where one reads what another, or the row before,
/// assigned: what the rows alone tell is asked of the engine, the rest is worked out row by row from that.
class RowValues {
public:
    RowValues(Arena &arena, std::span<const Slot> assigned, std::function<Slot()> newSlot)
        : m_arena(arena), m_assigned(assigned), m_newSlot(std::move(newSlot)) {}

    /// Whether the value reads one of the variables.
    [[nodiscard]] bool reads(const Expr *value) const;
    /// The value in terms of slots; nullptr where a sub-select reads one of the variables.
    [[nodiscard]] Expr *part(Expr *value);

    /// What is asked of each row, and the slots that take it.
    [[nodiscard]] BoundItem *asked() const { return m_asked; }
    [[nodiscard]] const std::vector<Slot> &slots() const { return m_slots; }

private:
    [[nodiscard]] bool reads(const BoundSelect *select) const;
    [[nodiscard]] bool partList(Expr *&first);
    Expr *ask(Expr *value);

    Arena &m_arena;
    std::span<const Slot> m_assigned;
    std::function<Slot()> m_newSlot;
    BoundItem *m_asked = nullptr;
    BoundItem **m_last = &m_asked;
    std::vector<Slot> m_slots;
};

} // namespace zel::tsql
