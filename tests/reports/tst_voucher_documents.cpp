#include "tests/reports/posted_catalog.h"
#include "tests/support/facts.h"

#include <QTest>

using namespace zel;
using namespace zel::report;
using namespace zel::test;

/// The five vouchers as they are printed, from the rows that their saves write.

namespace {

constexpr const char *Facts = "reports/vouchers.json";

const QString Day = "2024-03-14";
constexpr const char *Kinds[] = {"BP", "BR", "CP", "CR", "JV"};

std::shared_ptr<Report> voucher(PostedCatalog &catalog, const QString &kind,
                                const QString &paidTo = "CITY PROPERTIES") {
    catalog.execute(
        "insert into MasJV (VouNo, VouStatus, VouDate, PaidReceive, TotalAmount, Login) values (5, '" + kind +
        "', '2024-03-14', '" + paidTo + "', 1, 'AMINA')");
    auto report = catalog.open("rpt" + kind + ".rpt");
    report->RecordSelectionFormula =
        "{MasJV.VouNo}= 5 and {MasJV.VouStatus} = '"_sql + kind + "' and {Company.comActive} = 'Y'";
    return report;
}

/// What stands between the column headings and the signatures, with the rows above the headings that name the
/// cash account.
QStringList body(const DocumentPtr &document) {
    QStringList lines = document->plainText().section("\nAMINA", 0, 0).split('\n');
    while (!lines.isEmpty() && !lines.first().startsWith("Code Account"))
        lines.removeFirst();
    return lines.mid(1);
}

/// The rows of a voucher with one line, of an amount, between RENT and the bank or the cash account.
QString rowsOf(const QString &kind, int entry, const QString &amount, const QString &narration = "-") {
    const bool receives = kind[1] == 'R';
    if (kind[0] == 'C')
        return QString("2024-03-14 | %1 5 | %2 | 5.1.1 | 1.1.1 | %3 | %4 | %5\n")
            .arg(kind, QString::number(entry), receives ? "0" : amount, receives ? amount : "0", narration);
    return pair(kind + " 5", receives ? "1.1.2" : "5.1.1", receives ? "5.1.1" : "1.1.2", amount, narration,
                Day, entry);
}

} // namespace

class tst_voucher_documents : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void lines_data() { rowsFrom<QString, QString, QStringList>(Facts); }

    void lines() {
        const auto [rows, after, printed] = fetched<QString, QString, QStringList>();
        PostedCatalog catalog;
        catalog.post(rows);
        catalog.execute(after);
        QCOMPARE(body(voucher(catalog, QString(QTest::currentDataTag()).left(2))->document()), printed);
    }

    void words_data() { rowsFrom<QString, QString>(Facts); }

    void words() {
        const auto [amount, words] = fetched<QString, QString>();
        for (const char *kind : Kinds) {
            PostedCatalog catalog;
            catalog.post(rowsOf(kind, 1, amount));
            const QString text = body(voucher(catalog, kind)->document()).join(' ');
            QCOMPARE(text.section("Amount in words ", 1), words);
        }
    }

    void carriedForward_data() {
        QTest::addColumn<QString>("kind");
        for (const char *kind : Kinds)
            row(kind, kind);
    }

    /// Forty lines on several pages: each page repeats the headings, says what the one before came to, and
    /// adds its own lines to it.
    void carriedForward() {
        QFETCH(QString, kind);
        PostedCatalog catalog;
        QString rows;
        for (int entry = 1; entry <= 40; ++entry)
            rows += rowsOf(kind, entry, "1000.01", entry % 3 == 0 ? QString(150, 'n') : QString("-"));
        catalog.post(rows);
        const bool journal = kind == "JV";
        const auto document = voucher(catalog, kind)->document();
        QVERIFY(document->pageCount() > 1);
        qsizetype before = 0;
        const auto sum = [&](qsizetype lines) {
            const QString amount = QLocale(QLocale::English).toString(double(lines) * 1000.01, 'f', 2);
            return journal ? amount + " " + amount : amount;
        };
        for (int page = 0; page < document->pageCount(); ++page) {
            const QString text = document->page(page).plainText();
            QVERIFY(text.contains("CITY PROPERTIES"));
            QVERIFY(text.endsWith(QString(" Page %1 of %2").arg(page + 1).arg(document->pageCount())));
            QCOMPARE(
                text.contains(QRegularExpression("\nCode Account .*\nBrought forward " + sum(before) + "\n")),
                page > 0);
            const qsizetype amounts =
                text.count(QRegularExpression("^.* 1,000\\.01$", QRegularExpression::MultilineOption));
            before += journal ? amounts / 2 : amounts;
            const bool last = page + 1 == document->pageCount();
            QCOMPARE(text.contains("Carried forward " + sum(before) + "\n"), !last);
            QCOMPARE(text.contains("Total Rs. " + sum(40)), last);
            QCOMPARE(text.contains("Prepared by"), last);
        }
        QCOMPARE(before, 40);
    }

    /// The longest texts that the columns hold and ten digits before the point stand whole, inside the page
    /// and over nothing else.
    void bigAndLong() {
        const QString name = QString("WESTMORELAND AND WARWICKSHIRE MASONRY WORKS ").repeated(3).left(100);
        for (const QString kind : Kinds) {
            PostedCatalog catalog;
            catalog.execute("update Accounts set AcName = '" + name +
                            "' where AcNodes in ('1.1.1', '1.1.2', '5.1.1')");
            catalog.execute("update Company set Company = '" + name + "', comAddr = '" + name +
                            name.left(50) + "'");
            for (int entry = 1; entry <= 12; ++entry)
                catalog.post(rowsOf(kind, entry, entry % 2 ? "9999999999.99" : "-9999999999.99",
                                    name + name.left(99)));
            catalog.post(rowsOf(kind, 13, "9999999999.99"));
            catalog.execute("update DetJV set ChecqNo = 'CHQ-WWWWWWWW-1234567', FileNo = 'FILE-WWW-1', "
                            "BillNo = 'BILL-WWW-1'");
            const QString text = wholeText(*voucher(catalog, kind, name)->document());
            QVERIFY(text.contains("Total Rs. 9,999,999,999.99"));
            QCOMPARE(text.count(" -9,999,999,999.99\n"), kind == "JV" ? 12 : 6);
        }
    }
};

QTEST_MAIN(tst_voucher_documents)
#include "tst_voucher_documents.moc"
