#pragma once

#include "platform/base/value.h"

#include <array>
#include <optional>
#include <string_view>

namespace zel {

/// A date-time in the form in which the engine stores it: 'YYYY-MM-DD', with ' HH:MM:SS.mmm' only when there
/// is a time of day.
struct StoredDate {
    std::array<char, 24> characters{};
    std::size_t size = 0;
    [[nodiscard]] std::string_view text() const { return {characters.data(), size}; }
};

/// What the text is to become: a `datetime` (from 1753 on; '' is 1900-01-01; its clock has three hundred
/// ticks a second) or a `date` (from year 1 on, its time cut; '' and a time alone are no date).
enum class DateTarget { DateTime, Date };

/// How 5/3/2024 is read: the server reads statements month first, the program what people typed day first.
enum class DateOrder { MonthFirst, DayFirst };

/// The date that `text` means. Otherwise the error number: 241 for no date at all, 242 for one out of range.
struct DateReading {
    int error = 0;
    StoredDate date;
};
[[nodiscard]] DateReading parseDate(std::string_view text, DateTarget target,
                                    DateOrder order = DateOrder::MonthFirst);

/// The date `days` after 1900-01-01; 8115 as the error when it is out of range.
[[nodiscard]] DateReading dateFromDays(double days, DateTarget target);

/// The stored form of a moment, which must be a real date and time.
[[nodiscard]] StoredDate storedDate(const DateTime &moment);
/// The moment of a text in the stored form; a T in place of the blank, and a time without seconds or
/// thousandths, are taken too. Nullopt for any other text.
[[nodiscard]] std::optional<DateTime> fromStoredDate(std::string_view text);

/// A `datetime` counted in ticks of a three-hundredth of a second, from 1900-01-01 on.
inline constexpr std::int64_t TicksPerSecond = 300;
inline constexpr std::int64_t TicksPerDay = 86'400 * TicksPerSecond;
[[nodiscard]] std::int64_t ticksOf(const DateTime &moment);
/// Nullopt before 1753 and behind 9999.
[[nodiscard]] std::optional<DateTime> fromTicks(std::int64_t ticks);

/// dd/MM/yyyy, as dates are shown.
[[nodiscard]] QString dayText(QDate date);

} // namespace zel
