#include "platform/tsql/meaning/resolver.h"

#include "platform/tsql/meaning/types.h"
#include "platform/tsql/reading/failure.h"
#include "platform/tsql/text/names.h"

namespace zel::tsql {

void Resolver::setSource(std::string_view source) {
    m_source = source;
    m_converter.setSource(source);
}

void Resolver::fail(std::size_t at, int number, std::string_view message) const {
    tsql::fail(m_source, at, number, message);
}

void Resolver::failColumn(std::size_t at, std::string_view name) const {
    fail(at, 207, "Invalid column name '" + std::string(name) + "'.");
}

Expr *Resolver::copy(const Expr &value) {
    Expr *made = m_arena.make<Expr>(value);
    made->next = nullptr;
    return made;
}

int Resolver::columnIndex(const Table &table, std::string_view name) const {
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        if (sameName(table.columns[i].name, name))
            return static_cast<int>(i);
    }
    return -1;
}

Expr *Resolver::columnOf(const Source &source, int index, std::uint32_t at) {
    const Column &column = source.table->columns[static_cast<std::size_t>(index)];
    Expr *made = make(Op::ColumnValue, column.type, at);
    made->source = &source;
    made->m = index;
    return made;
}

Expr *Resolver::column(const Node &node) {
    bool qualified = false;
    for (Scope *scope = m_scope; scope != nullptr; scope = scope->outer) {
        Expr *found = nullptr;
        for (const Source *source = scope->select->sources; source != nullptr; source = source->next) {
            if (!node.qualifier.empty()) {
                if (!sameName(source->alias, node.qualifier))
                    continue;
                qualified = true;
            }
            const int index = columnIndex(*source->table, node.text);
            if (index < 0)
                continue;
            if (found != nullptr)
                fail(node.at, 209, "Ambiguous column name '" + std::string(node.text) + "'.");
            found = columnOf(*source, index, node.at);
        }
        if (found != nullptr)
            return found;
        if (qualified)
            break;
    }
    if (!node.qualifier.empty() && !qualified) {
        fail(node.at, 4104,
             "The multi-part identifier \"" + std::string(node.qualifier) + "." + std::string(node.text) +
                 "\" could not be bound.");
    }
    failColumn(node.at, node.text);
}

Expr *Resolver::assigned(Expr *value, const Column &column) {
    if (value->op == Op::NullLiteral && !column.nullable) {
        fail(value->at, 515,
             "Cannot insert the value NULL into column '" + column.name + "'; column does not allow nulls.");
    }
    return m_converter.convert(value, column.type, Purpose::Assign);
}

void Resolver::checkInsertedColumns(const BoundInsert &insert, std::uint32_t at) const {
    for (const Column &column : insert.table->columns) {
        if (column.nullable || column.identity)
            continue;
        const BoundAssignment *given = insert.columns;
        while (given != nullptr && given->column != &column)
            given = given->next;
        if (given == nullptr) {
            fail(at, 515,
                 "Cannot insert the value NULL into column '" + column.name + "', table '" +
                     insert.table->name + "'; column does not allow nulls. INSERT fails.");
        }
    }
}

BoundAssignment *Resolver::insertedColumn(const NameNode &name, const Table &target,
                                          const BoundAssignment *before) {
    const int index = columnIndex(target, name.text);
    if (index < 0)
        failColumn(name.at, name.text);
    const Column &column = target.columns[static_cast<std::size_t>(index)];
    if (column.identity) {
        fail(name.at, 544,
             "Cannot insert explicit value for identity column in table '" + target.name +
                 "' when IDENTITY_INSERT is set to OFF.");
    }
    checkGivenOnce(column, before, name.at);
    return m_arena.make<BoundAssignment>({&column, nullptr, nullptr});
}

/// 213, 109 or 110 for a row at `at` whose values are not as many as the columns.
void Resolver::checkValueCount(const ActionNode &node, std::uint32_t at, int columns, int values) const {
    if (values == columns)
        return;
    if (node.names == nullptr)
        fail(at, 213, "Column name or number of supplied values does not match table definition.");
    fail(at, values < columns ? 109 : 110,
         std::string("There are ") + (values < columns ? "more" : "fewer") +
             " columns in the INSERT statement than values specified in the VALUES clause.");
}

