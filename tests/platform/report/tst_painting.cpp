#include "platform/report/output/paint.h"
#include "platform/report/pages/text_metrics.h"

#include <QGlyphRun>
#include <QImage>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QTextLayout>

using namespace zel::report;

Q_DECLARE_METATYPE(Font)

/// Texts on paper and on the screen: what a page painter draws glyph by glyph stands where the same text
/// shaped as a whole does, and its words come out of a PDF as they were written.
class tst_painting : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void texts_data();
    void texts();
    void letterByLetter_data() { texts_data(); }
    void letterByLetter();
    void figuresLineUp();
    void oneRunAcrossFonts();
    void wordsOfUrdu_data();
    void wordsOfUrdu();
    void mixedTexts_data();
    void mixedTexts();
    void papers_data();
    void papers();

private:
    [[nodiscard]] QString write(const Page &page, const char *name) const;

    QTemporaryDir m_folder;
};

namespace {

struct Word {
    QString text;
    double left, right, top, bottom; ///< points
};

/// What pdftotext finds on the first page of a PDF; options "-bbox" for the words' places.
QString extracted(const QString &path, const QStringList &options) {
    QProcess process;
    process.start(QStringLiteral("pdftotext"), options + QStringList{path, "-"});
    if (!process.waitForFinished() || process.exitCode() != 0)
        qFatal("pdftotext: %s", process.readAllStandardError().constData());
    return QString::fromUtf8(process.readAllStandardOutput());
}

std::vector<Word> words(const QString &path) {
    static const QRegularExpression shape(
        "<word xMin=\"([-\\d.]+)\" yMin=\"([-\\d.]+)\" xMax=\"([-\\d.]+)\" yMax=\"([-\\d.]+)\">(.*)</word>");
    std::vector<Word> found;
    auto matches = shape.globalMatch(extracted(path, {"-bbox"}));
    while (matches.hasNext()) {
        const auto match = matches.next();
        const auto number = [&](int group) { return match.captured(group).toDouble(); };
        found.push_back({match.captured(5), number(1), number(3), number(2), number(4)});
    }
    return found;
}

/// The plain way: the text as a whole, by the font that also measures what must be shaped.
void drawWhole(QPainter &painter, const Page &page, double scale) {
    painter.save();
    const double unit = MillimetresPerPoint / Typeface::ShapedUnitsPerPoint;
    painter.scale(scale * unit, scale * unit);
    for (const TextItem &item : page.texts) {
        painter.setFont(fontFor(*item.font));
        painter.setPen(item.font->color);
        painter.drawText(QPointF(item.x, item.baseline) / unit, item.text);
    }
    painter.restore();
}

Page pageOf(const QString &text, const Font &font, double x = 20, double baseline = 30) {
    const FontMetrics metrics;
    Page page;
    page.texts.push_back({x, baseline, metrics.width(text, font), text, std::make_shared<Font>(font)});
    return page;
}

template <class Paint>
QImage picture(double zoom, Paint paint, Qt::LayoutDirection device = Qt::LayoutDirectionAuto) {
    QImage image(static_cast<int>(794 * zoom), static_cast<int>(160 * zoom), QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setLayoutDirection(device);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    paint(painter, zoom * 96 / 25.4);
    return image;
}

QRect inked(const QImage &image) {
    QRect ink;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qGray(image.pixel(x, y)) < 200)
                ink |= QRect(x, y, 1, 1);
        }
    }
    return ink;
}

/// How much of the ink of one picture lies on ink of the other, or beside it.
double covered(const QImage &ink, const QImage &by) {
    int all = 0;
    int found = 0;
    for (int y = 2; y < ink.height() - 2; ++y) {
        for (int x = 2; x < ink.width() - 2; ++x) {
            if (qGray(ink.pixel(x, y)) >= 128)
                continue;
            ++all;
            bool near = false;
            for (int at = 0; at < 25 && !near; ++at)
                near = qGray(by.pixel(x - 2 + at % 5, y - 2 + at / 5)) < 200;
            found += near;
        }
    }
    return all > 0 ? double(found) / all : 0;
}

Font font(double points, bool bold = false, bool italic = false) {
    Font made;
    made.points = points;
    made.bold = bold;
    made.italic = italic;
    return made;
}

} // namespace

