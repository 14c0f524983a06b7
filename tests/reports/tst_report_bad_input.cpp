#include "tests/reports/books_desk.h"
#include "tests/support/facts.h"
#include "tests/support/test_program.h"

#include <QTest>

#include <set>

using namespace zel;
using namespace zel::test;

namespace {

constexpr const char *Facts = "reports/bad_input.json";

BooksPlan smallBooks() {
    BooksPlan plan = planOf(30, false);
    plan.seed = 5;
    return plan;
}

/// The sums of all lines but the totals: whatever has no place in the chart has a line all the same.
Columns linesOf(const report::Document &document, std::size_t amounts) {
    Columns lines(amounts);
    for (const PrintedLine &line : balanceOf(document))
        if (!line.name.startsWith("Total ") && !line.name.startsWith("Grand total"))
            add(lines, line.amounts);
    return lines;
}

/// Of the accounts so named the one with the most rows.
int busiest(const Held &held, const char *begin) {
    const std::map<int, Sums> sums = held.sums(Year);
    int found = 0;
    for (const BookAccount &account : held.books.accounts())
        if (account.name.starts_with(begin) && (found == 0 || sums.at(account.id).rows > sums.at(found).rows))
            found = account.id;
    return found;
}

} // namespace

/// What a clerk, a second clerk or a hand in the database may do to books: every report comes up, and no
/// figure is lost.

class tst_report_bad_input : public QObject {
    Q_OBJECT
private Q_SLOTS:
    /// %1: the account of the ledger that moved most.
    void damagedChart_data() { rowsFrom<QString, bool, bool>(Facts); }

    /// The sums of all rows stay the totals of every trial balance, and the books go on saying what they
    /// said; a deleted account takes its opening balance along.
    void damagedChart() {
        auto [damage, losesAccount, losesCash] = fetched<QString, bool, bool>();
        const Held held(smallBooks());
        BooksOffice office(held);
        post(office.catalog, held.vouchers);
        office.connect();
        const int account = busiest(held, "ACCOUNT");
        const int cash = held.books.cashAccounts().front();
        std::map<int, Sums> sums = held.sums(Year);
        QVERIFY(sums[account].rows > 2 && sums[account].opening != 0);
        office.catalog.run(damage.replace("%1", QString::number(account)).toStdString());
        for (const BookAccount &one : held.books.accounts())
            if ((losesAccount && one.id == account) || (losesCash && one.id == cash))
                sums[one.id].opening -= one.opening;

        Columns total(2);
        Columns whole(6);
        for (const auto &[id, sum] : sums) {
            add(total, {sum.debits, sum.credits});
            add(whole, sum.row());
        }
        add(whole, lackingOpenings(whole));
        for (const char *which : {"", "2", "3"}) {
            const Columns expected = which[0] == '3' ? whole : total;
            const report::DocumentPtr document = printedBalance(which, Year);
            const Balance balance(*document);
            QCOMPARE(balance.grand, expected);
            QVERIFY(balance.entries.empty());
            QCOMPARE(linesOf(*document, expected.size()), expected);
        }
        for (const int id : {account, cash}) {
            for (const Ledger form : {Ledger::Simple, Ledger::Detail})
                QVERIFY(ledgerOf(*printedLedger(form, id, Year)).closing == sums[id].closing());
            QVERIFY(ledgerOf(*printedBook(id, Year)).closing == sums[id].bookClosing());
            QCOMPARE(ledgerOf(*printedBook(id, Year)).rows, sums[id].contraRows);
        }
    }

    void emptyPeriods_data() { rowsFrom<QDate, QDate>(Facts); }

    /// By the screen: openings alone, which are what closes.
    void emptyPeriods() {
        const auto [from, to] = fetched<QDate, QDate>();
        const Held held(smallBooks());
        const Period period{from, to};
        const std::map<int, Sums> sums = held.sums(period);
        BooksDesk desk(held);
        const Sums &cash = sums.at(held.books.cashAccounts().front());
        const Sums &bank = sums.at(held.books.banks().front());
        const auto isOpening = [](const report::DocumentPtr &document, const Sums &sum) {
            const PrintedLedger read = ledgerOf(*document);
            return read.rows == 0 && read.opening == sum.opening && read.closing == sum.opening &&
                   read.debits == 0 && read.credits == 0;
        };
        QVERIFY(isOpening(desk.cashBook(period), cash));
        QVERIFY(isOpening(desk.bankBook(period, "BANK 0"), bank));
        QVERIFY(isOpening(desk.ledger(Ledger::Simple, period, "CASH 0"), cash));
        QVERIFY(isOpening(desk.ledger(Ledger::Detail, period, "BANK 0"), bank));
        for (const char *which : {"", "2"}) {
            const Balance balance(*desk.balance(which, period));
            QVERIFY(balance.rows.empty() && isZero(balance.grand) && balance.entries.empty());
        }
        const Balance whole(*desk.balance("3", period));
        Columns expected(6);
        for (const auto &[id, sum] : sums)
            add(expected, sum.row());
        add(expected, lackingOpenings(expected));
        QCOMPARE(whole.grand, expected);
        QVERIFY(whole.entries.empty());
    }

