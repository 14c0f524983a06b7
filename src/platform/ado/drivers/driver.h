#pragma once

#include "platform/ado/drivers/row_set.h"
#include "platform/ado/drivers/upkeep.h"
#include "platform/base/value.h"
#include "platform/tsql/front_end.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zel::ado {

/// A column and what it is to hold, already of the column's type. Both are the caller's.
struct Assignment {
    std::string_view column;
    const Value &value;
};

/// The values of a running batch by slot; NULL for a slot that is not there yet. They are as the engine gave
/// them: whole numbers, floating ones and texts.
using Variables = std::vector<Value>;

/// What texts were read as, by text.
using Readings = std::map<std::string, std::vector<tsql::Statement>, std::less<>>;

/// When a transaction is safe from a power cut: before its commit() returns, or only together with the next
/// commit that is, or at the close. Until then a power cut may undo it, whole.
enum class Durability { Now, Later };

/// The version of the tables that this program knows. A catalog of a later one is not opened (948): what is
/// new in it this program would leave out.
inline constexpr std::int64_t CatalogVersion = 1;

/// One open catalog on one engine. Every failure is an Error with the server's number. A statement that
/// writes commits by itself, except between begin() and commit().
class Driver : public tsql::Catalog {
public:
    Driver() = default;
    Driver(const Driver &) = delete;
    Driver &operator=(const Driver &) = delete;

    [[nodiscard]] virtual const tsql::Traits &traits() const = 0;
    /// Name and version.
    [[nodiscard]] virtual std::string engine() const = 0;

    /// Makes table() and procedure() answer as the catalog stands now, other programs' changes included. To
    /// be called before a statement text is read; pointers that they gave are valid until then.
    virtual void refresh() = 0;

    /// For texts that mean the same until the schema changes; refresh() empties it when it has.
    [[nodiscard]] virtual Readings &readings() = 0;

    /// The rows of a Select: all, read to the end, or the first `most` when that is above 0.
    [[nodiscard]] virtual std::shared_ptr<const RowSet> query(const tsql::Statement &statement,
                                                              const Variables &variables, qsizetype most) = 0;
    /// The same rows, to be read as they are asked for: begun, on a snapshot that no later write changes.
    /// Null where this is not possible; then query() has them.
    [[nodiscard]] virtual std::unique_ptr<RowSource> readOnDemand(const tsql::Statement &statement,
                                                                  const Variables &variables) = 0;
    /// Gives the statement's targets the cells of its rows, row by row, and tells each; the number of rows.
    virtual std::int64_t assign(const tsql::Statement &statement, Variables &variables,
                                const std::function<void()> &told = {}) = 0;
    /// Any other statement that the engine runs; the number of rows that it changed.
    virtual std::int64_t run(const tsql::Statement &statement, const Variables &variables) = 0;
    /// What the last insert into a table with an identity made.
    [[nodiscard]] virtual std::int64_t lastIdentity() const = 0;

    /// Adds a row; the row identity that it got. Columns that are not named take their default.
    virtual std::int64_t insertRow(std::string_view table, std::span<const Assignment> values) = 0;
    /// False when no row has that identity any more.
    [[nodiscard]] virtual bool updateRow(std::string_view table, std::int64_t identity,
                                         std::span<const Assignment> values) = 0;

    virtual void begin(Durability durability) = 0;
    /// A transaction that only reads: until it ends all that is read is of one moment, while others write on.
    virtual void beginReading() = 0;
    [[nodiscard]] virtual bool inTransaction() const = 0;
    virtual void commit() = 0;
    /// Undoes what was written since begin(); can't fail.
    virtual void rollback() noexcept = 0;

    /// What the engine finds wrong with its own storage, a sentence each.
    [[nodiscard]] virtual std::vector<std::string> damage() = 0;
    /// The names of all who may log in.
    [[nodiscard]] virtual std::vector<std::string> loginNames() = 0;
    /// Gathers what query plans need to know about the rows that are there now.
    virtual void analyze() = 0;
    /// What the catalog holds beside its rows. With beginReading() before it, the rows are of the same
    /// moment.
    [[nodiscard]] virtual Inventory inventory() = 0;
    /// All rows of a table, in the order in which a statement without "order by" gives them.
    virtual void readRows(const TableDefinition &table, const std::function<void(Cells)> &told) = 0;
    /// For a table that is there, and empty. `columns` and `lastIdentity` of the definition count.
    [[nodiscard]] virtual std::unique_ptr<RowSink> addRows(const TableDefinition &table) = 0;
    virtual void addLogin(const Login &login) = 0;
    /// Marks the catalog as one of that version; false when it was one.
    virtual bool setVersion(std::int64_t version) = 0;

    /// What stays in its slots from one batch to the next.
    [[nodiscard]] Variables &kept() { return m_kept; }

private:
    Variables m_kept{0, Value(), Value()};
};

} // namespace zel::ado
