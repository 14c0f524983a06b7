#include "platform/ado/drivers/sqlite_session.h"

#include "platform/ado/drivers/sqlite_functions.h"
#include "platform/ado/drivers/sqlite_log_file.h"
#include "platform/base/date_text.h"
#include "platform/base/error.h"
#include "platform/tsql/reading/failure.h"

#include <QUrl>

#include <array>
#include <charconv>
#include <cstdio>
#include <system_error>

namespace zel::ado {

namespace {

constexpr std::size_t MostStatements = 64;

constexpr std::array OwnNames = {"sys_logins", "sys_users", "sys_rolemembers", "sys_procedures"};

/// A whole number as INTEGER, any other as the nearest REAL: the file holds plain numbers. Error 8115 for one
/// whose hundredths would be lost, which begins at 70 million millions.
int bindDecimal(sqlite3_stmt *statement, int parameter, Decimal number) {
    if (number.isWhole())
        return sqlite3_bind_int64(statement, parameter, number.tenThousandths() / Decimal::Scale);
    const double nearest = number.toDouble();
    if (Decimal::fromDouble(nearest) != number)
        throw Error(8115,
                    std::string("Arithmetic overflow error converting expression to data type numeric."));
    return sqlite3_bind_double(statement, parameter, nearest);
}

/// "NUMBER|message" of our functions, split; number 0 when the text has another form.
std::pair<int, std::string> numbered(const std::string &text) {
    int number = 0;
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (failure != std::errc() || end == text.data() + text.size() || *end != '|')
        return {0, text};
    return {number, text.substr(std::size_t(end - text.data()) + 1)};
}

/// "DetJV.VouNo" of "NOT NULL constraint failed: DetJV.VouNo".
std::pair<std::string, std::string> failedColumn(const std::string &message) {
    const std::size_t colon = message.rfind(": ");
    const std::size_t point = message.rfind('.');
    if (colon == std::string::npos || point == std::string::npos || point < colon)
        return {};
    return {message.substr(colon + 2, point - colon - 2), message.substr(point + 1)};
}

/// "table" and "T" of "table "T" already exists", "index" and "I" of "index I already exists".
std::pair<std::string, std::string> existing(const std::string &message) {
    constexpr std::string_view End = " already exists";
    const std::size_t blank = message.find(' ');
    if (!message.ends_with(End) || blank >= message.size() - End.size())
        return {};
    std::string name = message.substr(blank + 1, message.size() - End.size() - blank - 1);
    std::erase(name, '"');
    return {message.substr(0, blank), name};
}

/// ", No space left on device"; '' when the system said nothing.
std::string systemReason(sqlite3 *handle) {
    const int reason = handle ? sqlite3_system_errno(handle) : 0;
    return reason != 0 ? ", " + std::generic_category().message(reason) : std::string();
}

} // namespace

SqliteSession::SqliteSession(const std::string &path, Purpose purpose) : m_path(path) {
    sqlite3 *handle = nullptr;
    const bool reads = purpose == Purpose::Read || purpose == Purpose::ReadSealed;
    const QByteArray sealed =
        QUrl::fromLocalFile(QString::fromStdString(path)).toEncoded() + QByteArrayLiteral("?immutable=1");
    const int code =
        sqlite3_open_v2(purpose == Purpose::ReadSealed ? sealed.constData() : path.c_str(), &handle,
                        (reads ? SQLITE_OPEN_READONLY | SQLITE_OPEN_URI : SQLITE_OPEN_READWRITE) |
                            SQLITE_OPEN_EXRESCODE | SQLITE_OPEN_NOMUTEX,
                        gatheringVfs());
    m_handle.reset(handle);
    if (code != SQLITE_OK)
        fail(code);
    sqlite3_busy_timeout(handle, WaitForLockMs);
    dropUndonePages(handle);
    registerFunctions(handle);
    if (purpose == Purpose::Use)
        useWal();
    else if (purpose == Purpose::TakeOut)
        execute("pragma busy_timeout = 0; pragma locking_mode = exclusive; pragma journal_mode = delete;"
                "begin exclusive");
    else if (purpose == Purpose::Make)
        execute("pragma journal_mode = off; pragma synchronous = off");
    execute("pragma temp_store = memory; pragma trusted_schema = off");
    // Lists are read in the order of an index, so that a few pages are in turn.
    execute(purpose == Purpose::Read ? "pragma cache_size = -8192" : "pragma cache_size = -32768");
    sqlite3_set_authorizer(handle, authorize, this);
}

void SqliteSession::useWal() {
    Running journal = prepare("pragma journal_mode = wal");
    if (!journal.step() || journal.text(0) != "wal")
        throw Error(945, "The catalog \"" + m_path +
                             "\" can't be written with a write-ahead log on this file system.");
    execute("pragma synchronous = full; pragma wal_autocheckpoint = 1000");
}

bool SqliteSession::isOwnTable(std::string_view name) {
    if (name.size() >= 7 && sqlite3_strnicmp(name.data(), "sqlite_", 7) == 0)
        return true;
    for (const std::string_view own : OwnNames)
        if (name.size() == own.size() && sqlite3_strnicmp(name.data(), own.data(), int(own.size())) == 0)
            return true;
    return false;
}

int SqliteSession::authorize(void *session, int action, const char *first, const char *second, const char *,
                             const char *) {
    if (static_cast<SqliteSession *>(session)->m_ownTables > 0 || action == SQLITE_ANALYZE)
        return SQLITE_OK;
    for (const char *name : {first, second})
        if (name && sqlite3_strnicmp(name, "sys_", 4) == 0 && isOwnTable(name))
            return SQLITE_DENY;
    return action == SQLITE_ATTACH || action == SQLITE_DETACH ? SQLITE_DENY : SQLITE_OK;
}

SqliteSession::Running SqliteSession::prepare(const std::string &sql) {
    if (const auto known = m_byText.find(sql); known != m_byText.end()) {
        m_statements.splice(m_statements.begin(), m_statements, known->second);
        return {*this, known->second->statement};
    }
    sqlite3_stmt *prepared = nullptr;
    const int code = sqlite3_prepare_v3(m_handle.get(), sql.c_str(), int(sql.size()),
                                        SQLITE_PREPARE_PERSISTENT, &prepared, nullptr);
    if (code != SQLITE_OK)
        fail(code);
    const std::shared_ptr<sqlite3_stmt> statement(prepared, Finalize());
    if (m_statements.size() >= MostStatements) {
        m_byText.erase(m_statements.back().text);
        m_statements.pop_back();
    }
    m_statements.push_front({sql, statement});
    m_byText.emplace(m_statements.front().text, m_statements.begin());
    return {*this, statement};
}

void SqliteSession::execute(const char *sql) {
    const int code = sqlite3_exec(m_handle.get(), sql, nullptr, nullptr, nullptr);
    if (code != SQLITE_OK)
        fail(code);
}

void SqliteSession::fail(int code) {
    const std::string message = m_handle ? sqlite3_errmsg(m_handle.get()) : sqlite3_errstr(code);
    const std::string file = '"' + m_path + '"';
    if (const auto [number, text] = numbered(message); number != 0)
        throw Error(number, text);
    switch (code & 0xff) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        throw Error(1222, "Another program has held the catalog " + file + " for too long.");
    case SQLITE_FULL:
        throw Error(1105, "The catalog " + file + " can't be written because the disk is full.");
    case SQLITE_READONLY:
    case SQLITE_PERM:
        throw Error(3906, "The catalog " + file + " may only be read, not written.");
    case SQLITE_CANTOPEN:
        throw Error(4060, "The catalog " + file + " can't be opened.");
    case SQLITE_NOTADB:
        throw Error(4060, "The file " + file + " is no catalog: it holds no database.");
    case SQLITE_CORRUPT:
        throw Error(824, "The catalog " + file + " is damaged: " + message + '.');
    case SQLITE_IOERR:
        throw Error(823, "The catalog " + file + " can't be read or written: " + message +
                             systemReason(m_handle.get()) + '.');
    case SQLITE_NOMEM:
        throw Error(701, "There is not enough memory for this statement.");
    case SQLITE_AUTH:
        throw Error(229, "The permission was denied on a table of the catalog's own.");
    case SQLITE_TOOBIG:
        throw Error(8152, "String or binary data would be truncated.");
    default:
        break;
    }
    if (code == SQLITE_CONSTRAINT_NOTNULL) {
        const auto [table, column] = failedColumn(message);
        throw Error(515, "Cannot insert the value NULL into column '" + column + "', table '" + table +
                             "'; column does not allow nulls.");
    }
    if (code == SQLITE_CONSTRAINT_UNIQUE || code == SQLITE_CONSTRAINT_PRIMARYKEY ||
        code == SQLITE_CONSTRAINT_ROWID)
        throw Error(2627, "Violation of a unique key: " + message + '.');
    if (message == "parser stack overflow" || message.starts_with("Expression tree is too large"))
        throw Error(191, std::string(tsql::TooDeep));
    if (message == "at most 64 tables in a join")
        throw Error(106, std::string("Too many table names in the query. The maximum allowable is 64."));
    if (code == SQLITE_ERROR && message.find("too many ") != std::string::npos)
        throw Error(8623, std::string("The query processor ran out of internal resources and could not "
                                      "produce a query plan. Simplify the query."));
    // What a batch makes or drops on a way that it does not take is known to its other statements.
    constexpr std::string_view NoTable = "no such table: ";
    if (message.starts_with(NoTable))
        throw Error(208, "Invalid object name '" + message.substr(NoTable.size()) + "'.");
    if (const auto [kind, name] = existing(message); !kind.empty()) {
        if (kind == "index")
            throw Error(1913, "The operation failed because an index or statistics with name '" + name +
                                  "' already exists on the table.");
        throw Error(2714, "There is already an object named '" + name + "' in the database.");
    }
    if (message == "integer overflow") // of the engine's own sum and abs
        throw Error(8115,
                    std::string("Arithmetic overflow error converting expression to data type bigint."));
    throw Error(50000, message);
}

