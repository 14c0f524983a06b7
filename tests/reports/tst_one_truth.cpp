#include "platform/ado/connection.h"
#include "shell/module1.h"
#include "tests/reports/printed.h"
#include "tests/reports/voucher_clerk.h"
#include "tests/support/book_catalog.h"
#include "tests/support/office.h"
#include "tests/support/test_program.h"

#include <QTest>

#include <map>
#include <span>

using namespace zel;
using namespace zel::test;

namespace {

const QDate From(2025, 1, 1);
const QDate To(2025, 12, 31);

BooksPlan planOf(int vouchers, bool forwarded) {
    BooksPlan plan;
    plan.seed = std::uint64_t(vouchers);
    plan.heads = 3;
    plan.subs = 31; // the eleventh of a control account is numbered 1.11
    plan.cash = 2;
    plan.banks = 3;
    plan.students = 3 + vouchers / 100;
    plan.others = 7 + vouchers / 40;
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

/// What the rows say of one account, in a period; a debit is positive.
struct Sums {
    Cents opening = 0;
    Cents debits = 0;
    Cents credits = 0;
    int rows = 0;
    // And what those rows say that name it as the other side.
    Cents contraDebits = 0;
    Cents contraCredits = 0;
    int contraRows = 0;
    /// By how much its book closes above its ledger, from the rules of posting alone.
    Cents gap = 0;

    [[nodiscard]] Cents closing() const { return opening + debits - credits; }
    [[nodiscard]] Cents bookClosing() const { return opening + contraCredits - contraDebits; }
    friend bool operator==(const Sums &, const Sums &) = default;
};

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

    /// A book lists the rows that name its account as the other side, a ledger the account's own rows. Pairs
    /// (BP, BR, JV, FR, AR) are in both. Of CP and CR the cash account has one row in the ledger for all the
    /// lines in the book; but a line's own account is in its ledger alone, since the cash row names no other
    /// side. A CF row stands in its account's ledger and, as a receipt, in the cash book, and nowhere else.
    /// So a book closes as the ledger does unless lines of CP or CR were posted to its account, or CF rows
    /// bear it on either side.
    [[nodiscard]] std::map<int, Sums> sums(const Period &period) const {
        std::map<int, Sums> all;
        for (const BookAccount &account : books.accounts())
            if (account.status == std::string("DD"))
                all[account.id].opening = account.opening;
        for (const BookLine &line : lines) {
            const Cents change = line.debit - line.credit;
            if (line.date < period.from)
                all[line.account].opening += change;
            if (!period.holds(line.date))
                continue;
            Sums &own = all[line.account];
            own.debits += line.debit;
            own.credits += line.credit;
            ++own.rows;
            if (line.contra != 0) {
                Sums &other = all[line.contra];
                other.contraDebits += line.debit;
                other.contraCredits += line.credit;
                ++other.contraRows;
            }
            if ((line.kind == Kind::CP || line.kind == Kind::CR) && !line.summary)
                own.gap -= change;
            if (line.kind == Kind::CF) {
                own.gap += line.credit;
                all[line.contra].gap += line.credit;
            }
        }
        return all;
    }
    [[nodiscard]] Cents forwarded(const Period &period) const {
        Cents sum = 0;
        for (const BookLine &line : lines)
            if (line.kind == Kind::CF && period.holds(line.date))
                sum += line.credit;
        return sum;
    }

    SeededBooks books;
    std::vector<BookVoucher> vouchers;
    std::vector<BookLine> lines;
};

using Columns = std::vector<Cents>;

/// A balance in a debit and a credit column.
Columns sides(Cents balance) {
    return balance > 0 ? Columns{balance, 0} : Columns{0, -balance};
}

/// The printed ledgers of an account, and its book.
void checkLedgers(int account, const Sums &sum, const Period &period) {
    for (const Ledger form : {Ledger::Simple, Ledger::Detail}) {
        const PrintedLedger ledger = ledgerOf(*printedLedger(form, account, period));
        QVERIFY(ledger.opening == sum.opening);
        QVERIFY(ledger.debits == sum.debits);
        QVERIFY(ledger.credits == sum.credits);
        QVERIFY(ledger.closing == sum.closing());
        QCOMPARE(ledger.rows, sum.rows);
    }
    const PrintedLedger book = ledgerOf(*printedBook(account, period));
    QVERIFY(book.opening == sum.opening);
    // Received is what the others were credited, paid what they were debited.
    QVERIFY(book.debits == sum.contraCredits);
    QVERIFY(book.credits == sum.contraDebits);
    QVERIFY(book.closing == sum.bookClosing());
    QVERIFY(book.closing == sum.closing() + sum.gap);
    QCOMPARE(book.rows, sum.contraRows);
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

/// A trial balance's lines by what they stand for.
struct Balance {
    explicit Balance(const report::Document &document) {
        for (const PrintedLine &line : balanceOf(document)) {
            if (line.name.startsWith("Grand total"))
                grand = line.amounts;
            else if (line.name.startsWith("Difference"))
                difference = line;
            else if (line.name.startsWith("Total CONTROL"))
                heads[line.name.section(' ', 2, 2)] = line.amounts;
            else if (!line.code.isEmpty())
                rows[line.code] = line.amounts;
        }
    }
    std::map<QString, Columns> rows;  ///< by code
    std::map<QString, Columns> heads; ///< the totals of control accounts, by their code
    Columns grand;
    std::optional<PrintedLine> difference;
};

void add(Columns &sum, const Columns &more) {
    sum.resize(more.size());
    for (std::size_t i = 0; i < more.size(); ++i)
        sum[i] += more[i];
}

bool isZero(const Columns &amounts) {
    return std::ranges::all_of(amounts, [](Cents amount) { return amount == 0; });
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
        Columns row = sides(sum.opening);
        row.insert(row.end(), moved.begin(), moved.end());
        const Columns end = sides(sum.closing());
        row.insert(row.end(), end.begin(), end.end());
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
    QVERIFY(simple.grand == total);
    QVERIFY(control.grand == total);
    QVERIFY(whole.grand == wholeTotal);
    QVERIFY((Columns{whole.grand[2], whole.grand[3]}) == simple.grand);

    for (const Balance *balance : {&simple, &control, &whole}) {
        QCOMPARE(balance->difference.has_value(), oneSided != 0);
        if (oneSided == 0)
            continue;
        QVERIFY(balance->difference->name.contains("the credits exceed the debits by"));
        const std::size_t credit = balance == &whole ? 3 : 1;
        for (std::size_t i = 0; i < balance->difference->amounts.size(); ++i)
            QCOMPARE(balance->difference->amounts[i], i == credit ? oneSided : 0);
    }
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

void post(BookCatalog &catalog, std::span<const BookVoucher> vouchers) {
    catalog.run("begin");
    for (const BookVoucher &voucher : vouchers)
        catalog.post(voucher);
    catalog.run("commit; analyze");
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
    void booksArePostedAsByTheScreens();
    void agree_data();
    void agree();
};

/// What makes all other tests mean something: the rows written past the program are the screens' own rows.
void tst_one_truth::booksArePostedAsByTheScreens() {
    const Held held(planOf(30, false));
    Office written;
    Office typed;
    BookCatalog direct(database(written));
    BookCatalog screens(database(typed));
    direct.open(held.books);
    screens.open(held.books);
    logOn(typed);
    for (const BookVoucher &voucher : held.vouchers) {
        if (voucher.kind > Kind::JV)
            continue;
        direct.post(voucher);
        saveOnScreen(voucher);
    }
    for (const char *rows :
         {"select VouStatus, VouNo, EntryNo, AcCode, CrAc, quote(DrAmt), quote(CrAmt), VouDate, "
          "quote(ChecqNo), quote(Naration), quote(FileNo), quote(BillNo), quote(SessionID), quote(SubID) "
          "from DetJV order by VouStatus, VouNo, rowid",
          "select VouStatus, VouNo, VouDate, PaidReceive, quote(TotalAmount), Login from MasJV "
          "order by VouStatus, VouNo"})
        QCOMPARE(screens.ask(rows), direct.ask(rows));
}

void tst_one_truth::agree_data() {
    QTest::addColumn<int>("vouchers");
    for (const int vouchers : {1, 2, 4, 9, 25, 60, 150, 400, 900, 2500})
        QTest::addRow("%d vouchers", vouchers) << vouchers;
}

void tst_one_truth::agree() {
    QFETCH(int, vouchers);
    const Held paired(planOf(vouchers, false));
    Office office;
    BookCatalog catalog(database(office));
    catalog.open(paired.books);
    logOn(office);
    std::size_t typed = 0;
    for (; typed < paired.vouchers.size() && typed < 5 && paired.vouchers[typed].kind <= Kind::JV; ++typed)
        saveOnScreen(paired.vouchers[typed]);
    post(catalog, std::span(paired.vouchers).subspan(typed));
    const Period period{From, To};
    check(paired, catalog, period);
    if (QTest::currentTestFailed())
        return;

    // The same books, and then rows that have no other side.
    const Held all(planOf(vouchers, true));
    post(catalog, std::span(all.vouchers).subspan(paired.vouchers.size()));
    check(all, catalog, period, paired.sums(period));
}

ZEL_TEST_MAIN(tst_one_truth)

#include "tst_one_truth.moc"
