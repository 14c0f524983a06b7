#pragma once

#include "platform/base/decimal.h"

#include <QDate>
#include <QString>

#include <string>

namespace zel {

/// The number at the start of a text, blanks and a sign before it allowed; 0 when there is none.
/// Grouping commas end the number ("1,234" is 1). A number too large raises Error 8115.
[[nodiscard]] Decimal leadingNumber(const QString &text);
/// The same as a double, so that no number is too large.
[[nodiscard]] double leadingDouble(const QString &text);

/// The shortest text of a double, plain where it has fewer than 16 digits, else with an exponent.
[[nodiscard]] std::string plainText(double value);

/// Shows a number in a picture such as "##,###0.00" (grouped by thousands) or "###0.00": '0' is a digit
/// always shown, '#' one shown if needed, ',' groups, decimals round half away from zero.
[[nodiscard]] QString format(Decimal value, const QString &picture);
[[nodiscard]] QString format(const QString &text, const QString &picture);

/// The two pictures of the program.
[[nodiscard]] QString shownAmount(Decimal value);  ///< "##,###0.00"
[[nodiscard]] QString storedAmount(Decimal value); ///< "###0.00"

/// yyyy-mm-dd, the form of dates in statements and in report formulas.
[[nodiscard]] QString sqlDate(QDate date);

} // namespace zel
