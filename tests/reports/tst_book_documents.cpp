#include "tests/reports/posted_catalog.h"
#include "tests/support/rows.h"

#include <QTest>

using namespace zel;
using namespace zel::report;
using namespace zel::test;

/// The cash book and both ledgers as they are printed: each case is an account's rows and the three documents
/// that an accountant expects of them.

namespace {

struct Period {
    QString from = "2024-03-01";
    QString to = "2024-03-31";
};

std::shared_ptr<Report> book(PostedCatalog &catalog, const QString &account, const Period &period = {}) {
    const QString code = QString::number(catalog.rowId(account));
    auto report = catalog.open("rptAcLedger3.rpt");
    report->RecordSelectionFormula = "{Company.comActive}='Y' and {DetJV.CrAc} = "_sql + code +
                                     " and {DetJV.VouDate} in #" + period.from + "# to #" + period.to + "#";
    report->FormulaFields("Dates").Text = "\"From :  01/03/2024  To :  31/03/2024\"";
    report->OpenSubreport("rptSubAc").RecordSelectionFormula = "{Accounts.RowID} = "_sql + code;
    report->OpenSubreport("rptSubOpening").RecordSelectionFormula =
        "{DetJV.AcCode} = "_sql + code + " and {DetJV.VouDate} < #" + period.from + "#";
    report->OpenSubreport("rptSubAcOpen").RecordSelectionFormula = "{Accounts.RowID}  = "_sql + code;
    return report;
}

std::shared_ptr<Report> ledger(PostedCatalog &catalog, int code, const QString &statement) {
    auto report = catalog.open("rptAcLedger.rpt");
    catalog.execute(statement);
    report->FormulaFields("Dates").Text = "\"From :  01/03/2024  To :  31/03/2024\"";
    report->OpenSubreport("rptSubAC").RecordSelectionFormula =
        "{Accounts.RowID} = "_sql + QString::number(code);
    return report;
}

std::shared_ptr<Report> simpleLedger(PostedCatalog &catalog, const QString &account,
                                     const Period &period = {}) {
    const int code = catalog.rowId(account);
    return ledger(catalog, code, QString("exec AcLedger %1,'%2','%3'").arg(code).arg(period.from, period.to));
}

std::shared_ptr<Report> detailLedger(PostedCatalog &catalog, const QString &account,
                                     const Period &period = {}) {
    const int code = catalog.rowId(account);
    const QDate from = QDate::fromString(period.from, Qt::ISODate);
    const QDate to = QDate::fromString(period.to, Qt::ISODate);
    return ledger(catalog, code,
                  QString("exec DetailAcLedger %1,%2,%3,%4,%5,%6,%7")
                      .arg(code)
                      .arg(from.day())
                      .arg(from.month())
                      .arg(from.year())
                      .arg(to.day())
                      .arg(to.month())
                      .arg(to.year()));
}

/// What stands between the column headings and the signatures.
QStringList body(const Report &report) {
    const QString text = const_cast<Report &>(report).document()->plainText();
    return text.section(" Balance\n", 1).section("\nPrepared by", 0, 0).split('\n');
}

} // namespace

class tst_book_documents : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void documents_data() {
        QTest::addColumn<QString>("prepare"); // a statement before the rows are posted
        QTest::addColumn<QString>(
            "rows"); // date, voucher, entry, account, other account, debit, credit, narration
        QTest::addColumn<QString>("after"); // a statement after
        columns<Period, QStringList, QStringList, QStringList>("period", "cashBook", "simple", "detail");

        const QString receiptAndPayment = "2024-03-01 | CR 2 | 1 | 4.1.1 | 1.1.1 | 0 | 500 | FEES\n"
                                          "2024-03-01 | CR 2 | 2 | 4.1.2 | 1.1.1 | 0 | 250.50 | -\n"
                                          "2024-03-01 | CR 2 | 3 | 1.1.1 | - | 750.50 | 0 | -\n"
                                          "2024-03-02 | CP 7 | 1 | 5.1.1 | 1.1.1 | 300 | 0 | RENT\n"
                                          "2024-03-02 | CP 7 | 2 | 1.1.1 | - | 0 | 300 | RENT\n";
        const QStringList ledger{"Opening balance 0.00",
                                 "01/03/2024 CR - 2 VARIOUS ACCOUNTS 750.50 750.50 Dr",
                                 "02/03/2024 CP - 7 RENT RENT 300.00 450.50 Dr",
                                 "Total of the period 750.50 300.00", "Closing balance 450.50 Dr"};
        row("receipts and payments", QString(), receiptAndPayment, QString(), Period(),
            QStringList{"Opening balance 0.00", "01/03/2024 CR - 2 TUITION FEE FEES 500.00 500.00 Dr",
                        "01/03/2024 CR - 2 REGISTRATION FEE 250.50 750.50 Dr",
                        "02/03/2024 CP - 7 RENT RENT 300.00 450.50 Dr", "Total of the period 750.50 300.00",
                        "Closing balance 450.50 Dr"},
            ledger, ledger);

