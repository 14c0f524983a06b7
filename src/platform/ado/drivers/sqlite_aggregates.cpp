#include "platform/ado/drivers/sqlite_function_glue.h"

#include "platform/tsql/sqlite_names.h"

#include <cstring>

namespace zel::ado {

namespace {

namespace names = tsql::sqlite_names;

/// SQLite aligns an aggregate's memory to eight bytes only, so the large part of the sum is kept as bytes.
struct RunningSum {
    std::int64_t near; ///< of the last numbers, as long as it fits
    unsigned char far[sizeof(ScaledCount)];
    std::int64_t unit; ///< 10 to the power of the scale
    int scale;
    bool any;
    bool failed;

    [[nodiscard]] ScaledCount sum() const {
        ScaledCount sum = 0;
        std::memcpy(&sum, far, sizeof sum);
        return sum + near;
    }
    /// Whether the sum still fits.
    [[nodiscard]] bool add(ScaledCount number) {
        ScaledCount sum = 0;
        std::memcpy(&sum, far, sizeof sum);
        if (__builtin_add_overflow(sum, near, &sum) || __builtin_add_overflow(sum, number, &sum))
            return false;
        std::memcpy(far, &sum, sizeof sum);
        near = 0;
        return true;
    }
    /// False where the number or the near sum is too large for it.
    [[nodiscard]] bool addQuickly(sqlite3_value *value, int type) {
        std::int64_t number = 0;
        if (type == SQLITE_INTEGER) {
            if (__builtin_mul_overflow(sqlite3_value_int64(value), unit, &number))
                return false;
        } else if (const auto quick = quicklyScaled(sqlite3_value_double(value), scale)) {
            number = *quick;
        } else {
            return false;
        }
        std::int64_t sum = 0;
        if (__builtin_add_overflow(near, number, &sum))
            return false;
        near = sum;
        return true;
    }
    void start(int scaleOfSum) {
        any = true;
        scale = scaleOfSum;
        unit = std::int64_t(powerOfTen(scale));
    }
};

std::optional<ScaledCount> scaledValue(sqlite3_value *value, int type, int scale) {
    if (type == SQLITE_INTEGER)
        return scaledFromInteger(sqlite3_value_int64(value), scale);
    return scaledFromDouble(sqlite3_value_double(value), scale);
}

void sumStep(sqlite3_context *context, int count, sqlite3_value **values) {
    constexpr int ScaleOfOneArgument = 8;
    const int type = sqlite3_value_type(values[0]);
    if (type == SQLITE_NULL)
        return;
    auto *running = static_cast<RunningSum *>(sqlite3_aggregate_context(context, sizeof(RunningSum)));
    if (running == nullptr)
        return sqlite3_result_error_nomem(context);
    if (!running->any)
        running->start(count > 1 ? sqlite3_value_int(values[1]) : ScaleOfOneArgument);
    if (running->addQuickly(values[0], type))
        return;
    const auto number = scaledValue(values[0], type, running->scale);
    if (!number || !running->add(*number)) {
        running->failed = true;
        giveError(context, Error(8115, std::string("Arithmetic overflow error converting expression to data "
                                                   "type numeric.")));
    }
}

void sumFinal(sqlite3_context *context) {
    const auto *running = static_cast<const RunningSum *>(sqlite3_aggregate_context(context, 0));
    if (running == nullptr || !running->any)
        return sqlite3_result_null(context);
    if (running->failed)
        return;
    try {
        giveDecimal(context, running->sum(), running->scale);
    } catch (const Error &error) {
        giveError(context, error);
    }
}

/// The only value of a sub-select that must have one row at most.
struct OnlyValue {
    sqlite3_value *value;
    bool any;
};

void oneStep(sqlite3_context *context, int, sqlite3_value **values) {
    auto *only = static_cast<OnlyValue *>(sqlite3_aggregate_context(context, sizeof(OnlyValue)));
    if (only == nullptr)
        return sqlite3_result_error_nomem(context);
    if (only->any)
        return giveError(context,
                         Error(512, std::string("Subquery returned more than 1 value. This is not permitted "
                                                "when the subquery follows =, !=, <, <= , >, >= or when the "
                                                "subquery is used as an expression.")));
    only->any = true;
    only->value = sqlite3_value_dup(values[0]);
}

void oneFinal(sqlite3_context *context) {
    auto *only = static_cast<OnlyValue *>(sqlite3_aggregate_context(context, 0));
    if (only == nullptr || only->value == nullptr)
        return sqlite3_result_null(context);
    sqlite3_result_value(context, only->value);
    sqlite3_value_free(only->value);
    only->value = nullptr;
}

} // namespace

void registerAggregates(sqlite3 *db) {
    constexpr int Flags = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS;
    // One argument: DISTINCT takes no more.
    for (const int arguments : {1, 2})
        sqlite3_create_function_v2(db, names::Sum, arguments, Flags, nullptr, nullptr, sumStep, sumFinal,
                                   nullptr);
    sqlite3_create_function_v2(db, names::One, 1, Flags, nullptr, nullptr, oneStep, oneFinal, nullptr);
}

} // namespace zel::ado
