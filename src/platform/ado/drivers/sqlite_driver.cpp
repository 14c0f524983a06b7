#include "platform/ado/drivers/sqlite_driver.h"

#include "platform/base/error.h"

#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <utility>

namespace zel::ado {

namespace {

using tsql::StatementKind;

bool may(const QString &path, int access) {
    return ::faccessat(AT_FDCWD, QFile::encodeName(path).constData(), access, AT_EACCESS) == 0;
}

/// The path of the folder's catalog, after all that can be said before SQLite looks at it.
QString catalogFile(const QString &folder) {
    const QFileInfo place(folder);
    if (!place.isDir())
        throw Error(4060, QStringLiteral("There is no folder \"%1\".").arg(folder));
    QString path = place.absoluteFilePath() + u'/' + QLatin1String(SqliteDriver::FileName);
    const QFileInfo file(path);
    if (!file.exists())
        throw Error(4060, QStringLiteral("The folder \"%1\" holds no catalog ZEL.db.").arg(folder));
    if (!file.isFile())
        throw Error(4060, QStringLiteral("\"%1\" is no file.").arg(path));
    if (file.size() == 0)
        throw Error(4060, QStringLiteral("The file \"%1\" is no catalog: it is empty.").arg(path));
    if (!may(path, R_OK))
        throw Error(4060, QStringLiteral("The catalog \"%1\" belongs to \"%2\", who alone may use it.")
                              .arg(path, file.owner()));
    if (!may(path, R_OK | W_OK))
        throw Error(3906, QStringLiteral("The catalog \"%1\" may only be read, not written.").arg(path));
    if (!may(folder, R_OK | W_OK | X_OK))
        throw Error(3906,
                    QStringLiteral("The folder \"%1\" may only be read, not written, so its catalog can't be "
                                   "used.")
                        .arg(folder));
    return path;
}

void appendQuoted(std::string &sql, std::string_view name) {
    sql += '"';
    for (std::size_t quote = name.find('"'); quote != std::string_view::npos; quote = name.find('"')) {
        sql.append(name, 0, quote + 1) += '"';
        name.remove_prefix(quote + 1);
    }
    sql.append(name) += '"';
}

/// Room for the text of most rows, so that it is not moved while it grows.
constexpr std::size_t UsualText = 500;

} // namespace

SqliteDriver::SqliteDriver(const std::string &path, SqliteSession::Purpose purpose)
    : m_session(path, purpose), m_catalog(m_session), m_logins(m_session), m_readers(path),
      m_inUse(purpose == SqliteSession::Purpose::Use) {}

std::unique_ptr<SqliteDriver> SqliteDriver::open(const QString &folder,
                                                 const std::optional<Credentials> &credentials) {
    const QString path = catalogFile(folder);
    std::unique_ptr<SqliteDriver> driver(new SqliteDriver(path.toStdString(), SqliteSession::Purpose::Use));
    {
        SqliteSession::Running ours = driver->m_session.prepare(
            "select count(*), (select user_version from pragma_user_version) from sqlite_master where name in"
            " ('sys_logins', 'sys_users', 'sys_rolemembers', 'sys_procedures')");
        if (!ours.step() || ours.integer(0) != 4)
            throw Error(4060, QStringLiteral("The database \"%1\" is no catalog of this program.").arg(path));
        if (ours.integer(1) > CatalogVersion)
            throw Error(948, QStringLiteral("The catalog \"%1\" is of a later version of the program; please "
                                            "use that one.")
                                 .arg(path));
    }
    if (credentials) {
        driver->m_logins.check(*credentials);
        driver->m_caller = credentials->name;
    }
    driver->m_catalog.refresh();
    return driver;
}

std::unique_ptr<SqliteDriver> SqliteDriver::make(const QString &path) {
    const int file = ::open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (file < 0)
        throw Error(3906, QStringLiteral("The file \"%1\" can't be made: %2.").arg(path, qt_error_string()));
    ::close(file);
    std::unique_ptr<SqliteDriver> driver(new SqliteDriver(path.toStdString(), SqliteSession::Purpose::Make));
    driver->m_logins.createTables();
    driver->setVersion();
    driver->m_catalog.refresh();
    return driver;
}

void SqliteDriver::seal(std::unique_ptr<SqliteDriver> made) {
    const std::string path = made->m_session.path();
    made->m_session.execute("pragma synchronous = full");
    {
        SqliteSession::Running journal = made->m_session.prepare("pragma journal_mode = wal");
        if (!journal.step() || journal.text(0) != "wal")
            throw Error(945, "The catalog \"" + path +
                                 "\" can't be written with a write-ahead log on this file system.");
    }
    made.reset();
    const int file = ::open(path.c_str(), O_RDWR | O_CLOEXEC);
    const bool synced = file >= 0 && ::fsync(file) == 0;
    if (file >= 0)
        ::close(file);
    if (!synced)
        throw Error(823, QStringLiteral("The catalog \"%1\" can't be written: %2.")
                             .arg(QString::fromStdString(path), qt_error_string()));
}

/// A connection that wrote leaves behind what the next run's query plans need, where that is cheap; a failure
/// here harms nobody.
SqliteDriver::~SqliteDriver() {
    if (!m_inUse)
        return;
    rollback();
    if (!m_changed)
        return;
    sqlite3_busy_timeout(m_session.handle(), 0);
    sqlite3_exec(m_session.handle(), "pragma analysis_limit = 400; pragma optimize", nullptr, nullptr,
                 nullptr);
}

SqliteSession::Running SqliteDriver::prepare(const tsql::Statement &statement) {
    try {
        return m_session.prepare(statement.sql);
    } catch (const Error &error) {
        constexpr int TooDeep = 191;
        if (error.number() == TooDeep && !statement.tooDeep.empty())
            throw Error(TooDeep, statement.tooDeep);
        throw;
    }
}

std::shared_ptr<const RowSet> SqliteDriver::query(const tsql::Statement &statement,
                                                  const Variables &variables, qsizetype most) {
    SqliteSession::Running running = prepare(statement);
    bindVariables(running, statement, variables);
    const int cells = cellsOf(running, statement);
    auto rows = std::make_shared<RowSet>(statement.columns, !statement.baseTable.empty());
    while ((most <= 0 || rows->rowsRead() < most) && running.step())
        appendRow(*rows, running, cells);
    rows->finish();
    return rows;
}

/// What is not committed yet, nobody but this connection sees.
std::unique_ptr<RowSource> SqliteDriver::readOnDemand(const tsql::Statement &statement,
                                                      const Variables &variables) {
    return m_inUse && !m_session.inTransaction() ? m_readers.begin(statement, variables) : nullptr;
}

std::int64_t SqliteDriver::assign(const tsql::Statement &statement, Variables &variables,
                                  const std::function<void()> &told) {
    const auto &targets = statement.targets;
    if (!targets.empty())
        variables.resize(std::max<std::size_t>(variables.size(), *std::ranges::max_element(targets) + 1));
    SqliteSession::Running running = prepare(statement);
    bindVariables(running, statement, variables);
    std::int64_t rows = 0;
    while (running.step()) {
        ++rows;
        for (std::size_t column = 0; column < targets.size(); ++column)
            variables[targets[column]] = running.value(int(column));
        if (told)
            told();
    }
    return rows;
}

void SqliteDriver::requireTransaction() const {
    if (m_transaction && !m_session.inTransaction())
        throw Error(3902, "The transaction was undone by an earlier failure.");
}

std::int64_t SqliteDriver::run(const tsql::Statement &statement, const Variables &variables) {
    requireTransaction();
    m_changed |= m_durability == Durability::Now;
    switch (statement.kind) {
    case StatementKind::CreateProcedure:
        m_catalog.storeProcedure(statement.name, statement.text);
        m_catalog.refresh();
        return 0;
    case StatementKind::DropProcedure:
        m_catalog.dropProcedure(statement.name);
        m_catalog.refresh();
        return 0;
    case StatementKind::ServerCall:
        m_logins.call(statement.name, statement.arguments, m_caller);
        return 0;
    case StatementKind::Insert:
    case StatementKind::Update:
    case StatementKind::Delete: {
        SqliteSession::Running running = prepare(statement);
        bindVariables(running, statement, variables);
        while (running.step()) {
        }
        return sqlite3_changes64(m_session.handle());
    }
    default:
        m_session.execute(statement.sql.c_str());
        m_catalog.refresh();
        return 0;
    }
}

void SqliteDriver::write(const std::string &sql, std::span<const Assignment> values,
                         std::optional<std::int64_t> identity) {
    requireTransaction();
    m_changed |= m_durability == Durability::Now;
    const Value row = identity ? Value(*identity) : Value();
    SqliteSession::Running running = m_session.prepare(sql);
    int parameter = 0;
    for (const Assignment &assignment : values)
        running.bind(++parameter, assignment.value);
    if (identity)
        running.bind(++parameter, row);
    running.step();
}

std::int64_t SqliteDriver::insertRow(std::string_view table, std::span<const Assignment> values) {
    std::string sql;
    sql.reserve(UsualText);
    appendQuoted(sql += "insert into ", table);
    if (values.empty()) {
        sql += " default values";
    } else {
        sql += " (";
        for (const Assignment &assignment : values)
            appendQuoted(&assignment == values.data() ? sql : sql += ", ", assignment.column);
        sql += ") values (?";
        for (std::size_t further = 1; further < values.size(); ++further)
            sql += ", ?";
        sql += ')';
    }
    write(sql, values, std::nullopt);
    const std::int64_t identity = lastIdentity();
    const tsql::Table *known = this->table(table);
    const bool makesIdentity = known && std::ranges::any_of(known->columns, &tsql::Column::identity);
    kept()[tsql::RowCountSlot] = 1;
    kept()[tsql::IdentitySlot] = makesIdentity ? Value(identity) : Value();
    if (makesIdentity)
        kept()[tsql::ScopeIdentitySlot] = identity;
    return identity;
}

bool SqliteDriver::updateRow(std::string_view table, std::int64_t identity,
                             std::span<const Assignment> values) {
    std::string sql;
    sql.reserve(UsualText);
    appendQuoted(sql += "update ", table);
    sql += " set ";
    for (const Assignment &assignment : values) {
        appendQuoted(&assignment == values.data() ? sql : sql += ", ", assignment.column);
        sql += " = ?";
    }
    sql += " where rowid = ?";
    write(sql, values, identity);
    kept()[tsql::RowCountSlot] = sqlite3_changes(m_session.handle());
    return sqlite3_changes(m_session.handle()) > 0;
}

bool SqliteDriver::setVersion() {
    {
        SqliteSession::Running version = m_session.prepare("pragma user_version");
        if (version.step() && version.integer(0) == CatalogVersion)
            return false;
    }
    m_session.execute(("pragma user_version = " + std::to_string(CatalogVersion)).c_str());
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

void SqliteDriver::begin(Durability durability) {
    if (m_transaction)
        throw Error(3988, "A transaction is open on this connection already.");
    if (durability == Durability::Later && m_inUse)
        m_session.execute("pragma synchronous = normal");
    m_durability = durability;
    try {
        m_session.prepare("begin immediate").step();
    } catch (...) {
        ended();
        throw;
    }
    m_transaction = true;
}

void SqliteDriver::beginReading() {
    if (m_transaction)
        throw Error(3988, "A transaction is open on this connection already.");
    m_session.prepare("begin").step();
    m_transaction = true;
    m_session.prepare("select 1 from sqlite_master limit 1").step(); // the moment is that of the first read
}

void SqliteDriver::ended() noexcept {
    m_transaction = false;
    if (std::exchange(m_durability, Durability::Now) == Durability::Later && m_inUse)
        sqlite3_exec(m_session.handle(), "pragma synchronous = full", nullptr, nullptr, nullptr);
}

void SqliteDriver::commit() {
    requireTransaction();
    m_session.prepare("commit").step();
    ended();
}

void SqliteDriver::rollback() noexcept {
    if (m_session.inTransaction())
        sqlite3_exec(m_session.handle(), "rollback", nullptr, nullptr, nullptr);
    ended();
}

} // namespace zel::ado
