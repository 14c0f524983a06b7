#include "tests/reports/posted_catalog.h"
#include "tests/support/rows.h"

#include <QTest>

#include <optional>

using zel::test::columns;
using zel::test::fetched;
using zel::test::row;

using namespace zel;
using namespace zel::report;

namespace {

constexpr char January[] = "2024-01-01 2024-01-31";

/// One account of each kind that a usual institute moves, at codes that order differently as texts.
constexpr char Usual[] = "open 1.1.1 500.00\nopen 3.1.1 -400.00\n"
                         "account 5.1.10 BOOKS\naccount 5.10 VEHICLES\naccount 5.10.1 FUEL\n"
                         "account 5.2 TRAVEL\naccount 5.2.1 TICKETS\n"
                         "account 10 SUSPENSE\naccount 10.1 CLEARING\naccount 10.1.1 CLEARING\n"
                         "2023-12-31 5.1.2 1.1.1 30.05\n2024-01-01 5.1.2 1.1.1 10.10\n"
                         "2024-01-31 5.1.10 1.1.2 1200.00\n2024-01-15 5.10.1 1.1.1 20.00\n"
                         "2024-01-15 5.2.1 1.1.1 40.40\n2024-01-16 1.1.2 10.1.1 3000.00\n"
                         "2024-01-17 10.1.1 4.1.1 2500.00\n2024-02-01 5.1.1 1.1.1 9000.00\n";

/// What stands between the column titles and the page's foot.
QString rowsOf(const DocumentPtr &document) {
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

} // namespace

/// The three trial balances as they print, on a real catalog.
class tst_trial_balance_documents : public QObject {
    Q_OBJECT

    std::optional<test::PostedCatalog> catalog;

    /// Accounts, openings and entries, one to a line: "account CODE NAME", "open CODE AMOUNT", and
    /// "DATE DEBIT CREDIT AMOUNT" with "-" for a side that is missing and "#17" for an account by its number.
    void keep(const QString &books) {
        for (const QString &line : books.split('\n', Qt::SkipEmptyParts)) {
            const QStringList words = line.split(' ');
            const QString &code = words[1];
            if (words[0] == "open") {
                catalog->execute(
                    QString("update Accounts set OpenBal = %1 where AcNodes = '%2'").arg(words[2], code));
            } else if (words[0] == "account") {
                const auto points = code.count('.');
                catalog->execute(
                    QString(
                        "insert into Accounts (ParentID, Dcode, AcNodes, AcName, AcStatus) values ('%1', %2, "
                        "'%3', '%4', '%5')")
                        .arg(points == 0 ? code : code.section('.', 0, -2),
                             points == 0 ? "0" : code.section('.', -1), code, words.mid(2).join(' '),
                             QStringList{"HH", "HD", "DD"}[points]));
            } else {
                for (const int side : {1, 2})
                    if (words[side] != "-")
                        catalog->postRow({words[0], "JV 1", "1", words[side], "-", side == 1 ? words[3] : "0",
                                          side == 1 ? "0" : words[3], "-"});
            }
        }
    }

    DocumentPtr print(const QString &number, const QString &period) {
        const QString from = period.section(' ', 0, 0);
        const QString to = period.section(' ', 1);
        catalog->execute(QString("exec TrialBalance%1 '%2','%3'").arg(number == "3" ? "3" : "", from, to));
        const auto report = catalog->open("rptTrialBalance" + number + ".rpt");
        report->EnableParameterPrompting = false;
        report->RecordSelectionFormula = "{Company.comActive} = 'Y'";
        report->FormulaFields("Dates").Text = "\"From :  "_sql + from + "   To :  " + to + "\"";
        return report->document();
    }

private Q_SLOTS:
    void init() {
        catalog.emplace();
        catalog->execute("update Company set comAddr = 'STATION ROAD 14', comTel = '042-111'");
    }
    void cleanup() { catalog.reset(); }

