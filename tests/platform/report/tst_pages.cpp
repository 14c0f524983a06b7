#include "memory_source.h"

#include "platform/report/definition/definition.h"
#include "platform/report/pages/text_metrics.h"
#include "platform/report/report.h"

#include "tests/support/rows.h"
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using zel::test::columns;
using zel::test::row;

using namespace zel;
using namespace zel::report;

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
QByteArray reportOf(const QByteArray &content, int height = 100, const QByteArray &attributes = {}) {
    return "<report name='r' " + attributes + "><page left='0' top='0' right='110' bottom='" +
           QByteArray::number(297 - height) +
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
    void pages_data() {
        QTest::addColumn<QByteArray>("xml");
        QTest::addColumn<QString>("text"); // lines parted by '/', pages by '//'
        const auto row = [](const char *name, const QByteArray &xml, const char *text) {
            zel::test::row(name, xml, QString(text));
        };
        row("rows", reportOf(item), "pen/ink/pen/ink/pen");
        row("full pages, the last one with more than a line", reportOf(item, 20), "pen/ink/pen//ink/pen");
        row("one line is all that a page holds",
            reportOf("<detail height='10'><field>{S.Item}</field></detail>", 10), "pen//ink//pen//ink//pen");
        row("headers and footers",
            reportOf("<reportHeader height='5'><text>TOP</text></reportHeader><pageHeader "
                     "height='5'><text>H</text></pageHeader>" +
                         item +
                         "<pageFooter height='5'><field>PageNumber &amp; '/' &amp; "
                         "PageCount</field></pageFooter>" +
                         "<reportFooter height='5'><text>END</text></reportFooter>",
                     30),
            "H/TOP/pen/ink/pen/1|2//H/ink/pen/END/2|2");
        row("last row goes with the footer",
            reportOf(item + "<reportFooter height='5'><text>END</text></reportFooter>", 25),
            "pen/ink/pen//ink/pen/END");
        row("footer at the foot",
            reportOf(item + "<reportFooter height='5' bottom='yes'><text>END</text></reportFooter>"),
            "pen/ink/pen/ink/pen/END");
        row("group totals",
            reportOf(
                "<group name='Area' by='{S.Area}'><header height='5'><field>{S.Area} &amp; ' ' &amp; "
                "{Sum}</field></header>"
                "<footer height='5'><field>'= ' &amp; {Sum} &amp; ' of ' &amp; {Rows} &amp; '/' &amp; "
                "{Towns}</field></footer></group>"
                "<group name='Town' by='{S.Town}'><footer height='5'><field>{S.Town} &amp; ' ' &amp; "
                "Sum({S.Amt}, 'Town')</field></footer></group>"
                "<total name='Sum' sum='{S.Amt}' over='Area'/><total name='Rows' count='{S.Amt}' "
                "over='Area'/>"
                "<total name='Towns' groups='Town' over='Area'/>"
                "<reportFooter height='5'><field>Sum({S.Amt}) &amp; ' ' &amp; Groups('Town') &amp; ' ' &amp; "
                "Count({S.Item})</field></reportFooter>"),
            "EAST 25.3/ABLE 30.3/BAKER -5/= 25.3 of 3|2/WEST 0.01/ABLE 0.01/CHARLIE 0/= 0.01 of 1|2/25.31 4 "
            "5");
        row("running totals",
            reportOf("<group name='Area' by='{S.Area}'/><total name='Run' running='{S.Amt}'/><total "
                     "name='RunArea' running='{S.Amt}' over='Area'/>"
                     "<detail height='5'><field>{Run} &amp; ' ' &amp; {RunArea} &amp; ' ' &amp; "
                     "RowNumber</field></detail>",
                     15),
            "10.1 10.1 1/30.3 30.3 2/25.3 25.3 3//25.31 0.01 4/25.31 0.01 5");
        const QByteArray edges = "<total name='Run' running='{S.Amt}'/>"
                                 "<pageHeader height='5'><field>'from ' &amp; {Run}</field></pageHeader>"
                                 "<pageFooter height='5'><field>'to ' &amp; {Run}</field></pageFooter>";
        row("running total at a page's edges", reportOf(edges + item, 20),
            "from 0/pen/ink/to 30.3//from 30.3/pen/to 25.3//from 25.3/ink/pen/to 25.31");
        row("running total at edges, rows begin with a band left out",
            reportOf(edges + "<detail height='5' when='{S.Amt} > 100'><text>rich</text></detail>" + item, 20),
            "from 0/pen/ink/to 30.3//from 30.3/pen/ink/to 25.31//from 25.31/pen/to 25.31");
        row("running total at edges, between the rows' groups",
            reportOf("<group name='Amt' by='{S.Amt}'><header height='5'><text>-</text></header>"
                     "</group>" +
                         edges + item,
                     20),
            "from 0/-/pen/to 10.1//from 10.1/-/ink/to 30.3//from 30.3/-/pen/to 25.3//from 25.3/-/ink/to "
            "25.31//"
            "from 25.31/-/pen/to 25.31");
        row("running total at edges that part a row",
            reportOf(
                edges +
                    "<detail height='5'><field w='6' grow='yes'>{S.Item} &amp; ' abc def'</field></detail>",
                20),
            "from 0/pen/abc/to 10.1//from 10.1/def/to 10.1//from 10.1/ink/abc/to 30.3//from 30.3/def/to "
            "30.3//"
            "from 30.3/pen/abc/to 25.3//from 25.3/def/to 25.3//from 25.3/ink/abc/to 25.31//from 25.31/def/to "
            "25.31//"
            "from 25.31/pen/abc/to 25.31//from 25.31/def/to 25.31");
        row("header never without a row",
            reportOf("<group name='Area' by='{S.Area}'><header "
                     "height='5'><field>{S.Area}</field></header></group>" +
                         item,
                     25),
            "EAST/pen/ink/pen//WEST/ink/pen");
        row("repeated header",
            reportOf(
                "<group name='Area' by='{S.Area}' repeat='yes'><header height='5'><field grow='yes'>{S.Area} "
                "&amp; (if Continued then ' again' else '')</field></header></group>" +
                    item,
                15),
            "EAST/pen/ink//EAST again/pen//WEST/ink/pen");
        row("page header and footer, left out on a page",
            reportOf("<pageHeader height='5' when='PageNumber > 1'><text>H</text></pageHeader>" + item +
                         "<pageFooter height='5' when='PageNumber &lt; PageCount'><text>F</text></pageFooter>"
                         "<pageFooter height='5'><field>PageNumber</field></pageFooter>",
                     25),
            "pen/ink/pen/F/1//H/ink/pen/2");
        row("follows on its line where it fits",
            reportOf("<detail height='5'><field w='24' grow='yes'>{S.Item} &amp; ' ' &amp; {S.Town}</field>"
                     "<field y='5' w='30' follow='yes'>if {S.Item} = 'ink' then 'a' else if IsNull({S.Amt}) "
                     "then '' "
                     "else {S.Town} &amp; ' ROAD NO 77'</field></detail><detail "
                     "height='5'><text>-</text></detail>"),
            "pen ABLE/ABLE ROAD NO 77/-/ink ABLE a/-/pen BAKER/BAKER ROAD NO/77/-/ink ABLE a/-/pen "
            "CHARLIE/-");
        row("least and greatest",
            reportOf("<group name='Area' by='{S.Area}'><footer height='5'><field>{Least} &amp; ' ' &amp; "
                     "{Greatest} "
                     "&amp; ' ' &amp; {All}</field></footer></group><total name='Least' min='{S.Amt}' "
                     "over='Area'/>"
                     "<total name='Greatest' max='{S.Amt}' over='Area'/><total name='All' min='{S.Amt}'/>"),
            "-5 20.2 -5/0 0.01 -5");
        row("kept group goes to the next page",
            reportOf("<group name='Area' by='{S.Area}' keep='yes'><header "
                     "height='5'><field>{S.Area}</field></header></group>" +
                         item,
                     30),
            "EAST/pen/ink/pen//WEST/ink/pen");
        row("kept group takes the total under it along",
            reportOf(
                "<group name='Area' by='{S.Area}'><footer height='5'><field>{S.Area}</field></footer></group>"
                "<group name='Town' by='{S.Town}' keep='yes'><header "
                "height='5'><field>{S.Town}</field></header></group>" +
                    item,
                25),
            "ABLE/pen/ink//BAKER/pen/EAST/ABLE/ink//CHARLIE/pen/WEST");
        row("group on a page of its own",
            reportOf("<group name='Area' by='{S.Area}' newPage='yes'><header "
                     "height='5'><field>{S.Area}</field></header></group>" +
                     item),
            "EAST/pen/ink/pen//WEST/ink/pen");
        row("bands left out",
            reportOf("<detail height='5' when=\"{S.Item} = 'ink'\"><field>{S.Amt}</field></detail>"),
            "20.2/0.01");
        row("two bands a row stay together",
            reportOf(item + "<detail height='5' when='not IsNull({S.Amt})'><field>{S.Amt}</field></detail>",
                     25),
            "pen/10.1/ink/20.2//pen/-5/ink/0.01/pen");
        row("on one line",
            reportOf("<detail height='5'><field x='40' w='20'>{S.Amt}</field><field "
                     "w='30'>{S.Item}</field></detail>",
                     10),
            "pen 10.1/ink 20.2//pen -5//ink 0.01/pen");
        row("cut text", reportOf("<detail height='5'><field w='6'>{S.Town}</field></detail>"),
            "AB…/AB…/BA…/AB…/CH…");
        row("number too wide",
            reportOf("<style name='n' picture='0.00'/><detail height='5'><field w='4' "
                     "style='n'>{S.Amt}</field></detail>"),
            "####/####/####/0.01");
        row("number set smaller",
            reportOf("<style name='n' picture='0.00'/><detail height='5'><field w='8' "
                     "style='n'>{S.Amt}</field></detail>"),
            "10.10/20.20/-5.00/0.01");
        row("text set smaller, then cut",
            reportOf("<detail height='5'><field w='6' shrink='yes'>{S.Town}</field></detail>"),
            "ABLE/ABLE/BAKER/ABLE/CHARL…");
        row("what stands for zero",
            reportOf("<style name='n' zero=''/><style name='o' zero='nil'/><detail height='5'><field w='30' "
                     "style='n'>"
                     "{S.Amt} - 10.1</field><field x='40' style='o'>{S.Amt} + 5</field></detail>"),
            "15.1/10.1 25.2/-15.1 nil/-10.09 5.01/-10.1 5");
        row("shares of the width",
            reportOf("<detail height='5'><field x='50%' w='50%'>{S.Item}</field><field "
                     "w='6%'>{S.Town}</field></detail>"),
            "AB… pen/AB… ink/BA… pen/AB… ink/CH… pen");
    }

    void pages() {
        QFETCH(QByteArray, xml);
        QFETCH(QString, text);
        Print print(xml);
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
                 QString("NORTH 1|2 0/pen/ink/pen//NORTH 2|2 25.3/ink/pen//"
                         "SOUTH 1|2 0/pen/ink/pen//SOUTH 2|2 25.3/ink/pen"));
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
        QCOMPARE(print.report->document()->plainText(), QString("10000000001100\n10000000001100"));
    }

    void formulaTexts() {
        Print print(reportOf(
            "<formula name='Dates'>''</formula><formula name='Line'>'[' &amp; {Dates} &amp; ']'</formula>"
            "<pageHeader height='5'><field>{Line}</field></pageHeader>"));
        print.report->FormulaFields("dates").Text = "\"From :  1/2/24  To :  3/4/24\"";
        QCOMPARE(print.report->document()->plainText(), QString("[From :  1/2/24  To :  3/4/24]"));
        print.report->FormulaFields("dates").Text =
            "\"The "_sql + QString("2\" 'B\"") + " " + QString("\"") + "\"";
        QCOMPARE(print.report->document()->plainText(), QString("[The 2\" 'B\" \"]"));
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
        QCOMPARE(print.report->document()->plainText(), QString("7"));
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
                 QString("ALL/- e1/- w1/- e2/= 7/BELOW/EAST 7/- e1/- e2/= 5/NORTH 7/= 0/WEST 7/- w1/= 2"));
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

    void wraps_data() {
        columns<QString, QString>("text", "lines");
        zel::test::row("fits", "abc de", "abc de");
        zel::test::row("at a blank", "abcdef ghij klm", "abcdef/ghij klm");
        zel::test::row("blank at the edge", "abcdefghij klm", "abcdefghij/klm");
        zel::test::row("long word", "abcdefghijklm no", "abcdefghij/klm no");
        zel::test::row("line end", "abc\nde", "abc/de");
        zel::test::row("empty", "", "");
    }

    void wraps() {
        QFETCH(QString, text);
        QFETCH(QString, lines);
        QCOMPARE(wrapped(text, 20, Font(), PlainMetrics()).join('/'), lines);
    }
};

QTEST_MAIN(tst_pages)
#include "tst_pages.moc"
