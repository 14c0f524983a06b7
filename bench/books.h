#pragma once

#include <string>

namespace bench {

/// What a generated catalog holds; the same for the same numbers, every time.
struct Size {
    int vouchers = 100'000; ///< half of them bank payments, the rest spread over the other kinds
    int accounts = 600;     ///< subsidiary accounts, in 30 sub-control accounts
    int days = 730;         ///< from 2024-01-01 on
};

/// Fills the empty books of the catalog `database` (made by `zeldb create`) with vouchers of three lines on
/// average, then runs ANALYZE. Ends the process with a message when SQLite refuses.
void fillBooks(const std::string &database, const Size &size);

} // namespace bench
