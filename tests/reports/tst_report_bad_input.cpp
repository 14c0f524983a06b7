#include "tests/reports/books_desk.h"
#include "tests/support/rows.h"
#include "tests/support/test_program.h"

#include <QTest>

#include <set>

using namespace zel;
using namespace zel::test;

namespace {

BooksPlan smallBooks() {
    BooksPlan plan = planOf(30, false);
    plan.seed = 5;
    return plan;
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
    void damagedChart_data() {
        QTest::addColumn<QString>("damage"); // %1: the account of the ledger that moved most
        columns<bool, bool>("losesAccount", "losesCash");
        row("whole", "select 1", false, false);
        row("an account deleted under its vouchers", "delete from Accounts where RowID = %1", true, false);
        row("the cash account deleted", "delete from Accounts where AcName = 'CASH 0'", false, true);
        row("the sub-control account of cash deleted", "delete from Accounts where AcName = 'SUB CONTROL 0'",
            false, false);
        row("all control accounts deleted", "delete from Accounts where AcStatus = 'HH'", false, false);
        row("all sub-control accounts deleted", "delete from Accounts where AcStatus = 'HD'", false, false);
        row("an account without a code and a name",
            "update Accounts set AcNodes = null, AcName = null, ParentID = null, Dcode = null where RowID = "
            "%1",
            false, false);
        row("two sub-control accounts of one code",
            "update Accounts set AcNodes = '1.1' where AcName = 'SUB CONTROL 3'", false, false);
        row("an account that became a heading", "update Accounts set AcStatus = 'HD' where RowID = %1", false,
            false);
    }

    /// The sums of all rows stay the totals of every trial balance, and the books go on saying what they
    /// said; a deleted account takes its opening balance along.
    void damagedChart() {
        QFETCH(QString, damage);
        QFETCH(bool, losesAccount);
        QFETCH(bool, losesCash);
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
            const Columns begin = sides(sum.opening);
            const Columns end = sides(sum.closing());
            add(whole, {begin[0], begin[1], sum.debits, sum.credits, end[0], end[1]});
        }
        add(whole, lackingOpenings(whole));
        for (const char *which : {"", "2", "3"}) {
            const Columns expected = which[0] == '3' ? whole : total;
            const report::DocumentPtr document = printedBalance(which, Year);
            Balance balance(*document);
            QCOMPARE(balance.grand, expected);
            QVERIFY(balance.entries.empty());
            // Whatever has no place in the chart has a line all the same.
            Columns lines(expected.size());
            for (const PrintedLine &line : balanceOf(*document))
                if (!line.name.startsWith("Total ") && !line.name.startsWith("Grand total"))
                    add(lines, line.amounts);
            QCOMPARE(lines, expected);
        }
        for (const int id : {account, cash}) {
            QVERIFY(ledgerOf(*printedLedger(Ledger::Simple, id, Year)).closing == sums[id].closing());
            QVERIFY(ledgerOf(*printedLedger(Ledger::Detail, id, Year)).closing == sums[id].closing());
            QVERIFY(ledgerOf(*printedBook(id, Year)).closing == sums[id].bookClosing());
            QCOMPARE(ledgerOf(*printedBook(id, Year)).rows, sums[id].contraRows);
        }
    }

    void emptyPeriods_data() {
        columns<QDate, QDate>("from", "to");
        row("before all vouchers", QDate(1990, 1, 1), QDate(1990, 12, 31));
        row("after all vouchers", QDate(2090, 1, 1), QDate(2090, 12, 31));
        row("reversed dates", QDate(2025, 12, 31), QDate(2025, 1, 1));
        row("a day and the day before", QDate(2025, 1, 2), QDate(2025, 1, 1));
    }

    /// By the screen: openings alone, which are what closes.
    void emptyPeriods() {
        QFETCH(QDate, from);
        QFETCH(QDate, to);
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
        Columns openings(2);
        for (const auto &[id, sum] : sums)
            add(openings, sides(sum.opening));
        Columns expected{openings[0], openings[1], 0, 0, openings[0], openings[1]};
        add(expected, lackingOpenings(expected));
        QCOMPARE(whole.grand, expected);
        QVERIFY(whole.entries.empty());
    }

