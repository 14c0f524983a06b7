#include "platform/tsql/text/dates.h"

#include "platform/base/error.h"

#include <array>

namespace zel::tsql {

namespace {

constexpr std::array<std::string_view, 12> ShortMonths{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                       "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
constexpr int FirstYear = 1753;

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
            text += ShortMonths[std::size_t(date.month() - 1)];
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

std::optional<int> digitsAt(std::string_view text, std::size_t at, std::size_t count) {
    int number = 0;
    for (const char c : text.substr(at, count)) {
        if (c < '0' || c > '9')
            return std::nullopt;
        number = number * 10 + (c - '0');
    }
    return number;
}

DateTime momentOf(const DateReading &reading) {
    if (reading.error != 0)
        throwDateError(reading.error);
    return fromStoredDate(reading.date.text()).value_or(DateTime{});
}

} // namespace

void throwDateError(int number) {
    switch (number) {
    case 241:
        throw Error(number, std::string("Conversion failed when converting date and/or time from character "
                                        "string."));
    case 242:
        throw Error(number,
                    std::string("The conversion of a varchar data type to a datetime data type resulted "
                                "in an out-of-range value."));
    default:
        throw Error(number, std::string("Arithmetic overflow error converting expression to data type "
                                        "datetime."));
    }
}

DateTime dateFromText(std::string_view text, DateTarget target) {
    return momentOf(parseDate(text, target));
}

std::string storedDate(const DateTime &moment) {
    return std::string(storedDate(moment.date.year(), moment.date.month(), moment.date.day(),
                                  moment.time.hour(), moment.time.minute(), moment.time.second(),
                                  moment.time.msec())
                           .text());
}

std::optional<DateTime> fromStoredDate(std::string_view text) {
    if ((text.size() != 10 && text.size() != 23) || text[4] != '-' || text[7] != '-')
        return std::nullopt;
    const auto year = digitsAt(text, 0, 4);
    const auto month = digitsAt(text, 5, 2);
    const auto day = digitsAt(text, 8, 2);
    if (!year || !month || !day)
        return std::nullopt;
    DateTime moment{QDate(*year, *month, *day), QTime(0, 0)};
    if (text.size() == 23) {
        const auto hour = digitsAt(text, 11, 2);
        const auto minute = digitsAt(text, 14, 2);
        const auto second = digitsAt(text, 17, 2);
        const auto thousandth = digitsAt(text, 20, 3);
        if (text[10] != ' ' || text[13] != ':' || text[16] != ':' || text[19] != '.' || !hour || !minute ||
            !second || !thousandth)
            return std::nullopt;
        moment.time = QTime(*hour, *minute, *second, *thousandth);
    }
    return moment.date.isValid() && moment.time.isValid() ? std::optional(moment) : std::nullopt;
}

bool isStoredDate(std::string_view text) {
    const auto moment = fromStoredDate(text);
    return moment && moment->date.year() >= FirstYear && (text.size() == 10 || moment->time != QTime(0, 0));
}

std::string dateText(const DateTime &moment, int style) {
    const QTime &time = moment.time;
    const std::string day = written(moment.date, "y-m-d", false);
    const std::string seconds =
        digits(time.hour(), 2) + ':' + digits(time.minute(), 2) + ':' + digits(time.second(), 2);
    const std::string thousandths = '.' + digits(time.msec(), 3);
    switch (style) {
    case 0:
    case 120:
        return day + ' ' + seconds;
    case 121:
        return day + ' ' + seconds + thousandths;
    case 126:
        return day + 'T' + seconds + (time.msec() != 0 ? thousandths : std::string());
    case 8:
    case 108:
        return seconds;
    default:
        break;
    }
    const bool shortYear = style < 100;
    const std::string_view form = formOfStyle(shortYear ? style + 100 : style);
    if (form.empty())
        throw Error(281, std::to_string(style) +
                             " is not a valid style number when converting from datetime to "
                             "a character string.");
    return written(moment.date, form, shortYear);
}

} // namespace zel::tsql
