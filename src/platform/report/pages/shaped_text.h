#pragma once

#include <QTextLayout>

#include <vector>

namespace zel::report {

/// One line of a text whose letters join or change direction: the one layout by which it is measured, drawn
/// on screen, printer and PDF, and marked, so that its parts stand in the same order everywhere. Lengths are
/// pixels of the font.
class ShapedText {
public:
    /// `direction` is the paragraph's; LayoutDirectionAuto: that of the text's first letter that has one.
    ShapedText(const QString &text, const QFont &font,
               Qt::LayoutDirection direction = Qt::LayoutDirectionAuto);

    [[nodiscard]] double width() const;
    void draw(QPainter &painter, QPointF leftOfBaseline) const { m_layout.draw(&painter, leftOfBaseline); }

    struct Span {
        double left;
        double right;
    };
    /// Where a part of the text stands, from left to right: one span, or several when a change of direction
    /// parts it.
    [[nodiscard]] std::vector<Span> spans(qsizetype from, qsizetype length) const;

private:
    QTextLayout m_layout;
};

} // namespace zel::report
