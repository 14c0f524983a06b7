#pragma once

#include "platform/ado/drivers/driver.h"
#include "platform/ado/drivers/sqlite_session.h"

#include <memory>
#include <string>
#include <vector>

namespace zel::ado {

void bindVariables(SqliteSession::Running &running, const tsql::Statement &statement,
                   const Variables &variables);
/// The number of cells in a row, with the row identity behind an editable result's columns.
[[nodiscard]] int cellsOf(const SqliteSession::Running &running, const tsql::Statement &statement);
/// Appends the first `cells` of the row that was stepped to.
void appendRow(RowSet &rows, const SqliteSession::Running &running, int cells);

/// The connections on which rows are read on demand, each for one result at a time: the read transaction that
/// its statement begins is the snapshot. A result that outlives these keeps its connection.
class SqliteReaders {
public:
    explicit SqliteReaders(std::string path) : m_path(std::move(path)) {}
    /// Null for a statement that means something on the first connection only, as one that reads a temporary
    /// table does, and while as many results as we have connections for are on their way.
    [[nodiscard]] std::unique_ptr<RowSource> begin(const tsql::Statement &statement,
                                                   const Variables &variables);

private:
    [[nodiscard]] std::shared_ptr<SqliteSession> idle();

    std::string m_path;
    std::vector<std::shared_ptr<SqliteSession>> m_sessions;
};

} // namespace zel::ado
