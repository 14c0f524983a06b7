// Reading all lines of the books whole, against a bare C loop that copies the same bytes into one arena.
#include "books.h"
#include "measure.h"

#include "platform/ado/connection.h"
#include "platform/ado/recordset.h"

#include <sqlite3.h>

#include <cstring>
#include <memory>

namespace {

struct Arena {
    std::unique_ptr<char[]> bytes = std::make_unique<char[]>(std::size_t(256) << 20);
    std::size_t used = 0;
    long cells = 0;
};

void readBare(sqlite3 *db, Arena &arena)
{
    sqlite3_stmt *statement = nullptr;
    sqlite3_prepare_v2(db, "select * from DetJV order by rowid", -1, &statement, nullptr);
    const int columns = sqlite3_column_count(statement);
    arena.used = 0;
    arena.cells = 0;
    while (sqlite3_step(statement) == SQLITE_ROW) {
        for (int column = 0; column < columns; ++column) {
            const void *bytes = sqlite3_column_text(statement, column);
            const auto length = std::size_t(sqlite3_column_bytes(statement, column));
            if (length > 0)
                std::memcpy(arena.bytes.get() + arena.used, bytes, length);
            arena.used += length;
            ++arena.cells;
        }
    }
    sqlite3_finalize(statement);
}

} // namespace

int main(int, char **argv)
{
    const std::string folder = argv[1];
    bench::fillBooks(folder + "/ZEL.db", {});

    sqlite3 *db = nullptr;
    sqlite3_open_v2((folder + "/ZEL.db").c_str(), &db, SQLITE_OPEN_READONLY, nullptr);
    Arena arena;
    zel::ado::Connection connection;
    connection.setProperty("User ID", "sa");
    connection.setProperty("Password", "");
    connection.setProperty("Data Source", QString::fromStdString(folder));
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
        [&] { readBare(db, arena); });
    std::printf("    %lld rows, %ld cells, %.1f MB copied by the peer\n", static_cast<long long>(rows), arena.cells,
                double(arena.used) / 1e6);
    sqlite3_close(db);
    return within ? 0 : 1;
}
