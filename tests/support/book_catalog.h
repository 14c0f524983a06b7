#pragma once

#include "tests/support/seeded_books.h"

#include <functional>
#include <memory>
#include <string>

struct sqlite3;

namespace zel::test {

/// A catalog's file, past the program: books go in row by row, and questions are answered by SQLite alone.
/// Ends the process with a message when SQLite refuses.
class BookCatalog {
public:
    explicit BookCatalog(const std::string &path);
    ~BookCatalog();
    BookCatalog(const BookCatalog &) = delete;
    BookCatalog &operator=(const BookCatalog &) = delete;

    void run(const std::string &sql);
    /// Each row's columns as SQLite gives them as text, NULL as "".
    [[nodiscard]] std::vector<std::vector<std::string>> ask(const std::string &sql);

    /// In place of what stands in Accounts, MasJV and DetJV; `wanted` says which vouchers, all if it is
    /// empty. The voucher setup then names the first cash account. Ends with ANALYZE.
    void fill(SeededBooks books, const std::function<bool(const BookVoucher &)> &wanted = {});

private:
    class Insert;
    void check(int code) const;
    void writeAccounts(const SeededBooks &books);

    sqlite3 *m_db = nullptr;
};

} // namespace zel::test
