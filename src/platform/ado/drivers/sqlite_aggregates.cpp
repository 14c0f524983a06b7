#include "platform/ado/drivers/sqlite_function_glue.h"

#include "platform/tsql/engines/sqlite/sqlite_names.h"

#include <array>
#include <cstddef>
#include <cstring>
#include <numeric>
#include <span>

namespace zel::ado {

namespace {

namespace names = tsql::sqlite_names;

/// One sum of an aggregate. SQLite aligns an aggregate's memory and a blob to less than a ScaledCount needs,
/// so that the large part is kept as bytes.
struct RunningSum {
    std::int64_t near; ///< of the last numbers, as long as it fits
    unsigned char far[sizeof(ScaledCount)];
    int scale; ///< known at the end
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
    /// False where that takes more than a double's arithmetic.
    [[nodiscard]] bool addQuickly(double number, int ownScale) {
        const auto quick = quicklyScaled(number, ownScale);
        std::int64_t sum = 0;
        if (!quick || __builtin_add_overflow(near, *quick, &sum))
            return false;
        near = sum;
        any = true;
        return true;
    }
};

/// By scale: what all its sums are given to know it.
constexpr auto Scales = [] {
    std::array<int, std::size_t(MostDigits) + 1> scales{};
    std::iota(scales.begin(), scales.end(), 0);
    return scales;
}();

int scaleOf(sqlite3_context *context) {
    return *static_cast<const int *>(sqlite3_user_data(context));
}

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

/// Any number, however large; false behind a failure.
[[gnu::noinline]] bool addAny(sqlite3_context *context, RunningSum &sum, sqlite3_value *value, int scale) {
    const int type = sqlite3_value_type(value);
    if (type == SQLITE_NULL)
        return true;
    sum.any = true;
    const auto number = scaledValue(value, type, scale);
    if (number && sum.add(*number))
        return true;
    giveError(context, Error(8115, std::string("Arithmetic overflow error converting expression to data type "
                                               "numeric.")));
    return false;
}

void sumStep(sqlite3_context *context, int count, sqlite3_value **values) {
    const int scale = scaleOf(context);
    auto *sums =
        static_cast<RunningSums *>(sqlite3_aggregate_context(context, int(RunningSums::bytes(count))));
    if (sums == nullptr)
        return sqlite3_result_error_nomem(context);
    sums->count = count;
    RunningSum *sum = sums->each;
    for (sqlite3_value *value : Arguments(values, std::size_t(count))) {
        // What counts as 0, NULL among it, changes nothing once there was another.
        const double number = sqlite3_value_double(value);
        const bool done = number == 0 ? sum->any : sum->addQuickly(number, scale);
        if (!done && !addAny(context, *sum, value, scale))
            return;
        ++sum;
    }
}

void giveSum(sqlite3_context *context, const RunningSum &sum, int scale) {
    if (!sum.any)
        return sqlite3_result_null(context);
    try {
        constexpr int MostOfAmounts = 12; // only quotients have more decimals
        giveDecimal(context, sum.sum(), scale, scale > MostOfAmounts ? Digits::Kept : Digits::All);
    } catch (const Error &error) {
        giveError(context, error);
    }
}

void sumFinal(sqlite3_context *context) {
    const auto *sums = static_cast<const RunningSums *>(sqlite3_aggregate_context(context, 0));
    if (sums == nullptr)
        return sqlite3_result_null(context);
    giveSum(context, sums->each[0], scaleOf(context));
}

void sumsFinal(sqlite3_context *context) {
    auto *sums = static_cast<RunningSums *>(sqlite3_aggregate_context(context, 0));
    if (sums == nullptr)
        return sqlite3_result_null(context);
    const auto count = std::size_t(sums->count);
    for (RunningSum &sum : std::span(sums->each, count))
        sum.scale = scaleOf(context);
    sqlite3_result_blob(context, sums->each, int(count * sizeof(RunningSum)), SQLITE_TRANSIENT);
}

void sumAt(sqlite3_context *context, int, sqlite3_value **values) {
    const auto *sums = static_cast<const unsigned char *>(sqlite3_value_blob(values[0]));
    const auto offset = std::size_t(sqlite3_value_int(values[1])) * sizeof(RunningSum);
    if (sums == nullptr || offset + sizeof(RunningSum) > std::size_t(sqlite3_value_bytes(values[0])))
        return sqlite3_result_null(context);
    RunningSum sum{};
    std::memcpy(&sum, sums + offset, sizeof sum);
    giveSum(context, sum, sum.scale);
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
    for (const int &scale : Scales) {
        auto *shared = const_cast<int *>(&scale); // never written through
        const std::string digits = std::to_string(scale);
        sqlite3_create_function_v2(db, (names::Sum + digits).c_str(), 1, Flags, shared, nullptr, sumStep,
                                   sumFinal, nullptr);
        sqlite3_create_function_v2(db, (names::Sums + digits).c_str(), -1, Flags, shared, nullptr, sumStep,
                                   sumsFinal, nullptr);
    }
    sqlite3_create_function_v2(db, names::SumAt, 2, Flags, nullptr, sumAt, nullptr, nullptr, nullptr);
    sqlite3_create_function_v2(db, names::One, 1, Flags, nullptr, nullptr, oneStep, oneFinal, nullptr);
}

} // namespace zel::ado