void tst_painting::texts_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<Font>("font");
    QTest::newRow("words") << "Received with thanks from" << font(9);
    QTest::newRow("ligatures") << "office affidavit fjord efficient flight shuffle" << font(8.5);
    QTest::newRow("bold ligatures") << "office affidavit fjord efficient flight" << font(12, true);
    QTest::newRow("italic ligatures") << "office affidavit fjord efficient flight" << font(9, false, true);
    QTest::newRow("kerned pairs") << "AVATAR To Ty We LT P. r, 11 1.1" << font(10);
    QTest::newRow("figures") << "-1,234,567,890.05 (77%) #12/B-4 & Co. \"x\" a'b <c> [d] {e} 3*4=12+0"
                             << font(8.5);
    QTest::newRow("accents") << QString::fromUtf8("Peña Zoë Łódź Ærø Straße Čapek İzmir Ünsal Ðorđe")
                             << font(9);
    QTest::newRow("decomposed") << QString::fromUtf8("Pen\u0303a Zoe\u0308 then plain") << font(9);
    QTest::newRow("dashes") << QString::fromUtf8("2024–25 — “quoted” ‘single’ • item…") << font(9);
    QTest::newRow("elided") << fitted("AN ACCOUNT WHOSE NAME IS MUCH TOO LONG FOR ITS COLUMN", 40, font(9),
                                      FontMetrics())
                            << font(9);
    QTest::newRow("long")
        << QString("A narration of the length of two hundred letters ").repeated(3).trimmed() << font(7.5);
    QTest::newRow("greek and cyrillic") << QString::fromUtf8("Αθήνα Москва and London") << font(9);
    QTest::newRow("vietnamese") << QString::fromUtf8("Đặng Thị Huyền Trân office") << font(9);
    QTest::newRow("rupees") << QString::fromUtf8("₹ 500 £ 20 € 30 ¥ 7") << font(9);
}

QString tst_painting::write(const Page &page, const char *name) const {
    const QString path = m_folder.filePath(name);
    QPdfWriter writer(path);
    writer.setPageSize(QPageSize(QPageSize::A4));
    writer.setPageMargins(QMarginsF(0, 0, 0, 0));
    QPainter painter(&writer);
    if (QByteArray(name) == "whole.pdf")
        drawWhole(painter, page, writer.resolution() / 25.4);
    else
        PagePainter().paint(painter, page, writer.resolution() / 25.4);
    return path;
}

void tst_painting::texts() {
    QFETCH(QString, text);
    QFETCH(Font, font);
    if (QStandardPaths::findExecutable("pdftotext").isEmpty())
        QSKIP("pdftotext is not installed");
    const Page page = pageOf(text, font);
    const QString path = write(page, "glyphs.pdf");
    if (QByteArray(QTest::currentDataTag()) != "decomposed")
        QCOMPARE(extracted(path, {"-layout"}).simplified(), text.simplified());
    else
        QCOMPARE(extracted(path, {"-layout"}).simplified().normalized(QString::NormalizationForm_C),
                 text.simplified().normalized(QString::NormalizationForm_C));
    const std::vector<Word> ours = words(path);
    const std::vector<Word> whole = words(write(page, "whole.pdf"));
    QCOMPARE(ours.size(), whole.size());
    for (std::size_t i = 0; i < ours.size(); ++i) {
        QCOMPARE(ours[i].text, whole[i].text);
        for (const double Word::*side : {&Word::left, &Word::right, &Word::top, &Word::bottom})
            QVERIFY2(std::abs(ours[i].*side - whole[i].*side) < 0.08 + 0.0008 * ours[i].left,
                     qPrintable(
                         QString("%1: %2, not %3").arg(ours[i].text).arg(ours[i].*side).arg(whole[i].*side)));
    }
    // What layout takes for its width.
    const double width = (ours.back().right - ours.front().left) * MillimetresPerPoint;
    QVERIFY2(std::abs(width - page.texts[0].width) < 0.02,
             qPrintable(QString("%1 %2").arg(width).arg(page.texts[0].width)));
}

void tst_painting::letterByLetter() {
    QFETCH(QString, text);
    QFETCH(Font, font);
    const Page page = pageOf(text, font);
    for (const double zoom : {1.0, 1.5, 2.0}) {
        const QImage ours = picture(
            zoom, [&](QPainter &painter, double scale) { PagePainter().paint(painter, page, scale); });
        const QImage whole =
            picture(zoom, [&](QPainter &painter, double scale) { drawWhole(painter, page, scale); });
        const QRect mine = inked(ours);
        const QRect theirs = inked(whole);
        QVERIFY(!mine.isEmpty());
        QVERIFY2(theirs.adjusted(-1, -1, 1, 1).contains(mine) && mine.adjusted(-1, -1, 1, 1).contains(theirs),
                 qPrintable(QString("at %1: %2+%3, not %4+%5")
                                .arg(zoom)
                                .arg(mine.x())
                                .arg(mine.width())
                                .arg(theirs.x())
                                .arg(theirs.width())));
    }
}

