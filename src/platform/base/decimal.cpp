#include "platform/base/decimal.h"

#include "platform/base/error.h"
#include "platform/base/scaled_number.h"

#include <array>
#include <charconv>
#include <cmath>

namespace zel {

namespace {

[[noreturn]] void overflow() {
    throw Error(8115, std::string("Arithmetic overflow error converting expression to data type numeric."));
}

} // namespace

Decimal Decimal::fromInteger(std::int64_t whole) {
    std::int64_t count = 0;
    if (__builtin_mul_overflow(whole, Scale, &count))
        overflow();
    return Decimal(count);
}

Decimal Decimal::fromDouble(double value) {
    // Up to fifteen digits each decimal has a double of its own: where ten-thousandths give this very double,
    // they are its shortest text too.
    constexpr double FifteenDigits = 1e15;
    if (const double count = std::nearbyint(value * double(Scale));
        std::abs(count) < FifteenDigits && count / double(Scale) == value)
        return Decimal(static_cast<std::int64_t>(count));
    std::array<char, 400> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed);
    const auto parsed = end.ec == std::errc()
                            ? parse({text.data(), static_cast<std::size_t>(end.ptr - text.data())})
                            : std::nullopt;
    if (!parsed)
        overflow();
    return *parsed;
}

std::optional<Decimal> Decimal::parse(std::string_view text) {
    const ScaledText read = scaledFromText(text, 4);
    if (!read.isNumber)
        return std::nullopt;
    if (!read.fits || read.count != static_cast<std::int64_t>(read.count))
        overflow();
    return Decimal(static_cast<std::int64_t>(read.count));
}

Decimal Decimal::rounded(int digits) const {
    std::int64_t unit = 1;
    for (int i = digits; i < 4; ++i)
        unit *= 10;
    const std::int64_t rest = m_count % unit;
    std::int64_t count = m_count - rest;
    if (rest * 2 >= unit)
        count += unit;
    else if (-rest * 2 >= unit)
        count -= unit;
    return Decimal(count);
}

double Decimal::toDouble() const {
    constexpr std::int64_t Exact = std::int64_t(1) << 53;
    if (m_count <= Exact && m_count >= -Exact)
        return static_cast<double>(m_count) / double(Scale);
    const std::string text = toString();
    double nearest = 0;
    std::from_chars(text.data(), text.data() + text.size(), nearest);
    return nearest;
}

std::string Decimal::toString() const {
    // The magnitude is taken unsigned: the most negative count has no positive twin.
    const auto magnitude =
        m_count < 0 ? 0 - static_cast<std::uint64_t>(m_count) : static_cast<std::uint64_t>(m_count);
    std::string text = m_count < 0 ? "-" : "";
    text += std::to_string(magnitude / std::uint64_t(Scale));
    if (const auto fraction = magnitude % std::uint64_t(Scale); fraction != 0) {
        std::string digits = std::to_string(std::uint64_t(Scale) + fraction).substr(1);
        digits.erase(digits.find_last_not_of('0') + 1);
        text += '.' + digits;
    }
    return text;
}

Decimal operator+(Decimal a, Decimal b) {
    std::int64_t count = 0;
    if (__builtin_add_overflow(a.m_count, b.m_count, &count))
        overflow();
    return Decimal(count);
}

Decimal operator-(Decimal a, Decimal b) {
    std::int64_t count = 0;
    if (__builtin_sub_overflow(a.m_count, b.m_count, &count))
        overflow();
    return Decimal(count);
}

} // namespace zel
