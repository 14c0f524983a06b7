#include "platform/tsql/text/conversions.h"

#include "platform/base/error.h"
#include "platform/tsql/text/names.h"
#include "platform/tsql/text/text_rules.h"
#include "platform/tsql/text/type.h"

#include <charconv>
#include <cmath>
#include <limits>

namespace zel::tsql {

namespace {

[[noreturn]] void overflow(TypeKind to) {
    throw Error(8115, "Arithmetic overflow error converting expression to data type " +
                          std::string(typeName(Type{to})) + ".");
}

std::string shown(std::string_view text) {
    constexpr std::size_t Shown = 128;
    return std::string(text.substr(0, Shown));
}

[[noreturn]] void noWholeNumber(std::string_view text, TypeKind kind) {
    if (kind == TypeKind::BigInt)
        throw Error(8114, std::string("Error converting data type varchar to bigint."));
    throw Error(245, "Conversion failed when converting the varchar value '" + shown(text) +
                         "' to data type " + std::string(typeName(Type{kind})) + ".");
}

[[noreturn]] void tooLargeText(std::string_view text, TypeKind kind) {
    if (kind == TypeKind::Int)
        throw Error(248,
                    "The conversion of the varchar value '" + shown(text) + "' overflowed an int column.");
    if (kind == TypeKind::SmallInt || kind == TypeKind::TinyInt)
        throw Error(244, "The conversion of the varchar value '" + shown(text) + "' overflowed an " +
                             (kind == TypeKind::TinyInt ? "INT1" : "INT2") + " column.");
    overflow(kind);
}

std::string_view trimmed(std::string_view text) {
    text = withoutTrailingBlanks(text);
    const auto first = text.find_first_not_of(' ');
    return text.substr(first == std::string_view::npos ? text.size() : first);
}

bool fits(std::int64_t value, TypeKind kind) {
    switch (kind) {
    case TypeKind::TinyInt:
        return value >= 0 && value <= 255;
    case TypeKind::SmallInt:
        return value >= std::numeric_limits<std::int16_t>::min() &&
               value <= std::numeric_limits<std::int16_t>::max();
    case TypeKind::Int:
        return value >= std::numeric_limits<std::int32_t>::min() &&
               value <= std::numeric_limits<std::int32_t>::max();
    default:
        return true;
    }
}

} // namespace

std::int64_t integerFromText(std::string_view text, TypeKind kind) {
    const std::string_view whole = trimmed(text);
    if (whole.empty())
        return 0;
    std::string_view digits = whole;
    const bool negative = digits.front() == '-';
    if (negative || digits.front() == '+')
        digits.remove_prefix(1);
    if (digits.empty() || digits.find_first_not_of("0123456789") != std::string_view::npos)
        noWholeNumber(text, kind);
    std::int64_t value = 0;
    for (const char c : digits) {
        if (__builtin_mul_overflow(value, 10, &value) ||
            __builtin_add_overflow(value, negative ? '0' - c : c - '0', &value))
            tooLargeText(text, kind);
    }
    if (!fits(value, kind))
        tooLargeText(text, kind);
    return value;
}

ScaledCount numericFromText(std::string_view text, int precision, int scale) {
    const ScaledText read = scaledFromText(text, scale);
    if (!read.isNumber)
        throw Error(8114, std::string("Error converting data type varchar to numeric."));
    if (!read.fits)
        overflow(TypeKind::Numeric);
    return fittingNumeric(read.count, precision);
}

Decimal moneyFromText(std::string_view text) {
    std::string plain(trimmed(text));
    if (const auto mark = plain.find('$'); mark < 2)
        plain.erase(mark, 1);
    std::erase(plain, ',');
    if (plain.empty())
        return {};
    const auto parsed = Decimal::parse(plain);
    if (!parsed)
        throw Error(
            235, std::string("Cannot convert a char value to money. The char value has incorrect syntax."));
    return *parsed;
}

double floatFromText(std::string_view text) {
    std::string_view plain = trimmed(text);
    if (plain.empty())
        return 0;
    if (plain.front() == '+' && plain.size() > 1 && plain[1] != '-')
        plain.remove_prefix(1);
    double value = 0;
    const auto end = std::from_chars(plain.data(), plain.data() + plain.size(), value);
    if (end.ec == std::errc::result_out_of_range)
        overflow(TypeKind::Float);
    if (end.ec != std::errc() || end.ptr != plain.data() + plain.size() || !std::isfinite(value))
        throw Error(8114, std::string("Error converting data type varchar to float."));
    return value;
}

std::int64_t bitFromText(std::string_view text) {
    const std::string word = folded(trimmed(text));
    if (word == "true")
        return 1;
    if (word == "false")
        return 0;
    return integerFromText(text, TypeKind::Bit) != 0 ? 1 : 0;
}

ScaledCount fittingNumeric(ScaledCount count, int precision) {
    const ScaledCount limit = powerOfTen(precision);
    if (count >= limit || count <= -limit)
        overflow(TypeKind::Numeric);
    return count;
}

std::int64_t fittingInteger(std::int64_t value, TypeKind kind) {
    if (kind == TypeKind::Bit)
        return value != 0 ? 1 : 0;
    if (!fits(value, kind)) {
        if (kind == TypeKind::SmallInt || kind == TypeKind::TinyInt)
            throw Error(220, "Arithmetic overflow error for data type " + std::string(typeName(Type{kind})) +
                                 ", value = " + std::to_string(value) + ".");
        overflow(kind);
    }
    return value;
}

std::int64_t integerFromDouble(double value, TypeKind kind) {
    if (kind == TypeKind::Bit)
        return value != 0 ? 1 : 0;
    constexpr double Limit = 9223372036854775808.0;
    const double whole = std::trunc(value);
    if (!(whole >= -Limit && whole < Limit))
        overflow(kind);
    return fittingInteger(std::int64_t(whole), kind);
}

std::string_view fittingText(std::string_view text, int width) {
    if (std::int64_t(text.size()) <= width || characterCount(text) <= width)
        return text;
    const std::string_view cut = firstCharacters(text, width);
    if (!withoutTrailingBlanks(text.substr(cut.size())).empty())
        throw Error(8152, std::string("String or binary data would be truncated."));
    return cut;
}

} // namespace zel::tsql
