#pragma once

#include "platform/base/value.h"
#include "platform/tsql/text/date_text.h"

#include <optional>
#include <string>
#include <string_view>

namespace zel::tsql {

/// What parseDate() reads, as a moment; throws Error 241 or 242.
[[nodiscard]] DateTime dateFromText(std::string_view text, DateTarget target = DateTarget::DateTime);
/// The stored form (see StoredDate), and back; nullopt for any other text.
[[nodiscard]] std::string storedDate(const DateTime &moment);
[[nodiscard]] std::optional<DateTime> fromStoredDate(std::string_view text);
/// Whether a text is a date-time in the stored form already, within the range of date-times.
[[nodiscard]] bool isStoredDate(std::string_view text);
/// `convert` with a style. 0, 120: yyyy-mm-dd hh:mm:ss; 121 with .mmm; 126 with T; 101 mm/dd/yyyy, 102
/// yyyy.mm.dd, 103 dd/mm/yyyy, 104 dd.mm.yyyy, 105 dd-mm-yyyy, 106 dd Mon yyyy, 107 Mon dd, yyyy, 108
/// hh:mm:ss, 110 mm-dd-yyyy, 111 yyyy/mm/dd, 112 yyyymmdd; 1 to 12 the same with two digits of the year. 281
/// for others.
[[nodiscard]] std::string dateText(const DateTime &moment, int style = 0);

/// The failures of parseDate() and dateFromDays() in the server's words.
[[noreturn]] void throwDateError(int number);

} // namespace zel::tsql
