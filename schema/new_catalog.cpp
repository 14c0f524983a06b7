#include "schema/new_catalog.h"

#include "platform/ado/drivers/sqlite_driver.h"
#include "platform/ado/statements.h"
#include "platform/base/error.h"
#include "schema/half_made.h"
#include "schema/schema_texts.h"

#include <QDir>
#include <QFile>

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

} // namespace

void createCatalog(const QString &folder, const NewCatalog &wanted) {
    const QString place = QDir::cleanPath(QDir().absoluteFilePath(folder));
    const QString path = place + u'/' + QLatin1String(ado::SqliteDriver::FileName);
    if (QFile::exists(path))
        refuseSecond(place);
    const bool madeFolder = !QDir(place).exists();
    if (madeFolder && !QDir().mkdir(place))
        throw Error(3906,
                    QStringLiteral("The folder \"%1\" can't be made: %2.").arg(place, qt_error_string()));

    HalfMade half(place, madeFolder);
    try {
        std::unique_ptr<ado::SqliteDriver> driver = ado::SqliteDriver::make(half.path());
        driver->begin(ado::Durability::Now);
        fill(*driver, wanted);
        driver->commit();
        ado::SqliteDriver::seal(std::move(driver));
    } catch (const Error &failure) { // named as the person knows it
        throw Error(failure.number(), failure.description().replace(half.path(), path));
    }
    half.keepAs(path);
}

} // namespace zel::schema
