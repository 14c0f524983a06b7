#include "platform/ado/connection.h"
#include "platform/report/report.h"
#include "tests/reports/posted_catalog.h"
#include "tests/support/rows.h"

#include <QRegularExpression>
#include <QTest>

#include <optional>

using zel::test::columns;
using zel::test::fill;
using zel::test::row;

using namespace zel;
using namespace zel::report;

namespace {

constexpr char January[] = "2024-01-01 2024-01-31";

/// One account of each kind that a usual institute moves, at codes that order differently as texts.
constexpr char Usual[] = "open 1.1.1 500.00\n"
                         "open 3.1.1 -400.00\n"
                         "account 5.1.10 BOOKS\n"
                         "account 5.10 VEHICLES\n"
                         "account 5.10.1 FUEL\n"
                         "account 5.2 TRAVEL\n"
                         "account 5.2.1 TICKETS\n"
                         "account 10 SUSPENSE\n"
                         "account 10.1 CLEARING\n"
                         "account 10.1.1 CLEARING\n"
                         "2023-12-31 5.1.2 1.1.1 30.05\n"
                         "2024-01-01 5.1.2 1.1.1 10.10\n"
                         "2024-01-31 5.1.10 1.1.2 1200.00\n"
                         "2024-01-15 5.10.1 1.1.1 20.00\n"
                         "2024-01-15 5.2.1 1.1.1 40.40\n"
                         "2024-01-16 1.1.2 10.1.1 3000.00\n"
                         "2024-01-17 10.1.1 4.1.1 2500.00\n"
                         "2024-02-01 5.1.1 1.1.1 9000.00\n";

} // namespace

/// The three trial balances as they print, on a real catalog.
class tst_trial_balance_documents : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void balance_data();
    void balance();
    void wholePage();
    void manyAccounts_data();
    void manyAccounts();

private:
    /// Accounts, openings and entries, one to a line: "account CODE NAME", "open CODE AMOUNT", and
    /// "DATE DEBIT CREDIT AMOUNT" with "-" for a side that is missing and "#17" for an account by its number.
    void keep(const QString &books);
    void keepEntry(const QStringList &words);
    [[nodiscard]] DocumentPtr print(const QString &report, const QString &period);

    std::optional<test::ChartCatalog> m_catalog;
};

void tst_trial_balance_documents::init() {
    m_catalog.emplace();
    m_catalog->program().Execute(
        "update Company set Company = 'NORTHFIELD INSTITUTE', comAddr = 'STATION ROAD 14', "
        "comTel = '042-111'");
}

void tst_trial_balance_documents::cleanup() {
    m_catalog.reset();
}

void tst_trial_balance_documents::keep(const QString &books) {
    for (const QString &line : books.split('\n', Qt::SkipEmptyParts)) {
        const QStringList words = line.split(' ');
        const QString &code = words[1];
        if (words[0] == "open") {
            m_catalog->program().Execute("update Accounts set OpenBal = "_sql + words[2] +
                                         " where AcNodes = '" + code + "'");
        } else if (words[0] == "account") {
            const auto points = code.count('.');
            const QString parent = points == 0 ? code : code.section('.', 0, -2);
            m_catalog->program().Execute(
                "insert into Accounts (ParentID, Dcode, AcNodes, AcName, AcStatus) values ('"_sql + parent +
                "', " + (points == 0 ? QString("0") : code.section('.', -1)) + ", '" + code + "', '" +
                words.mid(2).join(' ') + "', '" + QStringList{"HH", "HD", "DD"}[points] + "')");
        } else {
            keepEntry(words);
        }
    }
}

void tst_trial_balance_documents::keepEntry(const QStringList &words) {
    const auto line = [&](const QString &account, const QString &debit, const QString &credit) {
        if (account == "-")
            return;
        const Sql code = account.startsWith('#')
                             ? Sql() + account.mid(1)
                             : "(select RowID from Accounts where AcNodes = '"_sql + account + "')";
        m_catalog->program().Execute(
            "insert into DetJV (VouNo, VouStatus, VouDate, EntryNo, AcCode, DrAmt, CrAmt) values (1, 'JV', '"_sql +
            words[0] + "', 1, " + code + ", " + debit + ", " + credit + ")");
    };
    line(words[1], words[3], "0");
    line(words[2], "0", words[3]);
}