    void balance_data() {
        columns<QString, QString, QString, QString>("books", "report", "period", "rows");
        row("subsidiary: by the codes' numbers", Usual, "", January,
            "1 ASSETS\n1.1 CASH AND BANK\n1.1.1 CASH IN HAND 70.50\n1.1.2 CITY BANK 3,000.00 1,200.00\n"
            "Total CASH AND BANK 3,000.00 1,270.50\nTotal ASSETS 3,000.00 1,270.50\n"
            "4 INCOME\n4.1 FEES\n4.1.1 TUITION FEE 2,500.00\nTotal FEES – 2,500.00\nTotal INCOME – 2,500.00\n"
            "5 EXPENSES\n5.1 OFFICE EXPENSES\n5.1.2 ELECTRICITY 10.10\n5.1.10 BOOKS 1,200.00\n"
            "Total OFFICE EXPENSES 1,210.10 –\n5.2 TRAVEL\n5.2.1 TICKETS 40.40\nTotal TRAVEL 40.40 –\n"
            "5.10 VEHICLES\n5.10.1 FUEL 20.00\nTotal VEHICLES 20.00 –\nTotal EXPENSES 1,270.50 –\n"
            "10 SUSPENSE\n10.1 CLEARING\n10.1.1 CLEARING 2,500.00 3,000.00\n"
            "Total CLEARING 2,500.00 3,000.00\nTotal SUSPENSE 2,500.00 3,000.00\n"
            "Grand total, 8 accounts 6,770.50 6,770.50");
        row("control: the same", Usual, "2", January,
            "1 ASSETS\n1.1 CASH AND BANK 3,000.00 1,270.50\nTotal ASSETS 3,000.00 1,270.50\n"
            "4 INCOME\n4.1 FEES 2,500.00\nTotal INCOME – 2,500.00\n"
            "5 EXPENSES\n5.1 OFFICE EXPENSES 1,210.10\n5.2 TRAVEL 40.40\n5.10 VEHICLES 20.00\n"
            "Total EXPENSES 1,270.50 –\n10 SUSPENSE\n10.1 CLEARING 2,500.00 3,000.00\n"
            "Total SUSPENSE 2,500.00 3,000.00\nGrand total 6,770.50 6,770.50");
        row("with opening: the same", Usual, "3", January,
            "1 ASSETS\n1.1 CASH AND BANK\n1.1.1 CASH IN HAND 469.95 70.50 399.45\n"
            "1.1.2 CITY BANK 3,000.00 1,200.00 1,800.00\n"
            "Total CASH AND BANK 469.95 – 3,000.00 1,270.50 2,199.45 –\n"
            "Total ASSETS 469.95 – 3,000.00 1,270.50 2,199.45 –\n"
            "3 CAPITAL\n3.1 CAPITAL ACCOUNTS\n3.1.1 CAPITAL OF THE INSTITUTE 400.00 400.00\n"
            "Total CAPITAL ACCOUNTS – 400.00 – – – 400.00\nTotal CAPITAL – 400.00 – – – 400.00\n"
            "4 INCOME\n4.1 FEES\n4.1.1 TUITION FEE 2,500.00 2,500.00\n"
            "Total FEES – – – 2,500.00 – 2,500.00\nTotal INCOME – – – 2,500.00 – 2,500.00\n"
            "5 EXPENSES\n5.1 OFFICE EXPENSES\n5.1.2 ELECTRICITY 30.05 10.10 40.15\n"
            "5.1.10 BOOKS 1,200.00 1,200.00\nTotal OFFICE EXPENSES 30.05 – 1,210.10 – 1,240.15 –\n"
            "5.2 TRAVEL\n5.2.1 TICKETS 40.40 40.40\nTotal TRAVEL – – 40.40 – 40.40 –\n"
            "5 EXPENSES (continued)\n5.10 VEHICLES\n5.10.1 FUEL 20.00 20.00\nTotal VEHICLES – – 20.00 – "
            "20.00 –\n"
            "Total EXPENSES 30.05 – 1,270.50 – 1,300.55 –\n"
            "10 SUSPENSE\n10.1 CLEARING\n10.1.1 CLEARING 2,500.00 3,000.00 500.00\n"
            "Total CLEARING – – 2,500.00 3,000.00 – 500.00\nTotal SUSPENSE – – 2,500.00 3,000.00 – 500.00\n"
            "Opening balances without a counterpart 100.00 100.00\n"
            "Grand total, 9 accounts 500.00 500.00 6,770.50 6,770.50 3,500.00 3,500.00");

        row("subsidiary: debits exceed", "2024-01-05 4.1.1 - 12.34\n", "", January,
            "4 INCOME\n4.1 FEES\n4.1.1 TUITION FEE 12.34\nTotal FEES 12.34 –\nTotal INCOME 12.34 –\n"
            "Entries without a counterpart 12.34\nGrand total, 1 account 12.34 12.34");
        const QString astray =
            "account 7.1.1 NO HEADS\naccount 8 ONLY CONTROL\naccount 8.2.1 NO SUB\n"
            "2024-01-01 #4711 7.1.1 5.00\n2024-01-01 8.2.1 8 7.00\n2024-01-01 8.2.1 5.1 1.00\n";
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
            "NOT IN THE CHART OF ACCOUNTS\nDeleted and misplaced accounts 5.00\n"
            "Total not in the chart 5.00 –\nGrand total 13.00 13.00");

