#include "schema/new_catalog.h"

#include "platform/ado/drivers/sqlite_driver.h"
#include "platform/ado/statements.h"
#include "platform/base/error.h"
#include "schema/half_made.h"
#include "schema/schema_texts.h"

#include <QDateTime>
#include <QDir>
#include <QFile>

#include <sys/stat.h>
#include <unistd.h>

namespace zel::schema {

namespace {

void runAll(ado::Driver &driver, std::string_view text) {
    for (const std::string_view batch : tsql::batches(text))
        ado::runStatements(driver, Sql::trusted(batch), [](const ado::Outcome &) {});
}

} // namespace

void define(ado::Driver &driver) {
    for (const std::string_view part : {tables, indexes, procedures})
        runAll(driver, part);
}

namespace {

void fill(ado::SqliteDriver &driver, const NewCatalog &wanted) {
    driver.logins().call("sp_addlogin", {"sa", wanted.saPassword.toStdString(), "ZEL"}, std::nullopt);
    driver.logins().call("sp_adduser", {"sa"}, std::nullopt);
    driver.logins().call("sp_addsrvrolemember", {"sa", "sysadmin"}, std::nullopt);
    if (wanted.bare)
        return;
    define(driver);
    runAll(driver, rows);
    if (wanted.demoChart)
        runAll(driver, demo_chart);
    if (wanted.filled)
        wanted.filled(driver);
    driver.analyze();
}

/// A folder for a catalog, made when only it is missing.
struct Place {
    explicit Place(const QString &named)
        : folder(QDir::cleanPath(QDir().absoluteFilePath(named))),
          path(folder + u'/' + QLatin1String(ado::SqliteDriver::FileName)), made(!QDir(folder).exists()) {
        ado::requireReachable(named);
    }
    void mustBeFree() const {
        if (QFile::exists(path))
            refuseSecond(folder);
    }
    void make() const {
        if (made && !QDir().mkdir(folder))
            throw Error(
                3906, QStringLiteral("The folder \"%1\" can't be made: %2.").arg(folder, qt_error_string()));
    }
    QString folder;
    QString path;
    bool made;
};

/// Writes the file whole and to the disk; failures name it as the person knows it.
template <class Fill>
void build(const HalfMade &half, const QString &path, const Fill &fill) {
    try {
        std::unique_ptr<ado::SqliteDriver> driver = ado::SqliteDriver::make(half.path());
        driver->begin(ado::Durability::Now);
        fill(*driver);
        driver->commit();
        ado::SqliteDriver::seal(std::move(driver));
    } catch (const Error &failure) {
        throw Error(failure.number(), failure.description().replace(half.path(), path));
    }
}

template <class Fill>
void makeNew(const QString &folder, const Fill &fill) {
    const Place place(folder);
    place.mustBeFree();
    place.make();
    HalfMade half(place.folder, place.made);
    build(half, place.path, fill);
    half.keepAs(place.path);
}

/// A dated name that is not taken.
QString keptName(const QString &path) {
    const QString dated = path + QStringLiteral(".before-") +
                          QDateTime::currentDateTimeUtc().toString(QStringLiteral("yyyyMMddTHHmmssZ"));
    QString name = dated;
    for (int again = 2; QFile::exists(name); ++again)
        name = dated + u'-' + QString::number(again);
    return name;
}

/// A killed run leaves what it was making, and a killed replacement the catalog under a second name. Nobody
/// else is at work, since the catalog is out of use.
void removeLeftOvers(const Place &place) {
    for (const QString &name : QDir(place.folder).entryList({QStringLiteral("ZEL.db.*.new*")}, QDir::Files))
        QFile::remove(place.folder + u'/' + name);
    struct stat standing {};
    if (::stat(QFile::encodeName(place.path).constData(), &standing) != 0 || standing.st_nlink < 2)
        return;
    const QDir folder(place.folder);
    for (const QString &name : folder.entryList({QStringLiteral("ZEL.db.before-*")}, QDir::Files)) {
        struct stat other {};
        const QByteArray path = QFile::encodeName(folder.filePath(name));
        if (::stat(path.constData(), &other) == 0 && other.st_ino == standing.st_ino)
            ::unlink(path.constData());
    }
}

} // namespace

void createCatalog(const QString &folder, const NewCatalog &wanted) {
    makeNew(folder, [&](ado::SqliteDriver &driver) { fill(driver, wanted); });
}

void requireNoCatalog(const QString &folder) {
    Place(folder).mustBeFree();
}

void makeCatalog(const QString &folder, const std::function<void(ado::Driver &)> &fill) {
    makeNew(folder, fill);
}

QString replaceCatalog(const QString &folder, const std::function<void(ado::Driver &)> &fill) {
    const Place place(folder);
    place.make();
    const bool old = QFile::exists(place.path);
    std::unique_ptr<ado::SqliteSession> held;
    try {
        if (old)
            held = ado::SqliteDriver::takeOutOfUse(place.folder);
    } catch (const Error &failure) {
        constexpr int Held = 1222;
        if (failure.number() != Held)
            throw;
        throw Error(
            Held,
            QStringLiteral("A program has the catalog \"%1\" open; close it and try again.").arg(place.path));
    }
    if (held)
        removeLeftOvers(place);
    HalfMade half(place.folder, place.made);
    build(half, place.path, fill);
    const QString kept = keptName(place.path);
    half.keepInPlaceOf(place.path, kept, !held);
    return old ? kept : QString();
}

} // namespace zel::schema
