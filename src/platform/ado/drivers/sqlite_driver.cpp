#include "platform/ado/drivers/sqlite_driver.h"

#include "platform/base/error.h"

#include <algorithm>
#include <utility>

namespace zel::ado {

namespace {

using tsql::StatementKind;


} // namespace

SqliteDriver::SqliteDriver(const std::string &path, SqliteSession::Purpose purpose)
    : m_session(path, purpose), m_catalog(m_session), m_logins(m_session), m_readers(path),
      m_inUse(purpose == SqliteSession::Purpose::Use) {}

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
    write(m_insert.of(table, values), values, std::nullopt);
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
    write(updateText(table, values), values, identity);
    kept()[tsql::RowCountSlot] = sqlite3_changes(m_session.handle());
    return sqlite3_changes(m_session.handle()) > 0;
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
