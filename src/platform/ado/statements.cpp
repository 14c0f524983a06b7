#include "platform/ado/statements.h"

#include "platform/ado/drivers/sqlite_driver.h"
#include "platform/base/error.h"
#include "platform/tsql/reading/secrets.h"

#include <QCoreApplication>
#include <QDir>

#include <algorithm>
#include <span>
#include <utility>

namespace zel::ado {

namespace {

using tsql::Statement;
using tsql::StatementKind;

/// The schema's work tables, which procedures refill before each report, bear this before their names.
bool isWorkTable(const std::string &name) {
    return QLatin1String(name.data(), qsizetype(name.size()))
        .startsWith(QLatin1String("rpt"), Qt::CaseInsensitive);
}

/// All statements of a procedure as one transaction, unless one is open already. What only work tables hold
/// is made anew before it is read, so that nobody waits for it to be on the disk.
class Procedure {
public:
    Procedure(Driver &driver, std::span<const Statement> statements) : m_driver(driver) {
        const auto writes = [](const Statement &statement) {
            return statement.kind != StatementKind::Select;
        };
        const auto refills = [](const Statement &statement) {
            return (statement.kind == StatementKind::Insert || statement.kind == StatementKind::Update ||
                    statement.kind == StatementKind::Delete) &&
                   isWorkTable(statement.name);
        };
        m_open = statements.size() > 1 && std::ranges::any_of(statements, writes) && !driver.inTransaction();
        if (m_open)
            driver.begin(std::ranges::all_of(statements,
                                             [&](const Statement &statement) {
                                                 return !writes(statement) || refills(statement);
                                             })
                             ? Durability::Later
                             : Durability::Now);
    }
    ~Procedure() {
        if (m_open)
            m_driver.rollback();
    }
    Procedure(const Procedure &) = delete;
    Procedure &operator=(const Procedure &) = delete;
    void commit() {
        if (m_open)
            m_driver.commit();
        m_open = false;
    }

private:
    Driver &m_driver;
    bool m_open = false;
};

Outcome runTogether(Driver &driver, std::span<Statement> statements, qsizetype most) {
    Outcome outcome;
    Procedure procedure(driver, statements);
    for (Statement &statement : statements) {
        if (statement.kind != StatementKind::Select) {
            outcome.rowsAffected += driver.run(statement);
            continue;
        }
        auto rows = driver.query(statement, most);
        if (outcome.rows)
            continue;
        outcome.rowsAffected = rows->rowCount();
        outcome.rows = std::move(rows);
        outcome.statement = std::move(statement);
    }
    procedure.commit();
    return outcome;
}

/// What the server's procedures refuse tells of logins and roles, of no password.
Outcome runOne(Driver &driver, const Sql &text, std::span<Statement> statements, qsizetype most) {
    try {
        return runTogether(driver, statements, most);
    } catch (const Error &error) {
        if (statements.front().kind == StatementKind::ServerCall)
            throw;
        throw tsql::withoutSecrets(error, text);
    }
}

} // namespace

void runStatements(Driver &driver, const Sql &text, const std::function<void(Outcome)> &told,
                   qsizetype most) {
    driver.refresh();
    std::vector<Statement> statements = tsql::translate(text, driver, driver.traits());
    for (auto first = statements.begin(); first != statements.end();) {
        const auto end = std::find_if(first + 1, statements.end(),
                                      [](const Statement &statement) { return !statement.continues; });
        told(runOne(driver, text, {first, end}, most));
        first = end;
    }
}

std::unique_ptr<Driver> openCatalog(const QString &dataSource, const QString &user, const QString &password) {
    if (dataSource.startsWith(QLatin1String("postgresql://")))
        throw Error(17,
                    QStringLiteral("This build can't reach a PostgreSQL server (\"%1\").").arg(dataSource));
    const bool embedded = dataSource == QLatin1String(".") || dataSource.startsWith(QLatin1String("./")) ||
                          dataSource.startsWith(QLatin1String("../")) || dataSource.startsWith(u'/');
    if (dataSource.trimmed().isEmpty())
        throw Error(17, QStringLiteral("Server.txt begins with no folder of a catalog."));
    if (!embedded)
        throw Error(17,
                    QStringLiteral("This build can't reach a SQL Server (\"%1\"). The folder of a catalog "
                                   "is written with \"/\", \"./\" or \"../\" at its beginning.")
                        .arg(dataSource));
    const QString folder = QDir::isAbsolutePath(dataSource)
                               ? dataSource
                               : QCoreApplication::applicationDirPath() + u'/' + dataSource;
    return SqliteDriver::open(QDir::cleanPath(folder),
                              Credentials{user.toStdString(), password.toStdString()});
}

} // namespace zel::ado
