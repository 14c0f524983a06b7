#include "platform/ado/drivers/sqlite_function_glue.h"

#include "platform/base/number_text.h"
#include "platform/tsql/engines/sqlite/sqlite_names.h"
#include "platform/tsql/text/conversions.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace zel::ado {

namespace {

namespace names = tsql::sqlite_names;
using tsql::TypeKind;

/// Decimals of a product of money, and of what is rounded to tens and hundreds.
constexpr int WorkingScale = 8;

[[noreturn]] void divideByZero() {
    throw Error(8134, std::string("Divide by zero error encountered."));
}

TypeKind integerKind(int bits) {
    switch (bits) {
    case 1:
        return TypeKind::Bit;
    case 8:
        return TypeKind::TinyInt;
    case 16:
        return TypeKind::SmallInt;
    case 64:
        return TypeKind::BigInt;
    default:
        return TypeKind::Int;
    }
}

/// The number as a count of 10^-scale; `type` is what an overflow names.
ScaledCount scaled(sqlite3_value *value, int scale, const char *type) {
    const auto count = isInteger(value) ? scaledFromInteger(sqlite3_value_int64(value), scale)
                                        : scaledFromDouble(sqlite3_value_double(value), scale);
    if (!count)
        overflow(type);
    return *count;
}

/// The number with all its decimals.
ScaledNumber exactly(sqlite3_value *value) {
    if (isInteger(value))
        return {sqlite3_value_int64(value), 0};
    const auto number = shortestDecimal(sqlite3_value_double(value));
    if (!number)
        overflow("numeric");
    return *number;
}

void toInteger(sqlite3_context *context, Arguments arguments) {
    sqlite3_value *value = arguments[0];
    const TypeKind kind = integerKind(sqlite3_value_int(arguments[1]));
    std::int64_t whole = 0;
    if (isText(value))
        whole = kind == TypeKind::Bit ? tsql::bitFromText(textOf(value))
                                      : tsql::integerFromText(textOf(value), kind);
    else if (isInteger(value))
        whole = tsql::fittingInteger(sqlite3_value_int64(value), kind);
    else
        whole = tsql::integerFromDouble(sqlite3_value_double(value), kind);
    sqlite3_result_int64(context, whole);
}

void toNumeric(sqlite3_context *context, Arguments arguments) {
    sqlite3_value *value = arguments[0];
    const int precision = sqlite3_value_int(arguments[1]);
    const int scale = sqlite3_value_int(arguments[2]);
    giveDecimal(context,
                isText(value) ? tsql::numericFromText(textOf(value), precision, scale)
                              : tsql::fittingNumeric(scaled(value, scale, "numeric"), precision),
                scale);
}

void toMoney(sqlite3_context *context, Arguments arguments) {
    constexpr int Scale = 4;
    giveDecimal(context,
                isText(arguments[0]) ? tsql::moneyFromText(textOf(arguments[0])).tenThousandths()
                                     : scaled(arguments[0], Scale, "money"),
                Scale);
}

void toFloat(sqlite3_context *context, Arguments arguments) {
    sqlite3_result_double(context, isText(arguments[0]) ? tsql::floatFromText(textOf(arguments[0]))
                                                        : sqlite3_value_double(arguments[0]));
}

void numericText(sqlite3_context *context, Arguments arguments) {
    const int scale = sqlite3_value_int(arguments[1]);
    const int width = sqlite3_value_int(arguments[2]);
    const std::string text = scaledText(scaled(arguments[0], scale, "varchar"), scale);
    if (width != 0 && text.size() > std::size_t(std::abs(width))) {
        if (width > 0)
            overflow("varchar");
        return giveText(context, "*");
    }
    giveText(context, text);
}

void floatText(sqlite3_context *context, Arguments arguments) {
    giveText(context, plainText(sqlite3_value_double(arguments[0])));
}

void integerQuotient(sqlite3_context *context, Arguments arguments) {
    const std::int64_t dividend = sqlite3_value_int64(arguments[0]);
    const std::int64_t divisor = sqlite3_value_int64(arguments[1]);
    if (divisor == 0)
        divideByZero();
    if (divisor == -1 && dividend == INT64_MIN)
        overflow("bigint");
    sqlite3_result_int64(context, dividend / divisor);
}

void quotient(sqlite3_context *context, Arguments arguments) {
    const double divisor = sqlite3_value_double(arguments[1]);
    const int scale = sqlite3_value_int(arguments[2]);
    if (divisor == 0)
        divideByZero();
    if (scale < 0)
        return sqlite3_result_double(context, sqlite3_value_double(arguments[0]) / divisor);
    const auto count = cutQuotient(exactly(arguments[0]), exactly(arguments[1]), scale);
    if (!count)
        overflow("numeric");
    giveDecimal(context, *count, scale, Digits::Kept);
}

void remainder(sqlite3_context *context, Arguments arguments) {
    if (isInteger(arguments[0]) && isInteger(arguments[1])) {
        const std::int64_t divisor = sqlite3_value_int64(arguments[1]);
        if (divisor == 0)
            divideByZero();
        return sqlite3_result_int64(context, divisor == -1 ? 0 : sqlite3_value_int64(arguments[0]) % divisor);
    }
    const int scale = std::max(exactly(arguments[0]).scale, exactly(arguments[1]).scale);
    const ScaledCount divisor = scaled(arguments[1], scale, "numeric");
    if (divisor == 0)
        divideByZero();
    giveDecimal(context, scaled(arguments[0], scale, "numeric") % divisor, scale);
}

void rounded(sqlite3_context *context, Arguments arguments) {
    const int digits = std::clamp(sqlite3_value_int(arguments[1]), -MostDigits, MostDigits / 2);
    if (isInteger(arguments[0]) && digits >= 0)
        return sqlite3_result_value(context, arguments[0]);
    if (digits >= 0) {
        const auto count = scaledFromDouble(sqlite3_value_double(arguments[0]), digits);
        // What has no more digits to round stays as it is.
        return count ? giveDecimal(context, *count, digits) : sqlite3_result_value(context, arguments[0]);
    }
    const ScaledCount unit = powerOfTen(-digits);
    const ScaledCount whole = isInteger(arguments[0]) ? ScaledCount(sqlite3_value_int64(arguments[0]))
                                                      : scaled(arguments[0], WorkingScale, "numeric");
    const ScaledCount units =
        isInteger(arguments[0]) ? unit : unit * powerOfTen(std::min(WorkingScale, MostDigits + digits));
    const ScaledCount result = roundedQuotient(whole, units) * unit;
    if (result > INT64_MAX || result < INT64_MIN)
        overflow("numeric");
    sqlite3_result_int64(context, std::int64_t(result));
}

void addedIntegers(sqlite3_context *context, Arguments arguments) {
    const TypeKind kind = integerKind(sqlite3_value_int(arguments[0]));
    const std::string_view signs = textOf(arguments[1]);
    std::int64_t sum = 0;
    for (std::size_t i = 0; i < signs.size(); ++i) {
        const std::int64_t number = sqlite3_value_int64(arguments[i + 2]);
        if (signs[i] == '+' ? __builtin_add_overflow(sum, number, &sum)
                            : __builtin_sub_overflow(sum, number, &sum))
            overflow("bigint");
        sum = tsql::fittingInteger(sum, kind);
    }
    sqlite3_result_int64(context, sum);
}

void addedDecimals(sqlite3_context *context, Arguments arguments) {
    const int scale = std::min(sqlite3_value_int(arguments[0]), MostDigits / 2);
    const std::string_view signs = textOf(arguments[1]);
    ScaledCount sum = 0;
    for (std::size_t i = 0; i < signs.size(); ++i) {
        const ScaledCount count = scaled(arguments[i + 2], scale, "numeric");
        sum += signs[i] == '+' ? count : -count;
    }
    giveDecimal(context, sum, scale);
}

void cut(sqlite3_context *context, Arguments arguments) {
    const int digits = std::clamp(sqlite3_value_int(arguments[1]), 0, WorkingScale);
    giveDecimal(context, scaled(arguments[0], WorkingScale, "numeric") / powerOfTen(WorkingScale - digits),
                digits);
}

constexpr Function Functions[] = {
    {names::Int, 2, guarded<toInteger>},
    {names::Num, 3, guarded<toNumeric>},
    {names::Money, 1, guarded<toMoney>},
    {names::Float, 1, guarded<toFloat>},
    {names::NumText, 3, guarded<numericText>},
    {names::FloatText, 1, guarded<floatText>},
    {names::IntDiv, 2, guarded<integerQuotient>},
    {names::Div, 3, guarded<quotient>},
    {names::Mod, 2, guarded<remainder>},
    {names::Round, 2, guarded<rounded>},
    {names::AddIntegers, -1, guarded<addedIntegers>},
    {names::AddDecimals, -1, guarded<addedDecimals>},
    {names::CutTo, 2, guarded<cut>},
};

} // namespace

std::span<const Function> numberFunctions() {
    return Functions;
}

} // namespace zel::ado
