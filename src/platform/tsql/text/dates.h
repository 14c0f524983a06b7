#pragma once

#include "platform/base/date_text.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zel::tsql {

/// `convert` without a style.
inline constexpr int NoStyle = -1;

/// Whether a style reads 5/3/2024 day first: 3, 4, 5, 103, 104 and 105 do.
[[nodiscard]] constexpr DateOrder orderOfStyle(int style) {
    const int century = style > 100 ? style - 100 : style;
    return century >= 3 && century <= 5 ? DateOrder::DayFirst : DateOrder::MonthFirst;
}

/// Whether a text is a date-time in the stored form already: within the range of date-times, on a tick.
[[nodiscard]] bool isStoredDate(std::string_view text);
/// `convert` to a text, a datetime or, `dateOnly`, a date, of which a style leaves the time of day out.
/// Without a style "Mar  5 2024 12:00AM" and 2024-03-05. 281 for a style that is none.
[[nodiscard]] std::string dateText(const DateTime &moment, int style = NoStyle, bool dateOnly = false);

/// The words that name a part of a date, as arguments of `dateadd` and its like.
enum class DatePart {
    Year,
    Quarter,
    Month,
    DayOfYear,
    Day,
    Week,
    IsoWeek,
    Weekday,
    Hour,
    Minute,
    Second,
    Millisecond
};
/// Nullopt for a word that names none; any case, the short forms too.
[[nodiscard]] std::optional<DatePart> datePart(std::string_view word);
[[nodiscard]] constexpr bool isTimePart(DatePart part) {
    return part >= DatePart::Hour;
}

/// `dateadd`: a day that the month has not becomes its last. 517 out of range.
[[nodiscard]] DateTime dateAdded(const DateTime &moment, DatePart part, std::int64_t count);
/// `datediff`: how many bounds of such parts lie between the two; weeks begin on Sunday. 535 beyond an int.
[[nodiscard]] std::int64_t dateDifference(DatePart part, const DateTime &from, const DateTime &to);
/// `datepart`: Sunday is weekday 1, the week of 1 January is week 1.
[[nodiscard]] int partOf(const DateTime &moment, DatePart part);
/// `datename`: months and weekdays by name, the rest as numbers.
[[nodiscard]] std::string partName(const DateTime &moment, DatePart part);
/// `+` and `-` between dates, which count as days since 1900-01-01. 8115 out of range.
[[nodiscard]] DateTime dateSum(const DateTime &left, const DateTime &right, bool subtract);

/// The failures of parseDate() and dateFromDays() in the server's words.
[[noreturn]] void throwDateError(int number);

} // namespace zel::tsql