DocumentPtr tst_trial_balance_documents::print(const QString &number, const QString &period) {
    const QString from = period.section(' ', 0, 0);
    const QString to = period.section(' ', 1);
    if (number == "3")
        m_catalog->program().Execute("exec TrialBalance3 '"_sql + from + "','" + to + "'");
    else
        m_catalog->program().Execute("exec TrialBalance '"_sql + from + "','" + to + "'");
    auto report = Application(m_catalog->program())
                      .OpenReport(QString(ZEL_SOURCE_DIR) + "\\rpt\\rptTrialBalance" + number + ".rpt");
    Table &table = report->Database().Tables().Item(1);
    table.ConnectionProperties("User ID").Value = "sa";
    report->EnableParameterPrompting = false;
    report->RecordSelectionFormula = "{Company.comActive} = 'Y'";
    report->FormulaFields("Dates").Text = "\"From :  "_sql + from + "   To :  " + to + "\"";
    report->setPrintTime(QDateTime(QDate(2024, 3, 14), QTime(9, 5)));
    return report->document();
}

void tst_trial_balance_documents::balance_data() {
    columns<QString, QString, QString, QString>("books", "report", "period", "rows");
    const auto row = [](const char *name, const QString &books, const char *report, const char *period,
                        const char *rows) {
        zel::test::row(name, books, QString(report), QString(period), QString(rows));
    };
    row("subsidiary: by the codes' numbers", Usual, "", January,
        "1 ASSETS\n"
        "1.1 CASH AND BANK\n"
        "1.1.1 CASH IN HAND 70.50\n"
        "1.1.2 CITY BANK 3,000.00 1,200.00\n"
        "Total CASH AND BANK 3,000.00 1,270.50\n"
        "Total ASSETS 3,000.00 1,270.50\n"
        "4 INCOME\n"
        "4.1 FEES\n"
        "4.1.1 TUITION FEE 2,500.00\n"
        "Total FEES – 2,500.00\n"
        "Total INCOME – 2,500.00\n"
        "5 EXPENSES\n"
        "5.1 OFFICE EXPENSES\n"
        "5.1.2 ELECTRICITY 10.10\n"
        "5.1.10 BOOKS 1,200.00\n"
        "Total OFFICE EXPENSES 1,210.10 –\n"
        "5.2 TRAVEL\n"
        "5.2.1 TICKETS 40.40\n"
        "Total TRAVEL 40.40 –\n"
        "5.10 VEHICLES\n"
        "5.10.1 FUEL 20.00\n"
        "Total VEHICLES 20.00 –\n"
        "Total EXPENSES 1,270.50 –\n"
        "10 SUSPENSE\n"
        "10.1 CLEARING\n"
        "10.1.1 CLEARING 2,500.00 3,000.00\n"
        "Total CLEARING 2,500.00 3,000.00\n"
        "Total SUSPENSE 2,500.00 3,000.00\n"
        "Grand total, 8 accounts 6,770.50 6,770.50");
    row("control: the same", Usual, "2", January,
        "1 ASSETS\n"
        "1.1 CASH AND BANK 3,000.00 1,270.50\n"
        "Total ASSETS 3,000.00 1,270.50\n"
        "4 INCOME\n"
        "4.1 FEES 2,500.00\n"
        "Total INCOME – 2,500.00\n"
        "5 EXPENSES\n"
        "5.1 OFFICE EXPENSES 1,210.10\n"
        "5.2 TRAVEL 40.40\n"
        "5.10 VEHICLES 20.00\n"
        "Total EXPENSES 1,270.50 –\n"
        "10 SUSPENSE\n"
        "10.1 CLEARING 2,500.00 3,000.00\n"
        "Total SUSPENSE 2,500.00 3,000.00\n"
        "Grand total 6,770.50 6,770.50");
    row("with opening: the same", Usual, "3", January,
        "1 ASSETS\n"
        "1.1 CASH AND BANK\n"
        "1.1.1 CASH IN HAND 469.95 70.50 399.45\n"
        "1.1.2 CITY BANK 3,000.00 1,200.00 1,800.00\n"
        "Total CASH AND BANK 469.95 – 3,000.00 1,270.50 2,199.45 –\n"
        "Total ASSETS 469.95 – 3,000.00 1,270.50 2,199.45 –\n"
        "3 CAPITAL\n"
        "3.1 CAPITAL ACCOUNTS\n"
        "3.1.1 CAPITAL OF THE INSTITUTE 400.00 400.00\n"
        "Total CAPITAL ACCOUNTS – 400.00 – – – 400.00\n"
        "Total CAPITAL – 400.00 – – – 400.00\n"
        "4 INCOME\n"
        "4.1 FEES\n"
        "4.1.1 TUITION FEE 2,500.00 2,500.00\n"
        "Total FEES – – – 2,500.00 – 2,500.00\n"
        "Total INCOME – – – 2,500.00 – 2,500.00\n"
        "5 EXPENSES\n"
        "5.1 OFFICE EXPENSES\n"
        "5.1.2 ELECTRICITY 30.05 10.10 40.15\n"
        "5.1.10 BOOKS 1,200.00 1,200.00\n"
        "Total OFFICE EXPENSES 30.05 – 1,210.10 – 1,240.15 –\n"
        "5.2 TRAVEL\n"
        "5.2.1 TICKETS 40.40 40.40\n"
        "Total TRAVEL – – 40.40 – 40.40 –\n"
        "5 EXPENSES (continued)\n"
        "5.10 VEHICLES\n"
        "5.10.1 FUEL 20.00 20.00\n"
        "Total VEHICLES – – 20.00 – 20.00 –\n"
        "Total EXPENSES 30.05 – 1,270.50 – 1,300.55 –\n"
        "10 SUSPENSE\n"
        "10.1 CLEARING\n"
        "10.1.1 CLEARING 2,500.00 3,000.00 500.00\n"
        "Total CLEARING – – 2,500.00 3,000.00 – 500.00\n"
        "Total SUSPENSE – – 2,500.00 3,000.00 – 500.00\n"
        "Opening balances without a counterpart 100.00 100.00\n"
        "Grand total, 9 accounts 500.00 500.00 6,770.50 6,770.50 3,500.00 3,500.00");

    const QString tooMuchDebit = "2024-01-05 4.1.1 - 12.34\n";
    const QString tooMuchCredit = "2024-01-05 - 4.1.1 12.34\n2024-01-06 - 4.1.1 -0.04\n";
    row("subsidiary: debits exceed", tooMuchDebit, "", January,
        "4 INCOME\n4.1 FEES\n4.1.1 TUITION FEE 12.34\nTotal FEES 12.34 –\nTotal INCOME 12.34 –\n"
        "Entries without a counterpart 12.34\nGrand total, 1 account 12.34 12.34");
    row("control: credits exceed", tooMuchCredit, "2", January,
        "4 INCOME\n4.1 FEES 12.30\nTotal INCOME – 12.30\n"
        "Entries without a counterpart 12.30\nGrand total 12.30 12.30");
    row("with opening: credits exceed", tooMuchCredit, "3", January,
        "4 INCOME\n4.1 FEES\n4.1.1 TUITION FEE 12.30 12.30\n"
        "Total FEES – – – 12.30 – 12.30\nTotal INCOME – – – 12.30 – 12.30\n"
        "Entries without a counterpart 12.30 12.30\nGrand total, 1 account – – 12.30 12.30 12.30 12.30");
    row("with opening: a difference before the period is none in it", tooMuchDebit, "3",
        "2024-02-01 2024-02-29",
        "4 INCOME\n4.1 FEES\n4.1.1 TUITION FEE 12.34 12.34\n"
        "Total FEES 12.34 – – – 12.34 –\nTotal INCOME 12.34 – – – 12.34 –\n"
        "Opening balances without a counterpart 12.34 12.34\nGrand total, 1 account 12.34 12.34 – – 12.34 "
        "12.34");

    const QString astray = "account 7.1.1 NO HEADS\n"
                           "account 8 ONLY CONTROL\n"
                           "account 8.2.1 NO SUB\n"
                           "2024-01-01 #4711 7.1.1 5.00\n"
                           "2024-01-01 8.2.1 8 7.00\n"
                           "2024-01-01 8.2.1 5.1 1.00\n";
    row("subsidiary: deleted, without heads, on heads", astray, "", January,
        "5 EXPENSES\n5.1 OFFICE EXPENSES\n5.1 OFFICE EXPENSES 1.00\n"
        "Total OFFICE EXPENSES – 1.00\nTotal EXPENSES – 1.00\n"
        "7 (no control account)\n7.1 (no sub-control account)\n7.1.1 NO HEADS 5.00\n"
        "Total 7.1 – 5.00\nTotal 7 – 5.00\n"
        "8 ONLY CONTROL\n8 (no sub-control account)\n8 ONLY CONTROL 7.00\nTotal 8 – 7.00\n"
        "8.2 (no sub-control account)\n8.2.1 NO SUB 8.00\n"
        "Total 8.2 8.00 –\nTotal ONLY CONTROL 8.00 7.00\n"
        "NOT IN THE CHART OF ACCOUNTS\nAccount no. 4711 (deleted) 5.00\nTotal not in the chart 5.00 –\n"
        "Grand total, 5 accounts 13.00 13.00");
    row("control: deleted, without heads, on heads", astray, "2", January,
        "5 EXPENSES\n5.1 OFFICE EXPENSES 1.00\nTotal EXPENSES – 1.00\n"
        "7 (no control account)\n7.1 (no sub-control account) 5.00\nTotal 7 – 5.00\n"
        "8 ONLY CONTROL\n8 (no sub-control account) 7.00\n8.2 (no sub-control account) 8.00\n"
        "Total ONLY CONTROL 8.00 7.00\n"
        "NOT IN THE CHART OF ACCOUNTS\nDeleted and misplaced accounts 5.00\nTotal not in the chart 5.00 –\n"
        "Grand total 13.00 13.00");

    row("amounts of ten digits, and below zero",
        "open 1.1.2 -9999999999.99\n2024-01-01 1.1.1 4.1.1 9999999999.99\n2024-01-01 1.1.2 4.1.1 "
        "-9999999999.99\n"
        "2024-01-02 1.1.1 4.1.1 0.01\n",
        "3", January,
        "1 ASSETS\n1.1 CASH AND BANK\n1.1.1 CASH IN HAND 10,000,000,000.00 10,000,000,000.00\n"
        "1.1.2 CITY BANK 9,999,999,999.99 -9,999,999,999.99 19,999,999,999.98\n"
        "Total CASH AND BANK – 9,999,999,999.99 0.01 – 10,000,000,000.00 19,999,999,999.98\n"
        "Total ASSETS – 9,999,999,999.99 0.01 – 10,000,000,000.00 19,999,999,999.98\n"
        "4 INCOME\n4.1 FEES\n4.1.1 TUITION FEE 0.01 0.01\nTotal FEES – – – 0.01 – 0.01\n"
        "Total INCOME – – – 0.01 – 0.01\n"
        "Opening balances without a counterpart 9,999,999,999.99 9,999,999,999.99\n"
        "Grand total, 3 accounts 9,999,999,999.99 9,999,999,999.99 0.01 0.01 19,999,999,999.99 "
        "19,999,999,999.99");
    row("openings and entries with one side, on both",
        "open 1.1.1 7.50\nopen 3.1.1 -2.00\n2023-12-31 - 3.1.1 1.25\n2024-01-09 4.1.1 - 0.75\n2024-01-09 "
        "1.1.1 4.1.1 3.00\n",
        "3", January,
        "1 ASSETS\n1.1 CASH AND BANK\n1.1.1 CASH IN HAND 7.50 3.00 10.50\n"
        "Total CASH AND BANK 7.50 – 3.00 – 10.50 –\nTotal ASSETS 7.50 – 3.00 – 10.50 –\n"
        "3 CAPITAL\n3.1 CAPITAL ACCOUNTS\n3.1.1 CAPITAL OF THE INSTITUTE 3.25 3.25\n"
        "Total CAPITAL ACCOUNTS – 3.25 – – – 3.25\nTotal CAPITAL – 3.25 – – – 3.25\n"
        "4 INCOME\n4.1 FEES\n4.1.1 TUITION FEE 0.75 3.00 2.25\n"
        "Total FEES – – 0.75 3.00 – 2.25\nTotal INCOME – – 0.75 3.00 – 2.25\n"
        "Opening balances without a counterpart 4.25 4.25\nEntries without a counterpart 0.75 0.75\n"
        "Grand total, 3 accounts 7.50 7.50 3.75 3.75 10.50 10.50");
    row("every hundredth counts",
        QString("2024-01-01 1.1.1 4.1.1 9999999999.90\n") +
            QString("2024-01-01 1.1.1 4.1.1 0.01\n").repeated(9),
        "", January,
        "1 ASSETS\n1.1 CASH AND BANK\n1.1.1 CASH IN HAND 9,999,999,999.99\n"
        "Total CASH AND BANK 9,999,999,999.99 –\nTotal ASSETS 9,999,999,999.99 –\n"
        "4 INCOME\n4.1 FEES\n4.1.1 TUITION FEE 9,999,999,999.99\n"
        "Total FEES – 9,999,999,999.99\nTotal INCOME – 9,999,999,999.99\n"
        "Grand total, 2 accounts 9,999,999,999.99 9,999,999,999.99");
    const char *longNames = "account 6 A CONTROL ACCOUNT WITH A NAME THAT HAS SIXTY CHARACTERS IN ALL\n"
                            "account 6.1 A SUB CONTROL ACCOUNT WITH A NAME OF MORE THAN SIXTY CHARACTERS\n"
                            "account 6.1.1 A SUBSIDIARY ACCOUNT WITH A NAME OF SIXTY CHARACTERS IN ALL\n"
                            "2024-01-01 6.1.1 6.1.1 1.00\n";
    row("names too long for a line", longNames, "", January,
        "6 A CONTROL ACCOUNT WITH A NAME THAT HAS SIXTY CHARACTERS IN ALL\n"
        "6.1 A SUB CONTROL ACCOUNT WITH A NAME OF MORE THAN SIXTY CHARACTERS\n"
        "6.1.1 A SUBSIDIARY ACCOUNT WITH A NAME OF SIXTY 1.00 1.00\nCHARACTERS IN ALL\n"
        "Total A SUB CONTROL ACCOUNT WITH A NAME OF 1.00 1.00\nMORE THAN SIXTY CHARACTERS\n"
        "Total A CONTROL ACCOUNT WITH A NAME THAT 1.00 1.00\nHAS SIXTY CHARACTERS IN ALL\n"
        "Grand total, 1 account 1.00 1.00");
    const char *cancelled = "account 5.1.10 BOOKS\n2024-01-01 5.1.10 - 5.00\n2024-01-02 5.1.10 - -5.00\n"
                            "2024-01-03 5.1.1 5.1.2 0.00\n";
    row("subsidiary: accounts that come to nothing", cancelled, "", January,
        "No account was posted to in this period.\nGrand total, 0 accounts – –");
    row("control: nothing in the period", Usual, "2", "2024-03-01 2024-03-31",
        "No account was posted to in this period.\nGrand total – –");
    row("subsidiary: to before from", Usual, "", "2024-01-31 2024-01-01",
        "No account was posted to in this period.\nGrand total, 0 accounts – –");
    row("with opening: nothing at all", {}, "3", January,
        "No account has an opening balance or was posted to in this period.\n"
        "Grand total, 0 accounts – – – – – –");
    row("with opening: to before from, all before from",
        "open 1.1.1 0.10\n2024-01-30 5.1.1 1.1.1 0.40\n2024-01-31 5.1.1 1.1.1 8.00\n", "3",
        "2024-01-31 2024-01-01",
        "1 ASSETS\n1.1 CASH AND BANK\n1.1.1 CASH IN HAND 0.30 0.30\n"
        "Total CASH AND BANK – 0.30 – – – 0.30\nTotal ASSETS – 0.30 – – – 0.30\n"
        "5 EXPENSES\n5.1 OFFICE EXPENSES\n5.1.1 RENT 0.40 0.40\n"
        "Total OFFICE EXPENSES 0.40 – – – 0.40 –\nTotal EXPENSES 0.40 – – – 0.40 –\n"
        "Opening balances without a counterpart 0.10 0.10\nGrand total, 2 accounts 0.40 0.40 – – 0.40 0.40");
}

