#pragma once

#include "tests/support/seeded_institute.h"

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

    /// The accounts, in place of all books that stand in the catalog; the voucher setup then names the first
    /// cash account and the students' head.
    void open(const SeededBooks &books);
    /// Writes a voucher's rows.
    void post(const BookVoucher &voucher);
    /// Sessions, courses, subjects and applications, their students' accounts opened with what all of them
    /// come to; then the vouchers. The accounts are open()ed before.
    void enroll(const SeededInstitute &institute);
    /// Both for all books, in one transaction, then ANALYZE.
    void fill(SeededBooks books);

private:
    class Insert;
    void check(int code) const;

    sqlite3 *m_db = nullptr;
    std::unique_ptr<Insert> m_header;
    std::unique_ptr<Insert> m_line;
};

} // namespace zel::test
