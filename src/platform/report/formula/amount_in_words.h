#pragma once

#include "platform/base/decimal.h"

#include <QString>

namespace zel::report {

enum class WordScale { Thousands, Lakhs };

/// "One Thousand Two Hundred Thirty Four and 50/100 Only"; a negative amount begins with "Minus". The
/// hundredths are rounded half away from zero and left out when there are none.
[[nodiscard]] QString amountInWords(Decimal amount, WordScale scale);

} // namespace zel::report
