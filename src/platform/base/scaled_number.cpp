#include "platform/base/scaled_number.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace zel {

namespace {

constexpr auto Powers = [] {
    std::array<ScaledCount, MostDigits + 1> powers{};
    powers[0] = 1;
    for (std::size_t i = 1; i < powers.size(); ++i)
        powers[i] = powers[i - 1] * 10;
    return powers;
}();

std::optional<ScaledCount> shifted(ScaledCount digits, int digitCount, int shift) {
    if (digits == 0)
        return 0;
    if (shift < -MostDigits)
        return 0;
    if (shift < 0)
        return roundedQuotient(digits, powerOfTen(-shift));
    if (digitCount + shift > MostDigits)
        return std::nullopt;
    return digits * powerOfTen(shift);
}

/// Digits and power of ten of the double's shortest text, without its sign.
struct ShortestText {
    std::int64_t digits = 0;
    int digitCount = 0;
    int exponent = 0;
};

ShortestText shortestText(double value) {
    std::array<char, 40> text{};
    const auto end =
        std::to_chars(text.data(), text.data() + text.size(), std::abs(value), std::chars_format::scientific);
    const std::string_view all(text.data(), std::size_t(end.ptr - text.data()));
    const auto mark = all.find('e');
    ShortestText shortest;
    for (const char c : all.substr(0, mark)) {
        if (c != '.') {
            shortest.digits = shortest.digits * 10 + (c - '0');
            ++shortest.digitCount;
        }
    }
    const std::size_t first = mark + (all[mark + 1] == '+' ? 2 : 1);
    std::from_chars(all.data() + first, all.data() + all.size(), shortest.exponent);
    shortest.exponent -= shortest.digitCount - 1;
    return shortest;
}

std::optional<ScaledCount> fromShortestText(double value, int scale) {
    const ShortestText text = shortestText(value);
    const auto count = shifted(text.digits, text.digitCount, text.exponent + scale);
    return count && value < 0 ? std::optional(-*count) : count;
}

} // namespace

ScaledCount powerOfTen(int exponent) {
    return Powers[std::size_t(std::clamp(exponent, 0, MostDigits))];
}

ScaledCount roundedQuotient(ScaledCount count, ScaledCount divisor) {
    const ScaledCount quotient = count / divisor;
    const ScaledCount rest = count % divisor;
    const ScaledCount magnitude = rest < 0 ? -rest : rest;
    const ScaledCount whole = divisor < 0 ? -divisor : divisor;
    if (magnitude < whole - magnitude)
        return quotient;
    return (count < 0) == (divisor < 0) ? quotient + 1 : quotient - 1;
}

std::optional<ScaledCount> scaledFromDouble(double value, int scale) {
    if (const auto quick = quicklyScaled(value, scale))
        return *quick;
    return std::isfinite(value) ? fromShortestText(value, scale) : std::nullopt;
}

std::optional<ScaledCount> scaledFromInteger(std::int64_t value, int scale) {
    ScaledCount count = 0;
    return __builtin_mul_overflow(ScaledCount(value), powerOfTen(scale), &count) ? std::nullopt
                                                                                 : std::optional(count);
}

std::optional<ScaledNumber> shortestDecimal(double value) {
    if (!std::isfinite(value))
        return std::nullopt;
    const int scale = std::clamp(-shortestText(value).exponent, 0, MostDigits);
    const auto count = fromShortestText(value, scale);
    return count ? std::optional(ScaledNumber{*count, scale}) : std::nullopt;
}

std::optional<ScaledCount> cutQuotient(ScaledNumber above, ScaledNumber below, int scale) {
    int further = scale + below.scale - above.scale;
    const bool negative = (above.count < 0) != (below.count < 0);
    ScaledCount rest = above.count < 0 ? -above.count : above.count;
    ScaledCount divisor = below.count < 0 ? -below.count : below.count;
    for (; further < 0; ++further)
        rest /= 10;
    ScaledCount quotient = rest / divisor;
    for (rest %= divisor; further > 0; --further, rest %= divisor) {
        if (__builtin_mul_overflow(rest, 10, &rest) || __builtin_mul_overflow(quotient, 10, &quotient) ||
            __builtin_add_overflow(quotient, rest / divisor, &quotient))
            return std::nullopt;
    }
    return negative ? -quotient : quotient;
}

ScaledText scaledFromText(std::string_view text, int scale) {
    const auto first = text.find_first_not_of(' ');
    const auto last = text.find_last_not_of(' ');
    text = first == std::string_view::npos ? std::string_view() : text.substr(first, last - first + 1);
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+'))
        text.remove_prefix(1);
    ScaledText result;
    result.fits = true;
    int decimals = -1; // -1 before the point, else the digits seen behind it
    for (const char c : text) {
        if (c == '.' && decimals < 0) {
            decimals = 0;
            continue;
        }
        if (c < '0' || c > '9')
            return {};
        result.isNumber = true;
        if (decimals == scale && c >= '5')
            ++result.count;
        if (decimals < scale) {
            if (result.count >= powerOfTen(MostDigits - 1))
                result.fits = false;
            else
                result.count = result.count * 10 + (c - '0');
        }
        decimals += decimals >= 0 ? 1 : 0;
    }
    for (int i = std::max(decimals, 0); i < scale && result.fits; ++i) {
        result.fits = result.count < powerOfTen(MostDigits - 1);
        result.count *= result.fits ? 10 : 1;
    }
    if (negative)
        result.count = -result.count;
    return result;
}

std::string scaledText(ScaledCount count, int scale) {
    ScaledCount magnitude = count < 0 ? -count : count;
    std::string digits;
    for (; magnitude != 0; magnitude /= 10)
        digits += char('0' + int(magnitude % 10));
    while (digits.size() <= std::size_t(std::max(scale, 0)))
        digits += '0';
    if (scale > 0)
        digits.insert(std::size_t(scale), 1, '.');
    if (count < 0)
        digits += '-';
    std::reverse(digits.begin(), digits.end());
    return digits;
}

double scaledToDouble(ScaledCount count, int scale) {
    constexpr ScaledCount Exact = ScaledCount(1) << 53;
    if (count <= Exact && count >= -Exact && scale <= 18)
        return double(std::int64_t(count)) / double(std::int64_t(powerOfTen(scale)));
    const std::string text = scaledText(count, scale);
    double value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

} // namespace zel
