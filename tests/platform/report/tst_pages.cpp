#include "memory_source.h"

#include "platform/report/definition/definition.h"
#include "platform/report/pages/text_metrics.h"
#include "platform/report/report.h"

#include "tests/support/facts.h"
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace zel;
using namespace zel::report;
using namespace zel::test;

/// Pages as text, on rows written down here: each letter is 2 mm wide at 9 points and a line 5 mm high.

namespace {

class PlainMetrics final : public TextMetrics {
public:
    [[nodiscard]] double width(const QString &text, const Font &font) const override {
        return 2.0 * double(text.size()) * font.points / 9;
    }
    [[nodiscard]] double ascent(const Font &) const override { return 4; }
    [[nodiscard]] double lineHeight(const Font &) const override { return 5; }
};

const char sales[] = "S_Area|S_Town|S_Item|S_Amt|S_Note\n"
                     "EAST|ABLE|pen|10.10|-\n"
                     "EAST|ABLE|ink|20.20|-\n"
                     "EAST|BAKER|pen|-5|-\n"
                     "WEST|ABLE|ink|0.01|-\n"
                     "WEST|CHARLIE|pen|-|-\n";

/// A page of 100 mm by `height`, without margins, and the table S.
QByteArray reportOf(const QByteArray &content, int height = 100) {
    return "<report name='r'><page left='0' top='0' right='110' bottom='" + QByteArray::number(297 - height) +
           "'/><table name='S'>Area text, Town text, Item text, Amt number, Note text</table>" + content +
           "</report>";
}

struct Print {
    explicit Print(const QByteArray &xml, const QByteArray &rows = sales) {
        QFile file(folder.filePath("r.rpt"));
        if (!file.open(QIODevice::WriteOnly))
            qFatal("no room for the test");
        file.write(xml);
        file.close();
        report = Application().OpenReport(file.fileName());
        source->add("S", rows);
        report->setSource(source);
        report->setMetrics(std::make_shared<PlainMetrics>());
    }
    QTemporaryDir folder;
    std::shared_ptr<MemorySource> source = std::make_shared<MemorySource>();
    std::shared_ptr<Report> report;
};

const QByteArray item = "<detail height='5'><field>{S.Item}</field></detail>";

} // namespace

class tst_pages : public QObject {
    Q_OBJECT
private Q_SLOTS:
    /// The text's lines are parted by '/', its pages by '//'.
    void pages_data() { rowsFrom<QByteArray, int, QString>("platform/report/pages.json"); }

    void pages() {
        const auto [content, height, text] = fetched<QByteArray, int, QString>();
        Print print(reportOf(content, height));
        QString pages = print.report->document()->plainText();
        pages.replace('/', '|').replace('\n', '/').replace("\f", "//");
        QCOMPARE(pages, text);
    }

    void eachPageStandsAlone() {
        QByteArray rows = "S_Area|S_Town|S_Item|S_Amt|S_Note\n";
        for (int i = 0; i < 1000; ++i)
            rows += "A" + QByteArray::number(i / 7) + "|T" + QByteArray::number(i / 3) + "|i|1|" +
                    QByteArray("words ").repeated(i % 20) + "\n";
        Print print(reportOf("<group name='Area' by='{S.Area}' repeat='yes' keep='yes'><header "
                             "height='5'><field>{S.Area}</field></header>"
                             "<footer height='5'><field>Sum({S.Amt}, 'Area')</field></footer></group><total "
                             "name='Run' running='{S.Amt}'/>"
                             "<detail height='5'><field w='20'>{Run}</field><field x='30' w='60' "
                             "grow='yes'>{S.Note}</field></detail>",
                             60),
                    rows);
        const auto document = print.report->document();
        const int count = document->pageCount();
        QVERIFY(count > 100);
        // Backwards: no page may lean on one that was laid out before it.
        int next = 1000;
        for (int index = count - 1; index >= 0; --index) {
            const Page page = document->page(index);
            for (const TextItem &text : page.texts)
                QVERIFY(text.baseline < 60);
            const QStringList lines = page.plainText().split('\n');
            for (auto line = lines.crbegin(); line != lines.crend(); ++line) {
                if (line->section(' ', 0, 0) == QString::number(next))
                    --next;
            }
        }
        QCOMPARE(next, 0);
    }

    /// Each printing counts its own pages and begins its running totals anew.
    void printedOnceForEach() {
        Print print(
            reportOf("<table name='C'>Name text</table><total name='Run' running='{S.Amt}'/>" + item +
                         "<pageHeader height='5'><field>{C.Name} &amp; ' ' &amp; PageNumber &amp; '|' &amp; "
                         "PageCount &amp; ' ' &amp; {Run}</field></pageHeader>",
                     25));
        print.source->add("C", "C_Name\nNORTH\nSOUTH\n");
        print.report->RecordSelectionFormula = "{C.Name} > ''";
        QCOMPARE(print.report->document()->plainText().replace('\n', '/').replace('\f', "//"),
                 "NORTH 1|2 0/pen/ink/pen//NORTH 2|2 25.3/ink/pen//"
                 "SOUTH 1|2 0/pen/ink/pen//SOUTH 2|2 25.3/ink/pen");
    }

    void totalsAreExact() {
        QByteArray rows = "S_Area|S_Town|S_Item|S_Amt|S_Note\n";
        for (int i = 0; i < 10000; ++i)
            rows += "A|T|i|0.1|-\nA|T|i|1000000000.01|-\n";
        Print print(
            reportOf(
                "<total name='Run' running='{S.Amt}'/><reportFooter height='10'><field>Sum({S.Amt})</field>"
                "<field y='5'>{Run}</field></reportFooter>"),
            rows);
        QCOMPARE(print.report->document()->plainText(), "10000000001100\n10000000001100");
    }

