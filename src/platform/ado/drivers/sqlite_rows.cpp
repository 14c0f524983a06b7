#include "platform/ado/drivers/sqlite_rows.h"

#include "platform/base/error.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace zel::ado {

namespace {

/// More screens than this have seldom been opened within the second that their lists take.
constexpr std::size_t MostSessions = 4;

class SnapshotReading final : public RowSource {
public:
    SnapshotReading(std::shared_ptr<SqliteSession> session, const tsql::Statement &statement,
                    const Variables &variables)
        : m_session(std::move(session)), m_running(m_session->prepare(statement.sql)),
          m_cells(int(statement.columns.size())) {
        (void)cellsOf(m_running, statement);
        bindVariables(m_running, statement, variables);
    }
    /// The first step takes the snapshot.
    void begin() { m_stepped = m_running.step(); }
    bool append(RowSet &rows) override {
        const bool there = m_stepped ? *std::exchange(m_stepped, std::nullopt) : m_running.step();
        if (there)
            appendRow(rows, m_running, m_cells);
        return there;
    }

private:
    std::shared_ptr<SqliteSession> m_session;
    SqliteSession::Running m_running;
    int m_cells;
    std::optional<bool> m_stepped; ///< what the first step has found, until it is taken
};

void appendCell(RowSet &rows, sqlite3_stmt *statement, int column) {
    switch (sqlite3_column_type(statement, column)) {
    case SQLITE_INTEGER:
        rows.appendInteger(sqlite3_column_int64(statement, column));
        break;
    case SQLITE_FLOAT:
        rows.appendReal(sqlite3_column_double(statement, column));
        break;
    case SQLITE_NULL:
        rows.appendNull();
        break;
    default: {
        const auto *bytes = static_cast<const char *>(sqlite3_column_blob(statement, column));
        const auto length = std::size_t(sqlite3_column_bytes(statement, column));
        if (length > RowSet::LongestText)
            throw Error(8152, "A text of the result is too long.");
        rows.appendText({bytes, length});
    }
    }
}

} // namespace

void bindVariables(SqliteSession::Running &running, const tsql::Statement &statement,
                   const Variables &variables) {
    int parameter = 0;
    for (const tsql::Slot slot : statement.parameters) {
        ++parameter;
        if (slot >= variables.size())
            continue;
        if (const auto *text = std::get_if<std::string>(&variables[slot].storage()))
            running.bind(parameter, std::string_view(*text)); // copied: it may be assigned to meanwhile
        else
            running.bind(parameter, variables[slot]);
    }
}

int cellsOf(const SqliteSession::Running &running, const tsql::Statement &statement) {
    const int cells = sqlite3_column_count(running.get());
    if (cells != int(statement.columns.size()) + (statement.baseTable.empty() ? 0 : 1))
        throw Error(50000, "The engine gives other columns than the statement has.");
    return cells;
}

void appendRow(RowSet &rows, const SqliteSession::Running &running, int cells) {
    for (int column = 0; column < cells; ++column)
        appendCell(rows, running.get(), column);
}

std::shared_ptr<SqliteSession> SqliteReaders::idle() {
    const auto known =
        std::ranges::find_if(m_sessions, [](const auto &session) { return session.use_count() == 1; });
    if (known != m_sessions.end())
        return *known;
    if (m_sessions.size() == MostSessions)
        return nullptr;
    return m_sessions.emplace_back(std::make_shared<SqliteSession>(m_path, SqliteSession::Purpose::Read));
}

std::unique_ptr<RowSource> SqliteReaders::begin(const tsql::Statement &statement,
                                                const Variables &variables) {
    std::unique_ptr<SnapshotReading> reading;
    try {
        if (std::shared_ptr<SqliteSession> session = idle())
            reading = std::make_unique<SnapshotReading>(std::move(session), statement, variables);
    } catch (const Error &) { // the first connection says why, if it fails there, too
    }
    if (!reading)
        return nullptr;
    reading->begin();
    return reading;
}

} // namespace zel::ado
