#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zel {

/// A decimal with a known number of decimals, as a count of units of its last digit.
using ScaledCount = __int128;

/// The most digits that a count has.
inline constexpr int MostDigits = 38;

/// 10 to the power of 0 to 38.
[[nodiscard]] ScaledCount powerOfTen(int exponent);
/// The double's shortest decimal text, rounded half away from zero to `scale` decimals; nullopt when it has
/// too many digits or is no number.
[[nodiscard]] std::optional<ScaledCount> scaledFromDouble(double value, int scale);
/// A decimal with as many decimals as it needs.
struct ScaledNumber {
    ScaledCount count = 0;
    int scale = 0;
};
/// The double's shortest decimal text; nullopt when it has too many digits or is no number.
[[nodiscard]] std::optional<ScaledNumber> shortestDecimal(double value);
/// scaledFromDouble() where arithmetic in doubles is certain of it, which leaves out large numbers and
/// halves.
[[nodiscard]] inline std::optional<std::int64_t> quicklyScaled(double value, int scale) {
    static constexpr std::array Powers{1.0, 10.0, 100.0, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8};
    // Up to this count the error of the multiplication stays far below the distance to a half.
    constexpr double Limit = 1099511627776.0;
    constexpr double HalfDistance = 1.0 / 1024;
    if (scale < 0 || scale >= int(Powers.size()))
        return std::nullopt;
    const double scaled = value * Powers[std::size_t(scale)];
    if (!(scaled < Limit && scaled > -Limit))
        return std::nullopt;
    const auto whole = std::int64_t(scaled);
    const double fraction = scaled - double(whole);
    if (fraction > -0.5 + HalfDistance && fraction < 0.5 - HalfDistance)
        return whole;
    if (fraction > 0.5 + HalfDistance)
        return whole + 1;
    if (fraction < -0.5 - HalfDistance)
        return whole - 1;
    return std::nullopt;
}
/// Nullopt for too many digits.
[[nodiscard]] std::optional<ScaledCount> scaledFromInteger(std::int64_t value, int scale);

struct ScaledText {
    bool isNumber = false;
    bool fits = false; ///< else it has too many digits
    ScaledCount count = 0;
};
/// A text of the form blanks, sign, digits, one point, digits, blanks, rounded half away from zero.
[[nodiscard]] ScaledText scaledFromText(std::string_view text, int scale);

/// With exactly `scale` decimals.
[[nodiscard]] std::string scaledText(ScaledCount count, int scale);
/// The double nearest to the decimal.
[[nodiscard]] double scaledToDouble(ScaledCount count, int scale);
/// The quotient cut to `scale` decimals; nullopt when it has too many digits. `below` is not 0.
[[nodiscard]] std::optional<ScaledCount> cutQuotient(ScaledNumber above, ScaledNumber below, int scale);
/// `count` divided by `divisor`, rounded half away from zero.
[[nodiscard]] ScaledCount roundedQuotient(ScaledCount count, ScaledCount divisor);

} // namespace zel
