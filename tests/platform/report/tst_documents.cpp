#include "platform/ado/recordset.h"
#include "platform/base/error.h"
#include "platform/report/output/paint.h"
#include "platform/report/report.h"
#include "tests/support/chart_catalog.h"
#include "tests/support/rows.h"

#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTest>

#include <optional>

using zel::test::columns;
using zel::test::row;

using namespace zel;
using namespace zel::report;

/// The shipped definitions, on a real catalog.
class tst_documents : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void voucher_data();
    void voucher();
    void voucherPages_data();
    void voucherPages();
    void voucherRefused_data();
    void voucherRefused();
    void logonRefused();
    void journalPairsStayTogether_data();
    void journalPairsStayTogether();
    void chart();
    void wordsComeRightFromPdf();

private:
    [[nodiscard]] std::shared_ptr<Report> open(const char *file, const QString &password = {});
    void addPair(int voucher, int entry, const char *account, const char *amount,
                 const QString &narration = {});
    void addRow(const QString &kind, int voucher, int entry, const char *account, const char *contra,
                const char *debit, const char *credit, const QString &narration = {});
    void addVoucher(int number, const QString &kind = "BP");

    std::optional<test::ChartCatalog> m_catalog;
};

void tst_documents::init() {
    m_catalog.emplace();
    m_catalog->program().Execute(
        "update Company set Company = 'NORTHFIELD INSTITUTE OF ACCOUNTANCY', comAddr = 'STATION ROAD 14', "
        "comTel = '042-111', comEmail = 'office@northfield.example'");
}

void tst_documents::cleanup() {
    m_catalog.reset();
}

std::shared_ptr<Report> tst_documents::open(const char *file, const QString &password) {
    auto report = Application(m_catalog->program()).OpenReport(QString(ZEL_SOURCE_DIR) + "\\rpt\\" + file);
    Table &table = report->Database().Tables().Item(1);
    table.ConnectionProperties("User ID").Value = "sa";
    table.ConnectionProperties("Password").Value = password;
    report->setPrintTime(QDateTime(QDate(2024, 3, 14), QTime(9, 5)));
    return report;
}

void tst_documents::addRow(const QString &kind, int voucher, int entry, const char *account,
                           const char *contra, const char *debit, const char *credit,
                           const QString &narration) {
    const auto code = [](const char *nodes) {
        return "(select RowID from Accounts where AcNodes = '"_sql + Sql::trusted(nodes) + "')";
    };
    m_catalog->program().Execute(
        "insert into DetJV (VouNo, VouStatus, VouDate, EntryNo, AcCode, CrAc, DrAmt, CrAmt, ChecqNo, "
        "Naration, FileNo, BillNo) select "_sql +
        voucher + ", '" + kind + "', '2024-03-14', " + entry + ", " + code(account) + ", " + code(contra) +
        ", " + Sql::trusted(debit) + ", " + Sql::trusted(credit) + ", '00451872', '" + narration +
        "', 'F-9', '77'");
}

void tst_documents::addPair(int voucher, int entry, const char *account, const char *amount,
                            const QString &narration) {
    addRow("BP", voucher, entry, account, "1.1.2", amount, "0", narration);
    addRow("BP", voucher, entry, "1.1.2", account, "0", amount, narration);
}

void tst_documents::addVoucher(int number, const QString &kind) {
    m_catalog->program().Execute(
        "insert into MasJV (VouNo, VouStatus, VouDate, PaidReceive, TotalAmount, Login) values ("_sql +
        number + ", '" + kind + "', '2024-03-14', 'CITY PROPERTIES', 1, 'AMINA')");
}

