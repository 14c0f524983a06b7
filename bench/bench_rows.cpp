// Reading 300,000 voucher lines into a RowSet, against a bare loop over sqlite3_step that copies the same
// bytes of the same columns into one arena. Limit: 1.5 times the bare loop. Then the insertion of rows one by
// one.

#include "platform/ado/drivers/sqlite_driver.h"
#include "schema/new_catalog.h"

#include <QElapsedTimer>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <cstring>

using namespace zel;

namespace {

constexpr int Lines = 300'000;

void fill(ado::SqliteDriver &driver) {
    driver.begin();
    for (int line = 0; line < Lines; ++line) {
        const ado::Assignment values[] = {
            {"VouNo", Value(line / 4 + 1)},
            {"VouStatus", Value(line % 3 ? "BP" : "CR")},
            {"VouDate", Value(QDate(2020, 1, 1).addDays(line / 200))},
            {"EntryNo", Value(line % 4 / 2 + 1)},
            {"AcCode", Value(line % 977 + 1)},
            {"CrAc", Value(line % 13 + 1)},
            {"DrAmt", line % 2 ? Value(0) : Value(Decimal::fromTenThousandths(line * 10'100LL))},
            {"CrAmt", line % 2 ? Value(Decimal::fromTenThousandths(line * 10'100LL)) : Value(0)},
            {"ChecqNo", Value(line % 5 ? "" : "CHQ-004711")},
            {"Naration", Value("PAID FOR THE MONTH OF MARCH")},
        };
        driver.insertRow("DetJV", values);
    }
    driver.commit();
}

double bareLoop(sqlite3 *handle, std::size_t &bytes) {
    QElapsedTimer clock;
    clock.start();
    sqlite3_stmt *statement = nullptr;
    sqlite3_prepare_v2(handle, "select *, rowid from DetJV", -1, &statement, nullptr);
    const int columns = sqlite3_column_count(statement);
    std::vector<char> arena;
    const auto copy = [&arena](const void *from, std::size_t length) {
        const auto *begin = static_cast<const char *>(from);
        arena.insert(arena.end(), begin, begin + length);
    };
    while (sqlite3_step(statement) == SQLITE_ROW) {
        for (int column = 0; column < columns; ++column) {
            switch (sqlite3_column_type(statement, column)) {
            case SQLITE_NULL:
                break;
            case SQLITE_INTEGER: {
                const sqlite3_int64 whole = sqlite3_column_int64(statement, column);
                copy(&whole, sizeof whole);
                break;
            }
            case SQLITE_FLOAT: {
                const double real = sqlite3_column_double(statement, column);
                copy(&real, sizeof real);
                break;
            }
            default:
                copy(sqlite3_column_blob(statement, column),
                     std::size_t(sqlite3_column_bytes(statement, column)));
            }
        }
    }
    sqlite3_finalize(statement);
    bytes = arena.size();
    return double(clock.nsecsElapsed()) / 1e6;
}

double rowSet(ado::SqliteDriver &driver, const tsql::Statement &statement, qsizetype &count) {
    QElapsedTimer clock;
    clock.start();
    count = driver.query(statement)->rowCount();
    return double(clock.nsecsElapsed()) / 1e6;
}

} // namespace

int main() {
    const QTemporaryDir folder;
    schema::createCatalog(folder.path());
    const auto driver = ado::SqliteDriver::open(folder.path(), std::nullopt);
    QElapsedTimer clock;
    clock.start();
    fill(*driver);
    std::printf("insert %d rows: %lld ms\n", Lines, static_cast<long long>(clock.elapsed()));

    tsql::Statement statement;
    statement.sql = "select *, rowid from DetJV";
    statement.baseTable = "DetJV";
    for (const tsql::Column &column : driver->table("DetJV")->columns)
        statement.columns.push_back({column.name, column.type, column.name});

    double bare = 1e9;
    double ours = 1e9;
    for (int round = 0; round < 7; ++round) {
        std::size_t bytes = 0;
        qsizetype count = 0;
        bare = std::min(bare, bareLoop(driver->session().handle(), bytes));
        ours = std::min(ours, rowSet(*driver, statement, count));
        if (count != Lines || bytes == 0)
            return 2;
    }
    std::printf("bare loop %.1f ms, rows %.1f ms, ratio %.2f (limit 1.50)\n", bare, ours, ours / bare);
    return ours <= 1.5 * bare ? 0 : 1;
}
