#pragma once

#include "platform/base/error.h"

#include <string>
#include <string_view>

namespace zel::tsql {

/// What a text says wrong and where; its description is the message, line and column (from 1, in characters),
/// the line, of a very long one only the surroundings, and a caret under the place.
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

/// Throws a Failure; `at` is a byte of `source`.
[[noreturn]] void fail(std::string_view source, std::size_t at, int number, std::string_view message);

} // namespace zel::tsql
