#pragma once

#include "platform/report/pages/typeface.h"

class QPainter;

namespace zel::report {

class Document;

/// Draws pages, the same on screen, printer and PDF. Keeps the fonts open that it has drawn with.
class PagePainter {
public:
    /// The page's upper left corner at the painter's origin, `scale` device units to the millimetre.
    void paint(QPainter &painter, const Page &page, double scale);

private:
    /// Glyphs that are drawn at one go: all of one font that follow one another.
    struct Run {
        const Typeface *typeface = nullptr;
        std::vector<quint32> glyphs;
        std::vector<QPointF> positions;
    };

    void paintTexts(QPainter &painter, const std::vector<TextItem> &texts);
    /// Whether the text needed no shaping.
    [[nodiscard]] bool addGlyphs(const TextItem &item);
    void drawRun(QPainter &painter);

    Typefaces m_typefaces;
    Run m_run;
};

/// How a page stands on paper: its corner, and how much smaller it is. Lengths in millimetres.
struct Placement {
    QPointF corner;
    double scale = 1;
};
/// A page on paper of its own size stands as it is. On any other it is no larger than itself and as large as
/// the printable part of the paper lets it, in that part's middle.
[[nodiscard]] Placement placed(const QSizeF &page, const QSizeF &paper, const QRectF &printable);

/// Writes all pages; an Error when the file can't be written.
void exportPdf(const Document &document, const QString &path);

} // namespace zel::report
