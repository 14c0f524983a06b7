// Checking a catalog of a hundred thousand vouchers and an institute, which is sound, against the database's
// own test of the same file.
#include "books.h"
#include "institute.h"
#include "measure.h"

#include "platform/ado/statements.h"
#include "schema/new_catalog.h"
#include "tests/support/book_catalog.h"
#include "tools/zeldb/check.h"

#include <QTemporaryDir>

int main(int, char **argv) {
    const QTemporaryDir folder(QString::fromLocal8Bit(argv[1]) + "/check-XXXXXX");
    zel::schema::createCatalog(folder.path());
    const std::string database = folder.filePath("ZEL.db").toStdString();
    bench::fillBooks(database, {.vouchers = 70'000});
    bench::fillInstitute(database, {.students = 6'000, .receipts = 30'000});

    std::size_t found = 0;
    const auto check = [&] {
        const auto driver = zel::ado::openForReading(folder.path());
        found += zel::tool::findings(*driver).size();
    };
    zel::test::BookCatalog peer(database);
    const bool within = bench::compare("check of 100,000 vouchers against integrity_check", 3.0, 5, check,
                                       [&] { found += peer.ask("pragma integrity_check").size() - 1; });
    if (found > 0)
        std::printf("%zu findings in a sound catalog\n", found);
    return within && found == 0 ? 0 : 1;
}
