#include "schema/refresh_catalog.h"

#include "platform/ado/drivers/sqlite_driver.h"
#include "schema/half_made.h"
#include "schema/new_catalog.h"

#include <QDir>

#include <utility>

namespace zel::schema {

namespace {

using ado::SqliteDriver;
using ado::SqliteSession;

struct Definition {
    std::string type; ///< "table" or "index"
    std::string name;
    std::string sql;
};

/// Of all tables and indexes, tables first. The driver's own are alike in every catalog.
std::vector<Definition> definitions(SqliteSession &session) {
    std::vector<Definition> found;
    SqliteSession::Running all = session.prepare("select type, name, sql from sqlite_master where sql is not "
                                                 "null and name not like 'sys!_%' escape '!' "
                                                 "order by type desc, name");
    while (all.step())
        found.push_back({all.text(0), all.text(1), all.text(2)});
    return found;
}

/// '' when there is none of that name.
std::string present(SqliteSession &session, const std::string &name) {
    SqliteSession::Running found =
        session.prepare("select sql from sqlite_master where name = ? collate nocase");
    found.bind(1, std::string_view(name));
    return found.step() ? found.text(0) : std::string();
}

/// A table that is made anew before it is read, so that nothing in it is anybody's.
bool isWorkTable(const std::string &name) {
    return name.starts_with("rpt");
}

/// Indexes of earlier versions that only cost time when rows are written.
constexpr const char *Dropped[] = {"ixDetJVContra", "ixDetJVNumber"};

bool refreshTablesAndIndexes(SqliteSession &pattern, SqliteSession &session) {
    bool changed = false;
    for (const auto &[type, name, sql] : definitions(pattern)) {
        const std::string before = present(session, name);
        const bool isData = type == "table" && !isWorkTable(name);
        if (before == sql || (!before.empty() && isData))
            continue;
        if (!before.empty())
            session.execute(std::string("drop ").append(type).append(" ").append(name).c_str());
        session.execute(sql.c_str());
        changed = true;
    }
    for (const char *name : Dropped) {
        if (present(session, name).empty())
            continue;
        session.execute((std::string("drop index ") + name).c_str());
        changed = true;
    }
    return changed;
}

bool refreshProcedures(SqliteSession &pattern, SqliteSession &session) {
    const SqliteSession::OwnTables patterns(pattern);
    const SqliteSession::OwnTables ours(session);
    bool changed = false;
    SqliteSession::Running all = pattern.prepare("select NameKey, Name, Text from sys_procedures");
    while (all.step()) {
        SqliteSession::Running put = session.prepare(
            "insert into sys_procedures (NameKey, Name, Text) values (?1, ?2, ?3)"
            " on conflict (NameKey) do update set Text = excluded.Text where Text <> excluded.Text");
        for (int column = 0; column < 3; ++column)
            put.bind(column + 1, std::string_view(all.text(column)));
        put.step();
        changed |= sqlite3_changes(session.handle()) > 0;
    }
    return changed;
}

} // namespace

bool refreshCatalog(const QString &folder) {
    const QString place = QDir::cleanPath(QDir().absoluteFilePath(folder));
    const std::unique_ptr<SqliteDriver> driver = SqliteDriver::open(place, std::nullopt);
    const HalfMade pattern(place, false);
    const std::unique_ptr<SqliteDriver> made = SqliteDriver::make(pattern.path());
    made->begin(ado::Durability::Now);
    define(*made);
    made->commit();

    driver->begin(ado::Durability::Now);
    const bool definitions = refreshTablesAndIndexes(made->session(), driver->session());
    const bool procedures = refreshProcedures(made->session(), driver->session());
    const bool version = driver->setVersion(ado::CatalogVersion);
    driver->commit();
    if (definitions)
        driver->analyze();
    return definitions || procedures || version;
}

} // namespace zel::schema
