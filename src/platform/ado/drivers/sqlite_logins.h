#pragma once

#include "platform/ado/drivers/sqlite_session.h"
#include "platform/ado/drivers/upkeep.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace zel::ado {

/// A name and its password, as typed. Names ignore case, passwords don't.
struct Credentials {
    std::string name;
    std::string password;
};

/// The logins, users and role members of one file, and the four server procedures that change them. Passwords
/// are kept as Argon2id hashes only.
class SqliteLogins {
public:
    explicit SqliteLogins(SqliteSession &session) : m_session(session) {}

    /// Makes the tables in a new file.
    void createTables();

    /// 18456 for an unknown login and a wrong password alike, after the same work; 4060 for a login that is
    /// neither a user of this catalog nor an administrator. A pair once verified is not hashed again while
    /// the stored hash stands.
    void check(const Credentials &credentials);

    /// How many passwords were held against a hash in this run, which is what a check takes its time for.
    [[nodiscard]] static std::int64_t verified();

    /// Runs sp_addlogin, sp_adduser, sp_addsrvrolemember or sp_password for the login `caller`; nullopt is
    /// the file's owner, who may do anything. 2812 for another procedure, 15247 for a caller without the
    /// right.
    void call(const std::string &procedure, const std::vector<std::optional<std::string>> &arguments,
              const std::optional<std::string> &caller);

    /// Sets a login's password without asking for the old one; 15007 when there is no such login.
    void setPassword(const std::string &name, const std::string &password);
    [[nodiscard]] std::vector<std::string> names();
    /// 15007 when there is no such login.
    void requireLogin(const std::string &name);

    [[nodiscard]] std::vector<Login> all();
    /// One of another catalog, with its hash.
    void add(const Login &login);

private:
    using Arguments = std::vector<std::optional<std::string>>;
    void addLogin(const Arguments &arguments);
    void insertLogin(const std::string &name, const std::string &hash, const std::string &database);
    void addUser(const Arguments &arguments);
    void addRoleMember(const Arguments &arguments);
    void changePassword(const Arguments &arguments, const std::optional<std::string> &caller);

    [[nodiscard]] std::optional<std::string> hashOf(const std::string &name);
    [[nodiscard]] bool isUser(const std::string &name);
    [[nodiscard]] bool isAdministrator(const std::string &name);
    [[nodiscard]] bool verify(const std::string &hash, const std::string &password);

    SqliteSession &m_session;
};

} // namespace zel::ado
