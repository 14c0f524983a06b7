// What an embedded catalog is made of, given and taken.

#include "platform/ado/drivers/sqlite_driver.h"
#include "platform/base/error.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace zel::ado {

namespace {

std::string bracketed(const std::string &name) {
    std::string text = "[";
    for (const char letter : name)
        text.append(letter == ']' ? 2 : 1, letter);
    return text + ']';
}

std::string quoted(const std::string &name) {
    std::string text = "\"";
    for (const char letter : name)
        text.append(letter == '"' ? 2 : 1, letter);
    return text + '"';
}

std::string list(const std::vector<std::string> &names, std::string (*written)(const std::string &)) {
    std::string text;
    for (const std::string &name : names)
        text += (text.empty() ? "" : ", ") + written(name);
    return text;
}

/// A type that another program declared is a text here. The engine tells some types in capitals.
std::string declared(std::string type) {
    std::ranges::transform(type, type.begin(),
                           [](char c) { return c >= 'A' && c <= 'Z' ? char(c + 32) : c; });
    return tsql::parseType(type) ? type : "varchar(max)";
}

struct Index {
    std::string name;
    bool unique;
    bool constraint; ///< a part of the table's definition
    bool partial;
};

std::vector<Index> indexesOf(SqliteSession &session, const std::string &table) {
    std::vector<Index> found;
    SqliteSession::Running all =
        session.prepare("select name, \"unique\", origin <> 'c', partial from pragma_index_list(?)"
                        " order by seq desc");
    all.bind(1, std::string_view(table));
    while (all.step())
        found.push_back({all.text(0), all.integer(1) != 0, all.integer(2) != 0, all.integer(3) != 0});
    return found;
}

/// The indexed columns as the dialect writes them; none when one of them is an expression.
std::vector<std::string> indexedColumns(SqliteSession &session, const std::string &index) {
    std::vector<std::string> found;
    SqliteSession::Running all =
        session.prepare("select cid, name, \"desc\" from pragma_index_xinfo(?) where \"key\" order by seqno");
    all.bind(1, std::string_view(index));
    while (all.step()) {
        if (all.integer(0) < 0)
            return {};
        found.push_back(bracketed(all.text(1)) + (all.integer(2) != 0 ? " desc" : ""));
    }
    return found;
}

/// What a partial index holds: "[SubID] is not null" of what the writer wrote; '' for anything else.
std::string filterOf(SqliteSession &session, const std::string &index) {
    SqliteSession::Running made = session.prepare("select sql from sqlite_master where name = ?");
    made.bind(1, std::string_view(index));
    if (!made.step())
        return {};
    const std::string sql = made.text(0);
    constexpr std::string_view Where = " WHERE ";
    const std::size_t at = sql.rfind(Where);
    if (at == std::string::npos)
        return {};
    std::string filter = sql.substr(at + Where.size());
    for (const std::string_view end : {" IS NOT NULL", " IS NULL"}) {
        if (!filter.ends_with(end))
            continue;
        std::string column = filter.substr(0, filter.size() - end.size());
        std::erase(column, '"');
        return bracketed(column) + std::string(end);
    }
    return {};
}

/// In the order in which they were made; the engine's and the driver's own are not among them.
std::vector<std::string> names(SqliteSession &session, const char *condition) {
    std::vector<std::string> found;
    SqliteSession::Running all = session.prepare(
        std::string("select name from sqlite_master where name not like 'sqlite!_%' escape '!' and ") +
        condition + " order by rowid");
    while (all.step())
        if (!SqliteSession::isOwnTable(all.text(0)))
            found.push_back(all.text(0));
    return found;
}

TableDefinition definition(SqliteSession &session, const std::string &name,
                           std::vector<std::string> &leftOut) {
    TableDefinition table;
    table.name = name;
    std::string columns;
    SqliteSession::Running all =
        session.prepare("select c.name, c.type, c.\"notnull\", c.pk, instr(upper(t.sql), 'AUTOINCREMENT')"
                        " from sqlite_master t, pragma_table_info(t.name) c where t.type = 'table' and"
                        " t.name = ? order by c.cid");
    all.bind(1, std::string_view(name));
    bool identity = false;
    while (all.step()) {
        const std::string column = all.text(0);
        const bool isKey = all.integer(3) != 0;
        table.columns.push_back(column);
        columns += (columns.empty() ? "" : ", ") + bracketed(column) + ' ';
        if (isKey && all.integer(4) != 0) {
            columns += "int identity(1,1) not null primary key";
            identity = true;
        } else {
            columns += declared(all.text(1)) + (all.integer(2) != 0 ? " not null" : " null");
        }
    }
    for (const Index &index : indexesOf(session, name)) {
        const std::vector<std::string> indexed = indexedColumns(session, index.name);
        const std::string filter = index.partial ? filterOf(session, index.name) : std::string();
        const std::string on = '(' + list(indexed, [](const std::string &column) { return column; }) + ')';
        if (index.constraint)
            columns += ", primary key " + on;
        else if (indexed.empty() || (index.partial && filter.empty()))
            leftOut.push_back("index " + index.name);
        else
            table.indexes.push_back((index.unique ? "create unique index " : "create index ") +
                                    bracketed(index.name) + " on " + bracketed(name) + ' ' + on +
                                    (filter.empty() ? "" : " where " + filter));
    }
    table.statement = "create table " + bracketed(name) + " (" + columns + ')';
    SqliteSession::Running count = session.prepare("select count(*) from " + quoted(name));
    count.step();
    table.rows = count.integer(0);
    if (identity) {
        SqliteSession::Running last = session.prepare("select seq from sqlite_sequence where name = ?");
        table.lastIdentity = last.bind(1, std::string_view(name)).step() ? last.integer(0) : 0;
    }
    return table;
}

std::int64_t versionOf(SqliteSession &session) {
    SqliteSession::Running version = session.prepare("pragma user_version");
    return version.step() ? version.integer(0) : 0;
}

/// A number as the plain text that every engine gives, in `room`.
std::string_view plain(double number, std::array<char, 32> &room) {
    if (!std::isfinite(number))
        return number < 0 ? "-9e999" : "9e999"; // as SQLite's own tools write what it reads as infinite
    if (number == 0)
        return "0";
    const auto end = std::to_chars(room.data(), room.data() + room.size(), number).ptr;
    return {room.data(), std::size_t(end - room.data())};
}

class SqliteSink final : public RowSink {
public:
    SqliteSink(SqliteSession &session, const TableDefinition &table, const tsql::Table &known)
        : m_session(session), m_table(table.name), m_lastIdentity(table.lastIdentity) {
        std::string places;
        for (const std::string &name : table.columns) {
            places += places.empty() ? "?" : ",?";
            for (const tsql::Column &column : known.columns)
                if (column.name == name)
                    m_isText.push_back(tsql::isText(column.type));
        }
        if (m_isText.size() != table.columns.size())
            throw Error(207, "The table " + table.name + " has not all the columns of the rows.");
        m_insert = "insert into " + quoted(table.name) + " (" + list(table.columns, quoted) + ") values (" +
                   places + ')';
    }

