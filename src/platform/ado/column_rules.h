#pragma once

#include "platform/base/value.h"
#include "platform/tsql/front_end.h"

namespace zel::ado {

/// `value` as a column of that type holds it. Refuses what it can't hold: 8152 for a text too long (what is
/// too long by blanks at its end alone is cut), 245 or 8114 for a text that is no number, 8115 for a number
/// too large, 241 for a text that is no date and 242 for a day that does not exist. A text date is read day
/// first, or as yyyy-mm-dd. '' is 0 for whole and floating numbers and refused for exact ones.
[[nodiscard]] Value fitted(const Value &value, const tsql::Type &type);

/// Width in characters of what a column shows: a text's its width, an integer's 11.
[[nodiscard]] int definedSize(const tsql::Type &type);
/// Digits of a number, an integer's 10; a text's width.
[[nodiscard]] int precision(const tsql::Type &type);

} // namespace zel::ado
