#pragma once

#include "platform/ado/drivers/driver.h"
#include "platform/ado/drivers/sqlite_catalog.h"
#include "platform/ado/drivers/sqlite_logins.h"
#include "platform/ado/drivers/sqlite_rows.h"
#include "platform/ado/drivers/sqlite_session.h"

#include <QString>

#include <memory>
#include <optional>

namespace zel::ado {

/// The embedded catalog: the file ZEL.db in a folder.
class SqliteDriver final : public Driver {
public:
    static constexpr char FileName[] = "ZEL.db";

    /// Opens the catalog of a folder for a login, or for the file's owner when there are no credentials. 4060
    /// when the folder holds none, 948 when it is of a later version, 3906 when it may only be read, 18456
    /// when the login is refused.
    [[nodiscard]] static std::unique_ptr<SqliteDriver> open(const QString &folder,
                                                            const std::optional<Credentials> &credentials);
    /// Makes an empty catalog in the file `path`, which must not exist, readable by its owner only. Nothing
    /// is safe on the disk before seal().
    [[nodiscard]] static std::unique_ptr<SqliteDriver> make(const QString &path);
    /// Ends the making: the file is whole on the disk and opens with a write-ahead log from now on.
    static void seal(std::unique_ptr<SqliteDriver> made);

    ~SqliteDriver() override;

    [[nodiscard]] const tsql::Traits &traits() const override { return tsql::sqlite(); }
    void refresh() override { m_catalog.refresh(); }
    [[nodiscard]] const tsql::Table *table(std::string_view name) const override {
        return m_catalog.table(name);
    }
    [[nodiscard]] const std::string *procedure(std::string_view name) const override {
        return m_catalog.procedure(name);
    }

    [[nodiscard]] std::shared_ptr<const RowSet> query(const tsql::Statement &statement,
                                                      const Variables &variables, qsizetype most) override;
    [[nodiscard]] std::unique_ptr<RowSource> readOnDemand(const tsql::Statement &statement,
                                                          const Variables &variables) override;
    std::int64_t assign(const tsql::Statement &statement, Variables &variables,
                        const std::function<void()> &told) override;
    [[nodiscard]] std::int64_t lastIdentity() const override {
        return sqlite3_last_insert_rowid(m_session.handle());
    }
    std::int64_t run(const tsql::Statement &statement, const Variables &variables) override;
    std::int64_t insertRow(std::string_view table, std::span<const Assignment> values) override;
    [[nodiscard]] bool updateRow(std::string_view table, std::int64_t identity,
                                 std::span<const Assignment> values) override;
    void begin(Durability durability) override;
    void beginReading() override;
    [[nodiscard]] bool inTransaction() const override { return m_transaction; }
    void commit() override;
    void rollback() noexcept override;

    [[nodiscard]] std::vector<std::string> damage() override;
    void analyze() override;
    /// Marks the catalog as one of CatalogVersion; false when it was one.
    bool setVersion();
    [[nodiscard]] SqliteLogins &logins() { return m_logins; }
    [[nodiscard]] SqliteSession &session() { return m_session; }

private:
    SqliteDriver(const std::string &path, SqliteSession::Purpose purpose);
    /// A statement nested too deeply fails with its own description.
    [[nodiscard]] SqliteSession::Running prepare(const tsql::Statement &statement);
    void requireTransaction() const;
    /// Ends what begin() began.
    void ended() noexcept;
    void write(const std::string &sql, std::span<const Assignment> values,
               std::optional<std::int64_t> identity);

    SqliteSession m_session;
    mutable SqliteCatalog m_catalog; ///< reads a table when it is first asked for
    SqliteLogins m_logins;
    SqliteReaders m_readers;
    std::optional<std::string> m_caller;
    bool m_transaction = false;
    Durability m_durability = Durability::Now; ///< of the open transaction
    bool m_changed = false;                    ///< something that lasts was written
    bool m_inUse = true;                       ///< false while the file is made
};

} // namespace zel::ado
