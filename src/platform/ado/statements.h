#pragma once

#include "platform/ado/drivers/driver.h"
#include "platform/base/sql.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace zel::ado {

/// What one statement left: its rows (a Select's; else null) and the number of rows that it gave or changed.
struct Outcome {
    std::shared_ptr<const RowSet> rows;
    tsql::Statement statement;
    std::int64_t rowsAffected = 0;
};

/// Reads `text` and runs its statements in their order, telling each outcome as it comes. The first that
/// fails ends the run.
void runStatements(Driver &driver, const Sql &text, const std::function<void(Outcome)> &told);

/// A part of a file of statements, and the line of the file that it begins on, counted from 1.
struct Batch {
    std::string text;
    int firstLine = 1;
};
/// The parts of a file between lines that hold GO alone, in any case; those without any text are left out.
[[nodiscard]] std::vector<Batch> batches(std::string_view file);

/// Opens the catalog that a "Data Source" names by its form: "." (the program's folder) or a path that begins
/// with "./", "../" or "/" is an embedded catalog, "postgresql://..." a PostgreSQL server, anything else a
/// SQL Server.
[[nodiscard]] std::unique_ptr<Driver> openCatalog(const QString &dataSource, const QString &user,
                                                  const QString &password);

} // namespace zel::ado
