#include "platform/report/pages/shaped_text.h"

#include <QGlyphRun>
#include <QRawFont>

#include <algorithm>

namespace zel::report {

ShapedText::ShapedText(const QString &text, const QFont &font, Qt::LayoutDirection direction)
    : m_layout(text, font) {
    QTextOption option;
    option.setWrapMode(QTextOption::NoWrap);
    const bool rightToLeft =
        direction == Qt::RightToLeft || (direction == Qt::LayoutDirectionAuto && text.isRightToLeft());
    // Left to itself it would follow the painter, which is another on each device.
    option.setTextDirection(rightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
    m_layout.setTextOption(option);
    m_layout.beginLayout();
    QTextLine line = m_layout.createLine();
    if (line.isValid()) {
        line.setNumColumns(static_cast<int>(text.size()));
        line.setPosition({0, -line.ascent()});
    }
    m_layout.endLayout();
}

double ShapedText::width() const {
    return m_layout.lineCount() > 0 ? m_layout.lineAt(0).horizontalAdvance() : 0;
}

std::vector<ShapedText::Span> ShapedText::spans(qsizetype from, qsizetype length) const {
    std::vector<Span> found;
    const auto runs = m_layout.glyphRuns(static_cast<int>(from), static_cast<int>(length));
    for (const QGlyphRun &run : runs) {
        const QList<QPointF> places = run.positions();
        const QList<QPointF> advances = run.rawFont().advancesForGlyphIndexes(run.glyphIndexes());
        for (qsizetype at = 0; at < std::min(places.size(), advances.size()); ++at)
            found.push_back({places[at].x(), places[at].x() + advances[at].x()});
    }
    std::ranges::sort(found, {}, &Span::left);
    std::vector<Span> joined;
    for (const Span &span : found) {
        constexpr double Touching = 2;
        if (!joined.empty() && span.left <= joined.back().right + Touching)
            joined.back().right = std::max(joined.back().right, span.right);
        else
            joined.push_back(span);
    }
    return joined;
}

} // namespace zel::report
