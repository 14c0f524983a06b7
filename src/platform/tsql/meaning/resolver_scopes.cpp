#include "platform/tsql/meaning/resolver.h"

#include "platform/tsql/text/names.h"

#include <algorithm>
#include <utility>

namespace zel::tsql {

Resolver::Scopes Resolver::openScope(Slot identity, int temporaries) {
    return std::exchange(m_scopes, {m_variables.size(), identity, temporaries});
}

std::vector<Table> Resolver::closeScope(const Scopes &outer) {
    std::vector<Table> left;
    if (m_scopes.temporaries != 0) {
        m_created.remove_if([&](CreatedTable &created) {
            const bool own = created.scope == m_scopes.temporaries;
            if (own)
                left.push_back(std::move(created.table));
            return own;
        });
    }
    m_variables.resize(m_scopes.variables);
    m_scopes = outer;
    return left;
}

void Resolver::forget() {
    m_tables.clear();
    m_sources = 0;
}

Expr *Resolver::slotValue(Slot slot, Type type, std::uint32_t at) {
    Expr *made = make(Op::Variable, type, at);
    made->n = static_cast<int>(slot);
    return made;
}

Expr *Resolver::variable(const Node &node) {
    if (node.variable == NoVariable) {
        return sameName(node.text, "@@rowcount")
                   ? slotValue(RowCountSlot, {TypeKind::Int, 0, 0}, node.at)
                   : slotValue(IdentitySlot, {TypeKind::Numeric, 38, 0}, node.at);
    }
    const Variable &found = variableAt(node.variable);
    if (found.literal == nullptr)
        return slotValue(found.slot, found.type, node.at);
    Expr *used = copy(*found.literal);
    used->at = node.at;
    used->type = found.type;
    return used;
}

BoundSelect *Resolver::assignment(const SelectNode &node) {
    BoundSelect *made = select(node, true);
    BoundItem *value = made->items;
    for (const ItemNode *item = node.items; item != nullptr; item = item->next, value = value->next)
        value->value = assigned(item->variable, value->value);
    for (BoundOrder *order = made->orderBy; order != nullptr; order = order->next)
        order->item = 0; // the rows are ordered by what is assigned, not by what becomes of it
    return made;
}

const Table *Resolver::findTable(const TableName &name) const {
    const bool ours = (name.database.empty() || sameName(name.database, "ZEL") ||
                       (isTemporary(name.name) && sameName(name.database, "tempdb"))) &&
                      (name.schema.empty() || sameName(name.schema, "dbo"));
    if (!ours)
        return nullptr;
    for (const CreatedTable &created : m_created) {
        if (sameName(created.name, name.name))
            return &created.table;
    }
    const Table *found = m_catalog.table(name.name);
    return std::ranges::find(m_dropped, found) == m_dropped.end() ? found : nullptr;
}

const Table *Resolver::inTheWay(const TableName &name) const {
    if (!isTemporary(name.name) || m_scopes.temporaries == 0)
        return findTable(name);
    for (const CreatedTable &created : m_created) {
        if (created.scope == m_scopes.temporaries && sameName(created.name, name.name))
            return &created.table;
    }
    return nullptr;
}

void Resolver::dropped(const Table &table) {
    const auto made = std::ranges::find_if(
        m_created, [&](const CreatedTable &created) { return &created.table == &table; });
    if (made != m_created.end())
        m_created.erase(made);
    else
        m_dropped.push_back(&table);
}

std::string Resolver::engineName(const TableName &name) const {
    std::string made(name.name);
    if (isTemporary(name.name) && m_scopes.temporaries != 0)
        made += ':' + std::to_string(m_scopes.temporaries);
    return made;
}

const Table &Resolver::table(const TableName &name) const {
    const Table *found = findTable(name);
    if (found == nullptr)
        fail(name.at, 208, "Invalid object name '" + std::string(name.name) + "'.");
    return *found;
}

const Table &Resolver::created(Table table) {
    const int scope = isTemporary(table.name) ? m_scopes.temporaries : 0;
    std::string name = table.name;
    table.name = engineName({{}, {}, name, 0});
    return m_created.emplace_front(CreatedTable{std::move(name), scope, std::move(table)}).table;
}

} // namespace zel::tsql