/// What stands between the column titles and the page's foot.
static QString rowsOf(const DocumentPtr &document) {
    QStringList rows;
    for (const QString &page : document->plainText().split('\f')) {
        QStringList lines = page.split('\n');
        while (!lines.isEmpty() && !lines.takeFirst().startsWith("Code "))
            ;
        lines.removeLast();
        lines.removeAll("Prepared by Checked by Approved by");
        rows += lines;
    }
    return rows.join('\n');
}

void tst_trial_balance_documents::balance() {
    QFETCH(QString, books);
    QFETCH(QString, report);
    QFETCH(QString, period);
    keep(books);
    QFETCH(QString, rows);
    const QString found = rowsOf(print(report, period));
    QVERIFY2(found == rows, qPrintable(found));
}

void tst_trial_balance_documents::wholePage() {
    keep("2024-01-01 5.1.1 1.1.1 5.00\n");
    QCOMPARE(print("3", January)->plainText(),
             QString("NORTHFIELD INSTITUTE\n"
                     "STATION ROAD 14   Tel. 042-111\n"
                     "TRIAL BALANCE WITH OPENING From :  2024-01-01   To :  2024-01-31\n"
                     "Opening Period Closing\n"
                     "Code Account Debit Credit Debit Credit Debit Credit\n"
                     "1 ASSETS\n1.1 CASH AND BANK\n1.1.1 CASH IN HAND 5.00 5.00\n"
                     "Total CASH AND BANK – – – 5.00 – 5.00\n"
                     "Total ASSETS – – – 5.00 – 5.00\n"
                     "5 EXPENSES\n5.1 OFFICE EXPENSES\n5.1.1 RENT 5.00 5.00\n"
                     "Total OFFICE EXPENSES – – 5.00 – 5.00 –\n"
                     "Total EXPENSES – – 5.00 – 5.00 –\n"
                     "Grand total, 2 accounts – – 5.00 5.00 5.00 5.00\n"
                     "Prepared by Checked by Approved by\n"
                     "Printed by sa on 14/03/2024 at 09:05 Amounts in Rs. Page 1 of 1"));
}

