#include "platform/report/paint.h"

#include "platform/base/error.h"
#include "platform/report/document.h"

#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>

#include <cmath>

namespace zel::report {

namespace {

QPen penOf(const QColor &color, double thickness) {
    QPen pen(color, thickness);
    pen.setCapStyle(Qt::FlatCap);
    pen.setJoinStyle(Qt::MiterJoin);
    return pen;
}

void paintTexts(QPainter &painter, const std::vector<TextItem> &texts) {
    constexpr double unit = MillimetresPerPoint / FontUnitsPerPoint;
    painter.scale(unit, unit);
    const Font *current = nullptr;
    for (const TextItem &item : texts) {
        if (item.font.get() != current) {
            current = item.font.get();
            painter.setFont(fontFor(*current));
            painter.setPen(current->color);
        }
        painter.drawText(QPointF(item.x / unit, item.baseline / unit), item.text);
    }
}

} // namespace

QFont fontFor(const Font &font) {
    QFont made(font.family);
    made.setPixelSize(static_cast<int>(std::lround(font.points * FontUnitsPerPoint)));
    made.setBold(font.bold);
    made.setItalic(font.italic);
    made.setHintingPreference(QFont::PreferNoHinting);
    made.setKerning(false);
    // Any spacing, however small, keeps letters apart that a font would draw as one.
    made.setLetterSpacing(QFont::AbsoluteSpacing, 1.0 / 64);
    return made;
}

void paintPage(QPainter &painter, const Page &page, double scale) {
    painter.save();
    painter.scale(scale, scale);
    for (const BoxItem &box : page.boxes) {
        painter.setPen(box.thickness > 0 ? penOf(box.frame, box.thickness) : QPen(Qt::NoPen));
        painter.setBrush(box.fill.alpha() > 0 ? QBrush(box.fill) : QBrush(Qt::NoBrush));
        painter.drawRect(box.rect);
    }
    for (const ImageItem &image : page.images)
        painter.drawImage(image.rect, *image.image);
    for (const LineItem &line : page.lines) {
        painter.setPen(penOf(line.color, line.thickness));
        painter.drawLine(QLineF(line.x1, line.y1, line.x2, line.y2));
    }
    paintTexts(painter, page.texts);
    painter.restore();
}

void exportPdf(const Document &document, const QString &path) {
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        throw Error(errors::BadFile, QStringLiteral("%1: %2").arg(path, file.errorString()));
    {
        constexpr int Resolution = 1200;
        QPdfWriter writer(&file);
        writer.setResolution(Resolution);
        writer.setTitle(document.title());
        writer.setCreator(QStringLiteral("ZEL"));
        writer.setPageSize(QPageSize(document.pageSize(), QPageSize::Millimeter, {}, QPageSize::FuzzyMatch));
        writer.setPageMargins(QMarginsF(0, 0, 0, 0));
        QPainter painter(&writer);
        for (int index = 0; index < document.pageCount(); ++index) {
            if (index > 0)
                writer.newPage();
            paintPage(painter, document.page(index), Resolution / 25.4);
        }
    }
    if (!file.commit())
        throw Error(errors::BadFile, QStringLiteral("%1: %2").arg(path, file.errorString()));
}

} // namespace zel::report
