#include "platform/base/number_text.h"

#include <QVarLengthArray>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace zel {

namespace {

/// The characters of the number at the start of a text, all of them ASCII.
QVarLengthArray<char, 32> leadingCharacters(const QString &text) {
    qsizetype i = 0;
    while (i < text.size() && text[i].isSpace())
        ++i;
    const qsizetype start = i;
    if (i < text.size() && (text[i] == u'-' || text[i] == u'+'))
        ++i;
    bool point = false;
    while (i < text.size() && ((text[i] >= u'0' && text[i] <= u'9') || (text[i] == u'.' && !point))) {
        point = point || text[i] == u'.';
        ++i;
    }
    QVarLengthArray<char, 32> number;
    for (qsizetype at = start; at < i; ++at)
        number.append(static_cast<char>(text[at].unicode()));
    return number;
}

} // namespace

Decimal leadingNumber(const QString &text) {
    const auto number = leadingCharacters(text);
    return Decimal::parse({number.constData(), static_cast<std::size_t>(number.size())}).value_or(Decimal());
}

double leadingDouble(const QString &text) {
    const auto number = leadingCharacters(text);
    const bool plus = !number.isEmpty() && number.front() == '+';
    double value = 0;
    std::from_chars(number.cbegin() + (plus ? 1 : 0), number.cend(), value);
    return value;
}

std::string plainText(double value) {
    std::array<char, 400> text{};
    const double magnitude = std::abs(value);
    const bool plain = value == 0 || (magnitude >= 1e-5 && magnitude < 1e15);
    const auto end =
        plain ? std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed)
              : std::to_chars(text.data(), text.data() + text.size(), value);
    return {text.data(), end.ptr};
}

QString format(Decimal value, const QString &picture) {
    const qsizetype point = picture.indexOf(u'.');
    const auto whole = QStringView(picture).left(point < 0 ? picture.size() : point);
    const auto decimals = point < 0 ? 0 : int(picture.size() - point - 1);
    const auto least = whole.count(u'0');
    const bool groups = whole.contains(u',');

    const std::int64_t count = value.rounded(decimals).tenThousandths();
    // The magnitude is taken unsigned: the most negative count has no positive twin.
    const auto magnitude =
        count < 0 ? 0 - static_cast<std::uint64_t>(count) : static_cast<std::uint64_t>(count);
    constexpr auto scale = static_cast<std::uint64_t>(Decimal::Scale);
    const auto digit = [](std::uint64_t number) { return QChar(static_cast<char16_t>(u'0' + number % 10)); };
    // From right to left.
    QVarLengthArray<QChar, 64> text;
    std::uint64_t fraction = magnitude % scale;
    for (int place = decimals; place > 4; --place)
        text.append(u'0');
    for (int place = 4; place > 0 && decimals > 0; --place, fraction /= 10) {
        if (place <= decimals)
            text.append(digit(fraction));
    }
    if (decimals > 0)
        text.append(u'.');
    std::uint64_t left = magnitude / scale;
    for (qsizetype place = 0; left > 0 || place < least; ++place, left /= 10) {
        if (groups && place > 0 && place % 3 == 0)
            text.append(u',');
        text.append(digit(left));
    }
    if (count < 0)
        text.append(u'-');
    std::reverse(text.begin(), text.end());
    return QString(text.constData(), text.size());
}

QString format(const QString &text, const QString &picture) {
    return format(leadingNumber(text.contains(u',') ? QString(text).remove(u',') : text), picture);
}

QString shownAmount(Decimal value) {
    return format(value, QStringLiteral("##,###0.00"));
}

QString storedAmount(Decimal value) {
    return format(value, QStringLiteral("###0.00"));
}

QString sqlDate(QDate date) {
    return date.toString(QStringLiteral("yyyy-MM-dd"));
}

} // namespace zel
