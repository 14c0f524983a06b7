#include "platform/ado/column_rules.h"

#include "platform/base/error.h"

#include <QRegularExpression>

#include <charconv>
#include <cmath>
#include <limits>

namespace zel::ado {

namespace {

using tsql::TypeKind;

struct IntegerRange {
    const char *name;
    std::int64_t least;
    std::int64_t most;
};

IntegerRange rangeOf(TypeKind kind) {
    switch (kind) {
    case TypeKind::Bit:
        return {"bit", 0, 1};
    case TypeKind::SmallInt:
        return {"smallint", std::numeric_limits<std::int16_t>::min(),
                std::numeric_limits<std::int16_t>::max()};
    case TypeKind::Int:
        return {"int", std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()};
    default:
        return {"bigint", std::numeric_limits<std::int64_t>::min(), std::numeric_limits<std::int64_t>::max()};
    }
}

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && text.front() == ' ')
        text.remove_prefix(1);
    while (!text.empty() && text.back() == ' ')
        text.remove_suffix(1);
    return text;
}

[[noreturn]] void overflow(const std::string &type) {
    throw Error(8115, "Arithmetic overflow error converting expression to data type " + type + '.');
}

[[noreturn]] void noSuchNumber(const std::string &type) {
    throw Error(8114, "Error converting data type varchar to " + type + '.');
}

std::int64_t wholeOf(const std::string &text, const IntegerRange &range) {
    std::string_view digits = trimmed(text);
    if (digits.empty())
        return 0;
    if (digits.front() == '+' && digits.size() > 1 && digits[1] != '-')
        digits.remove_prefix(1);
    std::int64_t whole = 0;
    const auto [end, failure] = std::from_chars(digits.data(), digits.data() + digits.size(), whole);
    if (failure == std::errc::result_out_of_range)
        overflow(range.name);
    if (failure != std::errc() || end != digits.data() + digits.size())
        throw Error(245, "Conversion failed when converting the varchar value '" + text + "' to data type " +
                             range.name + '.');
    return whole;
}

Value fittedInteger(const Value &value, TypeKind kind) {
    const IntegerRange range = rangeOf(kind);
    const auto &held = value.storage();
    std::int64_t whole = 0;
    if (const auto *text = std::get_if<std::string>(&held))
        whole = wholeOf(*text, range);
    else if (const auto *number = std::get_if<std::int64_t>(&held))
        whole = *number;
    else
        whole = value.decimal().tenThousandths() / Decimal::Scale;
    if (kind == TypeKind::Bit)
        return whole != 0 ? 1 : 0;
    if (whole < range.least || whole > range.most)
        overflow(range.name);
    return whole;
}

Value fittedNumeric(const Value &value, const tsql::Type &type) {
    const bool money = type.kind == TypeKind::Money;
    const int scale = money ? 4 : std::min(type.scale, 4);
    Decimal number;
    if (const auto *text = std::get_if<std::string>(&value.storage())) {
        const auto parsed = Decimal::parse(*text);
        if (!parsed && !(money && trimmed(*text).empty()))
            noSuchNumber(money ? "money" : "numeric");
        number = parsed.value_or(Decimal());
    } else {
        number = value.decimal();
    }
    number = number.rounded(scale);
    if (!money) {
        double most = 1;
        for (int digit = type.scale; digit < type.length; ++digit)
            most *= 10;
        if (std::abs(number.toDouble()) >= most)
            overflow("numeric");
    }
    return number;
}

Value fittedFloat(const Value &value) {
    const auto &held = value.storage();
    if (const auto *real = std::get_if<double>(&held)) {
        if (!std::isfinite(*real))
            overflow("float");
        return *real;
    }
    const auto *text = std::get_if<std::string>(&held);
    if (!text)
        return value.decimal().toDouble();
    const std::string_view digits = trimmed(*text);
    double real = 0;
    if (digits.empty())
        return real;
    const auto [end, failure] = std::from_chars(digits.data(), digits.data() + digits.size(), real);
    if (failure != std::errc() || end != digits.data() + digits.size())
        noSuchNumber("float");
    return real;
}

std::size_t characters(std::string_view utf8) {
    std::size_t count = 0;
    for (const char byte : utf8)
        count += (static_cast<unsigned char>(byte) & 0xc0U) != 0x80U ? 1 : 0;
    return count;
}

