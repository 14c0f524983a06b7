#pragma once

#include <string>
#include <string_view>

namespace zel::tsql {

/// Throws Error(number, description): the message, line and column (from 1, in characters), the line and a
/// caret under the place. `at` is a byte of `source`; of a very long line only the surroundings are shown.
[[noreturn]] void fail(std::string_view source, std::size_t at, int number, std::string_view message);

} // namespace zel::tsql