        row("openings and entries with one side, on both",
            "open 1.1.1 7.50\nopen 3.1.1 -2.00\n2023-12-31 - 3.1.1 1.25\n"
            "2024-01-09 4.1.1 - 0.75\n2024-01-09 1.1.1 4.1.1 3.00\n",
            "3", January,
            "1 ASSETS\n1.1 CASH AND BANK\n1.1.1 CASH IN HAND 7.50 3.00 10.50\n"
            "Total CASH AND BANK 7.50 – 3.00 – 10.50 –\nTotal ASSETS 7.50 – 3.00 – 10.50 –\n"
            "3 CAPITAL\n3.1 CAPITAL ACCOUNTS\n3.1.1 CAPITAL OF THE INSTITUTE 3.25 3.25\n"
            "Total CAPITAL ACCOUNTS – 3.25 – – – 3.25\nTotal CAPITAL – 3.25 – – – 3.25\n"
            "4 INCOME\n4.1 FEES\n4.1.1 TUITION FEE 0.75 3.00 2.25\n"
            "Total FEES – – 0.75 3.00 – 2.25\nTotal INCOME – – 0.75 3.00 – 2.25\n"
            "Opening balances without a counterpart 4.25 4.25\nEntries without a counterpart 0.75 0.75\n"
            "Grand total, 3 accounts 7.50 7.50 3.75 3.75 10.50 10.50");
        const char *longNames =
            "account 6 A CONTROL ACCOUNT WITH A NAME THAT HAS SIXTY CHARACTERS IN ALL\n"
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
        row("with opening: nothing at all", "", "3", January,
            "No account has an opening balance or was posted to in this period.\n"
            "Grand total, 0 accounts – – – – – –");
    }

    void balance() {
        const auto [books, report, period, rows] = fetched<QString, QString, QString, QString>();
        keep(books);
        const QString found = rowsOf(print(report, period));
        QVERIFY2(found == rows, qPrintable(found));
    }

    void wholePage() {
        keep("2024-01-01 5.1.1 1.1.1 5.00\n");
        QCOMPARE(
            print("3", January)->plainText(),
            QString("NORTHFIELD INSTITUTE\nSTATION ROAD 14   Tel. 042-111\n"
                    "TRIAL BALANCE WITH OPENING From :  2024-01-01   To :  2024-01-31\n"
                    "Opening Period Closing\nCode Account Debit Credit Debit Credit Debit Credit\n"
                    "1 ASSETS\n1.1 CASH AND BANK\n1.1.1 CASH IN HAND 5.00 5.00\n"
                    "Total CASH AND BANK – – – 5.00 – 5.00\nTotal ASSETS – – – 5.00 – 5.00\n"
                    "5 EXPENSES\n5.1 OFFICE EXPENSES\n5.1.1 RENT 5.00 5.00\n"
                    "Total OFFICE EXPENSES – – 5.00 – 5.00 –\nTotal EXPENSES – – 5.00 – 5.00 –\n"
                    "Grand total, 2 accounts – – 5.00 5.00 5.00 5.00\nPrepared by Checked by Approved by\n"
                    "Printed by sa on 01/04/2024 at 09:05 Amounts in Rs. Page 1 of 1"));
    }

    /// Over many pages: nothing leaves the paper, no number is too wide, each row stands once, and no page
    /// ends with a heading or begins with a total.
    void manyAccounts() {
        QString books;
        for (int sub = 2; sub <= 61; ++sub)
            books +=
                QString(
                    "account 5.%1 SUB %1\naccount 5.%1.1 ACCOUNT %1 WITH A NAME THAT ASKS FOR A SECOND LINE\n"
                    "open 5.%1.1 -123456789012.34\n2024-01-01 5.%1.1 1.1.1 9999999999.99\n")
                    .arg(sub);
        keep(books);
        for (const QString report : {"", "2", "3"}) {
            const auto document = print(report, January);
            QVERIFY(document->pageCount() > 1);
            const QString text = test::wholeText(*document);
            QVERIFY(text.contains(QString(" Page %1 of %1\n").arg(document->pageCount())));
            const QString rows = rowsOf(document);
            for (int sub = 2; sub <= 61; ++sub)
                QCOMPARE(rows.count(
                             QString(report == "2" ? "SUB %1 9,999,999,999.99" : "ACCOUNT %1 WITH").arg(sub)),
                         1);
            QVERIFY(rows.contains("599,999,999,999.40 599,999,999,999.40"));
        }
    }
};

QTEST_MAIN(tst_trial_balance_documents)
#include "tst_trial_balance_documents.moc"
