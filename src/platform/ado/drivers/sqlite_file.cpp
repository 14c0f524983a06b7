// The file of an embedded catalog: opened, made, taken out of use.

#include "platform/ado/drivers/catalog_sharing.h"
#include "platform/ado/drivers/sqlite_driver.h"
#include "platform/base/error.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zel::ado {

namespace {

bool may(const QString &path, int access) {
    return ::faccessat(AT_FDCWD, QFile::encodeName(path).constData(), access, AT_EACCESS) == 0;
}

/// The path of the folder's catalog, which may be read, after all that can be said before SQLite looks at it.
QString readableFile(const QString &folder) {
    const QFileInfo place(folder);
    if (!place.isDir())
        throw Error(4060, QStringLiteral("There is no folder \"%1\".").arg(folder));
    if (!may(folder, X_OK))
        throw Error(4060, whoMayEnter(folder));
    QString path = place.absoluteFilePath() + u'/' + QLatin1String(SqliteDriver::FileName);
    const QFileInfo file(path);
    if (!file.exists())
        throw Error(4060, QStringLiteral("The folder \"%1\" holds no catalog ZEL.db.").arg(folder));
    if (!file.isFile())
        throw Error(4060, QStringLiteral("\"%1\" is no file.").arg(path));
    if (file.size() == 0)
        throw Error(4060, QStringLiteral("The file \"%1\" is no catalog: it is empty.").arg(path));
    if (!may(path, R_OK))
        throw Error(4060, QStringLiteral("The catalog \"%1\" belongs to \"%2\", who alone may use it.")
                              .arg(path, file.owner()));
    return path;
}

/// The same of one that may be written.
QString catalogFile(const QString &folder) {
    QString path = readableFile(folder);
    if (!may(path, R_OK | W_OK))
        throw Error(3906, QStringLiteral("The catalog \"%1\" may only be read, not written.").arg(path));
    if (!may(folder, R_OK | W_OK | X_OK))
        throw Error(3906,
                    QStringLiteral("The folder \"%1\" may only be read, not written, so its catalog can't be "
                                   "used.")
                        .arg(folder));
    return path;
}

} // namespace

std::unique_ptr<SqliteDriver> SqliteDriver::openFile(const std::string &path,
                                                     SqliteSession::Purpose purpose) {
    const auto standing = [&path] {
        struct stat file {};
        return ::stat(path.c_str(), &file) == 0 ? file.st_ino : 0;
    };
    while (true) {
        const auto before = standing();
        try {
            std::unique_ptr<SqliteDriver> driver(new SqliteDriver(path, purpose));
            if (standing() == before)
                return driver;
        } catch (const Error &) {
            if (standing() == before)
                throw;
        }
    }
}

std::unique_ptr<SqliteDriver> SqliteDriver::opened(const QString &path, SqliteSession::Purpose purpose) {
    std::unique_ptr<SqliteDriver> driver = openFile(path.toStdString(), purpose);
    {
        SqliteSession::Running ours = driver->m_session.prepare(
            "select count(*), (select user_version from pragma_user_version) from sqlite_master where name in"
            " ('sys_logins', 'sys_users', 'sys_rolemembers', 'sys_procedures')");
        if (!ours.step() || ours.integer(0) != 4)
            throw Error(4060, QStringLiteral("The database \"%1\" is no catalog of this program.").arg(path));
        if (ours.integer(1) > CatalogVersion)
            throw Error(948, QStringLiteral("The catalog \"%1\" is of a later version of the program; please "
                                            "use that one.")
                                 .arg(path));
    }
    driver->m_catalog.refresh();
    return driver;
}

std::unique_ptr<SqliteDriver> SqliteDriver::openForReading(const QString &folder) {
    const QString path = readableFile(folder);
    // A log is beside a file that is read, too. Where none can be made, nobody writes the file.
    const bool sealed = !may(folder, R_OK | W_OK | X_OK) && !QFile::exists(path + QStringLiteral("-wal"));
    return opened(path, sealed ? SqliteSession::Purpose::ReadSealed : SqliteSession::Purpose::Read);
}

std::unique_ptr<SqliteDriver> SqliteDriver::open(const QString &folder,
                                                 const std::optional<Credentials> &credentials) {
    std::unique_ptr<SqliteDriver> driver = opened(catalogFile(folder), SqliteSession::Purpose::Use);
    if (credentials) {
        driver->m_logins.check(*credentials);
        driver->m_caller = credentials->name;
    }
    return driver;
}

std::unique_ptr<SqliteDriver> SqliteDriver::make(const QString &path) {
    const int file = ::open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    const bool made = file >= 0 && ::fchmod(file, catalogMode(QFileInfo(path).path())) == 0;
    const QString reason = qt_error_string();
    if (file >= 0)
        ::close(file);
    if (!made)
        throw Error(3906, QStringLiteral("The file \"%1\" can't be made: %2.").arg(path, reason));
    std::unique_ptr<SqliteDriver> driver(new SqliteDriver(path.toStdString(), SqliteSession::Purpose::Make));
    driver->m_logins.createTables();
    driver->setVersion(CatalogVersion);
    driver->m_catalog.refresh();
    return driver;
}

void SqliteDriver::seal(std::unique_ptr<SqliteDriver> made) {
    const std::string path = made->m_session.path();
    made->m_session.execute("pragma synchronous = full");
    {
        SqliteSession::Running journal = made->m_session.prepare("pragma journal_mode = wal");
        if (!journal.step() || journal.text(0) != "wal")
            throw Error(945, "The catalog \"" + path +
                                 "\" can't be written with a write-ahead log on this file system.");
    }
    made.reset();
    const int file = ::open(path.c_str(), O_RDWR | O_CLOEXEC);
    const bool synced = file >= 0 && ::fsync(file) == 0;
    if (file >= 0)
        ::close(file);
    if (!synced)
        throw Error(823, QStringLiteral("The catalog \"%1\" can't be written: %2.")
                             .arg(QString::fromStdString(path), qt_error_string()));
}

std::unique_ptr<SqliteSession> SqliteDriver::takeOutOfUse(const QString &folder) {
    const QString path = QDir(folder).absoluteFilePath(QLatin1String(FileName));
    if (!may(path, R_OK | W_OK))
        throw Error(3906, QStringLiteral("The catalog \"%1\" belongs to \"%2\", who alone may replace it.")
                              .arg(path, QFileInfo(path).owner()));
    try {
        return std::make_unique<SqliteSession>(path.toStdString(), SqliteSession::Purpose::TakeOut);
    } catch (const Error &failure) {
        constexpr int NoDatabase = 4060;
        constexpr int Damaged = 824;
        if (failure.number() == NoDatabase || failure.number() == Damaged)
            return nullptr;
        throw;
    }
}

} // namespace zel::ado
