#include "platform/ado/drivers/sqlite_function_glue.h"

#include "platform/tsql/engines/sqlite/sqlite_names.h"

#include <array>
#include <cstddef>
#include <cstring>

namespace zel::ado {

namespace {

namespace names = tsql::sqlite_names;

/// One sum of an aggregate. SQLite aligns an aggregate's memory and a blob to less than a ScaledCount needs,
/// so that the large part is kept as bytes.
struct RunningSum {
    std::int64_t near; ///< of the last numbers, as long as it fits
    unsigned char far[sizeof(ScaledCount)];
    int scale;
    bool any;

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
    [[nodiscard]] bool addQuickly(sqlite3_value *value, int type, std::int64_t unit) {
        std::int64_t number = 0;
        if (type == SQLITE_INTEGER) {
            if (unit == 0 || __builtin_mul_overflow(sqlite3_value_int64(value), unit, &number))
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
};

/// What the sums of one scale share.
struct SumScale {
    int scale = 0;
    std::int64_t unit = 0; ///< 10 to the power of the scale, 0 where that is too large
};

constexpr auto Scales = [] {
    constexpr std::int64_t MostByTen = INT64_MAX / 10;
    std::array<SumScale, std::size_t(MostDigits) + 1> scales{};
    std::int64_t unit = 1;
    for (std::size_t scale = 0; scale < scales.size(); ++scale) {
        scales[scale] = {int(scale), unit};
        unit = unit > MostByTen ? 0 : unit * 10;
    }
    return scales;
}();

std::optional<ScaledCount> scaledValue(sqlite3_value *value, int type, int scale) {
    return type == SQLITE_INTEGER ? scaledFromInteger(sqlite3_value_int64(value), scale)
                                  : scaledFromDouble(sqlite3_value_double(value), scale);
}

/// An aggregate's memory: how many sums, then each.
struct RunningSums {
    std::int64_t count;
    RunningSum each[1];

    [[nodiscard]] static std::size_t bytes(std::int64_t count) {
        return offsetof(RunningSums, each) + std::size_t(count) * sizeof(RunningSum);
    }
};

void sumStep(sqlite3_context *context, int count, sqlite3_value **values) {
    const auto &shared = *static_cast<const SumScale *>(sqlite3_user_data(context));
    auto *sums =
        static_cast<RunningSums *>(sqlite3_aggregate_context(context, int(RunningSums::bytes(count))));
    if (sums == nullptr)
        return sqlite3_result_error_nomem(context);
    sums->count = count;
    RunningSum *running = sums->each;
    for (sqlite3_value *value : Arguments(values, std::size_t(count))) {
        RunningSum &sum = *running++;
        const int type = sqlite3_value_type(value);
        if (type == SQLITE_NULL)
            continue;
        sum.any = true;
        sum.scale = shared.scale;
        if (sum.addQuickly(value, type, shared.unit))
            continue;
        const auto number = scaledValue(value, type, shared.scale);
        if (!number || !sum.add(*number))
            return giveError(context, Error(8115, std::string("Arithmetic overflow error converting "
                                                              "expression to data type numeric.")));
    }
}

void giveSum(sqlite3_context *context, const RunningSum &sum) {
    if (!sum.any)
        return sqlite3_result_null(context);
    try {
        constexpr int MostOfAmounts = 12; // only quotients have more decimals
        giveDecimal(context, sum.sum(), sum.scale, sum.scale > MostOfAmounts ? Digits::Kept : Digits::All);
    } catch (const Error &error) {
        giveError(context, error);
    }
}

void sumFinal(sqlite3_context *context) {
    const auto *sums = static_cast<const RunningSums *>(sqlite3_aggregate_context(context, 0));
    if (sums == nullptr)
        return sqlite3_result_null(context);
    giveSum(context, sums->each[0]);
}

void sumsFinal(sqlite3_context *context) {
    const auto *sums = static_cast<const RunningSums *>(sqlite3_aggregate_context(context, 0));
    if (sums == nullptr)
        return sqlite3_result_null(context);
    sqlite3_result_blob(context, sums->each, int(std::size_t(sums->count) * sizeof(RunningSum)),
                        SQLITE_TRANSIENT);
}

void sumAt(sqlite3_context *context, int, sqlite3_value **values) {
    const auto *sums = static_cast<const unsigned char *>(sqlite3_value_blob(values[0]));
    const auto offset = std::size_t(sqlite3_value_int(values[1])) * sizeof(RunningSum);
    if (sums == nullptr || offset + sizeof(RunningSum) > std::size_t(sqlite3_value_bytes(values[0])))
        return sqlite3_result_null(context);
    RunningSum sum{};
    std::memcpy(&sum, sums + offset, sizeof sum);
    giveSum(context, sum);
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
    for (const SumScale &scale : Scales) {
        auto *shared = const_cast<SumScale *>(&scale); // never written through
        const std::string digits = std::to_string(scale.scale);
        sqlite3_create_function_v2(db, (names::Sum + digits).c_str(), 1, Flags, shared, nullptr, sumStep,
                                   sumFinal, nullptr);
        sqlite3_create_function_v2(db, (names::Sums + digits).c_str(), -1, Flags, shared, nullptr, sumStep,
                                   sumsFinal, nullptr);
    }
    sqlite3_create_function_v2(db, names::SumAt, 2, Flags, nullptr, sumAt, nullptr, nullptr, nullptr);
    sqlite3_create_function_v2(db, names::One, 1, Flags, nullptr, nullptr, oneStep, oneFinal, nullptr);
}

} // namespace zel::ado
