#include "written_tables.h"

#include "fuzzing.h"
#include "platform/ado/drivers/sqlite_functions.h"
#include "platform/tsql/reading/lexer.h"

#include <sqlite3.h>

#include <algorithm>
#include <fstream>
#include <sstream>

namespace zel::fuzz {

namespace {

std::string key(std::string_view name) {
    std::string lower(name);
    std::ranges::transform(lower, lower.begin(), tsql::lowered);
    return lower;
}

} // namespace

WrittenTables &WrittenTables::institute() {
    static WrittenTables tables;
    return tables;
}

WrittenTables::WrittenTables() {
    sqlite3_open(":memory:", &m_db);
    ado::registerFunctions(m_db);
    for (const char *file : {"tables.sql", "procedures.sql"}) {
        std::ostringstream script;
        script << std::ifstream(std::string(ZEL_SOURCE_DIR "/schema/") + file).rdbuf();
        run(script.str());
    }
}

WrittenTables::~WrittenTables() {
    sqlite3_close(m_db);
}

void WrittenTables::run(std::string_view script) {
    for (const std::string_view batch : tsql::batches(script)) {
        for (const tsql::Statement &statement : tsql::translate(Sql::trusted(batch), *this, tsql::sqlite())) {
            if (statement.kind == tsql::StatementKind::CreateProcedure) {
                store(statement.name, statement.text);
                continue;
            }
            if (sqlite3_exec(m_db, statement.sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK)
                broken("the engine takes the schema", sqlite3_errmsg(m_db));
            if (statement.kind != tsql::StatementKind::CreateTable)
                continue;
            tsql::Table &made = m_tables[key(statement.name)];
            made.name = statement.name;
            sqlite3_stmt *columns = nullptr;
            const std::string list = "select name, type, \"notnull\", pk from pragma_table_info(?)";
            sqlite3_prepare_v2(m_db, list.c_str(), -1, &columns, nullptr);
            sqlite3_bind_text(columns, 1, made.name.c_str(), -1, SQLITE_STATIC);
            const auto cell = [&](int i) {
                return std::string(reinterpret_cast<const char *>(sqlite3_column_text(columns, i)));
            };
            while (sqlite3_step(columns) == SQLITE_ROW) {
                const bool identity = sqlite3_column_int(columns, 3) != 0;
                made.columns.push_back({cell(0), *tsql::parseType(cell(1)),
                                        sqlite3_column_int(columns, 2) == 0 && !identity, identity});
            }
            sqlite3_finalize(columns);
        }
    }
}

const tsql::Table *WrittenTables::table(std::string_view name) const {
    const auto found = m_tables.find(key(name));
    return found == m_tables.end() ? nullptr : &found->second;
}

const std::string *WrittenTables::procedure(std::string_view name) const {
    const auto found = m_procedures.find(key(name));
    return found == m_procedures.end() ? nullptr : &found->second;
}

void WrittenTables::store(std::string_view procedure, const std::string &text) {
    m_procedures[key(procedure)] = text;
}

void WrittenTables::drop(std::string_view procedure) {
    m_procedures.erase(key(procedure));
}

std::string WrittenTables::refusal(const std::string &statement) const {
    sqlite3_stmt *prepared = nullptr;
    const int code = sqlite3_prepare_v2(m_db, statement.c_str(), int(statement.size()), &prepared, nullptr);
    sqlite3_finalize(prepared);
    return code == SQLITE_OK ? std::string() : sqlite3_errmsg(m_db);
}

void WrittenTables::check(const Sql &text) const {
    std::vector<tsql::Statement> statements;
    if (!accepted([&] { statements = tsql::translate(text, *this, tsql::sqlite()); }))
        return;
    for (const tsql::Statement &statement : statements) {
        if (statement.sql.empty())
            continue;
        if (statement.kind != tsql::StatementKind::Select && statement.kind != tsql::StatementKind::Insert &&
            statement.kind != tsql::StatementKind::Update && statement.kind != tsql::StatementKind::Delete)
            return; // what follows may read what this one makes
        if (const std::string message = refusal(statement.sql); !message.empty())
            broken("the engine takes what was written for it: " + message, statement.sql);
    }
}

} // namespace zel::fuzz
