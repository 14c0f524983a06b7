#pragma once

#include "platform/base/error.h"

#include <string>
#include <string_view>

namespace zel::tsql {

/// The message, line and column (from 1, in characters), the line and a caret under the place. `at` is a byte
/// of `source`; of a very long line only the surroundings are shown.
[[nodiscard]] std::string described(std::string_view source, std::size_t at, std::string_view message);

/// What a text says wrong and where; that is its description.
class Failure : public Error {
public:
    Failure(std::string_view source, std::size_t at, int number, std::string_view message);

    [[nodiscard]] const std::string &source() const noexcept { return m_source; }
    [[nodiscard]] const std::string &message() const noexcept { return m_message; }
    [[nodiscard]] std::size_t at() const noexcept { return m_at; }

private:
    std::string m_source;
    std::string m_message;
    std::size_t m_at;
};

/// Throws a Failure.
[[noreturn]] void fail(std::string_view source, std::size_t at, int number, std::string_view message);

/// Of 191, for what is nested more deeply than we or the engine can take.
inline constexpr char TooDeep[] =
    "Some part of your SQL statement is nested too deeply. Rewrite the query or break it up into smaller "
    "queries.";
[[noreturn]] inline void failTooDeep(std::string_view source, std::size_t at) {
    fail(source, at, 191, TooDeep);
}

} // namespace zel::tsql
