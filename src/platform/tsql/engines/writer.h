#pragma once

#include "platform/tsql/engines/traits.h"
#include "platform/tsql/meaning/slot.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace zel::tsql {

/// Writes the typed tree as text for one engine, by the rules of its traits.
class Writer {
public:
    /// `source`: the text that the nodes' places mean.
    explicit Writer(const Traits &traits, std::string_view source)
        : m_traits(traits), m_source(source), m_most(LeastMost + Multiple * source.size()) {
        m_out.reserve(std::min(2 * source.size() + Spare, Usual));
    }

    /// Error 191 at the place that was nested most, for an engine that can't take it; '' where all can.
    [[nodiscard]] std::string deepest() const;
    /// The text, without room for more.
    [[nodiscard]] std::string take();
    /// By parameter of the text: the slot whose value it takes.
    [[nodiscard]] std::vector<Slot> takeParameters() { return std::move(m_parameters); }

    void topSelect(const BoundSelect &select);
    /// A select whose values are kept, not shown.
    void assignment(const BoundSelect &select) { body(select, SelectUse::Rows, false); }
    void insertion(const BoundInsert &insert);
    void update(const BoundChange &change);
    void deletion(const BoundChange &change);
    void createTable(const ActionNode &node, const Table &table);
    void dropTable(const Table &table, bool ifThere = false);
    void createIndex(const ActionNode &node, const Table &table);
    void analyze(const Table &table);

    // For the rules of the nodes.
    Writer &operator<<(std::string_view text) {
        m_out += text;
        return *this;
    }
    Writer &operator<<(char c) {
        m_out += c;
        return *this;
    }
    Writer &operator<<(int number);
    Writer &operator<<(const Expr &node);
    void name(std::string_view name);
    /// The text in quotes.
    void quoted(std::string_view text);
    void column(const Expr &node);
    /// The number, from 1, of the parameter that stands for a slot.
    int parameter(Slot slot);
    void list(const Expr *first);
    /// A value as ordering and grouping compare it: texts by their key.
    void key(const Expr &value);
    /// The select within parentheses; as a value, its one row checked; with `keys`, its items as keys.
    enum class SelectUse { Rows, Value, Keys };
    void select(const BoundSelect &select, SelectUse use);
    [[nodiscard]] const Traits &traits() const { return m_traits; }
    /// The innermost select that is being written.
    [[nodiscard]] const BoundSelect &currentSelect() const { return *m_select; }

private:
    void body(const BoundSelect &select, SelectUse use, bool top);
    void oneSelect(const BoundSelect &select, SelectUse use, bool top);
    void united(const BoundSelect &first, const BoundSelect *end, const BoundSelect *distinct, bool named,
                bool top);
    void columns(const BoundSelect &select, bool named);
    void changedRows(const BoundChange &change);
    void enter(std::uint32_t at);
    void items(const BoundSelect &select, SelectUse use, bool top);
    void sources(const Source *first);
    void joined(const Source &first);
    void source(const Source &source);
    void groups(const BoundSelect &select);
    void order(const BoundSelect &select);
    void insertionOrder(const BoundSelect &select, bool begun);
    void unionInOrder(const BoundSelect &select, bool top);
    void pattern(std::string_view text, const Expr &node);

    static constexpr std::size_t Spare = 128;
    static constexpr std::size_t Usual = 4096;
    /// A text that grew beyond so much of its source holds parts of parts again and again.
    static constexpr std::size_t LeastMost = std::size_t(1) << 20;
    static constexpr std::size_t Multiple = 200;

    const Traits &m_traits;
    std::string_view m_source;
    std::size_t m_most;
    std::string m_out;
    int m_level = 0;
    int m_deepest = 0;
    std::uint32_t m_deepestAt = 0;
    std::vector<Slot> m_parameters;
    const BoundSelect *m_select = nullptr;
    bool m_named = false; ///< items get names, as a derived table's need them
};

} // namespace zel::tsql
