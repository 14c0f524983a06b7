#pragma once

#include <QDate>
#include <QString>

namespace zel::demo {

/// The books' first and last day.
inline const QDate FirstDay{2024, 7, 1};
inline const QDate LastDay{2026, 6, 30};

/// The day itself when the office is open on it, else the next; at the end of a month the one before.
[[nodiscard]] QDate workingDay(QDate day);
/// "July 2024".
[[nodiscard]] QString monthOf(QDate day);

} // namespace zel::demo