void tst_documents::voucher_data() {
    QTest::addColumn<bool>("receives"); // the bank or cash, whose account is the debit one then
    QTest::addColumn<bool>("summary");  // one row for the cash account instead of a second one of each pair
    columns<QString, QString, QString>("heading", "lines", "signatures");
    const QString lines = "Code Account Cheque no. Bill no. File no. Amount\n"
                          "5.1.1 RENT 00451872 77 F-9 125,000.00\n"
                          "Rent for March\n"
                          "5.1.2 ELECTRICITY 00451872 77 F-9 18,450.75\n"
                          "Total Rs. 143,450.75\n";
    const QString four = "Prepared by Checked by Approved by Received by";
    zel::test::row("BP", false, false,
                   "BANK PAYMENT VOUCHER\n"
                   "Voucher No. BP - 5 Date 14/03/2024\n"
                   "Paid to CITY PROPERTIES\n"
                   "Paid from 1.1.2 CITY BANK\n",
                   lines, four);
    zel::test::row("BR", true, false,
                   "BANK RECEIPT VOUCHER\n"
                   "Voucher No. BR - 5 Date 14/03/2024\n"
                   "Received from CITY PROPERTIES\n"
                   "Received in 1.1.2 CITY BANK\n",
                   lines, four);
    zel::test::row("CP", false, true,
                   "CASH PAYMENT VOUCHER\n"
                   "Voucher No. CP - 5 Date 14/03/2024\n"
                   "Paid to CITY PROPERTIES\n"
                   "Paid from 1.1.2 CITY BANK\n",
                   lines, four);
    zel::test::row("CR", true, true,
                   "CASH RECEIPT VOUCHER\n"
                   "Voucher No. CR - 5 Date 14/03/2024\n"
                   "Received from CITY PROPERTIES\n"
                   "Received in 1.1.2 CITY BANK\n",
                   lines, four);
    zel::test::row("JV", false, false,
                   "JOURNAL VOUCHER\n"
                   "Voucher No. JV - 5 Date 14/03/2024\n"
                   "Particulars CITY PROPERTIES\n",
                   "Code Account Cheque no. Bill no. File no. Debit Credit\n"
                   "5.1.1 RENT 00451872 77 F-9 125,000.00\n"
                   "1.1.2 CITY BANK 125,000.00\n"
                   "Rent for March\n"
                   "5.1.2 ELECTRICITY 00451872 77 F-9 18,450.75\n"
                   "1.1.2 CITY BANK 18,450.75\n"
                   "Total Rs. 143,450.75 143,450.75\n",
                   "Prepared by Checked by Approved by");
}

void tst_documents::voucher() {
    QFETCH(bool, receives);
    QFETCH(bool, summary);
    QFETCH(QString, heading);
    QFETCH(QString, lines);
    QFETCH(QString, signatures);
    const QString kind = QTest::currentDataTag();
    const auto row = [&](int voucher, int entry, const char *account, const char *contra, const char *amount,
                         bool debit, const QString &narration) {
        addRow(kind, voucher, entry, account, contra, debit ? amount : "0", debit ? "0" : amount, narration);
    };
    const auto line = [&](int voucher, int entry, const char *account, const char *amount,
                          const QString &narration = {}) {
        if (receives && !summary)
            row(voucher, entry, "1.1.2", account, amount, true, narration);
        row(voucher, entry, account, "1.1.2", amount, !receives, narration);
        if (!receives && !summary)
            row(voucher, entry, "1.1.2", account, amount, false, narration);
    };
    // Neither the other voucher of the kind nor the one of the same number under another kind.
    addVoucher(5, kind);
    addVoucher(6, kind);
    addVoucher(5, "AR");
    addRow("AR", 5, 1, "5.1.3", "5.1.3", "1", "1");
    line(6, 1, "5.1.2", "1");
    line(5, 2, "5.1.2", "18450.75");
    line(5, 1, "5.1.1", "125000", "Rent for March");
    if (summary)
        row(5, 3, "1.1.2", "", "143450.75", receives, "Rent for March");
    auto report = open(qPrintable("rpt" + kind + ".rpt"));
    report->RecordSelectionFormula =
        "{MasJV.VouNo}= 5 and {MasJV.VouStatus} = '"_sql + kind + "' and {Company.comActive} = 'Y'";
    const auto document = report->document();
    QCOMPARE(document->plainText(),
             "NORTHFIELD INSTITUTE OF ACCOUNTANCY\n"
             "STATION ROAD 14   Tel. 042-111   office@northfield.example\n" +
                 heading + lines +
                 "Amount in words One Hundred Forty Three Thousand Four Hundred Fifty and 75/100 Only\n"
                 "(One Lakh Forty Three Thousand Four Hundred Fifty and 75/100 Only)\n"
                 "AMINA\n" +
                 signatures + "\nPrinted by sa on 14/03/2024 at 09:05 Amounts in Rs. Page 1 of 1");
}

