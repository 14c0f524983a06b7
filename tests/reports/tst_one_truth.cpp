#include "platform/base/error.h"
#include "tests/reports/books_desk.h"
#include "tests/reports/voucher_clerk.h"
#include "tests/support/rows.h"
#include "tests/support/test_program.h"

#include <QTest>

using namespace zel;
using namespace zel::test;

namespace {

/// The printed ledgers of an account, and its book.
void checkLedgers(int account, const Sums &sum, const Period &period) {
    const PrintedLedger ledger{sum.rows, sum.opening, sum.debits, sum.credits, sum.closing()};
    for (const Ledger form : {Ledger::Simple, Ledger::Detail})
        QVERIFY(ledgerOf(*printedLedger(form, account, period)) == ledger);
    // Received is what the others were credited, paid what they were debited.
    const PrintedLedger book{sum.contraRows, sum.opening, sum.contraCredits, sum.contraDebits,
                             sum.bookClosing()};
    QVERIFY(ledgerOf(*printedBook(account, period)) == book);
    QCOMPARE(sum.bookClosing(), sum.closing() + sum.gap);
}

/// What a ledger is printed from.
void checkWorkTable(BookCatalog &catalog, Ledger form, int account, const Sums &sum, const Period &period) {
    const auto cents = [](Cents amount) { return std::to_string(amount); };
    const Columns opening = sides(sum.opening);
    std::vector<std::vector<std::string>> rows{{"0", cents(opening[0]), cents(opening[1]), "1"}};
    if (sum.rows > 0)
        rows.push_back({"1", cents(sum.debits), cents(sum.credits), std::to_string(sum.rows)});
    makeLedger(form, account, period);
    QCOMPARE(catalog.ask("select LineOrder, sum(cast(round(DrAmt * 100) as integer)), "
                         "sum(cast(round(CrAmt * 100) as integer)), count(*) from rptAcLedger "
                         "group by LineOrder order by LineOrder"),
             rows);
}

/// The three trial balances against the sums, and against one another.
void checkBalances(const Held &held, const std::map<int, Sums> &sums, const Period &period, Cents oneSided) {
    const Balance simple(*printedBalance("", period));
    const Balance control(*printedBalance("2", period));
    const Balance whole(*printedBalance("3", period));
    std::map<QString, Columns> period2; // by code, what must be printed
    std::map<QString, Columns> all;
    std::map<QString, Columns> subs;
    std::map<QString, Columns> heads;
    Columns total(2);
    Columns wholeTotal(6);
    for (const BookAccount &account : held.books.accounts()) {
        if (account.status != std::string("DD"))
            continue;
        const Sums &sum = sums.at(account.id);
        const Columns moved{sum.debits, sum.credits};
        const Columns row = sum.row();
        const QString code = QString::fromStdString(account.nodes);
        const QString parent = QString::fromStdString(account.parent);
        if (!isZero(moved)) {
            period2[code] = moved;
            add(subs[parent], moved);
            add(heads[parent.section('.', 0, 0)], moved);
            add(total, moved);
        }
        if (!isZero(row)) {
            all[code] = row;
            add(wholeTotal, row);
        }
    }
    QVERIFY(simple.rows == period2);
    QVERIFY(control.rows == subs);
    QVERIFY(whole.rows == all);
    QVERIFY(control.heads == heads);
    QVERIFY(simple.heads == heads);
    // What has no other side is a line of its own, and then debits are credits to the hundredth.
    const Columns lacking = lackingOpenings(wholeTotal);
    QVERIFY(whole.openings == (isZero(lacking) ? Columns() : lacking));
    const Columns entries = oneSided == 0 ? Columns() : Columns{oneSided, 0};
    QVERIFY(simple.entries == entries);
    QVERIFY(control.entries == entries);
    QVERIFY(whole.entries == (oneSided == 0 ? Columns() : Columns{0, 0, oneSided, 0, oneSided, 0}));
    add(total, {oneSided, 0});
    add(wholeTotal, lacking);
    add(wholeTotal, {0, 0, oneSided, 0, oneSided, 0});
    QVERIFY(simple.grand == total);
    QVERIFY(control.grand == total);
    QVERIFY(whole.grand == wholeTotal);
    for (const Balance *balance : {&simple, &control, &whole})
        for (std::size_t pair = 0; pair < balance->grand.size(); pair += 2)
            QCOMPARE(balance->grand[pair], balance->grand[pair + 1]);
}

/// `before` are the sums of a check that went before: what has not changed since is not printed again.
void check(const Held &held, BookCatalog &catalog, const Period &period,
           const std::map<int, Sums> &before = {}) {
    const std::map<int, Sums> sums = held.sums(period);
    const Cents oneSided = held.forwarded(period);
    Cents debits = 0;
    Cents credits = 0;
    for (const auto &[id, sum] : sums) {
        debits += sum.debits;
        credits += sum.credits;
    }
    QCOMPARE(credits - debits, oneSided);
    const int cashId = held.books.cashAccounts().front();
    const Sums &cash = sums.at(cashId);
    QCOMPARE(cash.bookClosing() - cash.closing(), oneSided);
    // The sums of the test's own are SQLite's, too, in whole hundredths.
    QCOMPARE(catalog.ask("select ifnull(sum(cast(round(DrAmt * 100) as integer)), 0), "
                         "ifnull(sum(cast(round(CrAmt * 100) as integer)), 0) from DetJV "
                         "where VouDate between '2025-01-01' and '2025-12-31'"),
             (std::vector<std::vector<std::string>>{{std::to_string(debits), std::to_string(credits)}}));

    checkBalances(held, sums, period, oneSided);
    int nth = 0;
    for (const auto &[id, sum] : sums) {
        const auto found = before.find(id);
        if (QTest::currentTestFailed())
            return;
        if (found != before.end() && found->second == sum)
            continue;
        // Cash and banks come first. Of large books not every ledger is printed, but every one is made.
        if (nth++ < 6 || std::size_t(nth) % (sums.size() / 5) == 0)
            checkLedgers(id, sum, period);
        else
            checkWorkTable(catalog, nth % 2 == 0 ? Ledger::Simple : Ledger::Detail, id, sum, period);
        if (QTest::currentTestFailed())
            QFAIL(qPrintable(QString("account %1").arg(id)));
    }
}

} // namespace

