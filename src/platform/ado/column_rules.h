#pragma once

#include "platform/base/value.h"
#include "platform/tsql/front_end.h"

namespace zel::ado {

/// `value` as a column of that type holds it. Refuses what it can't hold: 8152 for a text too long (what is
/// too long by blanks at its end alone is cut), the dialect's conversions for what is no number, or too
/// large a one; 241 for a text that is no date, '' too, and 242 for a day that does not exist. A text date is
/// read in every form of the dialect, but day first.
[[nodiscard]] Value fitted(const Value &value, const tsql::Type &type);

/// Width in characters of what a column shows: a text's its width, an integer's 11.
[[nodiscard]] int definedSize(const tsql::Type &type);
/// Digits of a number, an integer's 10; a text's width.
[[nodiscard]] int precision(const tsql::Type &type);

} // namespace zel::ado
