#pragma once

#include "platform/base/error.h"
#include "platform/base/scaled_number.h"

#include <sqlite3.h>

#include <new>
#include <span>
#include <string>
#include <string_view>

// What the functions that written SQL calls have in common: arguments, results, failures.
namespace zel::ado {

using Arguments = std::span<sqlite3_value *>;

[[nodiscard]] inline std::string_view textOf(sqlite3_value *value) {
    const auto *bytes = reinterpret_cast<const char *>(sqlite3_value_text(value));
    return bytes == nullptr ? std::string_view()
                            : std::string_view(bytes, std::size_t(sqlite3_value_bytes(value)));
}

[[nodiscard]] inline bool isText(sqlite3_value *value) {
    const int type = sqlite3_value_type(value);
    return type == SQLITE_TEXT || type == SQLITE_BLOB;
}

[[nodiscard]] inline bool isInteger(sqlite3_value *value) {
    return sqlite3_value_type(value) == SQLITE_INTEGER;
}

inline void giveText(sqlite3_context *context, std::string_view text) {
    sqlite3_result_text64(context, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
}

inline void giveError(sqlite3_context *context, const Error &error) {
    const std::string text = std::to_string(error.number()) + '|' + error.what();
    sqlite3_result_error(context, text.data(), int(text.size()));
}

/// Whether a decimal that no REAL has keeps the digits that a REAL has, as a quotient may, or is refused, as
/// an amount must be.
enum class Digits { All, Kept };
/// INTEGER when whole, else REAL; Error 8115 for what a Decimal or a REAL can't hold, so that every number
/// that is given can be read back exactly.
void giveDecimal(sqlite3_context *context, ScaledCount count, int scale, Digits digits = Digits::All);

[[noreturn]] void overflow(const char *type);

using FunctionBody = void (*)(sqlite3_context *, Arguments);

/// A function as SQLite calls it: NULL for any NULL argument, an Error as "NUMBER|description".
template <FunctionBody body>
void guarded(sqlite3_context *context, int count, sqlite3_value **values) {
    const Arguments arguments(values, std::size_t(count));
    for (sqlite3_value *value : arguments) {
        if (sqlite3_value_type(value) == SQLITE_NULL)
            return sqlite3_result_null(context);
    }
    try {
        body(context, arguments);
    } catch (const Error &error) {
        giveError(context, error);
    } catch (const std::bad_alloc &) {
        sqlite3_result_error_nomem(context);
    }
}

struct Function {
    const char *name;
    int arguments;
    void (*call)(sqlite3_context *, int, sqlite3_value **);
};

[[nodiscard]] std::span<const Function> textFunctions();
[[nodiscard]] std::span<const Function> numberFunctions();
[[nodiscard]] std::span<const Function> dateFunctions();
void registerAggregates(sqlite3 *db);

} // namespace zel::ado
