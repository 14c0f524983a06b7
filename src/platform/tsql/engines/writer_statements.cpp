#include "platform/tsql/engines/writer.h"

#include "platform/tsql/text/names.h"

namespace zel::tsql {

void Writer::insertion(const BoundInsert &insert) {
    *this << "INSERT INTO ";
    name(insert.table->name);
    for (const BoundAssignment *column = insert.columns; column != nullptr; column = column->next) {
        *this << (column == insert.columns ? '(' : ',');
        name(column->column->name);
    }
    *this << ") ";
    if (insert.select != nullptr) {
        body(*insert.select, SelectUse::Rows, false);
        return;
    }
    *this << "VALUES ";
    for (const BoundRow *row = insert.rows; row != nullptr; row = row->next) {
        *this << (row == insert.rows ? "(" : ",(");
        list(row->values);
        *this << ')';
    }
}

void Writer::update(const BoundChange &change) {
    *this << "UPDATE ";
    if (change.rows != nullptr)
        name(change.target->table->name);
    else
        source(*change.target);
    int place = 0;
    for (const BoundAssignment *set = change.assignments; set != nullptr; set = set->next) {
        *this << (set == change.assignments ? " SET " : ",");
        name(set->column->name);
        if (change.rows != nullptr)
            *this << "=n.c" << place++;
        else
            *this << '=' << *set->value;
    }
    if (change.rows != nullptr) {
        *this << " FROM (";
        changedRows(change);
        *this << ") AS n WHERE ";
        name(change.target->table->name);
        *this << '.' << m_traits.rowIdentity << "=n.r";
    } else if (change.where != nullptr) {
        *this << " WHERE " << *change.where;
    }
}

/// The row identities of the target among the joined rows as r, with the values for it as c0, c1 ...
void Writer::changedRows(const BoundChange &change) {
    m_select = change.rows;
    *this << "SELECT t" << change.target->number << '.' << m_traits.rowIdentity << " AS r";
    int place = 0;
    for (const BoundAssignment *set = change.assignments; set != nullptr; set = set->next)
        *this << ',' << *set->value << " AS c" << place++;
    *this << " FROM ";
    sources(change.rows->sources);
    if (change.where != nullptr)
        *this << " WHERE " << *change.where;
}

void Writer::deletion(const BoundChange &change) {
    *this << "DELETE FROM ";
    if (change.rows != nullptr) {
        name(change.target->table->name);
        *this << " WHERE " << m_traits.rowIdentity << " IN (";
        changedRows(change);
        *this << ')';
        return;
    }
    source(*change.target);
    if (change.where != nullptr)
        *this << " WHERE " << *change.where;
}

void Writer::createTable(const ActionNode &node, const Table &table) {
    *this << (isTemporary(table.name) ? m_traits.createTemporary : "CREATE TABLE ");
    name(table.name);
    const bool ownKeyLine = node.names != nullptr;
    for (const ColumnNode *column = node.columns; column != nullptr; column = column->next) {
        *this << (column == node.columns ? "(" : ",");
        name(column->name);
        *this << ' ';
        m_traits.columnDefinition(*this, *column, column->primaryKey);
    }
    const bool identityIsKey = ownKeyLine && node.names->next == nullptr && [&] {
        const ColumnNode *column = node.columns;
        while (column != nullptr && !(column->identity && column->name == node.names->text))
            column = column->next;
        return column != nullptr;
    }();
    if (ownKeyLine && !identityIsKey) {
        for (const NameNode *key = node.names; key != nullptr; key = key->next) {
            *this << (key == node.names ? ",UNIQUE(" : ",");
            name(key->text);
        }
        *this << ')';
    }
    *this << ')';
    for (const ColumnNode *column = node.columns; column != nullptr; column = column->next) {
        if (column->identity && column->seed > 1)
            m_traits.identitySeed(*this, node.table.name, column->seed);
    }
}

void Writer::dropTable(const Table &table, bool ifThere) {
    *this << (ifThere ? "DROP TABLE IF EXISTS " : "DROP TABLE ");
    name(table.name);
}

void Writer::createIndex(const ActionNode &node, const Table &table) {
    *this << (node.unique ? "CREATE UNIQUE INDEX " : "CREATE INDEX ");
    if (isTemporary(table.name)) { // its indexes' names are its own, and it may be one of several of its name
        *this << m_traits.temporaryIndex;
        name(table.name + '.' + std::string(node.table.name));
    } else {
        name(node.table.name);
    }
    *this << " ON ";
    name(table.name);
    for (const NameNode *column = node.names; column != nullptr; column = column->next) {
        *this << (column == node.names ? '(' : ',');
        name(column->text);
        if (column->descending)
            *this << " DESC";
    }
    *this << ')';
    if (node.where != nullptr) {
        *this << " WHERE ";
        name(node.where->a->text);
        *this << (node.where->negated ? " IS NOT NULL" : " IS NULL");
    }
}

void Writer::analyze(const Table &table) {
    *this << m_traits.analyze << ' ';
    name(table.name);
}

} // namespace zel::tsql
