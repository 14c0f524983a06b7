#pragma once

#include <cstddef>
#include <memory>

struct sqlite3;

namespace bench {

/// Where the bare loop copies to.
struct Arena {
    std::unique_ptr<char[]> bytes = std::make_unique<char[]>(std::size_t(256) << 20);
    std::size_t used = 0;
    long cells = 0;
    long rows = 0;
};

/// Prepares the statement and reads all its rows, copying each cell's bytes as the engine has them: numbers
/// in eight bytes, texts as they are. What nobody who shows these rows can do without.
void readBare(sqlite3 *db, const char *sql, Arena &arena);

} // namespace bench
