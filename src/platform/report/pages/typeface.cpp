#include "platform/report/pages/typeface.h"

#include <QCoreApplication>
#include <QFontMetricsF>

#include <algorithm>
#include <cmath>
#include <deque>

namespace zel::report {

QFont fontFor(const Font &font) {
    // Named, since the font that is found without it lacks letters of Urdu, whose words then fall apart.
    QFont made(QStringList{font.family, QStringLiteral("Noto Sans Arabic")});
    made.setPixelSize(static_cast<int>(std::lround(font.points * Typeface::ShapedUnitsPerPoint)));
    made.setBold(font.bold);
    made.setItalic(font.italic);
    made.setHintingPreference(QFont::PreferNoHinting);
    made.setKerning(false);
    // It changes no distance, but spacing of any kind keeps letters apart that a font would draw as one.
    made.setLetterSpacing(QFont::PercentageSpacing, 100);
    return made;
}

Typeface::Typeface(const Font &font)
    : m_font(font), m_shaped(fontFor(font)), m_raw(QRawFont::fromFont(m_shaped)),
      m_ascent(QFontMetricsF(m_shaped).ascent() * MillimetresPerShapedUnit),
      m_lineHeight(QFontMetricsF(m_shaped).height() * MillimetresPerShapedUnit) {
    m_raw.setPixelSize(font.points * UnitsPerPoint);
}

const Typeface::Letter &Typeface::look(QChar letter, std::size_t place) const {
    Letter &found = m_letters[place];
    found.known = true;
    // Formatting characters have glyphs in some fonts, but are not to be seen.
    if (letter.isPrint() && letter.category() != QChar::Other_Format && !letter.isMark()) {
        const QList<quint32> glyphs = m_raw.glyphIndexesForString(letter);
        found.glyph = glyphs.size() == 1 ? glyphs.first() : 0;
    }
    if (found.glyph)
        found.advance = qRound(m_raw.advancesForGlyphIndexes({found.glyph}).constFirst().x());
    return found;
}

double Typeface::width(const QString &text) const {
    int width = 0;
    for (const QChar each : text) {
        const Letter *known = letter(each);
        if (!known)
            return ShapedText(text, m_shaped).width() * MillimetresPerShapedUnit;
        width += known->advance;
    }
    return width * MillimetresPerUnit;
}

bool Typeface::needsShaping(const QString &text, Qt::LayoutDirection direction) const {
    return direction == Qt::RightToLeft ||
           std::ranges::any_of(text, [this](QChar each) { return !letter(each); });
}

std::vector<ShapedText::Span> Typeface::spans(const QString &text, Qt::LayoutDirection direction,
                                              qsizetype from, qsizetype length) const {
    if (!needsShaping(text, direction))
        return {{width(text.left(from)), width(text.left(from + length))}};
    std::vector<ShapedText::Span> found = ShapedText(text, m_shaped, direction).spans(from, length);
    for (auto &[left, right] : found) {
        left *= MillimetresPerShapedUnit;
        right *= MillimetresPerShapedUnit;
    }
    return found;
}

qsizetype Typeface::fitting(const QString &text, double width) const {
    int taken = 0;
    for (qsizetype at = 0; at < text.size(); ++at) {
        const Letter *known = letter(text[at]);
        if (!known)
            return 0;
        taken += known->advance;
        if (taken * MillimetresPerUnit > width)
            return std::max<qsizetype>(at, 1);
    }
    return text.size();
}

namespace {

using TypefacePtr = std::shared_ptr<const Typeface>;

/// Those in use last, the newest first; fonts must be closed before the application ends.
std::deque<TypefacePtr> &openTypefaces() {
    static std::deque<TypefacePtr> open;
    static const bool closed = (qAddPostRoutine([] { open.clear(); }), true);
    (void)closed;
    return open;
}

TypefacePtr opened(const Font &font) {
    constexpr std::size_t Most = 24; // about two reports'
    std::deque<TypefacePtr> &open = openTypefaces();
    const auto known = std::ranges::find_if(open, [&](const auto &one) { return one->font() == font; });
    TypefacePtr found = known != open.end() ? *known : std::make_shared<const Typeface>(font);
    if (known != open.end())
        open.erase(known);
    else if (open.size() >= Most)
        open.pop_back();
    open.push_front(found);
    return found;
}

} // namespace

const Typeface &Typefaces::of(const Font &font) const {
    if (m_last && m_last->font() == font)
        return *m_last;
    const auto known =
        std::ranges::find_if(m_typefaces, [&](const auto &typeface) { return typeface->font() == font; });
    if (known == m_typefaces.end()) {
        m_typefaces.push_back(opened(font));
        m_last = m_typefaces.back().get();
    } else {
        m_last = known->get();
    }
    return *m_last;
}

} // namespace zel::report
