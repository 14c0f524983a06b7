#include "platform/report/pages/text_metrics.h"

#include <algorithm>

namespace zel::report {

qsizetype TextMetrics::fitting(const QString &text, double width, const Font &font) const {
    qsizetype low = 1;
    qsizetype high = text.size();
    while (low < high) {
        const qsizetype middle = (low + high + 1) / 2;
        if (this->width(text.left(middle), font) <= width)
            low = middle;
        else
            high = middle - 1;
    }
    return low < text.size() && text[low].isLowSurrogate() ? std::max<qsizetype>(low - 1, 2) : low;
}

qsizetype FontMetrics::fitting(const QString &text, double width, const Font &font) const {
    const qsizetype plain = m_typefaces.of(font).fitting(text, width);
    return plain > 0 ? plain : TextMetrics::fitting(text, width, font);
}

double FontMetrics::width(const QString &text, const Font &font) const {
    return m_typefaces.of(font).width(text);
}

double FontMetrics::ascent(const Font &font) const {
    return m_typefaces.of(font).ascent();
}

double FontMetrics::lineHeight(const Font &font) const {
    return m_typefaces.of(font).lineHeight();
}

namespace {

void wrapLine(QString rest, double width, const Font &font, const TextMetrics &metrics, QStringList &lines) {
    while (metrics.width(rest, font) > width && rest.size() > 1) {
        const qsizetype fits = metrics.fitting(rest, width, font);
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
    if (!text.contains(QLatin1Char('\n'))) {
        wrapLine(text.trimmed(), width, font, metrics, lines);
        return lines;
    }
    for (const QString &line : text.split(QLatin1Char('\n')))
        wrapLine(line.trimmed(), width, font, metrics, lines);
    return lines;
}

QString fitted(const QString &text, double width, const Font &font, const TextMetrics &metrics) {
    if (text.isEmpty() || metrics.width(text, font) <= width)
        return text;
    const QString ellipsis(QChar(0x2026));
    const double room = width - metrics.width(ellipsis, font);
    return text.left(metrics.fitting(text, room, font)).trimmed() + ellipsis;
}

} // namespace zel::report
