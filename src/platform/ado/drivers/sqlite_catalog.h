#pragma once

#include "platform/ado/drivers/driver.h"
#include "platform/ado/drivers/sqlite_session.h"
#include "platform/tsql/front_end.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace zel::ado {

/// The tables and procedures of a file as the front end asks for them, each read once per state of the
/// schema. The driver's own tables are not among them.
class SqliteCatalog {
public:
    explicit SqliteCatalog(SqliteSession &session) : m_session(session) {}

    /// Lets go of what another program's or our own change of the schema has made old.
    void refresh();
    [[nodiscard]] const tsql::Table *table(std::string_view name);
    [[nodiscard]] bool indexed(const tsql::Table &table, std::string_view first, std::string_view second);
    [[nodiscard]] const std::string *procedure(std::string_view name);

    /// Of texts that name no procedure and no table of the connection's own.
    [[nodiscard]] Readings &readings() { return m_readings; }

    /// 2714 when there is one of that name.
    void storeProcedure(const std::string &name, const std::string &text);
    /// 3701 when there is none.
    void dropProcedure(const std::string &name);

private:
    [[nodiscard]] std::optional<tsql::Table> readTable(const std::string &key);

    SqliteSession &m_session;
    std::optional<std::int64_t> m_version;
    /// What was asked for, by name in lower case; nullopt where there is none of that name.
    std::map<std::string, std::optional<tsql::Table>> m_tables;
    std::map<std::string, std::string> m_procedures;
    Readings m_readings;
};

} // namespace zel::ado
