#include "platform/ado/statements.h"

#include "platform/ado/drivers/sqlite_driver.h"
#include "platform/base/error.h"

#include <QCoreApplication>
#include <QDir>

#include <optional>
#include <utility>

namespace zel::ado {

void runStatements(Driver &driver, const Sql &text, const std::function<void(Outcome)> &told,
                   qsizetype most) {
    driver.refresh();
    std::optional<Outcome> outcome;
    for (tsql::Statement &statement : tsql::translate(text, driver, driver.traits())) {
        if (outcome && !statement.continues)
            told(*std::exchange(outcome, std::nullopt));
        if (!outcome)
            outcome.emplace();
        if (statement.kind != tsql::StatementKind::Select) {
            outcome->rowsAffected += driver.run(statement);
            continue;
        }
        auto rows = driver.query(statement, most);
        if (outcome->rows)
            continue;
        outcome->rowsAffected = rows->rowCount();
        outcome->rows = std::move(rows);
        outcome->statement = std::move(statement);
    }
    if (outcome)
        told(*std::move(outcome));
}

std::unique_ptr<Driver> openCatalog(const QString &dataSource, const QString &user, const QString &password) {
    if (dataSource.startsWith(QLatin1String("postgresql://")))
        throw Error(17,
                    QStringLiteral("This build can't reach a PostgreSQL server (\"%1\").").arg(dataSource));
    const bool embedded = dataSource == QLatin1String(".") || dataSource.startsWith(QLatin1String("./")) ||
                          dataSource.startsWith(QLatin1String("../")) || dataSource.startsWith(u'/');
    if (!embedded)
        throw Error(17, QStringLiteral("This build can't reach a SQL Server (\"%1\").").arg(dataSource));
    const QString folder = QDir::isAbsolutePath(dataSource)
                               ? dataSource
                               : QCoreApplication::applicationDirPath() + u'/' + dataSource;
    return SqliteDriver::open(QDir::cleanPath(folder),
                              Credentials{user.toStdString(), password.toStdString()});
}

} // namespace zel::ado
