#pragma once

#include "platform/report/pages/typeface.h"

#include <QStringList>

namespace zel::report {

/// What layout asks of a font. Lengths in millimetres.
class TextMetrics {
public:
    virtual ~TextMetrics() = default;
    [[nodiscard]] virtual double width(const QString &text, const Font &font) const = 0;
    /// How many letters of the text are no wider than `width`; at least 1, and never half of a pair. The text
    /// is wider.
    [[nodiscard]] virtual qsizetype fitting(const QString &text, double width, const Font &font) const;
    [[nodiscard]] virtual double ascent(const Font &font) const = 0;
    /// From one baseline to the next.
    [[nodiscard]] virtual double lineHeight(const Font &font) const = 0;
};

/// Measures with the fonts that a PagePainter draws with, free of any device's resolution.
class FontMetrics final : public TextMetrics {
public:
    [[nodiscard]] double width(const QString &text, const Font &font) const override;
    [[nodiscard]] qsizetype fitting(const QString &text, double width, const Font &font) const override;
    [[nodiscard]] double ascent(const Font &font) const override;
    [[nodiscard]] double lineHeight(const Font &font) const override;

private:
    Typefaces m_typefaces;
};

/// Breaks a text into lines no wider than `width`, at blanks and line ends; a word too long is cut.
[[nodiscard]] QStringList wrapped(const QString &text, double width, const Font &font,
                                  const TextMetrics &metrics);
/// The text, or its beginning with an ellipsis, so that it is no wider than `width`.
[[nodiscard]] QString fitted(const QString &text, double width, const Font &font, const TextMetrics &metrics);

} // namespace zel::report