class tst_one_truth : public QObject {
    Q_OBJECT
private Q_SLOTS:
    /// What makes all other tests mean something: the rows written past the program are the screens' own
    /// rows.
    void booksArePostedAsByTheScreens() {
        const Held held(planOf(30, false));
        BooksOffice written(held);
        BooksOffice typed(held);
        typed.connect();
        for (const BookVoucher &voucher : held.vouchers) {
            if (voucher.kind > Kind::JV)
                continue;
            written.catalog.post(voucher);
            saveOnScreen(voucher);
        }
        for (const char *rows :
             {"select VouStatus, VouNo, EntryNo, AcCode, CrAc, quote(DrAmt), quote(CrAmt), VouDate, "
              "quote(ChecqNo), quote(Naration), quote(FileNo), quote(BillNo), quote(SessionID), quote(SubID) "
              "from DetJV order by VouStatus, VouNo, rowid",
              "select VouStatus, VouNo, VouDate, PaidReceive, quote(TotalAmount), Login from MasJV "
              "order by VouStatus, VouNo"})
            QCOMPARE(typed.catalog.ask(rows), written.catalog.ask(rows));
    }

    void agree_data() {
        QTest::addColumn<int>("vouchers");
        for (const int vouchers : {1, 2, 4, 9, 25, 60, 150, 400, 900, 2500})
            fill(QTest::addRow("%d vouchers", vouchers), vouchers);
    }

    void agree() {
        QFETCH(int, vouchers);
        const Held paired(planOf(vouchers, false));
        BooksOffice office(paired);
        office.connect();
        std::size_t typed = 0;
        for (; typed < paired.vouchers.size() && typed < 5 && paired.vouchers[typed].kind <= Kind::JV;
             ++typed)
            saveOnScreen(paired.vouchers[typed]);
        post(office.catalog, std::span(paired.vouchers).subspan(typed));
        check(paired, office.catalog, Year);

        // The same books, and then rows that have no other side.
        const Held all(planOf(vouchers, true));
        post(office.catalog, std::span(all.vouchers).subspan(paired.vouchers.size()));
        if (!QTest::currentTestFailed())
            check(all, office.catalog, Year, paired.sums(Year));
    }