Value fittedText(const Value &value, const tsql::Type &type) {
    const auto *given = std::get_if<std::string>(&value.storage());
    std::string text = given ? *given : value.text().toStdString();
    while (type.kind == TypeKind::Char && text.ends_with(' '))
        text.pop_back();
    if (type.length <= 0)
        return text;
    std::size_t length = characters(text);
    for (; length > std::size_t(type.length) && text.ends_with(' '); --length)
        text.pop_back();
    if (length > std::size_t(type.length))
        throw Error(8152, "String or binary data would be truncated.");
    return text;
}

/// The moment that a text shows; fields out of their range are 242, another form 241.
DateTime momentOf(const std::string &text) {
    static const QRegularExpression form(QStringLiteral(
        R"(^\s*(?:(\d{1,2})[/-](\d{1,2})[/-](\d{4})|(\d{4})[-/](\d{1,2})[-/](\d{1,2}))(?:[ T]+(\d{1,2}):(\d{1,2})(?::(\d{1,2})(?:\.(\d{1,3}))?)?)?\s*$)"));
    const QRegularExpressionMatch found = form.match(QString::fromStdString(text));
    if (!found.hasMatch())
        throw Error(241, "Conversion failed when converting date and/or time from character string.");
    const auto number = [&found](int group) { return found.captured(group).toInt(); };
    const bool dayFirst = found.hasCaptured(1);
    DateTime moment;
    moment.date = dayFirst ? QDate(number(3), number(2), number(1)) : QDate(number(4), number(5), number(6));
    moment.time = QTime(number(7), number(8), number(9), found.captured(10).leftJustified(3, u'0').toInt());
    return moment;
}

Value fittedDate(const Value &value, TypeKind kind) {
    const auto &held = value.storage();
    DateTime moment;
    if (const auto *given = std::get_if<DateTime>(&held))
        moment = *given;
    else if (const auto *text = std::get_if<std::string>(&held))
        moment = momentOf(*text);
    else
        throw Error(241, "Conversion failed when converting date and/or time from a number.");
    const int firstYear = kind == TypeKind::Date ? 1 : 1753;
    if (!moment.date.isValid() || !moment.time.isValid() || moment.date.year() < firstYear ||
        moment.date.year() > 9999)
        throw Error(242, "The conversion to a datetime data type resulted in an out-of-range value.");
    if (kind == TypeKind::Date)
        moment.time = QTime(0, 0);
    return moment;
}

} // namespace

Value fitted(const Value &value, const tsql::Type &type) {
    if (value.isNull())
        return value;
    switch (type.kind) {
    case TypeKind::Bit:
    case TypeKind::SmallInt:
    case TypeKind::Int:
    case TypeKind::BigInt:
        return fittedInteger(value, type.kind);
    case TypeKind::Numeric:
    case TypeKind::Money:
        return fittedNumeric(value, type);
    case TypeKind::Float:
        return fittedFloat(value);
    case TypeKind::Char:
    case TypeKind::VarChar:
        return fittedText(value, type);
    case TypeKind::Date:
    case TypeKind::DateTime:
        return fittedDate(value, type.kind);
    case TypeKind::Null:
        break;
    }
    return value;
}

int definedSize(const tsql::Type &type) {
    switch (type.kind) {
    case TypeKind::Bit:
        return 1;
    case TypeKind::SmallInt:
        return 6;
    case TypeKind::Int:
        return 11;
    case TypeKind::BigInt:
        return 20;
    case TypeKind::Numeric:
        return type.length + 2;
    case TypeKind::Money:
        return 21;
    case TypeKind::Float:
        return 22;
    case TypeKind::Date:
        return 10;
    case TypeKind::DateTime:
        return 23;
    default:
        return type.length;
    }
}

int precision(const tsql::Type &type) {
    switch (type.kind) {
    case TypeKind::SmallInt:
        return 5;
    case TypeKind::Int:
        return 10;
    case TypeKind::BigInt:
    case TypeKind::Money:
        return 19;
    case TypeKind::Numeric:
        return type.length;
    case TypeKind::Float:
        return 15;
    default:
        return definedSize(type);
    }
}

} // namespace zel::ado
