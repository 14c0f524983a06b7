#pragma once

#include "platform/report/pages/page.h"
#include "platform/report/pages/shaped_text.h"

#include <QFont>
#include <QRawFont>

#include <array>
#include <memory>
#include <vector>

namespace zel::report {

inline constexpr double MillimetresPerPoint = 25.4 / 72;

/// The font that layout measures with and that is drawn with, unhinted, unkerned and without ligatures, so
/// that the words can be searched and copied from a PDF.
[[nodiscard]] QFont fontFor(const Font &font);

/// A font opened for measuring and drawing. Letters that need no shaping, as those of Latin, figures and
/// punctuation, have their glyph and width in a table; a text with any other letter is shaped as a whole.
class Typeface {
public:
    explicit Typeface(const Font &font);

    /// Glyphs stand at whole units, a hundredth of a point: exact to 0.002 mm, figures line up to the unit,
    /// and a PDF has short numbers.
    static constexpr double UnitsPerPoint = 100;
    static constexpr double MillimetresPerUnit = MillimetresPerPoint / UnitsPerPoint;
    /// Units of fontFor().
    static constexpr double ShapedUnitsPerPoint = 20;
    static constexpr double MillimetresPerShapedUnit = MillimetresPerPoint / ShapedUnitsPerPoint;

    [[nodiscard]] const Font &font() const { return m_font; }
    /// For texts that need shaping, ShapedUnitsPerPoint pixels to the point.
    [[nodiscard]] const QFont &shaped() const { return m_shaped; }
    /// For glyphs of the table, UnitsPerPoint pixels to the point.
    [[nodiscard]] const QRawFont &raw() const { return m_raw; }

    /// Lengths in millimetres.
    [[nodiscard]] double width(const QString &text) const;
    /// Where a part of the text stands, from its left edge on; from left to right.
    [[nodiscard]] std::vector<ShapedText::Span> spans(const QString &text, Qt::LayoutDirection direction,
                                                      qsizetype from, qsizetype length) const;
    /// Whether the text must be drawn by a ShapedText, and not letter by letter.
    [[nodiscard]] bool needsShaping(const QString &text, Qt::LayoutDirection direction) const;
    /// How many letters of the text are no wider than `width`, at least 1; 0 when the text needs shaping.
    [[nodiscard]] qsizetype fitting(const QString &text, double width) const;
    [[nodiscard]] double ascent() const { return m_ascent; }
    [[nodiscard]] double lineHeight() const { return m_lineHeight; }

    struct Letter {
        quint32 glyph = 0; ///< 0: needs shaping
        int advance = 0;   ///< in whole units, so that widths are exact sums
        bool known = false;
    };
    /// nullptr when the letter needs shaping.
    [[nodiscard]] const Letter *letter(QChar letter) const {
        const std::size_t place = placeOf(letter.unicode());
        if (place >= Letters)
            return nullptr;
        const Letter &found = m_letters[place].known ? m_letters[place] : look(letter, place);
        return found.glyph ? &found : nullptr;
    }

private:
    static constexpr std::size_t Latin = 0x250; ///< Latin with all its accented letters
    static constexpr std::size_t Marks = 0x30;  ///< dashes, quotation marks, bullet, ellipsis
    static constexpr char16_t FirstMark = 0x2010;
    static constexpr std::size_t Letters = Latin + Marks;

    static std::size_t placeOf(char16_t letter) {
        if (letter < Latin)
            return letter;
        const auto mark = static_cast<std::size_t>(letter) - FirstMark;
        return mark < Marks ? Latin + mark : Letters;
    }
    const Letter &look(QChar letter, std::size_t place) const;

    Font m_font;
    QFont m_shaped;
    QRawFont m_raw;
    double m_ascent;
    double m_lineHeight;
    mutable std::array<Letter, Letters> m_letters;
};

/// The typefaces that somebody uses. The last ones that anybody used stay open for the next report.
class Typefaces {
public:
    [[nodiscard]] const Typeface &of(const Font &font) const;

private:
    mutable std::vector<std::shared_ptr<const Typeface>> m_typefaces;
    mutable const Typeface *m_last = nullptr;
};

} // namespace zel::report
