#include "platform/tsql/translation.h"

#include "platform/tsql/text/names.h"

namespace zel::tsql {

void Translation::createTable(const ActionNode &action) {
    if (m_resolver.inTheWay(action.table) != nullptr) {
        fail(action.table.at, 2714,
             "There is already an object named '" + std::string(action.table.name) + "' in the database.");
    }
    Table table;
    table.name = action.table.name;
    int identities = 0;
    for (const ColumnNode *column = action.columns; column != nullptr; column = column->next) {
        for (const Column &other : table.columns) {
            if (sameName(other.name, column->name)) {
                fail(column->at, 2705,
                     "Column names in each table must be unique. Column name '" + std::string(column->name) +
                         "' in table '" + table.name + "' is specified more than once.");
            }
        }
        identities += column->identity ? 1 : 0;
        if (identities > 1)
            fail(column->at, 2744, "Multiple identity columns specified for table '" + table.name + "'.");
        table.columns.push_back(
            {std::string(column->name), column->type, !column->notNull, column->identity});
    }
    for (const NameNode *key = action.names; key != nullptr; key = key->next) {
        bool found = false;
        for (Column &column : table.columns) {
            if (sameName(column.name, key->text)) {
                column.nullable = false;
                found = true;
            }
        }
        if (!found)
            fail(key->at, 1911,
                 "Column name '" + std::string(key->text) + "' does not exist in the target table.");
    }
    const Table &made = m_resolver.created(std::move(table));
    Writer out = writer();
    out.createTable(action, made);
    add(StatementKind::CreateTable, &out).name = made.name;
}

void Translation::dropTable(const ActionNode &action) {
    const Table *found = m_resolver.findTable(action.table);
    if (found == nullptr) {
        fail(action.table.at, 3701,
             "Cannot drop the table '" + std::string(action.table.name) +
                 "', because it does not exist or you do not have permission.");
    }
    Writer out = writer();
    out.dropTable(*found);
    add(StatementKind::DropTable, &out).name = found->name;
    m_resolver.dropped(*found);
}

void Translation::createIndex(const ActionNode &action) {
    const Table &table = m_resolver.table(action.indexed);
    for (const NameNode *name = action.names; name != nullptr; name = name->next) {
        bool found = false;
        for (const Column &column : table.columns)
            found = found || sameName(column.name, name->text);
        if (!found) {
            fail(name->at, 1911,
                 "Column name '" + std::string(name->text) + "' does not exist in the target table.");
        }
    }
    if (action.where != nullptr)
        checkFilter(action, table);
    Writer out = writer();
    out.createIndex(action, table);
    // A connection's own table is all that its index changes.
    add(StatementKind::CreateIndex, &out).name =
        isTemporary(table.name) ? std::string_view(table.name) : action.table.name;
}

void Translation::checkFilter(const ActionNode &index, const Table &table) {
    const Node &filter = *index.where;
    if (filter.kind != NodeKind::IsNull || filter.a->kind != NodeKind::Column || !filter.a->qualifier.empty())
        fail(filter.at, 10735,
             "Incorrect WHERE clause for filtered index '" + std::string(index.table.name) + "' on table '" +
                 table.name + "'.");
    for (const Column &column : table.columns)
        if (sameName(column.name, filter.a->text))
            return;
    fail(filter.a->at, 207, "Invalid column name '" + std::string(filter.a->text) + "'.");
}

void Translation::createProcedure(const ActionNode &action) {
    if (m_catalog.procedure(action.table.name) != nullptr) {
        fail(action.table.at, 2714,
             "There is already an object named '" + std::string(action.table.name) + "' in the database.");
    }
    Statement &made = add(StatementKind::CreateProcedure);
    made.name = action.table.name;
    made.text = m_resolver.source();
}

void Translation::dropProcedure(const ActionNode &action) {
    if (m_catalog.procedure(action.table.name) == nullptr) {
        fail(action.table.at, 3701,
             "Cannot drop the procedure '" + std::string(action.table.name) +
                 "', because it does not exist or you do not have permission.");
    }
    add(StatementKind::DropProcedure).name = action.table.name;
}

} // namespace zel::tsql