    void formulaTexts() {
        Print print(reportOf(
            "<formula name='Dates'>''</formula><formula name='Line'>'[' &amp; {Dates} &amp; ']'</formula>"
            "<pageHeader height='5'><field>{Line}</field></pageHeader>"));
        print.report->FormulaFields("dates").Text = "\"From :  1/2/24  To :  3/4/24\"";
        QCOMPARE(print.report->document()->plainText(), "[From :  1/2/24  To :  3/4/24]");
        print.report->FormulaFields("dates").Text =
            "\"The "_sql + QString("2\" 'B\"") + " " + QString("\"") + "\"";
        QCOMPARE(print.report->document()->plainText(), "[The 2\" 'B\" \"]");
        for (const auto &[text, number] :
             {std::pair("\"open"_sql, 105), std::pair("5"_sql, errors::TypeMismatch),
              std::pair("{Line}"_sql, 207), std::pair(""_sql, 102),
              std::pair("\""_sql + QString("\" & 'x"), 105)}) {
            print.report->FormulaFields("Dates").Text = text;
            try {
                static_cast<void>(print.report->document());
                QFAIL(std::string(text.text()).c_str());
            } catch (const Error &error) {
                QCOMPARE(error.number(), number);
                QVERIFY(error.description().contains("Dates"));
            }
        }
    }

    void parameter() {
        Print print(reportOf("<parameter name='Least'/><where>{S.Amt} > {Least}</where><detail "
                             "height='5'><field>{Least}</field></detail>"),
                    "S_Amt\n1\n");
        print.report->EnableParameterPrompting = false;
        print.report->ParameterFields(1).CurrentValue = "7";
        QCOMPARE(print.report->document()->plainText(), "7");
        QVERIFY(print.source->statements.back().endsWith("where S.Amt > 7"));
    }

    void subreports() {
        const QByteArray table = "<table name='K'>Area text, Name text, Amt number</table>";
        const QByteArray inner =
            "<formula name='All'>Sum({K.Amt})</formula>"
            "<detail height='5'><field>'- ' &amp; {K.Name}</field></detail>"
            "<reportFooter height='5'><field>'= ' &amp; {All}</field></reportFooter></subreport>";
        Print print(reportOf("<subreport name='rptAll'>" + table + inner + "<subreport name='rptByArea'>" +
                             table + "<link outer='{S.Area}' inner='{K.Area}'/>" + inner +
                             "<reportHeader><place subreport='rptAll' y='5'/><text>ALL</text><text "
                             "y='6'>BELOW</text></reportHeader>" +
                             "<group name='Area' by='{S.Area}'><header height='5'><field>{S.Area} &amp; ' ' "
                             "&amp; FromSub('rptAll', 'All')</field>" +
                             "<place subreport='rptByArea' y='5'/></header></group>"),
                    "S_Area|S_Amt\nEAST|1\nNORTH|1\nWEST |1\n");
        print.source->add("K", "K_Area|K_Name|K_Amt\nEast|e1|1\nWEST|w1|2\nEAST |e2|4\n");
        print.report->OpenSubreport("RPTALL").RecordSelectionFormula = "{K.Amt} > 0";
        QCOMPARE(print.report->document()->plainText().replace('\n', '/'),
                 "ALL/- e1/- w1/- e2/= 7/BELOW/EAST 7/- e1/- e2/= 5/NORTH 7/= 0/WEST 7/- w1/= 2");
    }

    void oneStatementEach() {
        Print print(reportOf(
            "<subreport name='inner'><table name='K'>Area text, Name text</table><link outer='{S.Area}' "
            "inner='{K.Area}'/>"
            "<detail height='5'><field>{K.Name}</field></detail></subreport>"
            "<detail height='5'><field>{S.Area}</field><place subreport='inner' y='5'/></detail>"));
        print.source->add("K", "K_Area|K_Name\nEAST|x\n");
        print.report->RecordSelectionFormula = "{S.Amt} > 0";
        static_cast<void>(print.report->document()->plainText());
        QCOMPARE(print.source->statements,
                 QStringList({"select S.Area as S_Area from S where S.Amt > 0",
                              "select K.Area as K_Area, K.Name as K_Name from K where "
                              "K.Area in (select S.Area from S where S.Amt > 0)"}));
    }

    void notFound() {
        Print print(reportOf(item));
        const auto refused = [](auto action) {
            try {
                action();
            } catch (const Error &error) {
                return error.number();
            }
            return 0;
        };
        Report &report = *print.report;
        QCOMPARE(refused([&] { report.FormulaFields("Dates").Text = ""; }), errors::ItemNotFound);
        QCOMPARE(refused([&] { report.ParameterFields(1).CurrentValue = 1; }), errors::ItemNotFound);
        QCOMPARE(refused([&] { report.OpenSubreport("inner2").RecordSelectionFormula = Sql(); }),
                 errors::ItemNotFound);
        QCOMPARE(refused([&] { static_cast<void>(report.Database().Tables().Item(2)); }),
                 errors::ItemNotFound);
        QCOMPARE(
            refused([&] { report.Database().Tables().Item(1).ConnectionProperties("Pwd").Value.clear(); }),
            errors::ItemNotFound);
    }

    void wraps_data() { rowsFrom<QString, QString>("platform/report/pages.json"); }

    void wraps() {
        const auto [text, lines] = fetched<QString, QString>();
        QCOMPARE(wrapped(text, 20, Font(), PlainMetrics()).join('/'), lines);
    }
};

QTEST_MAIN(tst_pages)
#include "tst_pages.moc"
