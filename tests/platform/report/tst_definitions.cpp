#include "platform/base/error.h"
#include "platform/report/definition/definition.h"

#include "tests/support/facts.h"
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace zel;
using namespace zel::report;
using namespace zel::test;

/// What a definition file may say, and where it is refused.

namespace {

constexpr const char *Facts = "platform/report/definitions.json";

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
    /// A word of what is said of the lines, and its place as line:column.
    void refuses_data() { rowsFrom<QByteArray, QString, QString>(Facts); }

    void refuses() {
        const auto [lines, place, word] = fetched<QByteArray, QString, QString>();
        const QString said = refusal(withLines(lines));
        QVERIFY2(said.startsWith("r.rpt:" + place + ": "), qPrintable(said));
        QVERIFY2(said.contains(word), qPrintable(said));
    }

    /// What is said of parts/a.rpt with these lines behind its first.
    void includes_data() { rowsFrom<QByteArray, QString>(Facts); }

    void includes() {
        const auto [parts, said] = fetched<QByteArray, QString>();
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
            row(qPrintable(file.fileName()), file.filePath());
    }

    void shippedOnesAreGood() {
        QFETCH(QString, path);
        const auto definition = readDefinition(path);
        QCOMPARE(definition->name + ".rpt", QFileInfo(path).fileName());
    }

    /// An office's paper is told once, and every document fits it but the slip, which has a sheet of its own.
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
                if (name == "rptSlip.rpt") // a sheet of its own size is handed out
                    continue;
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
        QCOMPARE(definition->name, "rptExample");
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
