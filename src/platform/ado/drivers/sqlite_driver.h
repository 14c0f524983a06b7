#pragma once

#include "platform/ado/drivers/driver.h"
#include "platform/ado/drivers/sqlite_catalog.h"
#include "platform/ado/drivers/sqlite_logins.h"
#include "platform/ado/drivers/sqlite_row_texts.h"
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
    /// The same for the file's owner and to read alone: nothing is written to the file, which may be one that
    /// can't be.
    [[nodiscard]] static std::unique_ptr<SqliteDriver> openForReading(const QString &folder);
    /// Makes an empty catalog in the file `path`, which must not exist, for those whom catalogMode()
    /// names. Nothing is safe on the disk before seal().
    [[nodiscard]] static std::unique_ptr<SqliteDriver> make(const QString &path);
    /// Ends the making: the file is whole on the disk and opens with a write-ahead log from now on.
    static void seal(std::unique_ptr<SqliteDriver> made);

    /// Takes the catalog of a folder out of use, for as long as the result lives: nobody can begin to use it,
    /// and its file is whole by itself, without a log. 1222 when a program has it open. Nullptr when the file
    /// is none that the engine can read, so that nobody uses it anyway.
    [[nodiscard]] static std::unique_ptr<SqliteSession> takeOutOfUse(const QString &folder);

    ~SqliteDriver() override;

    [[nodiscard]] const tsql::Traits &traits() const override { return tsql::sqlite(); }
    [[nodiscard]] std::string engine() const override {
        return std::string("SQLite ") + sqlite3_libversion();
    }
    void refresh() override { m_catalog.refresh(); }
    [[nodiscard]] Readings &readings() override { return m_catalog.readings(); }
    [[nodiscard]] const tsql::Table *table(std::string_view name) const override {
        return m_catalog.table(name);
    }
    [[nodiscard]] bool indexed(const tsql::Table &table, std::string_view first,
                               std::string_view second) const override {
        return m_catalog.indexed(table, first, second);
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
    [[nodiscard]] std::vector<std::string> loginNames() override { return m_logins.names(); }
    void analyze() override;
    [[nodiscard]] Inventory inventory() override;
    void readRows(const TableDefinition &table, const std::function<void(Cells)> &told) override;
    [[nodiscard]] std::unique_ptr<RowSink> addRows(const TableDefinition &table) override;
    void addLogin(const Login &login) override { m_logins.add(login); }
    bool setVersion(std::int64_t version) override;
    [[nodiscard]] SqliteLogins &logins() { return m_logins; }
    [[nodiscard]] SqliteSession &session() { return m_session; }

private:
    SqliteDriver(const std::string &path, SqliteSession::Purpose purpose);
    /// Opens a file that is a catalog of this program; 4060 for any other.
    [[nodiscard]] static std::unique_ptr<SqliteDriver> opened(const QString &path,
                                                              SqliteSession::Purpose purpose);
    /// Again when the file was another one before the name meanwhile, as a restored catalog is: who waited
    /// for the old one must not write to it any more.
    [[nodiscard]] static std::unique_ptr<SqliteDriver> openFile(const std::string &path,
                                                                SqliteSession::Purpose purpose);
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
    InsertText m_insert;
    bool m_transaction = false;
    Durability m_durability = Durability::Now; ///< of the open transaction
    bool m_changed = false;                    ///< something that lasts was written
    bool m_inUse = true;                       ///< false while the file is made or only read
};

} // namespace zel::ado
