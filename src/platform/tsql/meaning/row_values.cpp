#include "platform/tsql/meaning/row_values.h"

#include <algorithm>

namespace zel::tsql {

bool RowValues::reads(const Expr *value) const {
    for (; value != nullptr; value = value->next) {
        if (value->op == Op::Variable &&
            std::ranges::find(m_assigned, static_cast<Slot>(value->n)) != m_assigned.end())
            return true;
        if (reads(value->a) || reads(value->b) || reads(value->c) || reads(value->select))
            return true;
    }
    return false;
}

bool RowValues::reads(const BoundSelect *select) const {
    for (; select != nullptr; select = select->united) {
        for (const BoundItem *item = select->items; item != nullptr; item = item->next) {
            if (reads(item->value))
                return true;
        }
        for (const Source *source = select->sources; source != nullptr; source = source->next) {
            if (reads(source->on) || reads(source->derived))
                return true;
        }
        for (const BoundOrder *order = select->orderBy; order != nullptr; order = order->next) {
            if (reads(order->value))
                return true;
        }
        if (reads(select->where) || reads(select->groupBy) || reads(select->having))
            return true;
    }
    return false;
}

Expr *RowValues::ask(Expr *value) {
    *m_last = m_arena.make<BoundItem>({value, {}, nullptr});
    m_last = &(*m_last)->next;
    m_slots.push_back(m_newSlot());
    Expr *held = m_arena.make<Expr>();
    held->op = Op::Variable;
    held->type = value->type;
    held->at = value->at;
    held->n = static_cast<int>(m_slots.back());
    return held;
}

bool RowValues::partList(Expr *&first) {
    for (Expr **place = &first; *place != nullptr; place = &(*place)->next) {
        Expr *const next = (*place)->next;
        Expr *alone = m_arena.make<Expr>(**place);
        alone->next = nullptr;
        alone = part(alone);
        if (alone == nullptr)
            return false;
        *place = m_arena.make<Expr>(*alone);
        (*place)->next = next;
    }
    return true;
}

Expr *RowValues::part(Expr *value) {
    const bool aggregate = value->op >= Op::Sum && value->op <= Op::CountRows;
    if (aggregate || !reads(value))
        return isLiteral(*value) || value->op == Op::Variable ? value : ask(value);
    if (value->op == Op::Variable)
        return value;
    if (value->select != nullptr)
        return nullptr;
    Expr *made = m_arena.make<Expr>(*value);
    return partList(made->a) && partList(made->b) && partList(made->c) ? made : nullptr;
}

} // namespace zel::tsql
