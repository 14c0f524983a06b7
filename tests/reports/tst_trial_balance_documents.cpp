#include "tests/reports/posted_catalog.h"
#include "tests/support/facts.h"

#include <QTest>

#include <optional>

using namespace zel;
using namespace zel::report;
using namespace zel::test;

namespace {

constexpr char January[] = "2024-01-01 2024-01-31";

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

    /// The usual books have one account of each kind that an institute moves, at codes that order differently
    /// as texts.
    void balance_data() { rowsFrom<QString, QString, QString, QString>("reports/trial_balances.json"); }

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
