#pragma once

#include "platform/base/decimal.h"
#include "platform/base/scaled_number.h"
#include "platform/tsql/text/type.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace zel::tsql {

// The dialect's conversions of single values, for literals, running statements and fields alike. What does
// not convert throws Error with the server's number.

/// '' and blanks are 0. 245 for what is no whole number (8114 for BigInt), 248, 244 or 8115 for one that is
/// too large. Kind is none but an integer type's.
[[nodiscard]] std::int64_t integerFromText(std::string_view text, TypeKind kind);
/// As a count of 10^-scale; 8114 for what is no number, '' too, 8115 for one of more digits than the
/// precision.
[[nodiscard]] ScaledCount numericFromText(std::string_view text, int precision, int scale);
/// '' is 0, grouping commas and one $ in front are allowed; 235 for what is no number.
[[nodiscard]] Decimal moneyFromText(std::string_view text);
/// '' is 0, an exponent is allowed; 8114 for what is no number.
[[nodiscard]] double floatFromText(std::string_view text);
/// '' is 0, any other whole number than 0 and "true" are 1, "false" is 0; 245 else.
[[nodiscard]] std::int64_t bitFromText(std::string_view text);

/// Within the precision; 8115 else.
[[nodiscard]] ScaledCount fittingNumeric(ScaledCount count, int precision);
/// Within the range of the integer type; 220 or 8115 else.
[[nodiscard]] std::int64_t fittingInteger(std::int64_t value, TypeKind kind);
/// The decimals cut off, within the range; 8115 for what no integer holds.
[[nodiscard]] std::int64_t integerFromDouble(double value, TypeKind kind);
/// A text for a column `width` characters wide: the same, or without the blanks at its end that don't fit;
/// 8152.
[[nodiscard]] std::string_view fittingText(std::string_view text, int width);

} // namespace zel::tsql
