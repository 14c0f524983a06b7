#include "tests/reports/posted_catalog.h"
#include "tests/support/rows.h"

#include <QTest>

using namespace zel;
using namespace zel::report;
using namespace zel::test;

/// The cash book and both ledgers as they are printed: each case is an account's rows and the three documents
/// that an accountant expects of them.

namespace {

const Period March{QDate(2024, 3, 1), QDate(2024, 3, 31)};

/// An account's cash book, its ledger and its detail ledger.
std::array<DocumentPtr, 3> documentsOf(PostedCatalog &catalog, const QString &account,
                                       const Period &period = March) {
    const int id = catalog.rowId(account);
    return {printedBook(id, period), printedLedger(Ledger::Simple, id, period),
            printedLedger(Ledger::Detail, id, period)};
}

struct Case {
    QString rows;
    QString book;
    QString simple{};  ///< the ledger; '' where it reads as the book
    QString detail{};  ///< '' where it reads as the ledger
    QString prepare{}; ///< a statement before the rows are posted
    QString after{};   ///< a statement after
    Period period = March;
};

} // namespace

class tst_book_documents : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void documents_data() {
        columns<Case>("expected");
        const QString none = "Opening balance 0.00\n";
        const QString idle = "No movement in this period.\nTotal of the period – –\n";
        const QString receiptAndPayment = "2024-03-01 | CR 2 | 1 | 4.1.1 | 1.1.1 | 0 | 500 | FEES\n"
                                          "2024-03-01 | CR 2 | 2 | 4.1.2 | 1.1.1 | 0 | 250.50 | -\n"
                                          "2024-03-01 | CR 2 | 3 | 1.1.1 | - | 750.50 | 0 | -\n"
                                          "2024-03-02 | CP 7 | 1 | 5.1.1 | 1.1.1 | 300 | 0 | RENT\n"
                                          "2024-03-02 | CP 7 | 2 | 1.1.1 | - | 0 | 300 | RENT\n";
        const QString book = none + "01/03/2024 CR - 2 TUITION FEE FEES 500.00 500.00 Dr\n"
                                    "01/03/2024 CR - 2 REGISTRATION FEE 250.50 750.50 Dr\n"
                                    "02/03/2024 CP - 7 RENT RENT 300.00 450.50 Dr\n"
                                    "Total of the period 750.50 300.00\nClosing balance 450.50 Dr";
        const QString ledger = none + "01/03/2024 CR - 2 VARIOUS ACCOUNTS 750.50 750.50 Dr\n"
                                      "02/03/2024 CP - 7 RENT RENT 300.00 450.50 Dr\n"
                                      "Total of the period 750.50 300.00\nClosing balance 450.50 Dr";
        row("receipts and payments", Case{.rows = receiptAndPayment, .book = book, .simple = ledger});
        const auto gone = [](QString text) {
            return text.replace("RENT RENT", "Deleted account no. 18 RENT")
                .replace("REGISTRATION FEE", "Deleted account no. 15");
        };
        row("the other account is gone",
            Case{.rows = receiptAndPayment,
                 .book = gone(book),
                 .simple = gone(ledger),
                 .after = "delete from Accounts where AcNodes in ('5.1.1', '4.1.2')"});
        const QString before = "Opening balance 450.50 Dr\n" + idle + "Closing balance 450.50 Dr";
        row("nothing but what was before",
            Case{.rows = receiptAndPayment, .book = before, .period = {QDate(2024, 3, 3), March.to}});
        row("dates reversed",
            Case{.rows = receiptAndPayment, .book = before, .period = {March.to, March.from}});

