#include "platform/tsql/dates.h"

#include "platform/base/error.h"
#include "platform/tsql/date_reader.h"

#include <cmath>

namespace zel::tsql {

namespace {

[[noreturn]] void unknownStyle(int style) {
    throw Error(281, std::to_string(style) +
                         " is not a valid style number when converting between datetime and a "
                         "character string.");
}

std::string digits(int number, std::size_t width) {
    std::string text = std::to_string(number);
    return text.size() < width ? std::string(width - text.size(), '0') + text : text;
}

/// The letters d, m, y and b (the name of the month) stand for their parts, everything else for itself.
std::string written(QDate date, std::string_view form, bool shortYear) {
    std::string text;
    for (const char c : form) {
        switch (c) {
        case 'd':
            text += digits(date.day(), 2);
            break;
        case 'm':
            text += digits(date.month(), 2);
            break;
        case 'y':
            text += shortYear ? digits(date.year() % 100, 2) : digits(date.year(), 4);
            break;
        case 'b':
            text += MonthNames[std::size_t(date.month() - 1)].substr(0, 3);
            break;
        default:
            text += c;
        }
    }
    return text;
}

std::string_view formOfStyle(int style) {
    switch (style) {
    case 101:
        return "m/d/y";
    case 102:
        return "y.m.d";
    case 103:
        return "d/m/y";
    case 104:
        return "d.m.y";
    case 105:
        return "d-m-y";
    case 106:
        return "d b y";
    case 107:
        return "b d, y";
    case 110:
        return "m-d-y";
    case 111:
        return "y/m/d";
    case 112:
        return "ymd";
    default:
        return {};
    }
}

std::string clock(QTime time) {
    return digits(time.hour(), 2) + ':' + digits(time.minute(), 2) + ':' + digits(time.second(), 2);
}

std::string isoDay(QDate date) {
    return digits(date.year(), 4) + '-' + digits(date.month(), 2) + '-' + digits(date.day(), 2);
}

std::optional<int> digitsAt(std::string_view text, std::size_t at, std::size_t count) {
    int number = 0;
    for (const char c : text.substr(at, count)) {
        if (c < '0' || c > '9')
            return std::nullopt;
        number = number * 10 + (c - '0');
    }
    return number;
}

} // namespace

DateTime dateFromText(std::string_view text) {
    if (const auto stored = fromStoredDate(text); stored && stored->date >= firstDay())
        return *stored;
    return DateReader(text, DateOrder::MonthFirst).read();
}

DateTime dateFromFieldText(std::string_view text) {
    const bool dayFirst = text.size() >= 10 && text[2] == '/' && text[5] == '/' && digitsAt(text, 0, 2) &&
                          digitsAt(text, 3, 2) && digitsAt(text, 6, 4) &&
                          (text.size() == 10 || text[10] == ' ');
    return dayFirst ? DateReader(text, DateOrder::DayFirst).read() : dateFromText(text);
}

DateTime dateFromDays(double days) {
    const double whole = std::floor(days);
    if (!(whole >= double(dayZero().daysTo(firstDay())) &&
          whole <= double(dayZero().daysTo(QDate(9999, 12, 31)))))
        throw Error(8115,
                    std::string("Arithmetic overflow error converting expression to data type datetime."));
    const auto ticks = std::llround((days - whole) * 24 * 60 * 60 * 300);
    const auto thousandths = std::llround(double(ticks) * 10.0 / 3.0);
    if (thousandths >= 86'400'000)
        return {dayZero().addDays(std::llround(whole) + 1), QTime(0, 0)};
    return {dayZero().addDays(std::llround(whole)), QTime::fromMSecsSinceStartOfDay(int(thousandths))};
}

std::string storedDate(const DateTime &moment) {
    std::string text = isoDay(moment.date);
    if (moment.time != QTime(0, 0))
        text += ' ' + clock(moment.time) + '.' + digits(moment.time.msec(), 3);
    return text;
}

std::optional<DateTime> fromStoredDate(std::string_view text) {
    if ((text.size() != 10 && text.size() != 23) || text[4] != '-' || text[7] != '-')
        return std::nullopt;
    const auto year = digitsAt(text, 0, 4);
    const auto month = digitsAt(text, 5, 2);
    const auto dayOfMonth = digitsAt(text, 8, 2);
    if (!year || !month || !dayOfMonth)
        return std::nullopt;
    DateTime moment{QDate(*year, *month, *dayOfMonth), QTime(0, 0)};
    if (text.size() == 23) {
        const auto hour = digitsAt(text, 11, 2);
        const auto minute = digitsAt(text, 14, 2);
        const auto second = digitsAt(text, 17, 2);
        const auto thousandth = digitsAt(text, 20, 3);
        if (text[10] != ' ' || text[13] != ':' || text[16] != ':' || text[19] != '.' || !hour || !minute ||
            !second || !thousandth)
            return std::nullopt;
        moment.time = QTime(*hour, *minute, *second, *thousandth);
        if (*thousandth % 10 != 0 && *thousandth % 10 != 3 && *thousandth % 10 != 7)
            return std::nullopt;
    }
    return moment.date.isValid() && moment.time.isValid() ? std::optional(moment) : std::nullopt;
}

bool isStoredDate(std::string_view text) {
    const auto moment = fromStoredDate(text);
    return moment && moment->date >= firstDay() && (text.size() == 10 || moment->time != QTime(0, 0));
}

std::string dateText(const DateTime &moment, int style) {
    const std::string seconds = clock(moment.time);
    const std::string thousandths = '.' + digits(moment.time.msec(), 3);
    switch (style) {
    case 0:
    case 120:
        return isoDay(moment.date) + ' ' + seconds;
    case 121:
        return isoDay(moment.date) + ' ' + seconds + thousandths;
    case 126:
        return isoDay(moment.date) + 'T' + seconds + (moment.time.msec() != 0 ? thousandths : "");
    case 8:
    case 108:
        return seconds;
    default:
        break;
    }
    const bool shortYear = style < 100;
    const std::string_view form = formOfStyle(shortYear ? style + 100 : style);
    if (form.empty())
        unknownStyle(style);
    return written(moment.date, form, shortYear);
}

DateTime dateFromText(std::string_view text, int style) {
    switch (style) {
    case 3:
    case 4:
    case 5:
    case 103:
    case 104:
    case 105:
        return DateReader(text, DateOrder::DayFirst).read();
    default:
        return dateFromText(text);
    }
}

DateTime dayFromText(std::string_view text, int style) {
    if (const auto stored = fromStoredDate(text))
        return {stored->date, QTime(0, 0)};
    const bool dayFirst = (style >= 3 && style <= 5) || (style >= 103 && style <= 105);
    DateReader reader(text, dayFirst ? DateOrder::DayFirst : DateOrder::MonthFirst);
    reader.acceptOnlyDays();
    return {reader.read().date, QTime(0, 0)};
}

} // namespace zel::tsql
