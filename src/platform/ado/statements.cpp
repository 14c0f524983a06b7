#include "platform/ado/statements.h"

#include "platform/ado/drivers/sqlite_driver.h"
#include "platform/base/error.h"

#include <QCoreApplication>
#include <QDir>

namespace zel::ado {

void runStatements(Driver &driver, const Sql &text, const std::function<void(Outcome)> &told) {
    driver.refresh();
    for (tsql::Statement &statement : tsql::translate(text, driver, driver.traits())) {
        Outcome outcome;
        if (statement.kind == tsql::StatementKind::Select) {
            outcome.rows = driver.query(statement);
            outcome.rowsAffected = outcome.rows->rowCount();
        } else {
            outcome.rowsAffected = driver.run(statement);
        }
        outcome.statement = std::move(statement);
        told(std::move(outcome));
    }
}

std::unique_ptr<Driver> openCatalog(const QString &dataSource, const QString &user, const QString &password) {
    if (dataSource.startsWith(QLatin1String("postgresql://")))
        throw Error(17,
                    QStringLiteral("This build can't reach a PostgreSQL server (\"%1\").").arg(dataSource));
    const bool embedded = dataSource == QLatin1String(".") || dataSource.startsWith(QLatin1String("./")) ||
                          dataSource.startsWith(QLatin1String("../")) || dataSource.startsWith(u'/');
    if (!embedded)
        throw Error(17, QStringLiteral("This build can't reach a SQL Server (\"%1\").").arg(dataSource));
    const QString folder = QDir(QCoreApplication::applicationDirPath()).filePath(dataSource);
    return SqliteDriver::open(QDir::cleanPath(folder),
                              Credentials{user.toStdString(), password.toStdString()});
}

} // namespace zel::ado