    /// How often a book or a trial balance is printed.
    void companies_data() { rowsFrom<QString, int>(Facts); }

    /// By the screen: the books and the trial balances ask for a company, the ledgers don't.
    void companies() {
        const auto [change, times] = fetched<QString, int>();
        const Held held(smallBooks());
        BooksDesk desk(held);
        desk.catalog.run(change.toStdString());
        const auto count = [](const report::DocumentPtr &document, const char *words) {
            return int(document->plainText().count(words));
        };
        QCOMPARE(count(desk.cashBook(Year), "Closing balance"), times);
        QCOMPARE(count(desk.bankBook(Year, "BANK 0"), "Closing balance"), times);
        for (const Ledger form : {Ledger::Simple, Ledger::Detail})
            QCOMPARE(count(desk.ledger(form, Year, "BANK 0"), "Closing balance"), 1);
        for (const char *which : {"", "2", "3"}) {
            const report::DocumentPtr document = desk.balance(which, Year);
            QCOMPARE(count(document, "Grand total"), times);
            if (times == 0)
                QCOMPARE(document->plainText(), QString());
        }
    }

    /// Rows that no screen writes: posted to a heading, to no account, to none that ever was; amounts missing
    /// or below 0; a day that is missing, or the last one and bears a time. They count once and in every
    /// report alike.
    void oddRows() {
        const Held held(smallBooks());
        BooksOffice office(held);
        post(office.catalog, held.vouchers);
        office.connect();
        const int cash = held.books.cashAccounts().front();
        Columns total(2);
        for (const auto &[id, sum] : held.sums(Year))
            add(total, {sum.debits, sum.credits});
        const std::map<int, Sums> before = held.sums(Year);
        for (const char *values :
             {"901, '2025-05-05', HEAD, CASH, 10.10, 0", "901, '2025-05-05', CASH, HEAD, 0, 10.10",
              "902, '2025-05-05', null, CASH, 20.20, 0", "902, '2025-05-05', CASH, null, 0, 20.20",
              "903, '2025-05-05', 0, CASH, 0.07, null", "903, '2025-05-05', CASH, 0, null, 0.07",
              "904, '2025-05-05', 99999, CASH, null, null", "905, '2025-05-05', 99999, CASH, -5, 0",
              "905, '2025-05-05', CASH, 99999, 0, -5", "906, null, 99999, CASH, 1000000, 0",
              "907, '2025-12-31 13:14:15.000', 99999, CASH, 3, 0",
              "907, '2025-12-31 13:14:15.000', CASH, 99999, 0, 3"})
            office.catalog.run(
                "insert into DetJV (VouStatus, EntryNo, VouNo, VouDate, AcCode, CrAc, DrAmt, CrAmt) "
                "values ('JV', 1, " +
                QString(values)
                    .replace("CASH", QString::number(cash))
                    .replace("HEAD", QString::number(held.books.studentsHead()))
                    .toStdString() +
                ")");
        const Cents moved = 10'10 + 20'20 + 7 - 5'00 + 3'00;
        Columns whole = total;
        add(whole, {moved, moved});
        for (const char *which : {"", "2", "3"}) {
            const report::DocumentPtr document = printedBalance(which, Year);
            const Balance balance(*document);
            const std::size_t at = which[0] == '3' ? 2 : 0;
            QCOMPARE((Columns{balance.grand[at], balance.grand[at + 1]}), whole);
            QVERIFY(balance.entries.empty());
            QCOMPARE(linesOf(*document, balance.grand.size()), balance.grand);
        }
        const Cents closing = before.at(cash).closing() - moved;
        QVERIFY(ledgerOf(*printedLedger(Ledger::Simple, cash, Year)).closing == closing);
        QVERIFY(ledgerOf(*printedLedger(Ledger::Detail, cash, Year)).closing == closing);
        QVERIFY(ledgerOf(*printedBook(cash, Year)).closing == before.at(cash).bookClosing() - moved);
        QVERIFY(ledgerOf(*printedLedger(Ledger::Detail, 99999, Year)).closing == -2'00);
    }
};

ZEL_TEST_MAIN(tst_report_bad_input)

#include "tst_report_bad_input.moc"
