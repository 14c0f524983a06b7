#include "platform/ado/statements.h"

#include "platform/ado/drivers/sqlite_driver.h"
#include "platform/base/error.h"

#include <QByteArrayView>
#include <QCoreApplication>
#include <QDir>

#include <algorithm>

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

std::vector<Batch> batches(std::string_view file) {
    std::vector<Batch> result;
    Batch batch;
    const auto end = [&result, &batch](int nextLine) {
        if (batch.text.find_first_not_of(" \t\r\n") != std::string::npos)
            result.push_back(std::move(batch));
        batch = {{}, nextLine};
    };
    for (int line = 1; !file.empty(); ++line) {
        const std::size_t length = std::min(file.find('\n'), file.size() - 1) + 1;
        const QByteArrayView words = QByteArrayView(file.data(), qsizetype(length)).trimmed();
        if (words.compare("GO", Qt::CaseInsensitive) == 0)
            end(line + 1);
        else
            batch.text += file.substr(0, length);
        file.remove_prefix(length);
    }
    end(0);
    return result;
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
