#include "platform/ado/column_rules.h"

#include "platform/base/date_text.h"
#include "platform/base/error.h"
#include "platform/base/scaled_number.h"
#include "platform/tsql/meaning/types.h"
#include "platform/tsql/text/conversions.h"
#include "platform/tsql/text/dates.h"

#include <algorithm>
#include <cmath>

namespace zel::ado {

namespace {

using tsql::TypeKind;

[[noreturn]] void overflow(const char *type) {
    throw Error(8115,
                std::string("Arithmetic overflow error converting expression to data type ") + type + '.');
}

Value fittedInteger(const Value &value, TypeKind kind) {
    const auto &held = value.storage();
    if (const auto *text = std::get_if<std::string>(&held))
        return kind == TypeKind::Bit ? tsql::bitFromText(*text) : tsql::integerFromText(*text, kind);
    if (const auto *number = std::get_if<std::int64_t>(&held))
        return tsql::fittingInteger(*number, kind);
    if (const auto *real = std::get_if<double>(&held))
        return tsql::integerFromDouble(*real, kind);
    return tsql::fittingInteger(value.decimal().tenThousandths() / Decimal::Scale, kind);
}

/// The number as a count of 10^-scale.
ScaledCount counted(const Value &value, int scale, const char *type) {
    const auto *real = std::get_if<double>(&value.storage());
    const std::int64_t exact = real ? 0 : value.decimal().tenThousandths();
    if (!real && scale <= 4)
        return roundedQuotient(exact, powerOfTen(4 - scale));
    const auto count = real ? scaledFromDouble(*real, scale) : scaledFromInteger(exact, scale - 4);
    if (!count)
        overflow(type);
    return *count;
}

Value exactly(ScaledCount tenThousandths, const char *type) {
    if (tenThousandths != ScaledCount(std::int64_t(tenThousandths)))
        overflow(type);
    return Decimal::fromTenThousandths(std::int64_t(tenThousandths));
}

Value fittedNumeric(const Value &value, const tsql::Type &type) {
    const auto *text = std::get_if<std::string>(&value.storage());
    if (type.kind == TypeKind::Money)
        return text ? tsql::moneyFromText(*text) : exactly(counted(value, 4, "money"), "money");
    const ScaledCount count = text ? tsql::numericFromText(*text, type.length, type.scale)
                                   : tsql::fittingNumeric(counted(value, type.scale, "numeric"), type.length);
    const ScaledCount unit = powerOfTen(std::max(0, type.scale - 4));
    if (count % unit != 0) { // more decimals than a Decimal has
        const double nearest = scaledToDouble(count, type.scale);
        if (scaledFromDouble(nearest, type.scale) != count)
            overflow("numeric");
        return nearest;
    }
    ScaledCount tenThousandths = count / unit;
    if (__builtin_mul_overflow(tenThousandths, powerOfTen(4 - std::min(type.scale, 4)), &tenThousandths))
        overflow("numeric");
    return exactly(tenThousandths, "numeric");
}

Value fittedFloat(const Value &value) {
    const auto &held = value.storage();
    if (const auto *text = std::get_if<std::string>(&held))
        return tsql::floatFromText(*text);
    const auto *real = std::get_if<double>(&held);
    if (real && !std::isfinite(*real))
        overflow("float");
    return real ? *real : value.decimal().toDouble();
}

Value fittedText(const Value &value, const tsql::Type &type) {
    const auto *given = std::get_if<std::string>(&value.storage());
    std::string text = given ? *given : value.text().toStdString();
    while (type.kind == TypeKind::Char && text.ends_with(' '))
        text.pop_back();
    return type.length > 0 ? std::string(tsql::fittingText(text, type.length)) : text;
}

Value fittedDate(const Value &value, TypeKind kind) {
    const auto &held = value.storage();
    const DateTarget target = kind == TypeKind::Date ? DateTarget::Date : DateTarget::DateTime;
    if (const auto *text = std::get_if<std::string>(&held)) {
        constexpr int NoDate = 241;
        const bool empty = text->find_first_not_of(' ') == std::string::npos;
        const DateReading read =
            empty ? DateReading{NoDate, {}} : parseDate(*text, target, DateOrder::DayFirst);
        if (read.error != 0)
            tsql::throwDateError(read.error);
        return fromStoredDate(read.date.text()).value_or(DateTime{});
    }
    const auto *given = std::get_if<DateTime>(&held);
    if (!given)
        tsql::throwDateError(241);
    const bool real = given->date.isValid() && given->time.isValid();
    if (real && kind == TypeKind::Date && given->date.year() >= 1 && given->date.year() <= 9999)
        return DateTime{given->date, QTime(0, 0)};
    const auto moment = real && kind == TypeKind::DateTime ? fromTicks(ticksOf(*given)) : std::nullopt;
    if (!moment)
        tsql::throwDateError(242);
    return *moment;
}

} // namespace

Value fitted(const Value &value, const tsql::Type &type) {
    if (value.isNull())
        return value;
    switch (type.kind) {
    case TypeKind::Bit:
    case TypeKind::TinyInt:
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
    case TypeKind::Numeric:
        return type.length + 2;
    case TypeKind::Float:
        return 22;
    case TypeKind::DateTime:
        return 23;
    default:
        return tsql::textWidth(type);
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
