#pragma once

#include "platform/report/page.h"

#include <QFont>

class QPainter;

namespace zel::report {

class Document;

/// Units in which fonts are made: so many pixels of a QFont are a typographic point.
inline constexpr double FontUnitsPerPoint = 20;
inline constexpr double MillimetresPerPoint = 25.4 / 72;

/// The font that layout measures and paintPage() draws, FontUnitsPerPoint pixels to the point: unhinted and
/// without ligatures, so that the words can be searched and copied from a PDF.
[[nodiscard]] QFont fontFor(const Font &font);

/// Draws a page with its upper left corner at the painter's origin, `scale` device units to the millimetre.
/// The same for screen, printer and PDF.
void paintPage(QPainter &painter, const Page &page, double scale);

/// Writes all pages; an Error when the file can't be written.
void exportPdf(const Document &document, const QString &path);

} // namespace zel::report
