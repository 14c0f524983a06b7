#pragma once

#include "platform/ado/drivers/driver.h"
#include "platform/base/sql.h"

#include <cstdint>
#include <functional>
#include <memory>

namespace zel::ado {

/// What one written statement left: its rows (the first that it gave; else null), the engine's statement that
/// gave them, and the number of rows that it gave or changed.
struct Outcome {
    std::shared_ptr<const RowSet> rows;
    tsql::Statement statement;
    std::int64_t rowsAffected = 0;
};

/// What is read of each result before it is told.
struct Reading {
    qsizetype most = 0; ///< rows; 0 for all
    /// Nothing of a text that is one Select, where the engine can read its rows as they are asked for. They
    /// carry no row identity, and @@rowcount stays what it was.
    bool onDemand = false;
};

/// Reads `text` and runs its statements in their order, telling each outcome as it comes. The first that
/// fails ends the run; of a procedure that fails nothing stays.
void runStatements(Driver &driver, const Sql &text, const std::function<void(Outcome)> &told,
                   Reading reading = {});

/// Opens the catalog that a "Data Source" names by its form: "." (the program's folder) or a path that begins
/// with "./", "../" or "/" is an embedded catalog, "postgresql://..." a PostgreSQL server, anything else a
/// SQL Server.
[[nodiscard]] std::unique_ptr<Driver> openCatalog(const QString &dataSource, const QString &user,
                                                  const QString &password);
/// 17 for a server that this build can't reach.
void requireReachable(const QString &place);
/// The same for who owns the catalog, and needs no login: `place` is a folder in any form, or
/// "postgresql://...".
[[nodiscard]] std::unique_ptr<Driver> openAsOwner(const QString &place);
/// The same to read alone: nothing is written, not even where it may be.
[[nodiscard]] std::unique_ptr<Driver> openForReading(const QString &place);

} // namespace zel::ado
