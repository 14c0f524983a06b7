#include "platform/tsql/meaning/resolver.h"

#include "platform/tsql/meaning/types.h"
#include "platform/tsql/text/names.h"

#include <charconv>
#include <string>

namespace zel::tsql {

namespace {

/// What the engines take.
constexpr int MostItems = 1990;

bool sameValue(const Expr *a, const Expr *b) {
    if (a == nullptr || b == nullptr)
        return a == b;
    if (a->op != b->op || a->n != b->n || a->m != b->m || a->source != b->source || a->text != b->text ||
        a->distinct != b->distinct || a->select != nullptr || b->select != nullptr)
        return false;
    if (!sameValue(a->a, b->a) || !sameValue(a->b, b->b) || !sameValue(a->c, b->c))
        return false;
    for (const auto list : {&Expr::a, &Expr::b}) {
        if (a->*list == nullptr)
            continue;
        const Expr *left = (a->*list)->next;
        const Expr *right = (b->*list)->next;
        for (; left != nullptr && right != nullptr; left = left->next, right = right->next) {
            if (!sameValue(left, right))
                return false;
        }
        if (left != right)
            return false;
    }
    return true;
}

bool isAggregate(const Expr &value) {
    return value.op >= Op::Sum && value.op <= Op::CountRows;
}

} // namespace

BoundSelect *Resolver::topSelect(const SelectNode &node) {
    BoundSelect *made = select(node, true);
    const bool oneTable =
        made->sources != nullptr && made->sources->next == nullptr && made->sources->derived == nullptr;
    made->rowIdentity = oneTable && !made->distinct && made->groupBy == nullptr && !made->aggregate &&
                        made->having == nullptr && made->top.empty() && made->united == nullptr;
    return made;
}

BoundSelect *Resolver::select(const SelectNode &node, bool inOrder) {
    if (m_scope != nullptr && m_scope->inAggregate) {
        fail(node.at, 130,
             "Cannot perform an aggregate function on an expression containing an aggregate or a subquery.");
    }
    BoundSelect *made = oneSelect(node, inOrder);
    if (node.united == nullptr)
        return made;
    unite(*made, node);
    addOrder(node.orderBy, *made);
    made->atMostOneRow = false;
    return made;
}

BoundSelect *Resolver::oneSelect(const SelectNode &node, bool inOrder) {
    BoundSelect *made = m_arena.make<BoundSelect>();
    made->distinct = node.distinct;
    made->inOrder = inOrder;
    Scope scope;
    scope.select = made;
    const ScopeEntry entry(*this, scope);
    addSources(node.from, scope);
    if (node.where != nullptr)
        made->where = condition(*node.where);
    Expr **lastGroup = &made->groupBy;
    for (const Node *group = node.groupBy; group != nullptr; group = group->next) {
        *lastGroup = copy(*value(*group));
        if (isLiteral(**lastGroup))
            fail(group->at, 164,
                 "Each GROUP BY expression must contain at least one column that is not an outer reference.");
        lastGroup = &(*lastGroup)->next;
    }
    scope.aggregatesAllowed = true;
    addItems(node.items, scope);
    if (node.having != nullptr)
        made->having = condition(*node.having);
    if (node.top != nullptr) {
        constexpr std::size_t MostDigits = 18;
        if (node.top->text.size() > MostDigits)
            fail(node.top->at, 1060,
                 "The number of rows provided for a TOP or FETCH clauses row count parameter must be an "
                 "integer.");
        made->top = node.top->text;
    }
    if (node.united == nullptr)
        addOrder(node.orderBy, *made);
    if (made->groupBy != nullptr)
        made->aggregate = false;
    if (made->aggregate || made->groupBy != nullptr || made->having != nullptr || node.having != nullptr)
        checkGroups(*made);
    made->atMostOneRow = atMostOneRow(*made);
    made->byIndex = groupsBeginIndex(*made);
    return made;
}

void Resolver::addStar(const Node &node, Scope &scope, BoundItem **&last) {
    bool found = false;
    for (const Source *source = scope.select->sources; source != nullptr; source = source->next) {
        if (!node.qualifier.empty() && !sameName(source->alias, node.qualifier))
            continue;
        found = true;
        for (std::size_t i = 0; i < source->table->columns.size(); ++i) {
            Expr *value = columnOf(*source, static_cast<int>(i), node.at);
            *last = m_arena.make<BoundItem>({value, source->table->columns[i].name, nullptr});
            last = &(*last)->next;
        }
    }
    if (found)
        return;
    if (node.qualifier.empty())
        fail(node.at, 263, "Must specify table to select from.");
    fail(node.at, 107,
         "The column prefix '" + std::string(node.qualifier) +
             "' does not match with a table name or alias name used in the query.");
}

void Resolver::addItems(const ItemNode *node, Scope &scope) {
    BoundItem **last = &scope.select->items;
    int count = 0;
    for (; node != nullptr; node = node->next) {
        if (++count > MostItems)
            fail(node->value->at, 1056,
                 "The number of elements in the select list exceeds the maximum allowed number of " +
                     std::to_string(MostItems) + " elements.");
        if (node->value->kind == NodeKind::Star) {
            addStar(*node->value, scope, last);
            continue;
        }
        Expr *item = m_converter.settled(value(*node->value));
        std::string_view name = node->alias;
        if (name.empty() && node->value->kind == NodeKind::Column)
            name = node->value->text;
        *last = m_arena.make<BoundItem>({item, name, nullptr});
        last = &(*last)->next;
    }
}

BoundOrder *Resolver::orderOf(const OrderNode &node, BoundSelect &select) {
    BoundOrder *made = m_arena.make<BoundOrder>();
    made->descending = node.descending;
    const Node &what = *node.value;
    int place = 0;
    if (what.kind == NodeKind::Integer) {
        std::from_chars(what.text.data(), what.text.data() + what.text.size(), made->item);
        for (const BoundItem *item = select.items; item != nullptr; item = item->next) {
            if (++place == made->item)
                made->value = item->value;
        }
        if (made->value == nullptr) {
            fail(what.at, 108,
                 "The ORDER BY position number " + std::string(what.text) +
                     " is out of range of the number of items in the select list.");
        }
        return made;
    }
    if (what.kind == NodeKind::Column && what.qualifier.empty()) {
        for (const BoundItem *item = select.items; item != nullptr; item = item->next) {
            ++place;
            if (!sameName(item->name, what.text))
                continue;
            if (made->value != nullptr && !sameValue(made->value, item->value))
                fail(what.at, 209, "Ambiguous column name '" + std::string(what.text) + "'.");
            if (made->value == nullptr) {
                made->value = item->value;
                made->item = place;
            }
        }
        if (made->value != nullptr)
            return made;
    }
    if (select.united != nullptr) {
        fail(what.at, 104,
             "ORDER BY items must appear in the select list if the statement contains a UNION, INTERSECT or "
             "EXCEPT "
             "operator.");
    }
    made->value = m_converter.settled(value(what));
    if (isLiteral(*made->value))
        fail(what.at, 408, "A constant expression was encountered in the ORDER BY list.");
    if (select.distinct) {
        const BoundItem *item = select.items;
        while (item != nullptr && !sameValue(item->value, made->value))
            item = item->next;
        if (item == nullptr)
            fail(what.at, 145,
                 "ORDER BY items must appear in the select list if SELECT DISTINCT is specified.");
    }
    return made;
}

void Resolver::addOrder(const OrderNode *node, BoundSelect &select) {
    BoundOrder **last = &select.orderBy;
    for (; node != nullptr; node = node->next) {
        *last = orderOf(*node, select);
        last = &(*last)->next;
    }
}

void Resolver::checkGroups(const BoundSelect &select) {
    for (const BoundItem *item = select.items; item != nullptr; item = item->next)
        checkGrouped(*item->value, select, false);
    if (select.having != nullptr)
        checkGrouped(*select.having, select, false);
    for (const BoundOrder *order = select.orderBy; order != nullptr; order = order->next)
        checkGrouped(*order->value, select, false);
}

void Resolver::checkGrouped(const BoundSelect &inner, const BoundSelect &select) {
    for (const BoundSelect *part = &inner; part != nullptr; part = part->united) {
        for (const BoundItem *item = part->items; item != nullptr; item = item->next)
            checkGrouped(*item->value, select, true);
        for (const Source *source = part->sources; source != nullptr; source = source->next) {
            if (source->derived != nullptr)
                checkGrouped(*source->derived, select);
            if (source->on != nullptr)
                checkGrouped(*source->on, select, true);
        }
        for (const Expr *value : {part->where, part->having}) {
            if (value != nullptr)
                checkGrouped(*value, select, true);
        }
        for (const Expr *group = part->groupBy; group != nullptr; group = group->next)
            checkGrouped(*group, select, true);
        for (const BoundOrder *order = part->orderBy; order != nullptr; order = order->next)
            checkGrouped(*order->value, select, true);
    }
}

void Resolver::checkGrouped(const Expr &value, const BoundSelect &select, bool inner) {
    if (isAggregate(value) && !inner)
        return;
    for (const Expr *group = select.groupBy; group != nullptr; group = group->next) {
        if (sameValue(&value, group) ||
            ((value.op == Op::RoundTo || value.op == Op::CutTo || value.op == Op::ToInteger) &&
             sameValue(value.a, group)))
            return;
    }
    if (value.op == Op::ColumnValue) {
        const Source *own = select.sources;
        while (own != nullptr && own != value.source)
            own = own->next;
        if (own != nullptr) {
            fail(value.at, 8120,
                 "Column '" + std::string(own->alias) + "." + tsql::columnOf(value).name +
                     "' is invalid in the select list because it is not contained in either an aggregate "
                     "function or the "
                     "GROUP BY clause.");
        }
        return;
    }
    for (const Expr *list : {value.a, value.b, value.c}) {
        for (const Expr *child = list; child != nullptr; child = child->next)
            checkGrouped(*child, select, inner);
    }
    if (value.select != nullptr)
        checkGrouped(*value.select, select);
}

/// An aggregate over columns of an outer query alone would be that query's.
void Resolver::checkReach(const Expr *argument, std::uint32_t at) const {
    for (; argument != nullptr; argument = argument->next) {
        if (argument->op == Op::ColumnValue) {
            const Source *own = m_scope->select->sources;
            while (own != nullptr && own != argument->source)
                own = own->next;
            if (own == nullptr)
                fail(at, 8124,
                     "Multiple columns are specified in an aggregated expression containing an outer "
                     "reference. If an expression being aggregated contains an outer reference, then that "
                     "outer reference must be the only column referenced in the expression.");
        }
        for (const Expr *inner : {argument->a, argument->b, argument->c})
            checkReach(inner, at);
    }
}

BoundSelect *Resolver::scalar(const SelectNode &node) {
    BoundSelect *made = select(node, false);
    if (made->items->next != nullptr) {
        fail(node.at, 116,
             "Only one expression can be specified in the select list when the subquery is not introduced "
             "with EXISTS.");
    }
    return made;
}

} // namespace zel::tsql