        // Of one day what the account got, journals, what it paid, each by number, then entries; the other
        // side of each pair isn't the account's. What was before the period is in the opening balance.
        const QStringList alike{"Opening balance 1,000.25 Dr",
                                "05/03/2024 BP - 3 CITY BANK DRAWN 1,000.00 2,000.25 Dr",
                                "05/03/2024 JV - 9 CAPITAL OF THE INSTITUTE CAPITAL 5.00 2,005.25 Dr",
                                "05/03/2024 JV - 9 CAPITAL OF THE INSTITUTE CAPITAL 7.00 2,012.25 Dr",
                                "05/03/2024 JV - 10 ELECTRICITY LIGHT 20.00 1,992.25 Dr",
                                "05/03/2024 CP - 1 RENT 1,900.00 92.25 Dr",
                                "31/03/2024 BP - 12 CITY BANK DRAWN 550.00 642.25 Dr",
                                "31/03/2024 BR - 4 CITY BANK PAID IN 600.00 42.25 Dr",
                                "Total of the period 1,562.00 2,520.00",
                                "Closing balance 42.25 Dr"};
        row("all kinds, before and after the period",
            QString("update Accounts set OpenBal = 100, openDate = '2024-12-31' where AcNodes = '1.1.1'"),
            QString("2024-03-05 | JV 10 | 1 | 5.1.2 | 1.1.1 | 20 | 0 | LIGHT\n"
                    "2024-03-05 | JV 10 | 1 | 1.1.1 | 5.1.2 | 0 | 20 | LIGHT\n"
                    "2024-03-05 | JV 9 | 2 | 1.1.1 | 3.1.1 | 7 | 0 | CAPITAL\n"
                    "2024-03-05 | JV 9 | 2 | 3.1.1 | 1.1.1 | 0 | 7 | CAPITAL\n"
                    "2024-03-05 | JV 9 | 1 | 1.1.1 | 3.1.1 | 5 | 0 | CAPITAL\n"
                    "2024-03-05 | JV 9 | 1 | 3.1.1 | 1.1.1 | 0 | 5 | CAPITAL\n"
                    "2024-03-05 | CP 1 | 1 | 5.1.1 | 1.1.1 | 1900 | 0 | -\n"
                    "2024-03-05 | CP 1 | 2 | 1.1.1 | - | 0 | 1900 | -\n"
                    "2024-03-31 | BP 12 | 1 | 1.1.1 | 1.1.2 | 550 | 0 | DRAWN\n"
                    "2024-03-31 | BP 12 | 1 | 1.1.2 | 1.1.1 | 0 | 550 | DRAWN\n"
                    "2024-03-05 | BP 3 | 1 | 1.1.1 | 1.1.2 | 1000 | 0 | DRAWN\n"
                    "2024-03-05 | BP 3 | 1 | 1.1.2 | 1.1.1 | 0 | 1000 | DRAWN\n"
                    "2024-03-31 | BR 4 | 1 | 1.1.2 | 1.1.1 | 600 | 0 | PAID IN\n"
                    "2024-03-31 | BR 4 | 1 | 1.1.1 | 1.1.2 | 0 | 600 | PAID IN\n"
                    "2024-03-06 | BR 4 | 2 | 1.1.2 | 4.1.1 | 1 | 0 | NOT CASH\n"
                    "2024-03-06 | BR 4 | 2 | 4.1.1 | 1.1.2 | 0 | 1 | NOT CASH\n"
                    "2024-04-01 | CP 8 | 1 | 5.1.1 | 1.1.1 | 9 | 0 | LATER\n"
                    "2024-04-01 | CP 8 | 2 | 1.1.1 | - | 0 | 9 | LATER\n"
                    "2024-02-29 | CR 1 | 1 | 4.1.1 | 1.1.1 | 0 | 900.25 | BEFORE\n"
                    "2024-02-29 | CR 1 | 2 | 1.1.1 | - | 900.25 | 0 | BEFORE\n"),
            QString(), Period(), alike, alike, alike);

