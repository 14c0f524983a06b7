#include "platform/ado/drivers/sqlite_catalog.h"

#include "platform/base/error.h"
#include "platform/tsql/text/names.h"

#include <algorithm>

namespace zel::ado {

namespace {

std::string lower(std::string_view text) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? char(c + ('a' - 'A')) : c; });
    return result;
}

} // namespace

void SqliteCatalog::refresh() {
    m_procedures.clear();
    SqliteSession::Running version = m_session.prepare("pragma schema_version");
    version.step();
    if (m_version != version.integer(0)) {
        m_version = version.integer(0);
        m_tables.clear();
        m_readings.clear();
    }
    // The schema's version does not tell of tables that are this connection's own.
    m_tables.erase(m_tables.lower_bound("#"), m_tables.lower_bound("$"));
}

std::optional<tsql::Table> SqliteCatalog::readTable(const std::string &key) {
    const SqliteSession::OwnTables access(m_session);
    const std::string schema = tsql::isTemporary(key) ? "sqlite_temp_master" : "sqlite_master";
    SqliteSession::Running columns = m_session.prepare(
        "select t.name, c.name, c.type, c.\"notnull\", c.pk, instr(upper(t.sql), 'AUTOINCREMENT') > 0 from " +
        schema +
        " t, pragma_table_info(t.name) c where t.type = 'table' and lower(t.name) = ? order by c.cid");
    columns.bind(1, std::string_view(key));
    std::optional<tsql::Table> table;
    while (columns.step()) {
        if (!table) {
            table.emplace();
            table->name = columns.text(0);
        }
        tsql::Column column;
        column.name = columns.text(1);
        column.type = tsql::parseType(columns.text(2)).value_or(tsql::Type());
        const bool isKey = columns.integer(4) != 0;
        column.nullable = columns.integer(3) == 0 && !isKey;
        column.identity = isKey && columns.integer(5) != 0;
        table->columns.push_back(std::move(column));
    }
    return table;
}

const tsql::Table *SqliteCatalog::table(std::string_view name) {
    if (SqliteSession::isOwnTable(name))
        return nullptr;
    const std::string key = lower(name);
    auto known = m_tables.find(key);
    if (known == m_tables.end())
        known = m_tables.emplace(key, readTable(key)).first;
    return known->second ? &*known->second : nullptr;
}

bool SqliteCatalog::indexed(const tsql::Table &table, std::string_view first, std::string_view second) {
    SqliteSession::Running begins = m_session.prepare(
        "select 1 from pragma_index_list(?) i where not i.partial"
        " and exists (select 1 from pragma_index_info(i.name) where seqno = 0 and name = ? collate nocase)"
        " and exists (select 1 from pragma_index_info(i.name) where seqno = 1 and name = ? collate nocase)");
    begins.bind(1, std::string_view(table.name)).bind(2, first).bind(3, second);
    return begins.step();
}

const std::string *SqliteCatalog::procedure(std::string_view name) {
    const std::string key = lower(name);
    if (const auto known = m_procedures.find(key); known != m_procedures.end())
        return &known->second;
    const SqliteSession::OwnTables access(m_session);
    SqliteSession::Running found = m_session.prepare("select Text from sys_procedures where NameKey = ?");
    found.bind(1, std::string_view(key));
    if (!found.step())
        return nullptr;
    return &m_procedures.emplace(key, found.text(0)).first->second;
}

void SqliteCatalog::storeProcedure(const std::string &name, const std::string &text) {
    const SqliteSession::OwnTables access(m_session);
    SqliteSession::Running insert =
        m_session.prepare("insert or ignore into sys_procedures (NameKey, Name, Text) values (?, ?, ?)");
    insert.bind(1, std::string_view(lower(name)))
        .bind(2, std::string_view(name))
        .bind(3, std::string_view(text));
    insert.step();
    if (sqlite3_changes(m_session.handle()) == 0)
        throw Error(2714, "There is already an object named '" + name + "' in the database.");
}

void SqliteCatalog::dropProcedure(const std::string &name) {
    const SqliteSession::OwnTables access(m_session);
    SqliteSession::Running drop = m_session.prepare("delete from sys_procedures where NameKey = ?");
    drop.bind(1, std::string_view(lower(name))).step();
    if (sqlite3_changes(m_session.handle()) == 0)
        throw Error(3701, "Cannot drop the procedure '" + name +
                              "', because it does not exist or you do not have permission.");
}

} // namespace zel::ado
