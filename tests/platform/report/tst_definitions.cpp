#include "platform/base/error.h"
#include "platform/report/definition/definition.h"

#include "tests/support/rows.h"
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using zel::test::row;

using namespace zel;
using namespace zel::report;

/// What a definition file may say, and where it is refused.

namespace {

/// Lines 3 and on of a definition that is good up to there.
QByteArray withLines(const QByteArray &lines) {
    return "<report name=\"r\">\n"
           "<table name=\"T\">A number, B text, C date</table>\n" +
           lines + "\n</report>\n";
}

QString refusal(const QByteArray &xml) {
    try {
        static_cast<void>(readDefinition(xml, "r.rpt"));
    } catch (const Error &error) {
        return error.number() == errors::BadFile ? error.description() : QString::number(error.number());
    }
    return "accepted";
}

void put(const QTemporaryDir &folder, const QString &name, const QByteArray &text) {
    QFile file(folder.filePath(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        qFatal("%s can't be written", qPrintable(name));
}

} // namespace

class tst_definitions : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void refuses_data() {
        QTest::addColumn<QByteArray>("lines");
        QTest::addColumn<QString>("place"); // line:column
        QTest::addColumn<QString>("word");
        const auto row = [](const char *name, const char *lines, const char *place, const char *word) {
            zel::test::row(name, QByteArray(lines), QString(place), QString(word));
        };
        row("element", "<tabel name='X'/>", "3:1", "<tabel>");
        row("attribute", "<detail  heigth='5'/>", "3:10", "heigth");
        row("item", "<detail>\n <image2/></detail>", "4:2", "<image2>");
        row("item attribute", "<detail><text wide='3'>x</text></detail>", "3:15", "wide");
        row("style", "<detail><text style='no'>x</text></detail>", "3:22", "style no");
        row("like of a style", "<style name='a' like='b'/>", "3:23", "style b");
        row("style twice", "<style name='a'/><style name='a'/>", "3:31", "there already");
        row("table in a formula", "<detail><field>{X.A}</field></detail>", "3:16", "table X");
        row("field in a formula", "<detail><field>1 +\n  {T.D}</field></detail>", "4:3", "no field D");
        row("name in a formula", "<formula name='f'>{g} &amp; 'x'</formula>", "3:19", "{g}");
        row("behind an entity", "<formula name='f'>'x' &amp; {g}</formula>", "3:29", "{g}");
        row("function", "<formula name='f'>Sine(1)</formula>", "3:19", "sine");
        row("arguments", "<formula name='f'>Upper('a', 'b')</formula>", "3:19", "arguments");
        row("kinds", "<formula name='f'>{T.A} - {T.B}</formula>", "3:27", "a number, not a text");
        row("dates against texts", "<where>{T.C} = '2024-01-01'</where>", "3:16", "a date, not a text");
        row("condition", "<detail when='{T.A}'/>", "3:15", "a condition, not a number");
        row("syntax", "<where>{T.A} = </where>", "3:16", "end of the formula");
        row("open text", "<where>{T.B} = 'x</where>", "3:16", "Unclosed");
        row("date", "<where>{T.C} = #2023-02-29#</where>", "3:16", "no such date");
        row("kind", "<table name='U'>A number, B money</table>", "3:29", "money");
        row("fields", "<table name='U'>A number B text</table>", "3:17", "name kind");
        row("join without on", "<table name='U' join='left'>A number</table>", "3:1", "belong together");
        row("join", "<table name='U' join='outer' on='1=1'>A number</table>", "3:23", "outer");
        row("name taken", "<formula name='t'>1</formula>", "3:16", "taken");
        row("no name", "<formula name='a b'>1</formula>", "3:16", "no name");
        row("name missing", "<formula>1</formula>", "3:1", "needs name");
        row("group of a total", "<total name='t2' sum='{T.A}' over='G'/>", "3:36", "group G");
        row("sum of a text", "<total name='t2' sum='{T.B}'/>", "3:23", "numbers");
        row("total of a total", "<total name='a' sum='{T.A}'/><total name='b' sum='{a}'/>", "3:51",
            "rows hold");
        row("total of nothing", "<total name='a'/>", "3:1", "one of");
        row("group by a page", "<group name='g' by='PageNumber'/>", "3:21", "can't be part");
        row("group by what no statement holds", "<group name='g' by=\"Left({T.B}, 2)\"/>", "3:21",
            "can't be part");
        row("where that no statement holds", "<where>{T.A} = 1 and Abs({T.A}) > 1</where>", "3:22",
            "can't be part");
        row("length", "<detail height='high'/>", "3:17", "high");
        row("colour", "<style name='a' color='reddish'/>", "3:24", "reddish");
        row("yes or no", "<style name='a' bold='true'/>", "3:23", "true");
        row("over the margin", "<detail><text x='150' w='31'>x</text></detail>", "3:9", "right margin");
        row("page header too high", "<pageHeader height='265'/>", "1:1", "no room");
        row("growing page header", "<pageHeader><field grow='yes'>{T.B}</field></pageHeader>", "1:1",
            "grows");
        row("sub-report", "<detail><place subreport='s'/></detail>", "3:27", "sub-report s");
        row("image", "<detail><image src='none.png'/></detail>", "3:21", "none.png");
        row("link outside", "<link outer='{T.A}' inner='{T.A}'/>", "3:1", "sub-report");
        row("links of two kinds",
            "<subreport name='s'><table name='U'>K text</table><link outer='{T.A}' "
            "inner='{U.K}'/></subreport>",
            "3:51", "one kind");
        row("zero of a page header's room", "<pageHeader when='PageCount > 1'/>", "3:1", "PageCount");
        row("follows nothing", "<detail><line/><field follow='yes'>{T.B}</field></detail>", "3:16", "follow");
        row("total of two kinds", "<total name='a' min='{T.A}' max='{T.A}'/>", "3:29", "one of");
        row("share of no width", "<detail height='5%'/>", "3:17", "5%");
        row("include without a file", "<include source='x.rpt'/>", "3:1", "src");
        row("included file missing", "<detail>\n<include src='none.rpt'/></detail>", "4:15",
            "no file none.rpt");
        row("not well formed", "<detail>", "4:10", "");
    }

    void refuses() {
        QFETCH(QByteArray, lines);
        QFETCH(QString, place);
        QFETCH(QString, word);
        const QString said = refusal(withLines(lines));
        QVERIFY2(said.startsWith("r.rpt:" + place + ": "), qPrintable(said));
        QVERIFY2(said.contains(word), qPrintable(said));
    }

    void includes_data() {
        QTest::addColumn<QByteArray>("parts"); // of parts/a.rpt, from its second line on
        QTest::addColumn<QString>("said");
        const auto row = [](const char *name, const char *parts, const char *said) {
            zel::test::row(name, QByteArray(parts), QString(said));
        };
        row("what it holds stands there", "<include src='b.rpt'/><formula name='f'>{b}</formula></parts>",
            "accepted");
        row("formula", "<formula name='f'>\n{c}</formula></parts>", "parts/a.rpt:3:1: Invalid name {c}.");
        row("band", "<detail><field style='no'>{T.A}</field></detail></parts>",
            "parts/a.rpt:2:23: There is no style no.");
        row("behind what it includes", "<include src='b.rpt'/>\n<tabel/></parts>",
            "parts/a.rpt:3:1: A report has no <tabel>.");
        row("behind the include", "<formula name='taken'>1</formula></parts>",
            "r.rpt:3:44: The name taken is taken.");
        row("image from its own folder", "<detail><image src='no.png'/></detail></parts>",
            "parts/a.rpt:2:21: There is no image no.png.");
        row("more than one root", "</parts><x/>", "parts/a.rpt:2:13: Extra content at end of document.");
        row("another element", "</parts>", "");
        row("missing", "<include src='../c.rpt'/></parts>", "parts/a.rpt:2:15: There is no file ../c.rpt.");
        row("itself", "<include src='a.rpt'/></parts>", "parts/a.rpt:2:15: a.rpt includes itself.");
        row("the report", "<include src='../r.rpt'/></parts>", "parts/a.rpt:2:15: ../r.rpt includes itself.");
        row("a circle", "<include src='./../parts/d.rpt'/></parts>",
            "parts/d.rpt:1:22: a.rpt includes itself.");
    }

    void includes() {
        QFETCH(QByteArray, parts);
        QFETCH(QString, said);
        const QTemporaryDir folder;
        QVERIFY(QDir(folder.path()).mkdir("parts"));
        put(folder, "r.rpt",
            "<report name=\"r\"><table name=\"T\">A number, B text</table>\n\n"
            "<include src='parts/a.rpt'/><formula name=\"taken\">1</formula></report>");
        const bool other = said.isEmpty();
        put(folder, "parts/a.rpt",
            (other ? "<part>\n" : "<parts>\n") + (other ? QByteArray("</part>") : parts));
        put(folder, "parts/b.rpt", "<parts><formula name='b'>1</formula></parts>");
        put(folder, "parts/d.rpt", "<parts><include src='a.rpt'/></parts>");
        QString found = "accepted";
        try {
            static_cast<void>(readDefinition(folder.filePath("r.rpt")));
        } catch (const Error &error) {
            QCOMPARE(error.number(), errors::BadFile);
            found = error.description();
        }
        QCOMPARE(found.remove(folder.path() + '/'),
                 other ? "parts/a.rpt:1:1: What is included must be <parts>." : said);
    }

    void shippedOnesAreGood_data() {
        QTest::addColumn<QString>("path");
        const QDir folder(ZEL_SOURCE_DIR "/rpt");
        const QFileInfoList files = folder.entryInfoList({"*.rpt"});
        QVERIFY(!files.isEmpty());
        for (const QFileInfo &file : files)
            zel::test::row(qPrintable(file.fileName()), file.filePath());
    }

    void shippedOnesAreGood() {
        QFETCH(QString, path);
        const auto definition = readDefinition(path);
        QCOMPARE(definition->name + ".rpt", QFileInfo(path).fileName());
    }

    /// An office's paper is told once, and every document fits it.
    void onOtherPaper() {
        const QTemporaryDir folder;
        QVERIFY(QDir(folder.path()).mkdir("parts"));
        const auto read = [](const QString &name) {
            QFile file(ZEL_SOURCE_DIR "/rpt/" + name);
            return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        };
        for (const QString &part : QDir(ZEL_SOURCE_DIR "/rpt/parts").entryList({"*.rpt"}))
            put(folder, "parts/" + part, read("parts/" + part));
        const std::pair<const char *, QSizeF> papers[] = {{"size=\"Letter\"", {215.9, 279.4}},
                                                          {"size=\"A5\"", {148, 210}},
                                                          {"width=\"180\" height=\"350\"", {180, 350}}};
        for (const auto &[page, size] : papers) {
            put(folder, "parts/office.rpt", read("parts/office.rpt").replace("size=\"A4\"", page));
            for (const QString &name : QDir(ZEL_SOURCE_DIR "/rpt").entryList({"*.rpt"})) {
                const QSizeF found = readDefinition(read(name), name, folder.path())->pageSize;
                QCOMPARE(name == "rptTrialBalance3.rpt" ? found.transposed() : found, size);
            }
        }
    }

    void theGuideIsGood() {
        QFile file(ZEL_SOURCE_DIR "/rpt/README.md");
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QString example = QString::fromUtf8(file.readAll()).section("```xml", 1).section("```", 0, 0);
        const auto definition = readDefinition(example.toUtf8(), "README.md");
        QCOMPARE(definition->name, QString("rptExample"));
        QCOMPARE(definition->totals.size(), std::size_t(2));
    }

    void onlyWhatDiffers() {
        const auto definition = readDefinition(
            withLines("<style name='default' size='10'/><style name='sum' bold='yes' align='right'/>"
                      "<style name='big' like='sum' size='14'/>"
                      "<detail><text y='3' style='big'>x</text><line y='12'/></detail>"),
            "r.rpt");
        const StyleDefinition &big = definition->styles.back();
        QCOMPARE(big.font->points, 14.0);
        QVERIFY(big.font->bold);
        QCOMPARE(big.align, Align::Right);
        QCOMPARE(definition->styles[1].font->points, 10.0);
        QCOMPARE(definition->details.front().height, 12.0);
    }
};

QTEST_APPLESS_MAIN(tst_definitions)
#include "tst_definitions.moc"