        // Of one day what the account got, journals, what it paid, each by number, then entries; the other
        // side of each pair isn't the account's. What was before the period is in the opening balance.
        row("all kinds, before and after the period",
            Case{.rows = pair("JV 10", "5.1.2", "1.1.1", "20", "LIGHT", "2024-03-05") +
                         pair("JV 9", "1.1.1", "3.1.1", "7", "CAPITAL", "2024-03-05", 2) +
                         pair("JV 9", "1.1.1", "3.1.1", "5", "CAPITAL", "2024-03-05") +
                         "2024-03-05 | CP 1 | 1 | 5.1.1 | 1.1.1 | 1900 | 0 | -\n"
                         "2024-03-05 | CP 1 | 2 | 1.1.1 | - | 0 | 1900 | -\n" +
                         pair("BP 12", "1.1.1", "1.1.2", "550", "DRAWN", "2024-03-31") +
                         pair("BP 3", "1.1.1", "1.1.2", "1000", "DRAWN", "2024-03-05") +
                         pair("BR 4", "1.1.2", "1.1.1", "600", "PAID IN", "2024-03-31") +
                         pair("BR 4", "1.1.2", "4.1.1", "1", "NOT CASH", "2024-03-06", 2) +
                         "2024-04-01 | CP 8 | 1 | 5.1.1 | 1.1.1 | 9 | 0 | LATER\n"
                         "2024-04-01 | CP 8 | 2 | 1.1.1 | - | 0 | 9 | LATER\n"
                         "2024-02-29 | CR 1 | 1 | 4.1.1 | 1.1.1 | 0 | 900.25 | BEFORE\n"
                         "2024-02-29 | CR 1 | 2 | 1.1.1 | - | 900.25 | 0 | BEFORE\n",
                 .book = "Opening balance 1,000.25 Dr\n"
                         "05/03/2024 BP - 3 CITY BANK DRAWN 1,000.00 2,000.25 Dr\n"
                         "05/03/2024 JV - 9 CAPITAL OF THE INSTITUTE CAPITAL 5.00 2,005.25 Dr\n"
                         "05/03/2024 JV - 9 CAPITAL OF THE INSTITUTE CAPITAL 7.00 2,012.25 Dr\n"
                         "05/03/2024 JV - 10 ELECTRICITY LIGHT 20.00 1,992.25 Dr\n"
                         "05/03/2024 CP - 1 RENT 1,900.00 92.25 Dr\n"
                         "31/03/2024 BP - 12 CITY BANK DRAWN 550.00 642.25 Dr\n"
                         "31/03/2024 BR - 4 CITY BANK PAID IN 600.00 42.25 Dr\n"
                         "Total of the period 1,562.00 2,520.00\nClosing balance 42.25 Dr",
                 .prepare =
                     "update Accounts set OpenBal = 100, openDate = '2024-12-31' where AcNodes = '1.1.1'"});
        row("nothing in the period, opening in credit",
            Case{.rows = {},
                 .book = "Opening balance 1,234,567.89 Cr\n" + idle + "Closing balance 1,234,567.89 Cr",
                 .prepare = "update Accounts set OpenBal = -1234567.89 where AcNodes = '1.1.1'"});
        row("one day, back to nothing",
            Case{.rows = "2024-03-01 | CR 1 | 1 | 3.1.1 | 1.1.1 | 0 | 0.1 | -\n"
                         "2024-03-01 | CR 1 | 2 | 1.1.1 | - | 0.1 | 0 | -\n"
                         "2024-03-02 | CP 1 | 1 | 5.1.1 | 1.1.1 | 0.1 | 0 | -\n"
                         "2024-03-02 | CP 1 | 2 | 1.1.1 | - | 0 | 0.1 | -\n",
                 .book = none + "01/03/2024 CR - 1 CAPITAL OF THE INSTITUTE 0.10 0.10 Dr\n"
                                "02/03/2024 CP - 1 RENT 0.10 0.00\n"
                                "Total of the period 0.10 0.10\nClosing balance 0.00"});
        // A credit carried forward has one side only: the book shows it as received, the account never had
        // it.
        row("a row without another side",
            Case{.rows = "2024-03-09 | CF 12 | 0 | 4.1.1 | 1.1.1 | 0 | 80 | CARRIED\n",
                 .book = none + "09/03/2024 CF - 12 TUITION FEE CARRIED 80.00 80.00 Dr\n"
                                "Total of the period 80.00 –\nClosing balance 80.00 Dr",
                 .simple = none + idle + "Closing balance 0.00"});
        row("the other account of a pair is gone",
            Case{.rows = pair("JV 1", "1.1.1", "5.1.1", "10", "BACK"),
                 .book = none + "04/03/2024 JV - 1 Deleted account no. 18 BACK 10.00 10.00 Dr\n"
                                "Total of the period 10.00 –\nClosing balance 10.00 Dr",
                 .after = "delete from Accounts where AcNodes = '5.1.1'"});
        const QString end = "\nTotal of the period – 10.00\nClosing balance 10.00 Cr";
        row("cheque, bill and file",
            Case{.rows = pair("BR 1", "1.1.2", "1.1.1", "10", "PAID IN"),
                 .book =
                     none + "04/03/2024 BR - 1 CITY BANK PAID IN   Cheque no. 00451872 10.00 10.00 Cr" + end,
                 .simple = none + "04/03/2024 BR - 1 CITY BANK PAID IN 10.00 10.00 Cr" + end,
                 .detail = none +
                           "04/03/2024 BR - 1 CITY BANK 10.00 10.00 Cr\n"
                           "PAID IN   Cheque no. 00451872   Bill no. 77   File no. F-9" +
                           end,
                 .after = "update DetJV set ChecqNo = '00451872', BillNo = '77', FileNo = 'F-9'"});
        row("negative and zero amounts",
            Case{.rows =
                     pair("BP 1", "1.1.1", "1.1.2", "-50", "-") + pair("BP 2", "1.1.1", "1.1.2", "0", "-"),
                 .book = none + "04/03/2024 BP - 1 CITY BANK -50.00 50.00 Cr\n"
                                "04/03/2024 BP - 2 CITY BANK 50.00 Cr\n"
                                "Total of the period -50.00 –\nClosing balance 50.00 Cr"});
    }

    void documents() {
        QFETCH(Case, expected);
        if (expected.simple.isEmpty())
            expected.simple = expected.book;
        if (expected.detail.isEmpty())
            expected.detail = expected.simple;
        PostedCatalog catalog;
        catalog.execute(expected.prepare);
        catalog.post(expected.rows);
        catalog.execute(expected.after);
        QStringList bodies; // what stands between the column headings and the signatures
        for (const DocumentPtr &document : documentsOf(catalog, "1.1.1", expected.period))
            bodies << document->plainText().section(" Balance\n", 1).section("\nPrepared by", 0, 0);
        QCOMPARE(bodies, QStringList({expected.book, expected.simple, expected.detail}));
    }

    void companyBlock_data() {
        columns<QString, QString, QString, QStringList>("name", "address", "telephone", "lines");
        const QString name = "THE INSTITUTE OF COMMERCE, COMPUTER SCIENCES AND LANGUAGES";
        const QString address = "14-B, Main University Road";
        const QString lengthy = address + ", Block 5, Gulshan-e-Iqbal, Karachi 75300, Sindh, Pakistan";
        row("name", name, "", "", QStringList{name});
        row("address", name, address, "", QStringList{name, address});
        row("telephone", name, "", "555 0123", QStringList{name, "Tel. 555 0123"});
        row("on one line", name, address, "555 0123", QStringList{name, address + "   Tel. 555 0123"});
        row("on two lines", name, lengthy, "555 0123", QStringList{name, lengthy, "Tel. 555 0123"});
        row("nothing", "", "", "", QStringList());
    }

    /// What isn't known of the company takes no room.
    void companyBlock() {
        const auto [name, address, telephone, lines] = fetched<QString, QString, QString, QStringList>();
        PostedCatalog catalog;
        catalog.execute(QString("update Company set Company = '%1', comAddr = '%2', comTel = '%3'")
                            .arg(name, address, telephone));
        const auto document = printedBook(catalog.rowId("1.1.1"), March);
        const QStringList found = document->plainText().split('\n');
        QCOMPARE(found.first(lines.size()), lines);
        QVERIFY2(found[lines.size()].startsWith("CASH BOOK "), qPrintable(found[lines.size()]));
        const auto texts = document->page(0).texts;
        const auto heading = std::ranges::find(texts, QString("CASH BOOK"), &TextItem::text);
        const double block = lines.isEmpty() ? 0 : 8.8 + 3.9 * double(lines.size() - 1);
        QVERIFY(std::abs(heading->baseline - 14 - block - 4.5) < 0.2);
    }

    void headings_data() {
        columns<QString, QString, QStringList>("prepare", "account", "lines"); // of the book, of the ledgers
        row("cash", "", "1.1.1", QStringList{"CASH BOOK", "1.1.1   CASH IN HAND", "1.1.1   CASH IN HAND"});
        row("bank", "", "1.1.2", QStringList{"BANK BOOK", "1.1.2   CITY BANK", "1.1.2   CITY BANK"});
        row("another account", "", "5.1.1",
            QStringList{"CASH AND BANK BOOK", "5.1.1   RENT", "5.1.1   RENT"});
        row("deleted", "delete from Accounts where AcNodes = '1.1.1'", "1.1.1",
            QStringList{"CASH AND BANK BOOK", "Deleted account", "Deleted account no. 0"});
        row("no setting of the cash account", "delete from VouSetting", "1.1.2",
            QStringList{"BANK BOOK", "1.1.2   CITY BANK", "1.1.2   CITY BANK"});
    }

    void headings() {
        const auto [prepare, account, lines] = fetched<QString, QString, QStringList>();
        PostedCatalog catalog;
        catalog.execute(prepare);
        // A bank's movements have their cheques in a column.
        const QString columns =
            QString("Date Voucher Account and narration ") + (account == "1.1.2" ? "Cheque no. " : "");
        const auto documents = documentsOf(catalog, account);
        for (const int nth : {0, 1, 2}) {
            const QStringList found = documents[std::size_t(nth)]->plainText().split('\n').mid(1, 3);
            QCOMPARE(found[0].section(" From : ", 0, 0),
                     QStringList({lines[0], "LEDGER", "DETAIL LEDGER"})[nth]);
            QCOMPARE(found[1], nth == 0 ? lines[1] : lines[2]);
            QVERIFY2(found[2].startsWith(columns + (nth == 0 ? "Receipts" : "Debit")), qPrintable(found[2]));
        }
    }

    /// Every page says what the one before ended with, and adds its own rows to it.
    void carriedForward() {
        PostedCatalog catalog;
        catalog.execute(QString("update Accounts set OpenBal = 1000.05 where AcNodes = '1.1.1'"));
        QString rows;
        for (int number = 1; number <= 150; ++number) {
            const QString amount = QString::number(number) + ".07";
            const QString narration = number % 7 == 0   ? QString(180, 'n')
                                      : number % 3 == 0 ? QString("-")
                                                        : "FEES";
            rows += pair(QString("JV %1").arg(number), "1.1.1", "4.1.1",
                         number % 5 == 0 ? "-" + amount : amount, narration, "2024-03-02");
        }
        catalog.post(rows);
        for (const DocumentPtr &document : documentsOf(catalog, "1.1.1")) {
            QVERIFY(document->pageCount() > 2);
            QString carried = "Opening balance 1,000.05 Dr";
            int next = 1;
            Decimal sum = Decimal::fromInteger(0);
            for (int page = 0; page < document->pageCount(); ++page) {
                const QStringList lines = document->page(page).plainText().split('\n');
                const auto heads = lines.indexOf(QRegularExpression("^Date Voucher .*"));
                QCOMPARE(lines.value(heads + 1), carried);
                int rowsHere = 0;
                for (const QString &line : lines) {
                    static const QRegularExpression row(
                        "^02/03/2024 JV - (\\d+) .*?(-?[\\d,]+\\.07) ([\\d,.]+) Dr$");
                    const auto match = row.match(line);
                    if (!match.hasMatch())
                        continue;
                    QCOMPARE(match.captured(1).toInt(), next++);
                    ++rowsHere;
                    sum += *Decimal::parse(match.captured(2).remove(',').toStdString());
                    const auto balance = sum + *Decimal::parse("1000.05");
                    QCOMPARE(QString::fromStdString(
                                 Decimal::parse(match.captured(3).remove(',').toStdString())->toString()),
                             QString::fromStdString(balance.toString()));
                }
                const QStringList ends = lines.filter("Carried forward");
                QCOMPARE(ends.size(), page + 1 < document->pageCount() ? 1 : 0);
                if (ends.isEmpty())
                    break;
                QVERIFY2(rowsHere >= 32, qPrintable(QString("%1 rows").arg(rowsHere)));
                carried = QString(ends.first()).replace("Carried", "Brought");
                const QString total =
                    QLocale(QLocale::English)
                        .toString(QString::fromStdString(sum.toString()).toDouble(), 'f', 2);
                QVERIFY2(carried.startsWith("Brought forward " + total + " – "), qPrintable(carried));
            }
            QCOMPARE(next, 151);
        }
    }

    /// Ten digits before the point and names of the greatest width stand whole, inside the page, over nothing
    /// else.
    void bigAndLong() {
        PostedCatalog catalog;
        const QString name = QString("WESTMORELAND AND WARWICKSHIRE MASONRY WORKS ").repeated(3).left(100);
        catalog.execute("update Accounts set AcName = '" + name +
                        "', OpenBal = -9999999999.99 where AcNodes in ('1.1.1', '4.1.1')");
        catalog.execute("update Company set Company = '" + name + "', comAddr = '" + name + name.left(50) +
                        "'");
        QString rows;
        for (int number = 1; number <= 40; ++number)
            rows +=
                pair(QString("JV %1").arg(9999900 + number), "4.1.1", "1.1.1", "9999999999.99", name + name);
        catalog.post(rows);
        for (const DocumentPtr &document : documentsOf(catalog, "1.1.1")) {
            const QString text = wholeText(*document);
            QVERIFY(text.contains("Opening balance 9,999,999,999.99 Cr"));
            QVERIFY(text.contains("Closing balance 409,999,999,999.59 Cr"));
            QCOMPARE(text.count("9,999,999,999.99 "), 41);
        }
    }
};

QTEST_MAIN(tst_book_documents)
#include "tst_book_documents.moc"
