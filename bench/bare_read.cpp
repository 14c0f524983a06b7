#include "bare_read.h"

#include <sqlite3.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace bench {

void readBare(sqlite3 *db, const char *sql, Arena &arena) {
    sqlite3_stmt *statement = nullptr;
    if (sqlite3_prepare_v2(db, sql, -1, &statement, nullptr) != SQLITE_OK) {
        std::fprintf(stderr, "%s\n", sqlite3_errmsg(db));
        std::exit(1);
    }
    const int columns = sqlite3_column_count(statement);
    arena.used = 0;
    arena.cells = arena.rows = 0;
    const auto copy = [&arena](const void *bytes, std::size_t length) {
        std::memcpy(arena.bytes.get() + arena.used, bytes, length);
        arena.used += length;
    };
    while (sqlite3_step(statement) == SQLITE_ROW) {
        ++arena.rows;
        for (int column = 0; column < columns; ++column) {
            ++arena.cells;
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
            default: {
                const void *text = sqlite3_column_text(statement, column);
                copy(text, std::size_t(sqlite3_column_bytes(statement, column)));
            }
            }
        }
    }
    sqlite3_finalize(statement);
}

} // namespace bench
