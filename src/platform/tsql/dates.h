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

/// Styles 3, 4, 5, 103, 104 and 105 read day first, all others month first.
[[nodiscard]] DateTime dateFromText(std::string_view text, int style);
/// For a column that holds days: '' and a time alone are no date (241), years begin at 1, the time is cut.
[[nodiscard]] DateTime dayFromText(std::string_view text, int style);

/// The stored form: yyyy-mm-dd, and behind it " hh:mm:ss.mmm" where the time is not midnight. It sorts as
/// text.
[[nodiscard]] std::string storedDate(const DateTime &moment);
/// Reads the stored form back; nullopt for anything else.
[[nodiscard]] std::optional<DateTime> fromStoredDate(std::string_view text);
/// Whether a text is a date-time in the stored form already, within the range of date-times.
[[nodiscard]] bool isStoredDate(std::string_view text);
/// `convert` with a style. 0, 120: yyyy-mm-dd hh:mm:ss; 121 with .mmm; 126 with T; 101 mm/dd/yyyy, 102
/// yyyy.mm.dd, 103 dd/mm/yyyy, 104 dd.mm.yyyy, 105 dd-mm-yyyy, 106 dd Mon yyyy, 107 Mon dd, yyyy, 108
/// hh:mm:ss, 110 mm-dd-yyyy, 111 yyyy/mm/dd, 112 yyyymmdd; 1 to 12 the same with two digits of the year. 281
/// for others.
[[nodiscard]] std::string dateText(const DateTime &moment, int style = 0);

} // namespace zel::tsql
