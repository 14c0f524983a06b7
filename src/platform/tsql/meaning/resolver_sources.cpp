#include "platform/tsql/meaning/resolver.h"

#include "platform/tsql/meaning/types.h"
#include "platform/tsql/text/names.h"

#include <string>
#include <vector>

namespace zel::tsql {

namespace {

// What the engines take.
constexpr int MostTables = 64;
constexpr int MostUnited = 500;
constexpr char NoPlan[] =
    "The query processor ran out of internal resources and could not produce a query plan. "
    "Simplify the query.";

bool dependsOn(const Expr *value, const Source &source) {
    for (; value != nullptr; value = value->next) {
        if (value->source == &source || value->select != nullptr || dependsOn(value->a, source) ||
            dependsOn(value->b, source) || dependsOn(value->c, source))
            return true;
    }
    return false;
}

/// Whether the condition holds for one identity value at most.
bool fixesIdentity(const Expr &condition, const Source &source) {
    if (condition.op == Op::And) {
        const Expr *part = condition.a;
        while (part != nullptr && !fixesIdentity(*part, source))
            part = part->next;
        return part != nullptr;
    }
    if (condition.op != Op::Compare || condition.n != '=')
        return false;
    const auto isIdentity = [&](const Expr &side) {
        return side.op == Op::ColumnValue && side.source == &source && columnOf(side).identity;
    };
    return (isIdentity(*condition.a) && !dependsOn(condition.b, source)) ||
           (isIdentity(*condition.b) && !dependsOn(condition.a, source));
}

} // namespace

/// The further selects of a union; each column has one type in all of them.
void Resolver::unite(BoundSelect &first, const SelectNode &node) {
    std::vector<Type> types;
    for (const BoundItem *item = first.items; item != nullptr; item = item->next)
        types.push_back(item->value->type);
    BoundSelect *last = &first;
    int selects = 1;
    for (const SelectNode *one = &node; one->united != nullptr; one = one->united) {
        if (++selects > MostUnited)
            fail(one->united->at, 8623, NoPlan);
        last->united = oneSelect(*one->united, false);
        last->unitedAll = one->unitedAll;
        last = last->united;
        std::size_t place = 0;
        const BoundItem *item = last->items;
        for (; item != nullptr && place < types.size(); item = item->next, ++place)
            types[place] = commonType(types[place], item->value->type);
        if (item != nullptr || place < types.size()) {
            fail(one->united->at, 205,
                 "All queries combined using a UNION, INTERSECT or EXCEPT operator must have an equal number "
                 "of expressions in their target lists.");
        }
    }
    for (BoundSelect *part = &first; part != nullptr; part = part->united) {
        auto type = types.begin();
        for (BoundItem *item = part->items; item != nullptr; item = item->next, ++type) {
            item->value = m_converter.convert(item->value, *type, Purpose::Meet);
            item->value->type = *type;
        }
    }
}

/// The rows as a derived table's, for what is done to them after equal ones have fallen together.
BoundSelect *Resolver::throughTable(BoundSelect &rows) {
    Table &columns = m_tables.emplace_back();
    BoundSelect *made = m_arena.make<BoundSelect>();
    made->sources = m_arena.make<Source>();
    made->sources->derived = &rows;
    made->sources->table = &columns;
    made->sources->number = ++m_sources;
    for (const BoundItem *item = rows.items; item != nullptr; item = item->next)
        columns.columns.push_back({std::string(item->name), item->value->type, true, false});
    BoundItem **last = &made->items;
    int place = 0;
    for (const BoundItem *item = rows.items; item != nullptr; item = item->next) {
        *last = m_arena.make<BoundItem>(
            {columnOf(*made->sources, place++, item->value->at), item->name, nullptr});
        last = &(*last)->next;
    }
    return made;
}

Source *Resolver::makeSource(const TableNode &node) {
    Source *made = m_arena.make<Source>();
    made->join = node.join;
    made->number = ++m_sources;
    made->alias = node.alias;
    if (node.derived == nullptr) {
        const Table &found = table(node.table);
        made->table = &found;
        if (made->alias.empty())
            made->alias = found.name;
        return made;
    }
    // A derived table does not see its neighbours.
    Scope *const own = m_scope;
    m_scope = own->outer;
    made->derived = select(*node.derived, false);
    m_scope = own;
    Table &columns = m_tables.emplace_back();
    for (const BoundItem *item = made->derived->items; item != nullptr; item = item->next) {
        if (item->name.empty()) {
            fail(node.table.at, 8155,
                 "No column name was specified for a column of '" + std::string(node.alias) + "'.");
        }
        columns.columns.push_back({std::string(item->name), item->value->type, true, false});
    }
    made->table = &columns;
    return made;
}

/// A comma binds weaker than a join: what stands before it is out of sight of the conditions behind it.
void Resolver::addSources(const TableNode *node, Scope &scope) {
    Source **last = &scope.select->sources;
    Source *joined = nullptr;
    const Source *keeping =
        nullptr; // the one list of joins that keeps a right side; engines have one at most
    int count = 0;
    for (; node != nullptr; node = node->next) {
        if (++count > MostTables)
            fail(node->table.at, 106,
                 "Too many table names in the query. The maximum allowable is " + std::to_string(MostTables) +
                     '.');
        Source *made = makeSource(*node);
        if (node->join == JoinKind::Comma)
            joined = made;
        for (const Source *other = scope.select->sources; other != nullptr; other = other->next) {
            if (sameName(other->alias, made->alias)) {
                fail(node->table.at, 1013,
                     "The objects \"" + std::string(made->alias) + "\" and \"" + std::string(other->alias) +
                         "\" in the FROM clause have the same exposed names. Use correlation names to "
                         "distinguish them.");
            }
        }
        *last = made;
        last = &made->next;
        if (node->on == nullptr)
            continue;
        Source *const all = scope.select->sources;
        scope.select->sources = joined;
        made->on = condition(*node->on);
        scope.select->sources = all;
        const bool keeps = node->join == JoinKind::Right || node->join == JoinKind::Full;
        if (keeps && keeping != nullptr && keeping != joined)
            fail(node->table.at, 8623, NoPlan);
        keeping = keeps ? joined : keeping;
    }
}

bool Resolver::atMostOneRow(const BoundSelect &select) const {
    if (select.aggregate || select.sources == nullptr || select.top == "1")
        return true;
    return select.sources->next == nullptr && select.sources->derived == nullptr && select.where != nullptr &&
           fixesIdentity(*select.where, *select.sources);
}

} // namespace zel::tsql
