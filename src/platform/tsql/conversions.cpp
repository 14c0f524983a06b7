#include "platform/tsql/conversions.h"

#include "platform/base/error.h"
#include "platform/tsql/dates.h"
#include "platform/tsql/text_rules.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace zel::tsql {

namespace {

template <class... Ts>
struct Overloaded : Ts... {
    using Ts::operator()...;
};
template <class... Ts>
Overloaded(Ts...) -> Overloaded<Ts...>;

const char *typeName(TypeKind kind) {
    switch (kind) {
    case TypeKind::Bit:
        return "bit";
    case TypeKind::SmallInt:
        return "smallint";
    case TypeKind::Int:
        return "int";
    case TypeKind::BigInt:
        return "bigint";
    case TypeKind::Numeric:
        return "numeric";
    case TypeKind::Money:
        return "money";
    case TypeKind::Float:
        return "float";
    case TypeKind::Char:
        return "char";
    case TypeKind::VarChar:
        return "varchar";
    case TypeKind::Date:
        return "date";
    case TypeKind::DateTime:
        return "datetime";
    case TypeKind::Null:
        break;
    }
    return "void type";
}

[[noreturn]] void overflow(const char *to) {
    throw Error(8115,
                std::string("Arithmetic overflow error converting expression to data type ") + to + ".");
}

[[noreturn]] void noWholeNumber(std::string_view text, TypeKind kind) {
    if (kind == TypeKind::BigInt)
        throw Error(8114, std::string("Error converting data type varchar to bigint."));
    throw Error(245, "Conversion failed when converting the varchar value '" + std::string(text) +
                         "' to data type " + typeName(kind) + ".");
}

[[noreturn]] void tooLargeText(std::string_view text, TypeKind kind) {
    if (kind == TypeKind::Int)
        throw Error(248, "The conversion of the varchar value '" + std::string(text) +
                             "' overflowed an int column.");
    if (kind == TypeKind::SmallInt)
        throw Error(244, "The conversion of the varchar value '" + std::string(text) +
                             "' overflowed an INT2 column.");
    overflow(typeName(kind));
}

std::string_view trimmed(std::string_view text) {
    text = rightTrimmed(text);
    const auto first = text.find_first_not_of(' ');
    return text.substr(first == std::string_view::npos ? text.size() : first);
}

bool fits(std::int64_t value, TypeKind kind) {
    switch (kind) {
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

std::int64_t powerOfTen(int exponent) {
    std::int64_t power = 1;
    for (; exponent > 0; --exponent)
        power *= 10;
    return power;
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

Decimal numericFromText(std::string_view text, int precision, int scale) {
    const auto parsed = Decimal::parse(text);
    if (!parsed)
        throw Error(8114, std::string("Error converting data type varchar to numeric."));
    return fittingNumeric(*parsed, precision, scale);
}

Decimal moneyFromText(std::string_view text) {
    std::string plain(trimmed(text));
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
        overflow("float");
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

std::int64_t fittingInteger(std::int64_t value, TypeKind kind) {
    if (kind == TypeKind::Bit)
        return value != 0 ? 1 : 0;
    if (!fits(value, kind)) {
        if (kind == TypeKind::SmallInt)
            throw Error(220, "Arithmetic overflow error for data type smallint, value = " +
                                 std::to_string(value) + ".");
        overflow(typeName(kind));
    }
    return value;
}

std::int64_t integerFromDecimal(Decimal value, TypeKind kind) {
    if (kind == TypeKind::Bit)
        return value != Decimal() ? 1 : 0;
    return fittingInteger(value.tenThousandths() / Decimal::Scale, kind);
}

std::int64_t integerFromDouble(double value, TypeKind kind) {
    if (kind == TypeKind::Bit)
        return value != 0 ? 1 : 0;
    constexpr double Limit = 9223372036854775808.0;
    const double whole = std::trunc(value);
    if (!(whole >= -Limit && whole < Limit))
        overflow(typeName(kind));
    return fittingInteger(std::int64_t(whole), kind);
}

Decimal fittingNumeric(Decimal value, int precision, int scale) {
    const Decimal rounded = value.rounded(std::min(scale, 4));
    const int wholeDigits = precision - scale;
    if (wholeDigits < 15) {
        const std::int64_t whole = rounded.tenThousandths() / Decimal::Scale;
        const std::int64_t limit = powerOfTen(std::max(wholeDigits, 0));
        if (whole >= limit || whole <= -limit)
            overflow("numeric");
    }
    return rounded;
}

std::string numericText(Decimal value, int scale) {
    std::string text = value.rounded(std::min(scale, 4)).toString();
    if (scale <= 0)
        return text;
    const auto point = text.find('.');
    const std::size_t shown = point == std::string::npos ? 0 : text.size() - point - 1;
    if (point == std::string::npos)
        text += '.';
    return text.append(std::size_t(scale) - std::min(shown, std::size_t(scale)), '0');
}

std::string floatText(double value) {
    std::array<char, 400> text{};
    const double magnitude = std::abs(value);
    const bool plain = value == 0 || (magnitude >= 1e-5 && magnitude < 1e15);
    const auto end =
        plain ? std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed)
              : std::to_chars(text.data(), text.data() + text.size(), value);
    return {text.data(), end.ptr};
}

std::string_view fittingText(std::string_view text, int width) {
    if (std::int64_t(text.size()) <= width || characterCount(text) <= width)
        return text;
    const std::string_view cut = leftCharacters(text, width);
    if (!rightTrimmed(text.substr(cut.size())).empty())
        throw Error(8152, std::string("String or binary data would be truncated."));
    return cut;
}

std::string_view cutText(std::string_view text, int width) {
    return std::int64_t(text.size()) <= width ? text : leftCharacters(text, width);
}

namespace {

std::string textOf(const Value &value) {
    return std::visit(
        Overloaded{[](Null) { return std::string(); }, [](std::int64_t v) { return std::to_string(v); },
                   [](Decimal v) { return v.toString(); }, [](double v) { return floatText(v); },
                   [](const std::string &v) { return v; }, [](const DateTime &v) { return dateText(v); }},
        value.storage());
}

[[noreturn]] void noConversion(TypeKind to) {
    throw Error(206, std::string("Operand type clash: datetime is incompatible with ") + typeName(to));
}

Value integerOf(const Value &value, TypeKind kind) {
    return std::visit(Overloaded{[](Null) { return Value(); },
                                 [&](std::int64_t v) { return Value(fittingInteger(v, kind)); },
                                 [&](Decimal v) { return Value(integerFromDecimal(v, kind)); },
                                 [&](double v) { return Value(integerFromDouble(v, kind)); },
                                 [&](const std::string &v) {
                                     return Value(kind == TypeKind::Bit ? bitFromText(v)
                                                                        : integerFromText(v, kind));
                                 },
                                 [&](const DateTime &) -> Value { noConversion(kind); }},
                      value.storage());
}

Value numericOf(const Value &value, const Type &type) {
    const bool money = type.kind == TypeKind::Money;
    const int precision = money ? 19 : type.length;
    const int scale = money ? 4 : type.scale;
    return std::visit(
        Overloaded{
            [](Null) { return Value(); },
            [&](std::int64_t v) { return Value(fittingNumeric(Decimal::fromInteger(v), precision, scale)); },
            [&](Decimal v) { return Value(fittingNumeric(v, precision, scale)); },
            [&](double v) { return Value(fittingNumeric(Decimal::fromDouble(v), precision, scale)); },
            [&](const std::string &v) {
                return Value(money ? moneyFromText(v) : numericFromText(v, precision, scale));
            },
            [&](const DateTime &) -> Value { noConversion(type.kind); }},
        value.storage());
}

Value floatOf(const Value &value) {
    return std::visit(
        Overloaded{[](Null) { return Value(); }, [](std::int64_t v) { return Value(double(v)); },
                   [](Decimal v) { return Value(v.toDouble()); }, [](double v) { return Value(v); },
                   [](const std::string &v) { return Value(floatFromText(v)); },
                   [](const DateTime &) -> Value { noConversion(TypeKind::Float); }},
        value.storage());
}

Value textValueOf(const Value &value, const Type &type) {
    if (value.isNull())
        return {};
    const std::string text = textOf(value);
    const bool wasText = std::holds_alternative<std::string>(value.storage());
    if (!wasText && std::int64_t(text.size()) > type.length)
        overflow(typeName(type.kind));
    return Value(std::string(fittingText(text, type.length)));
}

Value dateOf(const Value &value, TypeKind kind) {
    Value moment = std::visit(Overloaded{[](Null) { return Value(); },
                                         [](std::int64_t v) { return Value(dateFromDays(double(v))); },
                                         [](Decimal v) { return Value(dateFromDays(v.toDouble())); },
                                         [](double v) { return Value(dateFromDays(v)); },
                                         [](const std::string &v) { return Value(dateFromText(v)); },
                                         [](const DateTime &v) { return Value(v); }},
                              value.storage());
    return kind == TypeKind::Date && !moment.isNull() ? Value(moment.date()) : moment;
}

} // namespace

Value converted(const Value &value, const Type &type) {
    switch (type.kind) {
    case TypeKind::Bit:
    case TypeKind::SmallInt:
    case TypeKind::Int:
    case TypeKind::BigInt:
        return integerOf(value, type.kind);
    case TypeKind::Numeric:
    case TypeKind::Money:
        return numericOf(value, type);
    case TypeKind::Float:
        return floatOf(value);
    case TypeKind::Char:
    case TypeKind::VarChar:
        return textValueOf(value, type);
    case TypeKind::Date:
    case TypeKind::DateTime:
        return dateOf(value, type.kind);
    case TypeKind::Null:
        break;
    }
    return value;
}

} // namespace zel::tsql
