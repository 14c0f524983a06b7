// Reading all lines of the books whole, against a bare C loop that copies the same bytes into one arena.
#include "bare_read.h"
#include "measure.h"

#include "platform/ado/connection.h"
#include "platform/ado/recordset.h"

#include <sqlite3.h>

int main(int, char **argv) {
    const QString folder = QString::fromLocal8Bit(argv[1]);
    sqlite3 *db = nullptr;
    sqlite3_open_v2((folder + "/ZEL.db").toUtf8().constData(), &db, SQLITE_OPEN_READONLY, nullptr);
    bench::Arena arena;
    zel::ado::Connection connection;
    connection.setProperty("User ID", "sa");
    connection.setProperty("Password", "");
    connection.setProperty("Data Source", folder);
    connection.setProperty("Initial Catalog", "ZEL");
    connection.Open();
    qsizetype rows = 0;
    const bool within = bench::compare(
        "reading all lines of the books whole", 1.5, 7,
        [&] {
            zel::ado::Recordset lines;
            lines.Open("Select * From DetJV", connection);
            rows = lines.RecordCount();
        },
        [&] { bench::readBare(db, "select * from DetJV order by rowid", arena); });
    std::printf("    %lld rows, %ld cells, %.1f MB copied by the peer\n", static_cast<long long>(rows),
                arena.cells, double(arena.used) / 1e6);
    sqlite3_close(db);
    return within ? 0 : 1;
}