BoundInsert *Resolver::insertion(const ActionNode &node) {
    BoundInsert *made = m_arena.make<BoundInsert>();
    const Table &target = table(node.table);
    made->table = &target;
    BoundAssignment **last = &made->columns;
    int count = 0;
    for (const NameNode *name = node.names; name != nullptr; name = name->next, ++count) {
        *last = insertedColumn(*name, target, made->columns);
        last = &(*last)->next;
    }
    for (const Column &column : target.columns) {
        if (node.names != nullptr || column.identity)
            continue;
        *last = m_arena.make<BoundAssignment>({&column, nullptr, nullptr});
        last = &(*last)->next;
        ++count;
    }
    checkInsertedColumns(*made, node.at);
    BoundRow **lastRow = &made->rows;
    for (const RowNode *row = node.rows; row != nullptr; row = row->next) {
        *lastRow = insertedRow(node, *row, made->columns, count);
        lastRow = &(*lastRow)->next;
    }
    if (node.select == nullptr)
        return made;
    made->select = select(*node.select, true);
    if (made->select->distinct || unitesRows(*made->select))
        made->select = throughTable(*made->select);
    for (BoundSelect *part = made->select; part != nullptr; part = part->united) {
        int values = 0;
        for (const BoundItem *item = part->items; item != nullptr; item = item->next)
            ++values;
        checkValueCount(node, node.select->at, count, values);
        const BoundAssignment *into = made->columns;
        for (BoundItem *item = part->items; item != nullptr; item = item->next, into = into->next)
            item->value = assigned(item->value, *into->column);
    }
    return made;
}

BoundRow *Resolver::insertedRow(const ActionNode &node, const RowNode &row, const BoundAssignment *columns,
                                int count) {
    int values = 0;
    for (const Node *one = row.values; one != nullptr; one = one->next)
        ++values;
    checkValueCount(node, row.at, count, values);
    BoundRow *made = m_arena.make<BoundRow>();
    Expr **last = &made->values;
    for (const Node *one = row.values; one != nullptr; one = one->next, columns = columns->next) {
        *last = copy(*assigned(value(*one), *columns->column));
        last = &(*last)->next;
    }
    return made;
}

BoundChange *Resolver::change(const ActionNode &node) {
    BoundChange *made = m_arena.make<BoundChange>();
    BoundSelect *rows = m_arena.make<BoundSelect>();
    Scope scope;
    scope.select = rows;
    const ScopeEntry entry(*this, scope);
    addSources(node.from, scope);
    made->target = changedSource(node, *rows);
    if (node.from != nullptr)
        made->rows = rows;
    BoundAssignment **last = &made->assignments;
    for (const AssignmentNode *set = node.assignments; set != nullptr; set = set->next) {
        *last = setColumn(*set, *made->target, made->assignments);
        (*last)->value = assigned(value(*set->value), *(*last)->column);
        last = &(*last)->next;
    }
    if (node.where != nullptr)
        rows->where = made->where = condition(*node.where);
    return made;
}

/// The changed table among the joined ones, by its alias or by its name; joined to them when it isn't there.
Source *Resolver::changedSource(const ActionNode &node, BoundSelect &rows) {
    Source **last = &rows.sources;
    const bool bare = node.table.schema.empty() && node.table.database.empty();
    for (; *last != nullptr; last = &(*last)->next) {
        if (!bare || !sameName((*last)->alias, node.table.name))
            continue;
        if ((*last)->derived != nullptr)
            fail(node.table.at, 4418,
                 "Derived table '" + std::string(node.table.name) + "' is not updatable.");
        return *last;
    }
    const Table &target = table(node.table);
    Source *found = nullptr;
    for (Source *one = rows.sources; one != nullptr; one = one->next) {
        if (one->table != &target)
            continue;
        if (found != nullptr)
            fail(node.table.at, 8154, "The table '" + std::string(node.table.name) + "' is ambiguous.");
        found = one;
    }
    if (found != nullptr)
        return found;
    *last = m_arena.make<Source>();
    (*last)->table = &target;
    (*last)->alias = target.name;
    (*last)->number = ++m_sources;
    return *last;
}

BoundAssignment *Resolver::setColumn(const AssignmentNode &set, const Source &target,
                                     const BoundAssignment *before) {
    if (!set.qualifier.empty() && !sameName(set.qualifier, target.alias) &&
        !sameName(set.qualifier, target.table->name)) {
        fail(set.at, 4104,
             "The multi-part identifier \"" + std::string(set.qualifier) + '.' + std::string(set.name) +
                 "\" could not be bound.");
    }
    const int index = columnIndex(*target.table, set.name);
    if (index < 0)
        failColumn(set.at, set.name);
    const Column &column = target.table->columns[static_cast<std::size_t>(index)];
    if (column.identity)
        fail(set.at, 8102, "Cannot update identity column '" + column.name + "'.");
    checkGivenOnce(column, before, set.at);
    return m_arena.make<BoundAssignment>({&column, nullptr, nullptr});
}

/// 264 for a column that an insert or a set clause names again.
void Resolver::checkGivenOnce(const Column &column, const BoundAssignment *before, std::uint32_t at) const {
    for (; before != nullptr; before = before->next) {
        if (before->column == &column) {
            fail(at, 264,
                 "The column name '" + column.name +
                     "' is specified more than once in the SET clause or column list of an INSERT.");
        }
    }
}

} // namespace zel::tsql