    void companies_data() {
        QTest::addColumn<QString>("change");
        QTest::addColumn<int>("times"); // that a book or a trial balance is printed
        QTest::newRow("none active") << "update Company set comActive = null" << 0;
        row("no company", "delete from Company", 0);
        row("two active", "insert into Company (Company, comActive) values ('SECOND', 'Y')", 2);
        row("two, one active", "insert into Company (Company) values ('SECOND')", 1);
    }

    /// By the screen: the books and the trial balances ask for a company, the ledgers don't.
    void companies() {
        QFETCH(QString, change);
        QFETCH(int, times);
        const Held held(smallBooks());
        BooksDesk desk(held);
        desk.catalog.run(change.toStdString());
        const auto count = [](const report::DocumentPtr &document, const char *words) {
            return int(document->plainText().count(words));
        };
        QCOMPARE(count(desk.cashBook(Year), "Closing balance"), times);
        QCOMPARE(count(desk.bankBook(Year, "BANK 0"), "Closing balance"), times);
        QCOMPARE(count(desk.ledger(Ledger::Simple, Year, "BANK 0"), "Closing balance"), 1);
        QCOMPARE(count(desk.ledger(Ledger::Detail, Year, "BANK 0"), "Closing balance"), 1);
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
        const int head = held.books.studentsHead();
        Columns total(2);
        for (const auto &[id, sum] : held.sums(Year))
            add(total, {sum.debits, sum.credits});
        const std::map<int, Sums> before = held.sums(Year);
        const std::string id = std::to_string(cash);
        office.catalog.run(
            "insert into DetJV (VouNo, VouStatus, VouDate, EntryNo, AcCode, CrAc, DrAmt, CrAmt) values "
            "(901, 'JV', '2025-05-05', 1, " +
            std::to_string(head) + ", " + id +
            ", 10.10, 0), "
            "(901, 'JV', '2025-05-05', 1, " +
            id + ", " + std::to_string(head) +
            ", 0, 10.10), "
            "(902, 'JV', '2025-05-05', 1, null, " +
            id +
            ", 20.20, 0), "
            "(902, 'JV', '2025-05-05', 1, " +
            id +
            ", null, 0, 20.20), "
            "(903, 'JV', '2025-05-05', 1, 0, " +
            id +
            ", 0.07, null), "
            "(903, 'JV', '2025-05-05', 1, " +
            id +
            ", 0, null, 0.07), "
            "(904, 'JV', '2025-05-05', 1, 99999, " +
            id +
            ", null, null), "
            "(905, 'JV', '2025-05-05', 1, 99999, " +
            id +
            ", -5, 0), "
            "(905, 'JV', '2025-05-05', 1, " +
            id +
            ", 99999, 0, -5), "
            "(906, 'JV', null, 1, 99999, " +
            id +
            ", 1000000, 0), "
            "(907, 'JV', '2025-12-31 13:14:15.000', 1, 99999, " +
            id +
            ", 3, 0), "
            "(907, 'JV', '2025-12-31 13:14:15.000', 1, " +
            id + ", 99999, 0, 3)");
        const Cents moved = 10'10 + 20'20 + 7 - 5'00 + 3'00;
        Columns whole = total;
        add(whole, {moved, moved});
        for (const char *which : {"", "2", "3"}) {
            const report::DocumentPtr document = printedBalance(which, Year);
            const Balance balance(*document);
            const std::size_t at = which[0] == '3' ? 2 : 0;
            QCOMPARE((Columns{balance.grand[at], balance.grand[at + 1]}), whole);
            QVERIFY(balance.entries.empty());
            Columns lines(balance.grand.size());
            for (const PrintedLine &line : balanceOf(*document))
                if (!line.name.startsWith("Total ") && !line.name.startsWith("Grand total"))
                    add(lines, line.amounts);
            QCOMPARE(lines, balance.grand);
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