    void add(Cells row) override {
        SqliteSession::Running running = m_session.prepare(m_insert);
        for (std::size_t column = 0; column < row.size(); ++column)
            if (row[column])
                bind(running.get(), int(column) + 1, *row[column], m_isText.at(column));
        running.step();
    }

    void finish() override {
        if (!m_lastIdentity || *m_lastIdentity == 0)
            return;
        m_session.prepare("delete from sqlite_sequence where name = ?")
            .bind(1, std::string_view(m_table))
            .step();
        m_session.prepare("insert into sqlite_sequence (name, seq) values (?, ?)")
            .bind(1, std::string_view(m_table))
            .bind(2, Value(*m_lastIdentity))
            .step();
    }

private:
    void bind(sqlite3_stmt *statement, int parameter, std::string_view cell, bool isText) {
        // A number is read here, since the engine's own reading of one is not exact to the last bit.
        const bool number =
            !isText && !cell.empty() && (cell[0] == '-' || (cell[0] >= '0' && cell[0] <= '9'));
        const char *end = cell.data() + cell.size();
        int code = SQLITE_OK;
        std::int64_t whole = 0;
        double real = 0;
        if (const auto read = std::from_chars(cell.data(), end, whole);
            number && read.ec == std::errc() && read.ptr == end)
            code = sqlite3_bind_int64(statement, parameter, whole);
        else if (const auto other = std::from_chars(cell.data(), end, real);
                 number && other.ec == std::errc() && other.ptr == end)
            code = sqlite3_bind_double(statement, parameter, real);
        else
            code = sqlite3_bind_text64(statement, parameter, cell.data() ? cell.data() : "", cell.size(),
                                       SQLITE_STATIC, SQLITE_UTF8);
        if (code != SQLITE_OK)
            m_session.fail(code);
    }

