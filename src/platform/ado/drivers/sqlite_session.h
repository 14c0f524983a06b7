#pragma once

#include "platform/base/value.h"

#include <sqlite3.h>

#include <cstdint>
#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

namespace zel::ado {

/// One open SQLite file with the statements prepared on it. All failures of SQLite, and those of our
/// functions (texts "NUMBER|message"), leave as Error with the server's number.
class SqliteSession {
public:
    /// What a statement waits for a lock that another program holds, before it fails with 1222.
    static constexpr int WaitForLockMs = 6000;

    enum class Purpose { Use, Make, Read };
    /// Use: a file that exists, in WAL with full synchronisation. Make: a new one that nobody else sees yet,
    /// without journal. Read: one that is in use, beside the session that writes it.
    SqliteSession(const std::string &path, Purpose purpose);

    /// A prepared statement in use: bound, stepped, read, and given back when it goes.
    class Running {
    public:
        Running(SqliteSession &session, std::shared_ptr<sqlite3_stmt> statement)
            : m_session(session), m_held(std::move(statement)), m_statement(m_held.get()) {}
        ~Running();
        Running(const Running &) = delete;
        Running &operator=(const Running &) = delete;

        /// Parameters count from 1. A value has to outlive this; a text is copied.
        Running &bind(int parameter, const Value &value);
        Running &bind(int parameter, std::string_view text);
        /// False when there are no more rows.
        bool step() {
            const int code = sqlite3_step(m_statement);
            if (code == SQLITE_ROW)
                return true;
            if (code != SQLITE_DONE)
                m_session.fail(code);
            return false;
        }
        [[nodiscard]] std::string text(int column) const;
        /// A cell as the engine holds it: NULL, a whole number, a floating one or a text.
        [[nodiscard]] Value value(int column) const;
        [[nodiscard]] std::int64_t integer(int column) const {
            return sqlite3_column_int64(m_statement, column);
        }
        [[nodiscard]] sqlite3_stmt *get() const { return m_statement; }

    private:
        SqliteSession &m_session;
        std::shared_ptr<sqlite3_stmt> m_held; ///< outlives its place among the kept statements
        sqlite3_stmt *m_statement;
    };

    /// The prepared statement of that text, kept for the next time. Text of one statement only.
    [[nodiscard]] Running prepare(const std::string &sql);
    /// Statements of ours without parameters and rows.
    void execute(const char *sql);

    /// While one lives, statements reach the program's own tables; all others are refused there.
    class OwnTables {
    public:
        explicit OwnTables(SqliteSession &session) : m_session(session) { ++m_session.m_ownTables; }
        ~OwnTables() { --m_session.m_ownTables; }
        OwnTables(const OwnTables &) = delete;
        OwnTables &operator=(const OwnTables &) = delete;

    private:
        SqliteSession &m_session;
    };
    /// Tables of the engine and of this driver, which no statement of the program's may name.
    [[nodiscard]] static bool isOwnTable(std::string_view name);

    [[nodiscard]] sqlite3 *handle() const { return m_handle.get(); }
    [[nodiscard]] const std::string &path() const { return m_path; }
    [[nodiscard]] bool inTransaction() const { return sqlite3_get_autocommit(m_handle.get()) == 0; }
    [[noreturn]] void fail(int code);

private:
    struct Close {
        void operator()(sqlite3 *handle) const { sqlite3_close_v2(handle); }
    };
    struct Finalize {
        void operator()(sqlite3_stmt *statement) const { sqlite3_finalize(statement); }
    };
    static int authorize(void *session, int action, const char *first, const char *second, const char *,
                         const char *);
    void useWal();

    std::string m_path;
    std::unique_ptr<sqlite3, Close> m_handle;
    struct Prepared {
        std::string text;
        std::shared_ptr<sqlite3_stmt> statement;
    };
    std::list<Prepared> m_statements; ///< the last used first; the last one makes room for a new one
    std::unordered_map<std::string_view, std::list<Prepared>::iterator> m_byText;
    int m_ownTables = 0;
};

} // namespace zel::ado
