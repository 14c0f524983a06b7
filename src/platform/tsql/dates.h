#pragma once

#include "platform/base/value.h"

#include <optional>
#include <string>
#include <string_view>

namespace zel::tsql {

/// A text taken as a date-time, month first where the order of numbers leaves it open: 2024-3-5, 20240305,
/// 2024, 3/5/2024, 5 Mar 2024, Mar 5, 2024, each with or without a time (10:20, 10:20:30.123, 1:20 PM), or a
/// time alone, which is on 1900-01-01 as '' is. Throws Error: 241 for no date at all, 242 for one that does
/// not exist or is before 1753.
[[nodiscard]] DateTime dateFromText(std::string_view text);
/// The same for a field of a recordset: a text of the form dd/MM/yyyy, with a time or without, is read day
/// first.
[[nodiscard]] DateTime dateFromFieldText(std::string_view text);
/// Days since 1900-01-01 with a fraction; 8115 out of range.
[[nodiscard]] DateTime dateFromDays(double days);

/// The stored form: yyyy-mm-dd, and behind it " hh:mm:ss.mmm" where the time is not midnight. It sorts as
/// text.
[[nodiscard]] std::string storedDate(const DateTime &moment);
/// Reads the stored form back; nullopt for anything else.
[[nodiscard]] std::optional<DateTime> fromStoredDate(std::string_view text);
/// A date-time that becomes a text without a style: yyyy-mm-dd hh:mm:ss.
[[nodiscard]] std::string dateText(const DateTime &moment);
/// `convert` with a style: 103 (dd/mm/yyyy), 101 (mm/dd/yyyy), 105 (dd-mm-yyyy), 112 (yyyymmdd), 120
/// (yyyy-mm-dd hh:mm:ss), 121 (with milliseconds); 281 for others.
[[nodiscard]] std::string dateText(const DateTime &moment, int style);
[[nodiscard]] DateTime dateFromText(std::string_view text, int style);

} // namespace zel::tsql