void tst_painting::figuresLineUp() {
    const Font each = font(8.5);
    const FontMetrics metrics;
    Page page;
    double baseline = 20;
    for (const char *figures : {"1.11", "77,777.77", "1,000,000,000.00", "-0.01", "444.40"}) {
        const double width = metrics.width(figures, each);
        page.texts.push_back({180.3 - width, baseline += 5, width, figures, std::make_shared<Font>(each)});
    }
    const std::vector<Word> found = words(write(page, "figures.pdf"));
    QCOMPARE(found.size(), std::size_t(5));
    for (const Word &word : found)
        QVERIFY2(std::abs(word.right * MillimetresPerPoint - 180.3) < 0.01, qPrintable(word.text));
}

void tst_painting::wordsOfUrdu_data() {
    QTest::addColumn<QString>("text");
    QTest::newRow("heh that joins") << QString::fromUtf8("ماہانہ فیس داخلہ");
    QTest::newRow("yeh barree") << QString::fromUtf8("برائے نومبر");
    QTest::newRow("retroflex letters") << QString::fromUtf8("ٹیوشن ڈاکٹر گھوڑا");
    QTest::newRow("Arabic") << QString::fromUtf8("رسوم التسجيل");
}

/// Letters of one word join only when one font has them all.
void tst_painting::wordsOfUrdu() {
    QFETCH(QString, text);
    for (const QString &word : text.split(' ')) {
        QTextLayout layout(word, fontFor(font(9)));
        layout.beginLayout();
        layout.createLine();
        layout.endLayout();
        const QList<QGlyphRun> runs = layout.glyphRuns();
        QCOMPARE(runs.size(), 1);
        QVERIFY(!runs.first().glyphIndexes().contains(0U));
    }
}

void tst_painting::oneRunAcrossFonts() {
    Page page;
    const auto add = [&](const char *text, const Font &each, double x, double baseline) {
        page.texts.push_back({x, baseline, 0, QString::fromUtf8(text), std::make_shared<Font>(each)});
    };
    Font red = font(9);
    red.color = Qt::red;
    add("first", font(9), 20, 20);
    add("second", font(9), 60, 20);
    add("bold", font(9, true), 100, 20);
    add("احمد", font(9), 20, 30);
    add("after", font(9), 60, 30);
    add("red", red, 20, 35);
    // In the order in which they were laid out, whatever way each was drawn.
    const QString raw = extracted(write(page, "mixed.pdf"), {"-raw"}).simplified();
    QCOMPARE(raw.section(' ', 0, 2), QString("first second bold"));
    QCOMPARE(raw.section(' ', -2), QString("after red"));
    const QImage image =
        picture(1, [&](QPainter &painter, double scale) { PagePainter().paint(painter, page, scale); });
    const auto inkOf = [&](double x, double baseline) {
        const double scale = 96 / 25.4;
        int reds = 0;
        int blacks = 0;
        for (int dy = -12; dy <= 4; ++dy) {
            for (int dx = 0; dx < 20; ++dx) {
                const QColor color = image.pixelColor(static_cast<int>(x * scale) + dx,
                                                      static_cast<int>(baseline * scale) + dy);
                reds += color.red() > 150 && color.green() < 100;
                blacks += color.red() < 100;
            }
        }
        return std::pair(reds > 5, blacks > 5);
    };
    QCOMPARE(inkOf(20, 35), std::pair(true, false));
    for (const TextItem &item : page.texts) {
        if (item.text != "red")
            QCOMPARE(inkOf(item.x, item.baseline), std::pair(false, true));
    }
}

void tst_painting::mixedTexts_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<Qt::LayoutDirection>("direction");
    QTest::addColumn<QStringList>("order"); // of words as they stand, from left to right
    const auto row = [](const char *name, const char *text, const QStringList &order,
                        Qt::LayoutDirection direction = Qt::LayoutDirectionAuto) {
        QTest::newRow(name) << QString::fromUtf8(text) << direction << order;
    };
    row("Urdu in Latin", "Fee فیس for BA", {"Fee", "فیس", "for", "BA"});
    row("figures behind Urdu in Latin", "Fee فیس 250 only", {"Fee", "250", "فیس", "only"});
    row("Latin in Urdu", "فیس Fee 250 روپے", {"روپے", "Fee", "250", "فیس"});
    row("figures in Urdu", "فیس 2,500.00 روپے", {"روپے", "2,500.00", "فیس"});
    row("figures before Urdu", "12 ماہانہ فیس", {"فیس", "ماہانہ", "12"});
    row("brackets in Urdu", "داخلہ (BA) 2024", {"2024", "(BA)", "داخلہ"});
    row("Arabic", "رسوم ABC التسجيل", {"التسجيل", "ABC", "رسوم"});
    row("Latin line of an Urdu paragraph", "BA 2024 .", {".", "BA", "2024"}, Qt::RightToLeft);
    row("Urdu line of a Latin paragraph", "فیس BA", {"فیس", "BA"}, Qt::LeftToRight);
}

