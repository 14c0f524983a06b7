#include "platform/ado/drivers/sqlite_functions.h"

#include "platform/ado/drivers/sqlite_function_glue.h"
#include "platform/base/decimal.h"

namespace zel::ado {

void registerFunctions(sqlite3 *db) {
    constexpr int Flags = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS;
    for (const auto &functions : {textFunctions(), numberFunctions(), dateFunctions()}) {
        for (const Function &function : functions)
            sqlite3_create_function_v2(db, function.name, function.arguments, Flags, nullptr, function.call,
                                       nullptr, nullptr, nullptr);
    }
    registerAggregates(db);
}

void giveDecimal(sqlite3_context *context, ScaledCount count, int scale, Digits digits) {
    constexpr ScaledCount MostWhole = INT64_MAX / Decimal::Scale;
    const ScaledCount unit = powerOfTen(scale);
    const ScaledCount whole = count / unit;
    if (whole >= MostWhole || whole <= -MostWhole)
        overflow("numeric");
    if (whole * unit == count)
        return sqlite3_result_int64(context, std::int64_t(whole));
    const double nearest = scaledToDouble(count, scale);
    constexpr ScaledCount AllExact = ScaledCount(1) << 49; // of no more than 15 digits
    const bool certain = (count <= AllExact && count >= -AllExact) || digits == Digits::Kept;
    if (!certain && scaledFromDouble(nearest, scale) != count)
        overflow("numeric");
    sqlite3_result_double(context, nearest);
}

void overflow(const char *type) {
    throw Error(8115,
                std::string("Arithmetic overflow error converting expression to data type ") + type + ".");
}

} // namespace zel::ado
