#include "schema/new_catalog.h"

#include "platform/ado/drivers/sqlite_driver.h"
#include "platform/ado/statements.h"
#include "platform/base/error.h"
#include "schema/schema_texts.h"

#include <QDir>
#include <QFile>
#include <QUuid>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace zel::schema {

namespace {

/// Removes what was begun, unless it was kept.
class HalfMade {
public:
    HalfMade(const QString &folder, bool madeFolder) : m_folder(folder), m_madeFolder(madeFolder) {
        m_path = folder + QStringLiteral("/ZEL.db.") + QUuid::createUuid().toString(QUuid::Id128) +
                 QStringLiteral(".new");
    }
    ~HalfMade() {
        if (m_kept)
            return;
        for (const char *end : {"", "-wal", "-shm", "-journal"})
            QFile::remove(m_path + QLatin1String(end));
        if (m_madeFolder)
            QDir().rmdir(m_folder);
    }
    HalfMade(const HalfMade &) = delete;
    HalfMade &operator=(const HalfMade &) = delete;

    [[nodiscard]] const QString &path() const { return m_path; }
    /// Gives the file its name, in one step and never over another one, and makes that last.
    void keepAs(const QString &path);

private:
    QString m_folder;
    QString m_path;
    bool m_madeFolder;
    bool m_kept = false;
};

[[noreturn]] void refuseSecond(const QString &folder) {
    throw Error(1802,
                QStringLiteral("The folder \"%1\" holds a catalog ZEL.db already; it was left as it is.")
                    .arg(folder));
}

void HalfMade::keepAs(const QString &path) {
    const QByteArray from = QFile::encodeName(m_path);
    const QByteArray to = QFile::encodeName(path);
    if (::link(from.constData(), to.constData()) == 0)
        ::unlink(from.constData());
    else if (errno == EEXIST)
        refuseSecond(m_folder);
    else if (::renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE) != 0)
        throw Error(823,
                    QStringLiteral("The catalog \"%1\" can't be made: %2.").arg(path, qt_error_string()));
    m_kept = true;
    const int folder = ::open(QFile::encodeName(m_folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder >= 0) {
        ::fsync(folder);
        ::close(folder);
    }
}

void runAll(ado::Driver &driver, std::string_view text) {
    for (const std::string_view batch : tsql::batches(text))
        ado::runStatements(driver, Sql::trusted(batch), [](const ado::Outcome &) {});
}

void fill(ado::SqliteDriver &driver, const NewCatalog &wanted) {
    driver.logins().call("sp_addlogin", {"sa", wanted.saPassword.toStdString(), "ZEL"}, std::nullopt);
    driver.logins().call("sp_adduser", {"sa"}, std::nullopt);
    driver.logins().call("sp_addsrvrolemember", {"sa", "sysadmin"}, std::nullopt);
    if (wanted.bare)
        return;
    for (const std::string_view part : {tables, indexes, procedures, rows})
        runAll(driver, part);
    if (wanted.demoChart)
        runAll(driver, demo_chart);
    driver.analyze();
}

} // namespace

void createCatalog(const QString &folder, const NewCatalog &wanted) {
    const QString place = QDir::cleanPath(QDir().absoluteFilePath(folder));
    const QString path = place + u'/' + QLatin1String(ado::SqliteDriver::FileName);
    if (QFile::exists(path))
        refuseSecond(place);
    const bool madeFolder = !QDir(place).exists();
    if (madeFolder && !QDir().mkdir(place))
        throw Error(3906, QStringLiteral("The folder \"%1\" can't be made.").arg(place));

    HalfMade half(place, madeFolder);
    std::unique_ptr<ado::SqliteDriver> driver = ado::SqliteDriver::make(half.path());
    driver->begin(ado::Durability::Now);
    fill(*driver, wanted);
    driver->commit();
    ado::SqliteDriver::seal(std::move(driver));
    half.keepAs(path);
}

} // namespace zel::schema
