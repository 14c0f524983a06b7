#include "tests/reports/posted_catalog.h"
#include "tests/support/facts.h"

#include <QTest>

using namespace zel;
using namespace zel::report;
using namespace zel::test;

/// The cash book and both ledgers as they are printed: each case is an account's rows and the three documents
/// that an accountant expects of them.

namespace {

constexpr const char *Facts = "reports/books.json";

const Period March{QDate(2024, 3, 1), QDate(2024, 3, 31)};

/// An account's cash book, its ledger and its detail ledger.
std::array<DocumentPtr, 3> documentsOf(PostedCatalog &catalog, const QString &account,
                                       const Period &period = March) {
    const int id = catalog.rowId(account);
    return {printedBook(id, period), printedLedger(Ledger::Simple, id, period),
            printedLedger(Ledger::Detail, id, period)};
}

} // namespace

class tst_book_documents : public QObject {
    Q_OBJECT
private Q_SLOTS:
    /// Of one day what the account got, journals, what it paid, each by number, then entries; the other side
    /// of each pair isn't the account's. A credit carried forward has one side only: the book shows it as
    /// received, the account never had it. A ledger that isn't told reads as the book, a detail ledger as the
    /// ledger; the period is March. The statements run before the rows are posted and after.
    void documents_data() {
        rowsFrom<QString, QString, QString, QString, QString, QString, QDate, QDate>(Facts);
    }

    void documents() {
        auto [rows, book, simple, detail, prepare, after, from, to] =
            fetched<QString, QString, QString, QString, QString, QString, QDate, QDate>();
        if (simple.isEmpty())
            simple = book;
        if (detail.isEmpty())
            detail = simple;
        PostedCatalog catalog;
        catalog.execute(prepare);
        catalog.post(rows);
        catalog.execute(after);
        QStringList bodies; // what stands between the column headings and the signatures
        for (const DocumentPtr &document :
             documentsOf(catalog, "1.1.1", from.isValid() ? Period{from, to} : March))
            bodies << document->plainText().section(" Balance\n", 1).section("\nPrepared by", 0, 0);
        QCOMPARE(bodies, QStringList({book, simple, detail}));
    }

    void companyBlock_data() { rowsFrom<QString, QString, QString, QStringList>(Facts); }

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

    /// Of the book, of the ledgers.
    void headings_data() { rowsFrom<QString, QString, QStringList>(Facts); }

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