/// The parts of a line stand in the same order on every device, and a found word is marked where it stands.
void tst_painting::mixedTexts() {
    QFETCH(QString, text);
    QFETCH(Qt::LayoutDirection, direction);
    QFETCH(QStringList, order);
    Page page = pageOf(text, font(14));
    page.texts[0].direction = direction;
    constexpr double zoom = 2;
    const auto paint = [&](QPainter &painter, double scale) { PagePainter().paint(painter, page, scale); };
    const QImage screen = picture(zoom, paint, Qt::LeftToRight);
    QCOMPARE(picture(zoom, paint, Qt::RightToLeft), screen);

    double before = 0;
    for (const QString &word : order) {
        const auto hits = page.find(word);
        QCOMPARE(hits.size(), std::size_t(1));
        QCOMPARE(hits[0].size(), std::size_t(1));
        const QRectF place = hits[0][0];
        QVERIFY2(place.left() >= before, qPrintable(word));
        before = place.right();
        // The blanks around it are free of ink.
        const double pixel = 25.4 / 96 / zoom;
        const auto inkAt = [&](double from, double to) {
            const QRectF columns(from / pixel, 0, (to - from) / pixel, screen.height());
            return !inked(screen.copy(columns.toAlignedRect())).isEmpty();
        };
        QVERIFY2(inkAt(place.left(), place.right()), qPrintable(word));
        QVERIFY2(!inkAt(place.left() - 0.7, place.left() - 0.4), qPrintable(word));
        QVERIFY2(!inkAt(place.right() + 0.4, place.right() + 0.7), qPrintable(word));
    }

    if (QStandardPaths::findExecutable("pdftoppm").isEmpty())
        QSKIP("pdftoppm is not installed");
    const QString path = write(page, "mixed.pdf");
    const QString dots = QString::number(96 * zoom);
    QCOMPARE(QProcess::execute("pdftoppm", {"-r", dots, "-png", "-singlefile", path, path}), 0);
    const QImage paper = QImage(path + ".png").copy(screen.rect());
    QVERIFY2(covered(screen, paper) > 0.98 && covered(paper, screen) > 0.98,
             qPrintable(QString("%1 %2").arg(covered(screen, paper)).arg(covered(paper, screen))));
}

void tst_painting::papers_data() {
    QTest::addColumn<QSizeF>("page");
    QTest::addColumn<QSizeF>("paper");
    QTest::addColumn<double>("edge"); // that the printer can't reach
    QTest::addColumn<QPointF>("corner");
    QTest::addColumn<double>("scale");
    const QSizeF a4(210, 297);
    const QSizeF a5(148.5, 210);
    QTest::newRow("its own") << a4 << a4 << 5.0 << QPointF() << 1.0;
    QTest::newRow("its own, in points") << a4 << QSizeF(209.9, 297.04) << 5.0 << QPointF() << 1.0;
    QTest::newRow("half as large") << a4 << a5 << 0.0 << QPointF() << 0.7071;
    QTest::newRow("half as large, with edges") << a4 << a5 << 5.0 << QPointF(5, 7.06) << 0.6595;
    QTest::newRow("wide on upright") << QSizeF(297, 210) << a4 << 5.0 << QPointF(5, 77.8) << 0.6734;
    QTest::newRow("larger") << a5 << a4 << 5.0 << QPointF(30.75, 43.5) << 1.0;
    QTest::newRow("longer but narrower") << a4 << QSizeF(200, 400) << 0.0 << QPointF(0, 58.57) << 0.9524;
}

void tst_painting::papers() {
    QFETCH(QSizeF, page);
    QFETCH(QSizeF, paper);
    QFETCH(double, edge);
    QFETCH(QPointF, corner);
    QFETCH(double, scale);
    const Placement found = placed(page, paper, QRectF({}, paper).adjusted(edge, edge, -edge, -edge));
    QVERIFY((found.corner - corner).manhattanLength() < 0.05);
    QVERIFY(std::abs(found.scale - scale) < 0.0001);
}

QTEST_MAIN(tst_painting)
#include "tst_painting.moc"