    SqliteSession &m_session;
    std::string m_table;
    std::string m_insert;
    std::vector<bool> m_isText; ///< by column
    std::optional<std::int64_t> m_lastIdentity;
};

} // namespace

bool SqliteDriver::setVersion(std::int64_t version) {
    if (versionOf(m_session) == version)
        return false;
    m_session.execute(("pragma user_version = " + std::to_string(version)).c_str());
    return true;
}

std::vector<std::string> SqliteDriver::damage() {
    std::vector<std::string> found;
    SqliteSession::Running integrity = m_session.prepare("pragma integrity_check(20)");
    while (integrity.step())
        if (std::string line = integrity.text(0); line != "ok")
            found.push_back("The file is damaged: " + line + '.');
    return found;
}

void SqliteDriver::analyze() {
    m_session.execute("pragma analysis_limit = 0; analyze");
}

Inventory SqliteDriver::inventory() {
    const SqliteSession::OwnTables access(m_session);
    Inventory found;
    found.engine = "SQLite";
    found.version = versionOf(m_session);
    for (const std::string &name : names(m_session, "type = 'table'"))
        found.tables.push_back(definition(m_session, name, found.leftOut));
    for (const char *kind : {"view", "trigger"})
        for (const std::string &name : names(m_session, ("type = '" + std::string(kind) + '\'').c_str()))
            found.leftOut.push_back(std::string(kind) + ' ' + name);
    SqliteSession::Running procedures = m_session.prepare("select Text from sys_procedures order by rowid");
    while (procedures.step())
        found.procedures.push_back(procedures.text(0));
    found.logins = m_logins.all();
    return found;
}

void SqliteDriver::readRows(const TableDefinition &table, const std::function<void(Cells)> &told) {
    SqliteSession::Running rows = m_session.prepare("select " + list(table.columns, quoted) + " from " +
                                                    quoted(table.name) + " not indexed");
    sqlite3_stmt *engine = rows.get();
    std::vector<std::optional<std::string_view>> cells(table.columns.size());
    std::vector<std::array<char, 32>> numbers(cells.size());
    while (rows.step()) {
        for (std::size_t column = 0; column < cells.size(); ++column) {
            const int at = int(column);
            switch (sqlite3_column_type(engine, at)) {
            case SQLITE_NULL:
                cells[column].reset();
                break;
            case SQLITE_FLOAT:
                cells[column] = plain(sqlite3_column_double(engine, at), numbers[column]);
                break;
            default: // the engine keeps the text until the next row
                const auto *bytes = reinterpret_cast<const char *>(sqlite3_column_text(engine, at));
                cells[column].emplace(bytes ? bytes : "", std::size_t(sqlite3_column_bytes(engine, at)));
            }
        }
        told(cells);
    }
}

std::unique_ptr<RowSink> SqliteDriver::addRows(const TableDefinition &table) {
    const tsql::Table *known = this->table(table.name);
    if (!known)
        throw Error(208, "Invalid object name '" + table.name + "'.");
    m_changed = true;
    return std::make_unique<SqliteSink>(m_session, table, *known);
}

} // namespace zel::ado