    /// The same through the menu, the screen and the viewer.
    void onTheScreen() {
        const Held held(planOf(40, true));
        const std::map<int, Sums> sums = held.sums(Year);
        BooksDesk desk(held);
        const auto sumsOf = [&](const std::string &name) {
            const auto found = std::ranges::find(held.books.accounts(), name, &BookAccount::name);
            return std::pair(QString::fromStdString(found->nodes), sums.at(found->id));
        };
        const auto &[cashCode, cash] = sumsOf("CASH 0");
        const auto &[bankCode, bank] = sumsOf("BANK 1");
        QVERIFY(cash.rows > 5 && bank.rows > 5);
        QVERIFY(ledgerOf(*desk.cashBook(Year)).closing == cash.closing() + held.forwarded(Year));
        QVERIFY(ledgerOf(*desk.bankBook(Year, "BANK 1")).closing == bank.closing() + bank.gap);
        for (const Ledger form : {Ledger::Simple, Ledger::Detail}) {
            QVERIFY(ledgerOf(*desk.ledger(form, Year, "CASH 0")).closing == cash.closing());
            QVERIFY(ledgerOf(*desk.ledger(form, Year, "BANK 1")).closing == bank.closing());
        }
        const Balance simple(*desk.balance("", Year));
        const Balance control(*desk.balance("2", Year));
        const Balance whole(*desk.balance("3", Year));
        QCOMPARE(simple.rows.at(cashCode), (Columns{cash.debits, cash.credits}));
        QCOMPARE(simple.rows.at(bankCode), (Columns{bank.debits, bank.credits}));
        QCOMPARE(whole.rows.at(cashCode)[4] - whole.rows.at(cashCode)[5], cash.closing());
        QCOMPARE(whole.rows.at(bankCode)[4] - whole.rows.at(bankCode)[5], bank.closing());
        QCOMPARE(control.grand, simple.grand);
        QCOMPARE((Columns{whole.grand[2], whole.grand[3]}), simple.grand);
        QCOMPARE(simple.entries, (Columns{held.forwarded(Year), 0}));
    }

    /// An opening balance, debits and credits that differ little: what is left of them is exact.
    void hugeAmounts() {
        const Held held(planOf(0, false));
        const int bank = held.books.banks().front();
        const int other = held.books.accounts().back().id;
        for (const Cents most :
             {9'999'999'999'99LL, 9'999'999'999'999'99LL}) { // ten digits before the point, thirteen
            BooksOffice office(held);
            office.connect();
            office.catalog.run("update Accounts set OpenBal = " + amountText(-most).toStdString() +
                               " where RowID = " + std::to_string(bank));
            const BookVoucher before{Kind::JV, 1, Year.from.addDays(-1), {}, {{bank, other, most - 7}}};
            const BookVoucher voucher{
                Kind::JV, 2, Year.from, {}, {{bank, other, most - 29}, {other, bank, most - 31}}};
            post(office.catalog, std::vector{before, voucher});
            const Columns expected{0, 7, most - 29, most - 31, 0, 5};
            const Balance whole(*printedBalance("3", Year));
            for (const BookAccount &account : held.books.accounts())
                if (account.id == bank)
                    QCOMPARE(whole.rows.at(QString::fromStdString(account.nodes)), expected);
            for (const auto &document :
                 {printedLedger(Ledger::Simple, bank, Year), printedBook(bank, Year)}) {
                const PrintedLedger read = ledgerOf(*document);
                QVERIFY(read.opening == -7 && read.closing == -5);
            }
        }
    }

    /// A file holds no hundredths above 70 million millions: what needs them is refused and leaves nothing
    /// behind.
    void moreThanCanBeKept() {
        const Held held(planOf(0, false));
        BooksOffice office(held);
        office.connect();
        const int cash = held.books.cashAccounts().front();
        const int other = held.books.accounts().back().id;
        BookVoucher voucher{Kind::CP, 1, Year.from, {}, {}};
        for (const Cents amount : {99'999'999'999'999'00LL, 1LL})
            voucher.entries.push_back({other, cash, amount});
        QVERIFY_EXCEPTION_THROWN(saveOnScreen(voucher), zel::Error);
        QCOMPARE(office.catalog.ask("select count(*) from DetJV union all select count(*) from MasJV"),
                 (std::vector<std::vector<std::string>>{{"0"}, {"0"}}));
    }
};

ZEL_TEST_MAIN(tst_one_truth)

#include "tst_one_truth.moc"