        const QStringList overdrawn{"Opening balance 1,234,567.89 Cr", "No movement in this period.",
                                    "Total of the period – –", "Closing balance 1,234,567.89 Cr"};
        row("nothing in the period, opening in credit",
            QString("update Accounts set OpenBal = -1234567.89 where AcNodes = '1.1.1'"), QString(),
            QString(), Period(), overdrawn, overdrawn, overdrawn);

        const QStringList allBefore{"Opening balance 450.50 Dr", "No movement in this period.",
                                    "Total of the period – –", "Closing balance 450.50 Dr"};
        row("nothing but what was before", QString(), receiptAndPayment, QString(),
            Period{"2024-03-03", "2024-03-31"}, allBefore, allBefore, allBefore);
        row("dates reversed", QString(), receiptAndPayment, QString(), Period{"2024-03-31", "2024-03-01"},
            allBefore, allBefore, allBefore);

        const QStringList balanced{
            "Opening balance 0.00", "01/03/2024 CR - 1 CAPITAL OF THE INSTITUTE 0.10 0.10 Dr",
            "02/03/2024 CP - 1 RENT 0.10 0.00", "Total of the period 0.10 0.10", "Closing balance 0.00"};
        row("one day, back to nothing", QString(),
            QString("2024-03-01 | CR 1 | 1 | 3.1.1 | 1.1.1 | 0 | 0.1 | -\n"
                    "2024-03-01 | CR 1 | 2 | 1.1.1 | - | 0.1 | 0 | -\n"
                    "2024-03-02 | CP 1 | 1 | 5.1.1 | 1.1.1 | 0.1 | 0 | -\n"
                    "2024-03-02 | CP 1 | 2 | 1.1.1 | - | 0 | 0.1 | -\n"),
            QString(), Period(), balanced, balanced, balanced);

        // A credit carried forward has one side only: the book shows it as received, the account never had
        // it.
        const QStringList nothing{"Opening balance 0.00", "No movement in this period.",
                                  "Total of the period – –", "Closing balance 0.00"};
        row("a row without another side", QString(),
            QString("2024-03-09 | CF 12 | 0 | 4.1.1 | 1.1.1 | 0 | 80 | CARRIED\n"), QString(), Period(),
            QStringList{"Opening balance 0.00", "09/03/2024 CF - 12 TUITION FEE CARRIED 80.00 80.00 Dr",
                        "Total of the period 80.00 –", "Closing balance 80.00 Dr"},
            nothing, nothing);

        QStringList gone = ledger;
        gone[2].replace("RENT RENT", "Deleted account no. 18 RENT");
        row("the other account is gone", QString(), receiptAndPayment,
            QString("delete from Accounts where AcNodes in ('5.1.1', '4.1.2')"), Period(),
            QStringList{"Opening balance 0.00", "01/03/2024 CR - 2 TUITION FEE FEES 500.00 500.00 Dr",
                        "01/03/2024 CR - 2 Deleted account no. 15 250.50 750.50 Dr",
                        "02/03/2024 CP - 7 Deleted account no. 18 RENT 300.00 450.50 Dr",
                        "Total of the period 750.50 300.00", "Closing balance 450.50 Dr"},
            gone, gone);

        const QStringList fromDeleted{"Opening balance 0.00",
                                      "04/03/2024 JV - 1 Deleted account no. 18 BACK 10.00 10.00 Dr",
                                      "Total of the period 10.00 –", "Closing balance 10.00 Dr"};
        row("the other account of a pair is gone", QString(),
            QString("2024-03-04 | JV 1 | 1 | 1.1.1 | 5.1.1 | 10 | 0 | BACK\n"
                    "2024-03-04 | JV 1 | 1 | 5.1.1 | 1.1.1 | 0 | 10 | BACK\n"),
            QString("delete from Accounts where AcNodes = '5.1.1'"), Period(), fromDeleted, fromDeleted,
            fromDeleted);

