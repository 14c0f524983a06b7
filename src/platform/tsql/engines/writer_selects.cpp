#include "platform/tsql/engines/writer.h"

#include "platform/tsql/meaning/types.h"

#include <array>
#include <utility>

namespace zel::tsql {

namespace {

/// Distinct rows are groups by keys: texts that differ in case only are one. Where the rows are groups or one
/// row already, or nothing but literals, the engine's own word does.
bool distinctByGroups(const BoundSelect &select) {
    const BoundItem *item = select.items;
    while (item != nullptr && isLiteral(*item->value))
        item = item->next;
    return item != nullptr && select.groupBy == nullptr && !select.aggregate;
}

/// Of a union the last select that its equal rows fall together with; nullptr where none do.
const BoundSelect *lastDistinct(const BoundSelect &select) {
    const BoundSelect *last = nullptr;
    for (const BoundSelect *part = &select; part->united != nullptr; part = part->united)
        last = part->unitedAll ? last : part->united;
    return last;
}

bool hasTexts(const BoundSelect &select) {
    const BoundItem *item = select.items;
    while (item != nullptr && !isText(item->value->type))
        item = item->next;
    return item != nullptr;
}

} // namespace

void Writer::topSelect(const BoundSelect &select) {
    body(select, SelectUse::Rows, true);
}

void Writer::select(const BoundSelect &select, SelectUse use) {
    const bool plain = !select.distinct && select.groupBy == nullptr && select.top.empty() &&
                       select.united == nullptr && !select.aggregate;
    m_out += '(';
    if (use == SelectUse::Value && !select.atMostOneRow && !plain) {
        // The rows are made first, then counted.
        *this << "SELECT " << m_traits.onlyBegin << "c0" << m_traits.onlyEnd << " FROM (";
        m_named = true;
        body(select, SelectUse::Rows, false);
        *this << "))";
        return;
    }
    if (use == SelectUse::Keys && select.united != nullptr) {
        *this << "SELECT " << m_traits.keyBegin << "c0" << m_traits.keyEnd << " FROM (";
        m_named = true;
        body(select, SelectUse::Rows, false);
        *this << "))";
        return;
    }
    body(select, use, false);
    m_out += ')';
}

void Writer::items(const BoundSelect &select, SelectUse use, bool top) {
    const bool only = use == SelectUse::Value && !select.atMostOneRow;
    const bool named = m_named;
    m_named = false;
    int place = 0;
    for (const BoundItem *item = select.items; item != nullptr; item = item->next, ++place) {
        if (place > 0)
            m_out += ',';
        const Expr &value = *item->value;
        if (only)
            *this << m_traits.onlyBegin << value << m_traits.onlyEnd;
        else if (use == SelectUse::Keys)
            key(value);
        else if (top && value.type.kind == TypeKind::Char && value.op != Op::NullLiteral) {
            Expr padded;
            padded.op = Op::Pad;
            padded.a = const_cast<Expr *>(&value);
            padded.n = value.type.length;
            *this << padded;
        } else
            *this << value;
        if (named)
            *this << " AS c" << place;
    }
    if (top && select.rowIdentity)
        *this << ",t" << select.sources->number << '.' << m_traits.rowIdentity;
}

void Writer::source(const Source &source) {
    if (source.derived != nullptr) {
        m_out += '(';
        m_named = true;
        body(*source.derived, SelectUse::Rows, false);
        m_out += ')';
    } else {
        name(source.table->name);
    }
    *this << " AS t" << source.number;
}

void Writer::sources(const Source *first) {
    // The engine's comma binds as tightly as its joins: what keeps all rows of its right side stands first.
    const Source *begin = first;
    for (const Source *one = first; one != nullptr; one = one->next) {
        if (one->join == JoinKind::Comma && keepsRight(*one))
            begin = one;
    }
    joined(*begin);
    for (const Source *one = first; one != nullptr; one = one->next) {
        if (one->join != JoinKind::Comma || one == begin)
            continue;
        m_out += ',';
        joined(*one);
    }
}

/// The tables from `first` on until a comma.
void Writer::joined(const Source &first) {
    constexpr std::array<std::string_view, 6> Joins = {",",           " JOIN ", " LEFT JOIN ", " RIGHT JOIN ",
                                                       " FULL JOIN ", " JOIN "};
    source(first);
    for (const Source *one = first.next; one != nullptr && one->join != JoinKind::Comma; one = one->next) {
        *this << Joins[static_cast<std::size_t>(one->join)];
        source(*one);
        if (one->on != nullptr)
            *this << " ON " << *one->on;
    }
}

void Writer::groups(const BoundSelect &select) {
    bool first = true;
    const auto add = [&](const Expr &value) {
        *this << (first ? " GROUP BY " : ",");
        key(value);
        first = false;
    };
    for (const Expr *group = select.groupBy; group != nullptr; group = group->next)
        add(*group);
    if (!select.distinct || !distinctByGroups(select))
        return;
    for (const BoundItem *item = select.items; item != nullptr; item = item->next) {
        if (!isLiteral(*item->value))
            add(*item->value);
    }
}

void Writer::insertionOrder(const BoundSelect &select, bool begun) {
    for (const Source *one = select.sources; one != nullptr && one->derived == nullptr; one = one->next) {
        *this << (begun ? "," : " ORDER BY ") << 't' << one->number << '.' << m_traits.rowIdentity;
        begun = true;
    }
}

void Writer::order(const BoundSelect &select) {
    if (select.sources == nullptr) // one row; the engine would look for columns of outer queries in vain
        return;
    bool begun = false;
    bool decided = false; // an identity leaves nothing to order behind it
    for (const BoundOrder *one = select.orderBy; one != nullptr; one = one->next) {
        *this << (begun ? "," : " ORDER BY ");
        begun = true;
        if (one->item != 0 && !isText(one->value->type) && one->value->op != Op::ColumnValue)
            *this << one->item;
        else
            key(*one->value);
        if (one->descending)
            *this << " DESC";
        decided = decided || (one->value->op == Op::ColumnValue && select.sources != nullptr &&
                              select.sources->next == nullptr && columnOf(*one->value).identity);
    }
    const bool rowsAreSources =
        !select.distinct && select.groupBy == nullptr && !select.aggregate && !select.having;
    if (select.inOrder && rowsAreSources && !decided)
        insertionOrder(select, begun);
}

void Writer::body(const BoundSelect &select, SelectUse use, bool top) {
    if (select.united == nullptr)
        return oneSelect(select, use, top);
    if (select.orderBy != nullptr)
        return unionInOrder(select, top);
    const bool named = std::exchange(m_named, false);
    const BoundSelect *const distinct = lastDistinct(select);
    const BoundSelect *const behind = distinct != nullptr ? distinct->united : &select;
    if (distinct != nullptr && hasTexts(select)) {
        // Groups by keys, as for distinct rows.
        *this << "SELECT ";
        columns(select, named);
        *this << " FROM (";
        united(select, behind, nullptr, true, top);
        *this << ") GROUP BY ";
        int place = 0;
        for (const BoundItem *item = select.items; item != nullptr; item = item->next, ++place) {
            const bool text = isText(item->value->type);
            *this << (place > 0 ? "," : "") << (text ? m_traits.keyBegin : std::string_view()) << 'c' << place
                  << (text ? m_traits.keyEnd : std::string_view());
        }
        if (behind != nullptr)
            *this << " UNION ALL ";
    } else if (distinct != nullptr) {
        united(select, behind, distinct, named, top);
        if (behind != nullptr)
            *this << " UNION ALL ";
    }
    if (behind != nullptr)
        united(*behind, nullptr, nullptr, named, top);
}

/// The selects from `first` on until `end`; before `distinct` stands the engine's own union.
void Writer::united(const BoundSelect &first, const BoundSelect *end, const BoundSelect *distinct, bool named,
                    bool top) {
    for (const BoundSelect *part = &first; part != end; part = part->united) {
        if (part != &first)
            *this << (part == distinct ? " UNION " : " UNION ALL ");
        m_named = named;
        if (!part->top.empty())
            *this << "SELECT * FROM (";
        oneSelect(*part, SelectUse::Rows, top);
        if (!part->top.empty())
            m_out += ')';
    }
    m_named = false;
}

/// c0, c1 ... of the derived table that the select is.
void Writer::columns(const BoundSelect &select, bool named) {
    int place = 0;
    for (const BoundItem *item = select.items; item != nullptr; item = item->next, ++place) {
        *this << (place > 0 ? ",c" : "c") << place;
        if (named)
            *this << " AS c" << place;
    }
}

void Writer::oneSelect(const BoundSelect &select, SelectUse use, bool top) {
    const BoundSelect *const around = std::exchange(m_select, &select);
    enter(select.items->value->at);
    *this << "SELECT ";
    if (select.distinct && !distinctByGroups(select))
        *this << "DISTINCT ";
    items(select, use, top);
    if (select.byIndex && m_traits.groupsByIndex != nullptr) {
        m_traits.groupsByIndex(*this, select);
    } else {
        if (select.sources != nullptr) {
            *this << " FROM ";
            sources(select.sources);
        }
        if (select.where != nullptr)
            *this << " WHERE " << *select.where;
        groups(select);
    }
    if (select.having != nullptr)
        *this << " HAVING " << *select.having;
    if (select.united == nullptr || !select.top.empty())
        order(select);
    if (!select.top.empty())
        *this << " LIMIT " << select.top;
    --m_level;
    m_select = around;
}

void Writer::unionInOrder(const BoundSelect &select, bool top) {
    *this << "SELECT ";
    columns(select, m_named);
    *this << " FROM (";
    m_named = true;
    BoundSelect rows = select;
    rows.orderBy = nullptr;
    body(rows, SelectUse::Rows, top);
    *this << ')';
    for (const BoundOrder *one = select.orderBy; one != nullptr; one = one->next) {
        *this << (one == select.orderBy ? " ORDER BY " : ",");
        const bool text = isText(one->value->type);
        *this << (text ? m_traits.keyBegin : std::string_view()) << 'c' << one->item - 1
              << (text ? m_traits.keyEnd : std::string_view());
        if (one->descending)
            *this << " DESC";
    }
}

} // namespace zel::tsql