void tst_documents::voucherPages_data() {
    columns<QString, int>("change", "number");
    QTest::addColumn<QStringList>("firstLines"); // of each page
    const QString name = "NORTHFIELD INSTITUTE OF ACCOUNTANCY";
    zel::test::row("there", QString(), 5, QStringList{name});
    zel::test::row("no such voucher", QString(), 6, QStringList{""});
    zel::test::row("no active company", QString("update Company set comActive = null"), 5, QStringList{""});
    zel::test::row("two active companies",
                   QString("insert into Company (Company, comActive) values ('SOUTHFIELD', 'Y')"), 5,
                   QStringList{name, "SOUTHFIELD"});
}

void tst_documents::voucherPages() {
    QFETCH(QString, change);
    QFETCH(int, number);
    QFETCH(QStringList, firstLines);
    addVoucher(5);
    addPair(5, 1, "5.1.1", "125000");
    m_catalog->program().Execute(Sql::trusted(change.toStdString()));
    auto report = open("rptBP.rpt");
    report->RecordSelectionFormula = "{MasJV.VouNo}= "_sql + QString::number(number) +
                                     " and {MasJV.VouStatus} = 'BP' and {Company.comActive} = 'Y'";
    const auto document = report->document();
    QCOMPARE(document->pageCount(), int(firstLines.size()));
    for (int page = 0; page < document->pageCount(); ++page)
        QCOMPARE(document->page(page).plainText().section('\n', 0, 0), firstLines[page]);
    if (firstLines.first().isEmpty())
        QVERIFY(document->page(0).lines.empty());
}

void tst_documents::voucherRefused_data() {
    columns<QString, int>("typed", "number");
    zel::test::row("nothing typed", "", 102);
    zel::test::row("a word", "abc", 207);
    zel::test::row("more than a number", "5 or 1 = 1", 102);
    zel::test::row("a quote", "5'", 105);
}

void tst_documents::voucherRefused() {
    QFETCH(QString, typed);
    QFETCH(int, number);
    auto report = open("rptBP.rpt");
    report->RecordSelectionFormula = "{MasJV.VouNo}= "_sql + typed + " and {MasJV.VouStatus} = 'BP'";
    try {
        const auto document = report->document();
        QFAIL("not refused");
    } catch (const Error &error) {
        QCOMPARE(error.number(), number);
    }
}

void tst_documents::logonRefused() {
    try {
        const auto document = open("rptChartAC.rpt", "wrong")->document();
        QFAIL("not refused");
    } catch (const Error &error) {
        QCOMPARE(error.number(), 18456);
    }
}

void tst_documents::journalPairsStayTogether_data() {
    QTest::addColumn<int>("pairs");
    for (int pairs = 12; pairs <= 18; ++pairs) // the last one meets the page's end somewhere
        QTest::addRow("%d", pairs) << pairs;
}

void tst_documents::journalPairsStayTogether() {
    QFETCH(int, pairs);
    addVoucher(5, "JV");
    for (int entry = 1; entry <= pairs; ++entry) {
        addRow("JV", 5, entry, "5.1.1", "1.1.2", "1000.01", "0", "In advance");
        addRow("JV", 5, entry, "1.1.2", "5.1.1", "0", "1000.01", "In advance");
    }
    auto report = open("rptJV.rpt");
    report->RecordSelectionFormula =
        "{MasJV.VouNo}= 5 and {MasJV.VouStatus} = 'JV' and {Company.comActive} = 'Y'";
    const auto document = report->document();
    QVERIFY(document->groups().empty());
    qsizetype seen = 0;
    for (int index = 0; index < document->pageCount(); ++index) {
        const QString text = document->page(index).plainText();
        const qsizetype debits = text.count("5.1.1 RENT 00451872 77 F-9 1,000.01\n1.1.2 CITY BANK 1,000.01\n"
                                            "In advance\n");
        QVERIFY(debits > 0);
        QCOMPARE(text.count("1,000.01"), 2 * debits);
        seen += debits;
    }
    QCOMPARE(seen, pairs);
}

