#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zel::ado {

/// A decimal with a known number of decimals, as a count of units of its last digit.
using ScaledCount = __int128;

/// The most digits that a count has.
inline constexpr int MostDigits = 38;

/// 10 to the power of 0 to 38.
[[nodiscard]] ScaledCount powerOfTen(int exponent);
/// The double's shortest decimal text, rounded half away from zero to `scale` decimals; nullopt when it has
/// too many digits or is no number.
[[nodiscard]] std::optional<ScaledCount> scaledFromDouble(double value, int scale);
[[nodiscard]] ScaledCount scaledFromInteger(std::int64_t value, int scale);

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
/// `count` divided by `divisor`, rounded half away from zero.
[[nodiscard]] ScaledCount roundedQuotient(ScaledCount count, ScaledCount divisor);

} // namespace zel::ado
