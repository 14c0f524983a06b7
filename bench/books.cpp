#include "books.h"

#include "tests/support/book_catalog.h"

namespace bench {

void fillBooks(const std::string &database, const Size &size) {
    zel::test::BooksPlan plan;
    plan.vouchers = size.vouchers;
    plan.others = size.accounts - plan.banks;
    plan.to = plan.from.addDays(size.days - 1);
    zel::test::BookCatalog(database).fill(zel::test::SeededBooks(plan));
}

} // namespace bench