void tst_documents::chart() {
    for (int code = 6; code <= 11; ++code) {
        m_catalog->program().Execute(
            "insert into Accounts (ParentID, Dcode, AcNodes, AcName, AcStatus, OpenBal, openDate) values ('5.1', "_sql +
            code + ", '5.1." + code + "', 'EXPENSE " + code + "', 'DD', -100.05, '2024-01-01')");
    }
    m_catalog->program().Execute("update Accounts set OpenBal = 0.30 where AcNodes = '5.1.1'");
    m_catalog->program().Execute(
        "insert into Accounts (ParentID, Dcode, AcNodes, AcName, AcStatus) values ('10', 0, "
        "'10', 'EMPTY', 'HH')");
    const auto document = open("rptChartAC.rpt")->document();
    const QStringList lines = document->plainText().split(QRegularExpression("[\n\f]"));
    QStringList codes;
    for (const QString &line : lines) {
        static const QRegularExpression shape("^(\\d+(\\.\\d+)*) [A-Z]");
        if (const auto match = shape.match(line); match.hasMatch() && !line.endsWith("(continued)"))
            codes += match.captured(1);
    }
    QCOMPARE(codes.join(' '),
             QString("1 1.1 1.1.1 1.1.2 1.2 2 2.1 2.1.1 3 3.1 3.1.1 4 4.1 4.1.1 4.1.2 5 5.1 5.1.1 5.1.2 "
                     "5.1.3 5.1.4 5.1.5 5.1.6 5.1.7 5.1.8 5.1.9 5.1.10 5.1.11 10"));
    for (const char *line :
         {"5.1.11 EXPENSE 11 01/01/2024 100.05", "11 accounts 0.30 600.30",
          "Total EXPENSES, 11 accounts 0.30 600.30", "Opening balances without a counterpart 600.00",
          "Grand total 600.30 600.30", "6 control accounts, 6 sub-control accounts, 17 subsidiary accounts"})
        QVERIFY2(lines.contains(line), line);
    const auto groups = document->groups();
    QCOMPARE(groups.size(), std::size_t(6));
    QCOMPARE(groups[0].title, QString("1  ASSETS"));
    QCOMPARE(groups[0].children[1].title, QString("1.2  STUDENTS"));
    for (const GroupNode &group : groups)
        QVERIFY(document->page(group.page)
                    .plainText()
                    .contains('\n' + QString(group.title).replace("  ", " ") + '\n'));
}

void tst_documents::wordsComeRightFromPdf() {
    const QString pdftotext = QStandardPaths::findExecutable("pdftotext");
    if (pdftotext.isEmpty())
        QSKIP("pdftotext is not installed");
    addVoucher(5);
    addPair(5, 1, "5.1.1", "125000", "office affidavit fjord efficient flight 1,234.50 Peña");
    auto report = open("rptBP.rpt");
    report->RecordSelectionFormula =
        "{MasJV.VouNo}= 5 and {MasJV.VouStatus} = 'BP' and {Company.comActive} = 'Y'";
    const auto document = report->document();
    const QString path = m_catalog->filePath("voucher.pdf");
    exportPdf(*document, path);
    QProcess process;
    process.start(pdftotext, {"-layout", path, "-"});
    QVERIFY(process.waitForFinished());
    const auto words = [](const QString &text) {
        return text.split(QRegularExpression("\\s+"), Qt::SkipEmptyParts).join(' ');
    };
    QCOMPARE(words(QString::fromUtf8(process.readAllStandardOutput())), words(document->plainText()));
}

QTEST_MAIN(tst_documents)
#include "tst_documents.moc"