        row("cheque, bill and file", QString(),
            QString("2024-03-04 | BR 1 | 1 | 1.1.2 | 1.1.1 | 10 | 0 | PAID IN\n"
                    "2024-03-04 | BR 1 | 1 | 1.1.1 | 1.1.2 | 0 | 10 | PAID IN\n"),
            QString("update DetJV set ChecqNo = '00451872', BillNo = '77', FileNo = 'F-9'"), Period(),
            QStringList{"Opening balance 0.00",
                        "04/03/2024 BR - 1 CITY BANK PAID IN   Cheque no. 00451872 10.00 10.00 Cr",
                        "Total of the period – 10.00", "Closing balance 10.00 Cr"},
            QStringList{"Opening balance 0.00", "04/03/2024 BR - 1 CITY BANK PAID IN 10.00 10.00 Cr",
                        "Total of the period – 10.00", "Closing balance 10.00 Cr"},
            QStringList{"Opening balance 0.00", "04/03/2024 BR - 1 CITY BANK 10.00 10.00 Cr",
                        "PAID IN   Cheque no. 00451872   Bill no. 77   File no. F-9",
                        "Total of the period – 10.00", "Closing balance 10.00 Cr"});
        const QStringList taken{"Opening balance 0.00", "01/03/2024 BP - 1 CITY BANK -50.00 50.00 Cr",
                                "01/03/2024 BP - 2 CITY BANK 50.00 Cr", "Total of the period -50.00 –",
                                "Closing balance 50.00 Cr"};
        row("negative and zero amounts", QString(),
            QString("2024-03-01 | BP 1 | 1 | 1.1.1 | 1.1.2 | -50 | 0 | -\n"
                    "2024-03-01 | BP 1 | 1 | 1.1.2 | 1.1.1 | 0 | -50 | -\n"
                    "2024-03-01 | BP 2 | 1 | 1.1.1 | 1.1.2 | 0 | 0 | -\n"
                    "2024-03-01 | BP 2 | 1 | 1.1.2 | 1.1.1 | 0 | 0 | -\n"),
            QString(), Period(), taken, taken, taken);
    }

    void documents() {
        QFETCH(QString, prepare);
        QFETCH(QString, rows);
        QFETCH(QString, after);
        QFETCH(Period, period);
        QFETCH(QStringList, cashBook);
        QFETCH(QStringList, simple);
        QFETCH(QStringList, detail);
        PostedCatalog catalog;
        catalog.execute(prepare);
        catalog.post(rows);
        catalog.execute(after);
        QCOMPARE(body(*book(catalog, "1.1.1", period)), cashBook);
        QCOMPARE(body(*simpleLedger(catalog, "1.1.1", period)), simple);
        QCOMPARE(body(*detailLedger(catalog, "1.1.1", period)), detail);
    }

    void companyBlock_data() {
        columns<QString, QString, QString>("name", "address", "telephone");
        QTest::addColumn<QStringList>("lines"); // above the heading
        const QString name = "THE INSTITUTE OF COMMERCE, COMPUTER SCIENCES AND LANGUAGES";
        const QString address = "14-B, Main University Road";
        const QString lengthy = address + ", Block 5, Gulshan-e-Iqbal, Karachi 75300, Sindh, Pakistan";
        const QString none;
        row("name", name, none, none, QStringList{name});
        row("address", name, address, none, QStringList{name, address});
        row("telephone", name, none, "555 0123", QStringList{name, "Tel. 555 0123"});
        row("on one line", name, address, "555 0123", QStringList{name, address + "   Tel. 555 0123"});
        row("on two lines", name, lengthy, "555 0123", QStringList{name, lengthy, "Tel. 555 0123"});
        row("nothing", none, none, none, QStringList());
    }

    /// What isn't known of the company takes no room.
    void companyBlock() {
        QFETCH(QString, name);
        QFETCH(QString, address);
        QFETCH(QString, telephone);
        QFETCH(QStringList, lines);
        PostedCatalog catalog;
        catalog.execute("update Company set Company = '" + name + "', comAddr = '" + address +
                        "', comTel = '" + telephone + "'");
        const auto document = book(catalog, "1.1.1")->document();
        const QStringList found = document->plainText().split('\n');
        QCOMPARE(found.first(lines.size()), lines);
        QVERIFY2(found[lines.size()].startsWith("CASH BOOK "), qPrintable(found[lines.size()]));
        const auto texts = document->page(0).texts;
        const auto heading = std::ranges::find(texts, QString("CASH BOOK"), &TextItem::text);
        const double block = lines.isEmpty() ? 0 : 8.8 + 3.9 * double(lines.size() - 1);
        QVERIFY(std::abs(heading->baseline - 14 - block - 4.5) < 0.2);
    }

    void headings_data() {
        columns<QString, QString>("prepare", "account");
        QTest::addColumn<QStringList>("lines"); // of the book, of both ledgers
        QTest::newRow("cash") << QString() << "1.1.1"
                              << QStringList{"CASH BOOK", "1.1.1   CASH IN HAND", "LEDGER",
                                             "1.1.1   CASH IN HAND", "DETAIL LEDGER"};
        row("bank", QString(), "1.1.2",
            QStringList{"BANK BOOK", "1.1.2   CITY BANK", "LEDGER", "1.1.2   CITY BANK", "DETAIL LEDGER"});
        row("another account", QString(), "5.1.1",
            QStringList{"CASH AND BANK BOOK", "5.1.1   RENT", "LEDGER", "5.1.1   RENT", "DETAIL LEDGER"});
        row("deleted", QString("delete from Accounts where AcNodes = '1.1.1'"), "1.1.1",
            QStringList{"CASH AND BANK BOOK", "Deleted account", "LEDGER", "Deleted account no. 0",
                        "DETAIL LEDGER"});
        row("no setting of the cash account", QString("delete from VouSetting"), "1.1.2",
            QStringList{"BANK BOOK", "1.1.2   CITY BANK", "LEDGER", "1.1.2   CITY BANK", "DETAIL LEDGER"});
    }

    void headings() {
        QFETCH(QString, prepare);
        QFETCH(QString, account);
        QFETCH(QStringList, lines);
        PostedCatalog catalog;
        catalog.execute(prepare);
        const auto heading = [](const std::shared_ptr<Report> &report) {
            QStringList first = report->document()->plainText().split('\n').mid(1, 3);
            first[0].remove(" From :  01/03/2024  To :  31/03/2024");
            return first;
        };
        const QStringList booked = heading(book(catalog, account));
        const QStringList simple = heading(simpleLedger(catalog, account));
        const QStringList detailed = heading(detailLedger(catalog, account));
        QCOMPARE((QStringList{booked[0], booked[1], simple[0], simple[1], detailed[0]}), lines);
        // A bank's movements have their cheques in a column.
        const QString heads =
            account == "1.1.2" ? "Account and narration Cheque no. " : "Account and narration ";
        QVERIFY2(booked[2].startsWith("Date Voucher " + heads + "Receipts"), qPrintable(booked[2]));
        for (const QStringList &each : {simple, detailed})
            QVERIFY2(each[2].startsWith("Date Voucher " + heads + "Debit"), qPrintable(each[2]));
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
            rows += QString("2024-03-02 | JV %1 | 1 | 1.1.1 | 4.1.1 | %2 | 0 | %3\n"
                            "2024-03-02 | JV %1 | 1 | 4.1.1 | 1.1.1 | 0 | %2 | %3\n")
                        .arg(number)
                        .arg(number % 5 == 0 ? "-" + amount : amount, narration);
        }
        catalog.post(rows);
        const std::shared_ptr<Report> reports[] = {book(catalog, "1.1.1"), simpleLedger(catalog, "1.1.1"),
                                                   detailLedger(catalog, "1.1.1")};
        for (const auto &report : reports) {
            // Only one ledger stands in the work table.
            if (report == reports[1])
                catalog.execute(
                    QString("exec AcLedger %1,'2024-03-01','2024-03-31'").arg(catalog.rowId("1.1.1")));
            if (report == reports[2])
                catalog.execute(
                    QString("exec DetailAcLedger %1,1,3,2024,31,3,2024").arg(catalog.rowId("1.1.1")));
            const auto document = report->document();
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
            rows += QString("2024-03-02 | JV 99999%1 | 1 | 1.1.1 | 4.1.1 | 0 | 9999999999.99 | %2\n"
                            "2024-03-02 | JV 99999%1 | 1 | 4.1.1 | 1.1.1 | 9999999999.99 | 0 | %2\n")
                        .arg(number, 2, 10, QChar('0'))
                        .arg(name + name);
        catalog.post(rows);
        const auto check = [](const std::shared_ptr<Report> &report) {
            const QString text = wholeText(*report->document());
            QVERIFY(text.contains("Opening balance 9,999,999,999.99 Cr"));
            QVERIFY(text.contains("Closing balance 409,999,999,999.59 Cr"));
            QCOMPARE(text.count("9,999,999,999.99 "), 41);
        };
        check(book(catalog, "1.1.1"));
        check(simpleLedger(catalog, "1.1.1"));
        check(detailLedger(catalog, "1.1.1"));
    }
};

QTEST_MAIN(tst_book_documents)
#include "tst_book_documents.moc"