SqliteSession::Running::~Running() {
    sqlite3_reset(m_statement);
    sqlite3_clear_bindings(m_statement);
}

SqliteSession::Running &SqliteSession::Running::bind(int parameter, std::string_view text) {
    const int code =
        sqlite3_bind_text64(m_statement, parameter, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
    if (code != SQLITE_OK)
        m_session.fail(code);
    return *this;
}

SqliteSession::Running &SqliteSession::Running::bind(int parameter, const Value &value) {
    int code = SQLITE_OK;
    const auto &held = value.storage();
    if (const auto *whole = std::get_if<std::int64_t>(&held))
        code = sqlite3_bind_int64(m_statement, parameter, *whole);
    else if (const auto *exact = std::get_if<Decimal>(&held))
        code = bindDecimal(m_statement, parameter, *exact);
    else if (const auto *real = std::get_if<double>(&held))
        code = sqlite3_bind_double(m_statement, parameter, *real);
    else if (const auto *text = std::get_if<std::string>(&held))
        code = sqlite3_bind_text64(m_statement, parameter, text->data(), text->size(), SQLITE_STATIC,
                                   SQLITE_UTF8);
    else if (const auto *moment = std::get_if<DateTime>(&held))
        return bind(parameter, storedDate(*moment).text());
    else
        code = sqlite3_bind_null(m_statement, parameter);
    if (code != SQLITE_OK)
        m_session.fail(code);
    return *this;
}

Value SqliteSession::Running::value(int column) const {
    switch (sqlite3_column_type(m_statement, column)) {
    case SQLITE_NULL:
        return {};
    case SQLITE_INTEGER:
        return integer(column);
    case SQLITE_FLOAT:
        return sqlite3_column_double(m_statement, column);
    default:
        return text(column);
    }
}

std::string SqliteSession::Running::text(int column) const {
    const auto *bytes = reinterpret_cast<const char *>(sqlite3_column_text(m_statement, column));
    return bytes ? std::string(bytes, std::size_t(sqlite3_column_bytes(m_statement, column))) : std::string();
}

} // namespace zel::ado
