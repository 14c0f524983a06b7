#include "platform/report/text_metrics.h"

#include "platform/report/paint.h"

#include <QFontMetricsF>

#include <algorithm>
#include <array>

namespace zel::report {

namespace {

constexpr double MillimetresPerUnit = MillimetresPerPoint / FontUnitsPerPoint;

} // namespace

/// A font measured once: the letters that have no shaping of their own add up from a table.
struct FontMetrics::Face {
    explicit Face(const Font &measured) : font(measured), metrics(fontFor(measured)) {
        for (std::size_t letter = 0; letter < plain.size(); ++letter)
            plain[letter] = letter < 32 ? 0 : metrics.horizontalAdvance(QChar(static_cast<char16_t>(letter)));
    }
    Font font;
    QFontMetricsF metrics;
    std::array<double, 127> plain{};
};

FontMetrics::FontMetrics() = default;
FontMetrics::~FontMetrics() = default;

const FontMetrics::Face &FontMetrics::face(const Font &font) const {
    const auto known = std::ranges::find_if(m_faces, [&](const auto &face) { return face->font == font; });
    if (known != m_faces.end())
        return **known;
    m_faces.push_back(std::make_unique<Face>(font));
    return *m_faces.back();
}

double FontMetrics::width(const QString &text, const Font &font) const {
    const Face &measured = face(font);
    double width = 0;
    for (const QChar letter : text) {
        if (letter.unicode() >= measured.plain.size())
            return measured.metrics.horizontalAdvance(text) * MillimetresPerUnit;
        width += measured.plain[letter.unicode()];
    }
    return width * MillimetresPerUnit;
}

double FontMetrics::ascent(const Font &font) const {
    return face(font).metrics.ascent() * MillimetresPerUnit;
}

double FontMetrics::lineHeight(const Font &font) const {
    return face(font).metrics.height() * MillimetresPerUnit;
}

namespace {

/// How many letters of the text fit; at least 1, and never half of a pair.
qsizetype fittingLetters(const QString &text, double width, const Font &font, const TextMetrics &metrics) {
    qsizetype low = 1;
    qsizetype high = text.size();
    while (low < high) {
        const qsizetype middle = (low + high + 1) / 2;
        if (metrics.width(text.left(middle), font) <= width)
            low = middle;
        else
            high = middle - 1;
    }
    return low < text.size() && text[low].isLowSurrogate() ? std::max<qsizetype>(low - 1, 2) : low;
}

void wrapLine(QString rest, double width, const Font &font, const TextMetrics &metrics, QStringList &lines) {
    while (metrics.width(rest, font) > width && rest.size() > 1) {
        const qsizetype fits = fittingLetters(rest, width, font, metrics);
        qsizetype end = fits;
        if (fits < rest.size() && rest[fits] != QLatin1Char(' ')) {
            const qsizetype blank = rest.lastIndexOf(QLatin1Char(' '), fits - 1);
            end = blank > 0 ? blank : fits;
        }
        if (end >= rest.size())
            break;
        lines += rest.left(end).trimmed();
        rest = rest.mid(end).trimmed();
    }
    lines += rest;
}

} // namespace

QStringList wrapped(const QString &text, double width, const Font &font, const TextMetrics &metrics) {
    QStringList lines;
    if (text.isEmpty())
        return lines;
    for (const QString &line : text.split(QLatin1Char('\n')))
        wrapLine(line.trimmed(), width, font, metrics, lines);
    return lines;
}

QString fitted(const QString &text, double width, const Font &font, const TextMetrics &metrics) {
    if (text.isEmpty() || metrics.width(text, font) <= width)
        return text;
    const QString ellipsis(QChar(0x2026));
    const double room = width - metrics.width(ellipsis, font);
    return text.left(fittingLetters(text, room, font, metrics)).trimmed() + ellipsis;
}

} // namespace zel::report
