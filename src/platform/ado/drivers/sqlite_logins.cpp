#include "platform/ado/drivers/sqlite_logins.h"

#include "platform/base/error.h"

#include <QString>

#include <sodium.h>

#include <algorithm>
#include <array>
#include <new>
#include <unordered_map>

namespace zel::ado {

namespace {

using Digest = std::array<unsigned char, crypto_generichash_BYTES>;

/// Names are looked up without regard to case, beyond ASCII too.
std::string key(const std::string &name) {
    return QString::fromStdString(name).toCaseFolded().toStdString();
}

void startSodium() {
    if (sodium_init() < 0)
        throw Error(errors::InvalidCall, "The password library can't be started on this machine.");
}

std::string hashed(const std::string &password) {
    startSodium();
    std::array<char, crypto_pwhash_STRBYTES> hash{};
    if (crypto_pwhash_str(hash.data(), password.data(), password.size(), crypto_pwhash_OPSLIMIT_INTERACTIVE,
                          crypto_pwhash_MEMLIMIT_INTERACTIVE) != 0)
        throw std::bad_alloc();
    return hash.data();
}

/// A digest of the password under a key that lives only in this run.
Digest remembered(const std::string &password) {
    static const auto runKey = [] {
        std::array<unsigned char, crypto_generichash_KEYBYTES> bytes{};
        randombytes_buf(bytes.data(), bytes.size());
        return bytes;
    }();
    Digest digest{};
    crypto_generichash(digest.data(), digest.size(), reinterpret_cast<const unsigned char *>(password.data()),
                       password.size(), runKey.data(), runKey.size());
    return digest;
}

/// What was verified in this run: the stored hash, and the digest of the password that fits it.
std::unordered_map<std::string, Digest> &verifiedPairs() {
    static std::unordered_map<std::string, Digest> pairs;
    return pairs;
}

/// What no password fits, at the cost of a real one.
constexpr char NobodysHash[] =
    "$argon2id$v=19$m=65536,t=2,p=1$cBDd/ZTG/C+UAAZ8DA4KPQ$13zdDS9A8m6DDtxZKGnDBToUP+ujxAADYakEweU+BP0";

std::int64_t hashesVerified = 0;

const std::string &required(const std::vector<std::optional<std::string>> &arguments, std::size_t at,
                            const char *procedure, const char *parameter) {
    if (at >= arguments.size() || !arguments[at])
        throw Error(201, std::string("Procedure or function '") + procedure + "' expects parameter '" +
                             parameter + "', which was not supplied.");
    return *arguments[at];
}

std::string given(const std::vector<std::optional<std::string>> &arguments, std::size_t at) {
    return at < arguments.size() && arguments[at] ? *arguments[at] : std::string();
}

void refuseMoreThan(std::size_t most, const std::vector<std::optional<std::string>> &arguments,
                    const char *procedure) {
    if (arguments.size() > most)
        throw Error(8144,
                    std::string("Procedure or function ") + procedure + " has too many arguments specified.");
}

} // namespace

void SqliteLogins::createTables() {
    const SqliteSession::OwnTables access(m_session);
    m_session.execute(
        "create table sys_logins (NameKey text primary key, Name text not null, Hash text not null,"
        " DefaultDatabase text not null);"
        "create table sys_users (NameKey text primary key, Name text not null);"
        "create table sys_rolemembers (NameKey text, Role text, primary key (NameKey, Role));"
        "create table sys_procedures (NameKey text primary key, Name text not null, Text text not null)");
}

std::optional<std::string> SqliteLogins::hashOf(const std::string &name) {
    const SqliteSession::OwnTables access(m_session);
    SqliteSession::Running found = m_session.prepare("select Hash from sys_logins where NameKey = ?");
    if (!found.bind(1, std::string_view(key(name))).step())
        return std::nullopt;
    return found.text(0);
}

std::vector<std::string> SqliteLogins::names() {
    const SqliteSession::OwnTables access(m_session);
    std::vector<std::string> all;
    SqliteSession::Running logins = m_session.prepare("select Name from sys_logins order by NameKey");
    while (logins.step())
        all.push_back(logins.text(0));
    return all;
}

bool SqliteLogins::isUser(const std::string &name) {
    const SqliteSession::OwnTables access(m_session);
    SqliteSession::Running found = m_session.prepare("select 1 from sys_users where NameKey = ?");
    return found.bind(1, std::string_view(key(name))).step();
}

bool SqliteLogins::isAdministrator(const std::string &name) {
    const SqliteSession::OwnTables access(m_session);
    SqliteSession::Running found =
        m_session.prepare("select 1 from sys_rolemembers where NameKey = ? and Role = 'sysadmin'");
    return found.bind(1, std::string_view(key(name))).step();
}

bool SqliteLogins::verify(const std::string &hash, const std::string &password) {
    startSodium();
    auto &pairs = verifiedPairs();
    if (const auto known = pairs.find(hash); known != pairs.end())
        if (sodium_memcmp(known->second.data(), remembered(password).data(), crypto_generichash_BYTES) == 0)
            return true;
    ++hashesVerified;
    if (crypto_pwhash_str_verify(hash.c_str(), password.data(), password.size()) != 0)
        return false;
    pairs.insert_or_assign(hash, remembered(password));
    return true;
}

std::int64_t SqliteLogins::verified() {
    return hashesVerified;
}

void SqliteLogins::check(const Credentials &credentials) {
    const auto hash = hashOf(credentials.name);
    if (!verify(hash.value_or(NobodysHash), credentials.password) || !hash)
        throw Error(18456, "Login failed for user '" + credentials.name + "'.");
    if (!isUser(credentials.name) && !isAdministrator(credentials.name))
        throw Error(4060, "Cannot open database \"ZEL\" requested by the login. The login failed.");
}

void SqliteLogins::call(const std::string &procedure, const Arguments &arguments,
                        const std::optional<std::string> &caller) {
    const std::string name = key(procedure);
    if (name == "sp_password") {
        changePassword(arguments, caller);
        return;
    }
    if (name != "sp_addlogin" && name != "sp_adduser" && name != "sp_addsrvrolemember")
        throw Error(2812, "Could not find stored procedure '" + procedure + "'.");
    if (caller && !isAdministrator(*caller))
        throw Error(15247, "User does not have permission to perform this action.");
    if (name == "sp_addlogin")
        addLogin(arguments);
    else if (name == "sp_adduser")
        addUser(arguments);
    else
        addRoleMember(arguments);
}

void SqliteLogins::addLogin(const Arguments &arguments) {
    refuseMoreThan(3, arguments, "sp_addlogin");
    const std::string &name = required(arguments, 0, "sp_addlogin", "@loginame");
    if (name.empty())
        throw Error(15005, "The login name must not be empty.");
    if (hashOf(name))
        throw Error(15025, "The server principal '" + name + "' already exists.");
    insertLogin(name, hashed(given(arguments, 1)), given(arguments, 2));
}

void SqliteLogins::insertLogin(const std::string &name, const std::string &hash,
                               const std::string &database) {
    const SqliteSession::OwnTables access(m_session);
    SqliteSession::Running insert = m_session.prepare(
        "insert or ignore into sys_logins (NameKey, Name, Hash, DefaultDatabase) values (?, ?, ?, ?)");
    insert.bind(1, std::string_view(key(name)))
        .bind(2, std::string_view(name))
        .bind(3, std::string_view(hash))
        .bind(4, std::string_view(database))
        .step();
    if (sqlite3_changes(m_session.handle()) == 0)
        throw Error(15025, "The server principal '" + name + "' already exists.");
}

std::vector<Login> SqliteLogins::all() {
    const SqliteSession::OwnTables access(m_session);
    std::vector<Login> found;
    SqliteSession::Running logins = m_session.prepare(
        "select l.Name, l.Hash, l.DefaultDatabase, u.NameKey is not null, l.NameKey from sys_logins l"
        " left join sys_users u on u.NameKey = l.NameKey order by l.rowid");
    while (logins.step()) {
        found.push_back({logins.text(0), logins.text(1), logins.text(2), logins.integer(3) != 0, {}});
        SqliteSession::Running roles =
            m_session.prepare("select Role from sys_rolemembers where NameKey = ? order by Role");
        roles.bind(1, std::string_view(logins.text(4)));
        while (roles.step())
            found.back().roles.push_back(roles.text(0));
    }
    return found;
}

void SqliteLogins::add(const Login &login) {
    insertLogin(login.name, login.hash, login.database);
    if (login.user)
        addUser({login.name});
    for (const std::string &role : login.roles)
        addRoleMember({login.name, role});
}

void SqliteLogins::requireLogin(const std::string &name) {
    if (!hashOf(name))
        throw Error(15007, "'" + name + "' is not a valid login or you do not have permission.");
}

void SqliteLogins::addUser(const Arguments &arguments) {
    refuseMoreThan(2, arguments, "sp_adduser");
    const std::string &name = required(arguments, 0, "sp_adduser", "@loginame");
    requireLogin(name);
    const SqliteSession::OwnTables access(m_session);
    SqliteSession::Running insert =
        m_session.prepare("insert or ignore into sys_users (NameKey, Name) values (?, ?)");
    insert.bind(1, std::string_view(key(name))).bind(2, std::string_view(name)).step();
    if (sqlite3_changes(m_session.handle()) == 0)
        throw Error(15023, "User, group, or role '" + name + "' already exists in the current database.");
}

void SqliteLogins::addRoleMember(const Arguments &arguments) {
    refuseMoreThan(2, arguments, "sp_addsrvrolemember");
    const std::string &name = required(arguments, 0, "sp_addsrvrolemember", "@loginame");
    const std::string &role = required(arguments, 1, "sp_addsrvrolemember", "@rolename");
    static constexpr std::array Roles = {"sysadmin",     "securityadmin", "serveradmin", "setupadmin",
                                         "processadmin", "diskadmin",     "dbcreator",   "bulkadmin"};
    if (std::find(Roles.begin(), Roles.end(), key(role)) == Roles.end())
        throw Error(15402, "'" + role + "' is not a fixed server role.");
    requireLogin(name);
    const SqliteSession::OwnTables access(m_session);
    SqliteSession::Running insert =
        m_session.prepare("insert or ignore into sys_rolemembers (NameKey, Role) values (?, ?)");
    insert.bind(1, std::string_view(key(name))).bind(2, std::string_view(key(role))).step();
}

void SqliteLogins::changePassword(const Arguments &arguments, const std::optional<std::string> &caller) {
    refuseMoreThan(3, arguments, "sp_password");
    required(arguments, 1, "sp_password", "@new");
    const std::string name = arguments.size() > 2 && arguments[2] ? *arguments[2] : caller.value_or("");
    const bool mayAll = !caller || isAdministrator(*caller);
    if (!mayAll && key(name) != key(*caller))
        throw Error(15247, "User does not have permission to perform this action.");
    requireLogin(name);
    const auto &old = arguments.front();
    if (old ? !verify(*hashOf(name), *old) : !mayAll)
        throw Error(15211, "Old (current) password incorrect for user. The password was not changed.");
    setPassword(name, *arguments[1]);
}

void SqliteLogins::setPassword(const std::string &name, const std::string &password) {
    requireLogin(name);
    const std::string hash = hashed(password);
    const SqliteSession::OwnTables access(m_session);
    SqliteSession::Running update = m_session.prepare("update sys_logins set Hash = ? where NameKey = ?");
    update.bind(1, std::string_view(hash)).bind(2, std::string_view(key(name))).step();
}

} // namespace zel::ado
