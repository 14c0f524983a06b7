#include "platform/ado/recordset.h"
#include "platform/base/error.h"
#include "platform/report/output/paint.h"
#include "platform/report/report.h"
#include "tests/support/chart_catalog.h"
#include "tests/support/facts.h"

#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTest>

#include <optional>

using namespace zel;
using namespace zel::report;
using namespace zel::test;

/// The shipped definitions, on a real catalog.
class tst_documents : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init() {
        m_catalog.emplace();
        m_catalog->program().Execute("update Company set Company = 'NORTHFIELD INSTITUTE OF ACCOUNTANCY', "
                                     "comAddr = 'STATION ROAD 14', "
                                     "comTel = '042-111', comEmail = 'office@northfield.example'");
    }

    void cleanup() { m_catalog.reset(); }

    /// Whether the bank or cash receives, whose account is the debit one then, and whether one row stands for
    /// the cash account instead of a second one of each pair.
    void voucher_data() { rowsFrom<QString, bool, bool, QStringList>("platform/report/documents.json"); }

    void voucher() {
        const auto [kind, receives, summary, page] = fetched<QString, bool, bool, QStringList>();
        const auto row = [&](int voucher, int entry, const char *account, const char *contra,
                             const char *amount, bool debit, const QString &narration) {
            addRow(kind, voucher, entry, account, contra, debit ? amount : "0", debit ? "0" : amount,
                   narration);
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
        QCOMPARE(report->document()->plainText(), page.join('\n'));
    }

    /// The first line of each page.
    void voucherPages_data() { rowsFrom<QString, int, QStringList>("platform/report/documents.json"); }

    void voucherPages() {
        const auto [change, number, firstLines] = fetched<QString, int, QStringList>();
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

    void refused() {
        auto report = open("rptBP.rpt");
        report->RecordSelectionFormula = "{MasJV.VouNo}= "_sql + "5'" + " and {MasJV.VouStatus} = 'BP'";
        for (const auto &[wrong, number] :
             {std::pair(report, 105), {open("rptChartAC.rpt", "wrong"), 18456}}) {
            try {
                const auto document = wrong->document();
                QFAIL("not refused");
            } catch (const Error &error) {
                QCOMPARE(error.number(), number);
            }
        }
    }

    void journalPairsStayTogether_data() {
        QTest::addColumn<int>("pairs");
        for (int pairs = 12; pairs <= 18; ++pairs) // the last one meets the page's end somewhere
            QTest::addRow("%d", pairs) << pairs;
    }

    void journalPairsStayTogether() {
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
            const qsizetype debits =
                text.count("5.1.1 RENT 00451872 77 F-9 1,000.01\n1.1.2 CITY BANK 1,000.01\n"
                           "In advance\n");
            QVERIFY(debits > 0);
            QCOMPARE(text.count("1,000.01"), 2 * debits);
            seen += debits;
        }
        QCOMPARE(seen, pairs);
    }

    void chart() {
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
                 "1 1.1 1.1.1 1.1.2 1.2 2 2.1 2.1.1 3 3.1 3.1.1 4 4.1 4.1.1 4.1.2 5 5.1 5.1.1 5.1.2 "
                 "5.1.3 5.1.4 5.1.5 5.1.6 5.1.7 5.1.8 5.1.9 5.1.10 5.1.11 10");
        for (const char *line : {"5.1.11 EXPENSE 11 01/01/2024 100.05", "11 accounts 0.30 600.30",
                                 "Total EXPENSES, 11 accounts 0.30 600.30",
                                 "Opening balances without a counterpart 600.00", "Grand total 600.30 600.30",
                                 "6 control accounts, 6 sub-control accounts, 17 subsidiary accounts"})
            QVERIFY2(lines.contains(line), line);
        const auto groups = document->groups();
        QCOMPARE(groups.size(), std::size_t(6));
        QCOMPARE(groups[0].title, "1  ASSETS");
        QCOMPARE(groups[0].children[1].title, "1.2  STUDENTS");
        for (const GroupNode &group : groups)
            QVERIFY(document->page(group.page)
                        .plainText()
                        .contains('\n' + QString(group.title).replace("  ", " ") + '\n'));
    }

    void wordsComeRightFromPdf() {
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

private:
    [[nodiscard]] std::shared_ptr<Report> open(const char *file, const QString &password = {}) {
        auto report =
            Application(m_catalog->program()).OpenReport(QString(ZEL_SOURCE_DIR) + "\\rpt\\" + file);
        Table &table = report->Database().Tables().Item(1);
        table.ConnectionProperties("User ID").Value = "sa";
        table.ConnectionProperties("Password").Value = password;
        report->setPrintTime(QDateTime(QDate(2024, 3, 14), QTime(9, 5)));
        return report;
    }

    void addPair(int voucher, int entry, const char *account, const char *amount,
                 const QString &narration = {}) {
        addRow("BP", voucher, entry, account, "1.1.2", amount, "0", narration);
        addRow("BP", voucher, entry, "1.1.2", account, "0", amount, narration);
    }

    void addRow(const QString &kind, int voucher, int entry, const char *account, const char *contra,
                const char *debit, const char *credit, const QString &narration = {}) {
        const auto code = [](const char *nodes) {
            return "(select RowID from Accounts where AcNodes = '"_sql + Sql::trusted(nodes) + "')";
        };
        m_catalog->program().Execute(
            "insert into DetJV (VouNo, VouStatus, VouDate, EntryNo, AcCode, CrAc, DrAmt, CrAmt, ChecqNo, "
            "Naration, FileNo, BillNo) select "_sql +
            voucher + ", '" + kind + "', '2024-03-14', " + entry + ", " + code(account) + ", " +
            code(contra) + ", " + Sql::trusted(debit) + ", " + Sql::trusted(credit) + ", '00451872', '" +
            narration + "', 'F-9', '77'");
    }

    void addVoucher(int number, const QString &kind = "BP") {
        m_catalog->program().Execute(
            "insert into MasJV (VouNo, VouStatus, VouDate, PaidReceive, TotalAmount, Login) values ("_sql +
            number + ", '" + kind + "', '2024-03-14', 'CITY PROPERTIES', 1, 'AMINA')");
    }

    std::optional<test::ChartCatalog> m_catalog;
};

QTEST_MAIN(tst_documents)
#include "tst_documents.moc"
