#include "platform/report/output/paint.h"
#include "platform/report/pages/text_metrics.h"

#include "tests/support/facts.h"
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
using namespace zel::test;

namespace {

constexpr const char *Facts = "platform/report/painting.json";

struct Word {
    QString text;
    double left, right, top, bottom; ///< points
};

/// What pdftotext finds on the first page of a PDF; options "-bbox" for the words' places.
QString extracted(const QString &path, const QStringList &options) {
    QProcess process;
    process.start("pdftotext", options + QStringList{path, "-"});
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

/// Texts on paper and on the screen: what a page painter draws glyph by glyph stands where the same text
/// shaped as a whole does, and its words come out of a PDF as they were written.
class tst_painting : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void texts_data() { rowsFrom<QString, double, bool, bool>(Facts); }

    void texts() {
        const auto [text, points, bold, italic] = fetched<QString, double, bool, bool>();
        const Page page = pageOf(text, font(points, bold, italic));
        for (const double zoom : {1.0, 1.5, 2.0}) {
            const QImage ours = picture(
                zoom, [&](QPainter &painter, double scale) { PagePainter().paint(painter, page, scale); });
            const QImage whole =
                picture(zoom, [&](QPainter &painter, double scale) { drawWhole(painter, page, scale); });
            const QRect mine = inked(ours);
            const QRect theirs = inked(whole);
            QVERIFY(!mine.isEmpty());
            QVERIFY2(theirs.adjusted(-1, -1, 1, 1).contains(mine) &&
                         mine.adjusted(-1, -1, 1, 1).contains(theirs),
                     qPrintable(QString("at %1").arg(zoom)));
        }
        if (QStandardPaths::findExecutable("pdftotext").isEmpty())
            QSKIP("pdftotext is not installed");
        const QString path = write(page, "glyphs.pdf");
        const auto composed = [](const QString &words) {
            const bool apart = QByteArray(QTest::currentDataTag()) == "decomposed";
            return apart ? words.normalized(QString::NormalizationForm_C) : words;
        };
        QCOMPARE(composed(extracted(path, {"-layout"}).simplified()), composed(text));
        const std::vector<Word> ours = words(path);
        const std::vector<Word> whole = words(write(page, "whole.pdf"));
        QCOMPARE(ours.size(), whole.size());
        for (std::size_t i = 0; i < ours.size(); ++i) {
            QCOMPARE(ours[i].text, whole[i].text);
            for (const double Word::*side : {&Word::left, &Word::right, &Word::top, &Word::bottom})
                QVERIFY2(
                    std::abs(ours[i].*side - whole[i].*side) < 0.08 + 0.0008 * ours[i].left,
                    qPrintable(
                        QString("%1: %2, not %3").arg(ours[i].text).arg(ours[i].*side).arg(whole[i].*side)));
        }
        // What layout takes for its width.
        const double width = (ours.back().right - ours.front().left) * MillimetresPerPoint;
        QVERIFY2(std::abs(width - page.texts[0].width) < 0.02,
                 qPrintable(QString("%1 %2").arg(width).arg(page.texts[0].width)));
    }

    void figuresLineUp() {
        const Font each = font(8.5);
        const FontMetrics metrics;
        Page page;
        double baseline = 20;
        for (const char *figures : {"1.11", "77,777.77", "1,000,000,000.00", "-0.01", "444.40"}) {
            const double width = metrics.width(figures, each);
            page.texts.push_back(
                {180.3 - width, baseline += 5, width, figures, std::make_shared<Font>(each)});
        }
        const std::vector<Word> found = words(write(page, "figures.pdf"));
        QCOMPARE(found.size(), std::size_t(5));
        for (const Word &word : found)
            QVERIFY2(std::abs(word.right * MillimetresPerPoint - 180.3) < 0.01, qPrintable(word.text));
    }

    void oneRunAcrossFonts() {
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
        QCOMPARE(raw.section(' ', 0, 2), "first second bold");
        QCOMPARE(raw.section(' ', -2), "after red");
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

    void wordsOfUrdu_data() { rowsFrom<QString>(Facts); }

    /// Letters of one word join only when one font has them all.
    void wordsOfUrdu() {
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

    void mixedTexts_data() { rowsFrom<QString, QStringList, Qt::LayoutDirection>(Facts); }

    /// The parts of a line stand in the same order on every device, and a found word is marked where it
    /// stands.
    void mixedTexts() {
        const auto [text, order, direction] = fetched<QString, QStringList, Qt::LayoutDirection>();
        Page page = pageOf(text, font(14));
        page.texts[0].direction = direction;
        constexpr double zoom = 2;
        const auto paint = [&](QPainter &painter, double scale) {
            PagePainter().paint(painter, page, scale);
        };
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

    void papers_data() {
        // The printer can't reach the edge.
        columns<QSizeF, QSizeF, double, QPointF, double>("page", "paper", "edge", "corner", "scale");
        const QSizeF a4(210, 297);
        const QSizeF a5(148.5, 210);
        row("its own", a4, a4, 5.0, QPointF(), 1.0);
        row("its own, in points", a4, QSizeF(209.9, 297.04), 5.0, QPointF(), 1.0);
        row("half as large", a4, a5, 0.0, QPointF(), 0.7071);
        row("half as large, with edges", a4, a5, 5.0, QPointF(5, 7.06), 0.6595);
        row("wide on upright", QSizeF(297, 210), a4, 5.0, QPointF(5, 77.8), 0.6734);
        row("larger", a5, a4, 5.0, QPointF(30.75, 43.5), 1.0);
        row("longer but narrower", a4, QSizeF(200, 400), 0.0, QPointF(0, 58.57), 0.9524);
    }

    void papers() {
        const auto [page, paper, edge, corner, scale] = fetched<QSizeF, QSizeF, double, QPointF, double>();
        const Placement found = placed(page, paper, QRectF({}, paper).adjusted(edge, edge, -edge, -edge));
        QVERIFY((found.corner - corner).manhattanLength() < 0.05);
        QVERIFY(std::abs(found.scale - scale) < 0.0001);
    }

private:
    [[nodiscard]] QString write(const Page &page, const char *name) const {
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

    QTemporaryDir m_folder;
};

QTEST_MAIN(tst_painting)
#include "tst_painting.moc"
