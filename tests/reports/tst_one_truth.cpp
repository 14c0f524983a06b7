#include "platform/ado/connection.h"
#include "shell/module1.h"
#include "tests/reports/voucher_clerk.h"
#include "tests/support/book_catalog.h"
#include "tests/support/office.h"
#include "tests/support/test_program.h"

#include <QTest>

#include <map>

using namespace zel;
using namespace zel::test;

namespace {

const QDate From(2025, 1, 1);
const QDate To(2025, 12, 31);

BooksPlan planOf(int vouchers, bool forwarded) {
    BooksPlan plan;
    plan.seed = std::uint64_t(vouchers) * 7 + (forwarded ? 1 : 0);
    plan.heads = 3;
    plan.subs = 31; // the eleventh of a control account is numbered 1.11
    plan.cash = 2;
    plan.banks = 3;
    plan.students = 3 + vouchers / 50;
    plan.others = 8 + vouchers / 25;
    plan.vouchers = vouchers;
    plan.kinds = {Kind::BP, Kind::BR, Kind::CP, Kind::CR, Kind::JV};
    plan.applications = vouchers / 4;
    plan.fees = vouchers / 3;
    plan.forwarded = forwarded ? 1 + vouchers / 9 : 0;
    plan.from = From;
    plan.to = To;
    plan.edges = true;
    return plan;
}

/// All books in memory, for sums of the test's own.
struct Held {
    explicit Held(const BooksPlan &plan) : books(plan) {
        SeededBooks source = books;
        while (!source.atEnd())
            vouchers.push_back(source.next());
        for (const BookVoucher &voucher : vouchers)
            for (const BookLine &line : linesOf(voucher))
                lines.push_back(line);
    }
    SeededBooks books;
    std::vector<BookVoucher> vouchers;
    std::vector<BookLine> lines;
};

bool byHand(const BookVoucher &voucher) {
    return voucher.kind <= Kind::JV;
}

/// The program's connection on the office's catalog, without a login screen.
void logOn(const Office &office) {
    using namespace shell;
    gCon.setProperty("User ID", "sa");
    gCon.setProperty("Data Source", office.folder());
    gCon.setProperty("Initial Catalog", "ZEL");
    gCon.Open();
    gUserName = "sa";
}

std::string database(const Office &office) {
    return office.folder().toStdString() + "/ZEL.db";
}

} // namespace

class tst_one_truth : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void booksArePostedAsByTheScreens();
};

/// What makes all other tests mean something: the rows written past the program are the screens' own rows.
void tst_one_truth::booksArePostedAsByTheScreens() {
    const Held held(planOf(60, false));
    Office written;
    BookCatalog direct(database(written));
    direct.fill(held.books, byHand);
    Office typed;
    BookCatalog screens(database(typed));
    screens.fill(held.books, [](const BookVoucher &) { return false; });
    logOn(typed);
    for (const BookVoucher &voucher : held.vouchers)
        if (byHand(voucher))
            saveOnScreen(voucher);
    for (const char *rows :
         {"select VouStatus, VouNo, EntryNo, AcCode, CrAc, quote(DrAmt), quote(CrAmt), VouDate, "
          "quote(ChecqNo), quote(Naration), quote(FileNo), quote(BillNo), quote(SessionID), quote(SubID) "
          "from DetJV order by VouStatus, VouNo, rowid",
          "select VouStatus, VouNo, VouDate, PaidReceive, quote(TotalAmount), Login from MasJV "
          "order by VouStatus, VouNo"})
        QCOMPARE(screens.ask(rows), direct.ask(rows));
}

ZEL_TEST_MAIN(tst_one_truth)

#include "tst_one_truth.moc"