void tst_trial_balance_documents::manyAccounts_data() {
    QTest::addColumn<QString>("report");
    for (const char *report : {"", "2", "3"})
        fill(QTest::addRow("rptTrialBalance%s", report), QString(report));
}

/// Over many pages: nothing leaves the paper, no number is too wide, each row stands once, and no page ends
/// with a heading or begins with a total.
void tst_trial_balance_documents::manyAccounts() {
    QFETCH(QString, report);
    QString books;
    for (int sub = 2; sub <= 61; ++sub)
        books +=
            QString("account 5.%1 SUB %1\naccount 5.%1.1 ACCOUNT %1 WITH A NAME THAT ASKS FOR A SECOND LINE\n"
                    "open 5.%1.1 -123456789012.34\n2024-01-01 5.%1.1 1.1.1 9999999999.99\n")
                .arg(sub);
    keep(books);
    const auto document = print(report, January);
    QVERIFY(document->pageCount() > 1);
    const QString text = test::wholeText(*document);
    QVERIFY(text.contains(QString(" Page %1 of %1\n").arg(document->pageCount())));
    const QString rows = rowsOf(document);
    for (int sub = 2; sub <= 61; ++sub)
        QCOMPARE(rows.count(report == "2" ? QString("SUB %1 9,999,999,999.99").arg(sub)
                                          : QString("ACCOUNT %1 WITH").arg(sub)),
                 1);
    QVERIFY(rows.contains("599,999,999,999.40 599,999,999,999.40"));
}

QTEST_MAIN(tst_trial_balance_documents)
#include "tst_trial_balance_documents.moc"
