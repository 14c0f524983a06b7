// Opens the catalog, runs statements and reads their rows, without printing them: read_rows FOLDER STATEMENTS
#include "platform/ado/drivers/sqlite_driver.h"
#include "platform/ado/statements.h"

#include <QCoreApplication>

int main(int argc, char **argv) {
    QCoreApplication application(argc, argv);
    const auto driver = zel::ado::SqliteDriver::open(QString::fromLocal8Bit(argv[1]), std::nullopt);
    qsizetype rows = 0;
    zel::ado::runStatements(*driver, zel::Sql::trusted(argv[2]), [&rows](const zel::ado::Outcome &outcome) {
        rows += outcome.rows ? outcome.rows->rowCount() : 0;
    });
    return rows > 0 ? 0 : 1;
}
