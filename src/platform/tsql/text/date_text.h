#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace zel::tsql {

/// A date-time in the form in which the engine stores it: 'YYYY-MM-DD', with ' HH:MM:SS.mmm' only when there
/// is a time of day.
struct StoredDate {
    std::array<char, 24> characters{};
    std::size_t size = 0;
    [[nodiscard]] std::string_view text() const { return {characters.data(), size}; }
};

/// What the text is to become: a `datetime` (from 1753 on; '' is 1900-01-01) or a `date` (from year 1 on, its
/// time cut; '' and a time alone are no date).
enum class DateTarget { DateTime, Date };

/// The date that `text` means. Style 0 reads month first where the form leaves it open, the styles 3, 4, 5,
/// 103, 104, 105 day first. Otherwise the error number: 241 for no date at all, 242 for one out of range.
struct DateReading {
    int error = 0;
    StoredDate date;
};
[[nodiscard]] DateReading parseDate(std::string_view text, DateTarget target, int style = 0);

/// The date `days` after 1900-01-01; 8115 as the error when it is out of range.
[[nodiscard]] DateReading dateFromDays(double days, DateTarget target);

/// The stored form of a moment's parts, which must be a real date and time.
[[nodiscard]] StoredDate storedDate(int year, int month, int day, int hour = 0, int minute = 0,
                                    int second = 0, int millisecond = 0);

/// 28 to 31; 0 for a month that there is not.
[[nodiscard]] int daysInMonth(int year, int month);

} // namespace zel::tsql
