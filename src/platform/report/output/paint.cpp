#include "platform/report/output/paint.h"

#include "platform/base/error.h"
#include "platform/report/pages/document.h"

#include <QGlyphRun>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>

#include <algorithm>
#include <cmath>

namespace zel::report {

namespace {

QPen penOf(const QColor &color, double thickness) {
    QPen pen(color, thickness);
    pen.setCapStyle(Qt::FlatCap);
    pen.setJoinStyle(Qt::MiterJoin);
    return pen;
}

} // namespace

bool PagePainter::addGlyphs(const TextItem &item) {
    const std::size_t before = m_run.glyphs.size();
    double x = std::round(item.x / Typeface::MillimetresPerUnit);
    const double y = std::round(item.baseline / Typeface::MillimetresPerUnit);
    for (const QChar each : item.text) {
        const Typeface::Letter *letter = m_run.typeface->letter(each);
        if (!letter) {
            m_run.glyphs.resize(before);
            m_run.positions.resize(before);
            return false;
        }
        m_run.glyphs.push_back(letter->glyph);
        m_run.positions.emplace_back(x, y);
        x += letter->advance;
    }
    return true;
}

void PagePainter::drawRun(QPainter &painter) {
    if (!m_run.typeface || m_run.glyphs.empty())
        return;
    QGlyphRun run;
    run.setRawFont(m_run.typeface->raw());
    run.setRawData(m_run.glyphs.data(), m_run.positions.data(), static_cast<int>(m_run.glyphs.size()));
    painter.setPen(m_run.typeface->font().color);
    painter.drawGlyphRun(QPointF(), run);
    m_run.glyphs.clear();
    m_run.positions.clear();
}

void PagePainter::paintTexts(QPainter &painter, const std::vector<TextItem> &texts) {
    painter.scale(Typeface::MillimetresPerUnit, Typeface::MillimetresPerUnit);
    m_run.typeface = nullptr;
    for (const TextItem &item : texts) {
        if (!m_run.typeface || !(m_run.typeface->font() == *item.font)) {
            drawRun(painter);
            m_run.typeface = &m_typefaces.of(*item.font);
        }
        if (item.direction != Qt::RightToLeft && addGlyphs(item))
            continue;
        drawRun(painter);
        painter.save();
        constexpr double scale = Typeface::UnitsPerPoint / Typeface::ShapedUnitsPerPoint;
        painter.scale(scale, scale);
        painter.setPen(item.font->color);
        ShapedText(item.text, m_run.typeface->shaped(), item.direction)
            .draw(painter, QPointF(item.x, item.baseline) / Typeface::MillimetresPerShapedUnit);
        painter.restore();
    }
    drawRun(painter);
}

void PagePainter::paint(QPainter &painter, const Page &page, double scale) {
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

Placement placed(const QSizeF &page, const QSizeF &paper, const QRectF &printable) {
    constexpr double SameSize = 1; // what a printer calls A4 is no A4 to the last point
    if (std::abs(page.width() - paper.width()) <= SameSize &&
        std::abs(page.height() - paper.height()) <= SameSize)
        return {};
    const double scale =
        std::min({1.0, printable.width() / page.width(), printable.height() / page.height()});
    return {printable.center() - QPointF(page.width(), page.height()) * (scale / 2), scale};
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
        PagePainter pages;
        for (int index = 0; index < document.pageCount(); ++index) {
            if (index > 0)
                writer.newPage();
            pages.paint(painter, document.page(index), Resolution / 25.4);
        }
    }
    if (!file.commit())
        throw Error(errors::BadFile, QStringLiteral("%1: %2").arg(path, file.errorString()));
}

} // namespace zel::report
