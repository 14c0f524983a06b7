#include "platform/tsql/text/dates.h"

#include "platform/base/error.h"
#include "platform/tsql/text/names.h"

#include <algorithm>
#include <array>
#include <limits>

namespace zel::tsql {

namespace {

constexpr std::array<std::string_view, 12> Months{"January",   "February", "March",    "April",
                                                  "May",       "June",     "July",     "August",
                                                  "September", "October",  "November", "December"};
constexpr std::array<std::string_view, 7> Weekdays{"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                   "Thursday", "Friday", "Saturday"};

struct Style {
    int number;
    std::string_view form;
};

/// d, m and y are two, two and four digits, Y the last two of the year, e the day with a blank for its zero,
/// b the month's name; h, i, s and f the time of day, H its hour of twelve, p AM or PM.
constexpr Style Styles[] = {
    {0, "b e y H:ip"},     {1, "m/d/Y"},          {2, "Y.m.d"},    {3, "d/m/Y"},
    {4, "d.m.Y"},          {5, "d-m-Y"},          {6, "d b Y"},    {7, "b d, Y"},
    {8, "h:i:s"},          {9, "b e y H:i:s:fp"}, {10, "m-d-Y"},   {11, "Y/m/d"},
    {12, "Ymd"},           {13, "d b y h:i:s:f"}, {14, "h:i:s:f"}, {20, "y-m-d h:i:s"},
    {21, "y-m-d h:i:s.f"}, {101, "m/d/y"},        {102, "y.m.d"},  {103, "d/m/y"},
    {104, "d.m.y"},        {105, "d-m-y"},        {106, "d b y"},  {107, "b d, y"},
    {110, "m-d-y"},        {111, "y/m/d"},        {112, "ymd"},    {126, "y-m-dTh:i:s.f"},
};

/// What the styles above 100 that always show the century share with those below.
int styleBelow(int style) {
    const bool twins = style == 100 || style == 108 || style == 109 || style == 113 || style == 114 ||
                       style == 120 || style == 121;
    return twins ? style - 100 : style;
}

struct PartWord {
    std::string_view word;
    DatePart part;
};
constexpr PartWord PartWords[] = {
    {"day", DatePart::Day},
    {"dd", DatePart::Day},
    {"d", DatePart::Day},
    {"month", DatePart::Month},
    {"mm", DatePart::Month},
    {"m", DatePart::Month},
    {"year", DatePart::Year},
    {"yy", DatePart::Year},
    {"yyyy", DatePart::Year},
    {"quarter", DatePart::Quarter},
    {"qq", DatePart::Quarter},
    {"q", DatePart::Quarter},
    {"week", DatePart::Week},
    {"wk", DatePart::Week},
    {"ww", DatePart::Week},
    {"weekday", DatePart::Weekday},
    {"dw", DatePart::Weekday},
    {"w", DatePart::Weekday},
    {"hour", DatePart::Hour},
    {"hh", DatePart::Hour},
    {"minute", DatePart::Minute},
    {"mi", DatePart::Minute},
    {"n", DatePart::Minute},
    {"second", DatePart::Second},
    {"ss", DatePart::Second},
    {"s", DatePart::Second},
    {"millisecond", DatePart::Millisecond},
    {"ms", DatePart::Millisecond},
    {"dayofyear", DatePart::DayOfYear},
    {"dy", DatePart::DayOfYear},
    {"y", DatePart::DayOfYear},
    {"iso_week", DatePart::IsoWeek},
    {"isowk", DatePart::IsoWeek},
    {"isoww", DatePart::IsoWeek},
};

std::string digits(int number, std::size_t width, char filling = '0') {
    const std::string text = std::to_string(number);
    return std::string(text.size() < width ? width - text.size() : 0, filling) + text;
}

std::string written(const DateTime &moment, char part) {
    const QDate date = moment.date;
    const QTime time = moment.time;
    switch (part) {
    case 'd':
        return digits(date.day(), 2);
    case 'e':
        return digits(date.day(), 2, ' ');
    case 'm':
        return digits(date.month(), 2);
    case 'b':
        return std::string(Months[std::size_t(date.month() - 1)].substr(0, 3));
    case 'y':
        return digits(date.year(), 4);
    case 'Y':
        return digits(date.year() % 100, 2);
    case 'h':
        return digits(time.hour(), 2);
    case 'H':
        return digits((time.hour() + 11) % 12 + 1, 2, ' ');
    case 'i':
        return digits(time.minute(), 2);
    case 's':
        return digits(time.second(), 2);
    case 'f':
        return digits(time.msec(), 3);
    case 'p':
        return time.hour() < 12 ? "AM" : "PM";
    default:
        return {part};
    }
}

std::string_view formOf(int style, const DateTime &moment, bool dateOnly) {
    const auto *found = std::ranges::find(Styles, styleBelow(style), &Style::number);
    std::string_view form = found == std::end(Styles) ? std::string_view() : found->form;
    if (style == 126 && moment.time.msec() == 0)
        form = form.substr(0, form.find('.'));
    if (dateOnly) {
        form = form.substr(0, form.find_first_of("hH"));
        while (form.ends_with(' ') || form.ends_with('T'))
            form.remove_suffix(1);
    }
    if (form.empty())
        throw Error(281, std::to_string(style) +
                             " is not a valid style number when converting from datetime to "
                             "a character string.");
    return form;
}

/// Sunday is 0.
int weekday(QDate date) {
    return date.dayOfWeek() % 7;
}

std::int64_t monthsOf(QDate date) {
    return std::int64_t(date.year()) * 12 + date.month() - 1;
}

/// Ticks of a part of the time of day; a millisecond has none of its own.
std::int64_t ticksOf(DatePart part) {
    return TicksPerSecond * (part == DatePart::Hour ? 3600 : part == DatePart::Minute ? 60 : 1);
}

std::int64_t divided(std::int64_t number, std::int64_t divisor) // towards the past
{
    return number / divisor - (number % divisor < 0 ? 1 : 0);
}

[[noreturn]] void addedTooFar() {
    throw Error(517, std::string("Adding a value to a 'datetime' column caused an overflow."));
}

DateTime inRange(std::optional<DateTime> moment) {
    if (!moment)
        addedTooFar();
    return *moment;
}

DateTime monthsAdded(const DateTime &moment, std::int64_t months) {
    constexpr std::int64_t Enough = 12 * 10'000;
    if (months > Enough || months < -Enough)
        addedTooFar();
    const QDate date = moment.date.addMonths(int(months));
    if (date.year() < 1753 || date.year() > 9999)
        addedTooFar();
    return {date, moment.time};
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

bool isStoredDate(std::string_view text) {
    const auto moment =
        text.size() == 10 || (text.size() == 23 && text[10] == ' ') ? fromStoredDate(text) : std::nullopt;
    if (!moment || moment->date.year() < 1753)
        return false;
    const char tick = text.back();
    return text.size() == 10 || (moment->time != QTime(0, 0) && (tick == '0' || tick == '3' || tick == '7'));
}

std::string dateText(const DateTime &moment, int style, bool dateOnly) {
    std::string text;
    for (const char part : formOf(style != NoStyle ? style : dateOnly ? 21 : 0, moment, dateOnly))
        text += written(moment, part);
    return text;
}

std::optional<DatePart> datePart(std::string_view word) {
    const auto *found =
        std::ranges::find_if(PartWords, [&](const PartWord &one) { return sameName(one.word, word); });
    return found == std::end(PartWords) ? std::nullopt : std::optional(found->part);
}

DateTime dateAdded(const DateTime &moment, DatePart part, std::int64_t count) {
    switch (part) {
    case DatePart::Year:
        return monthsAdded(moment, count * 12);
    case DatePart::Quarter:
        return monthsAdded(moment, count * 3);
    case DatePart::Month:
        return monthsAdded(moment, count);
    case DatePart::Week:
    case DatePart::IsoWeek:
        return inRange(fromTicks(zel::ticksOf(moment) + count * 7 * TicksPerDay));
    case DatePart::DayOfYear:
    case DatePart::Day:
    case DatePart::Weekday:
        return inRange(fromTicks(zel::ticksOf(moment) + count * TicksPerDay));
    case DatePart::Millisecond:
        return inRange(fromTicks(zel::ticksOf(moment) + divided(count * 3 + 5, 10)));
    default:
        return inRange(fromTicks(zel::ticksOf(moment) + count * ticksOf(part)));
    }
}

std::int64_t dateDifference(DatePart part, const DateTime &from, const DateTime &to) {
    const std::int64_t days = from.date.daysTo(to.date);
    const std::int64_t months = monthsOf(to.date) - monthsOf(from.date);
    std::int64_t difference = days;
    switch (part) {
    case DatePart::Year:
        difference = to.date.year() - from.date.year();
        break;
    case DatePart::Quarter:
        difference = monthsOf(to.date) / 3 - monthsOf(from.date) / 3;
        break;
    case DatePart::Month:
        difference = months;
        break;
    case DatePart::Week:
    case DatePart::IsoWeek:
        difference = (days + weekday(from.date) - weekday(to.date)) / 7;
        break;
    case DatePart::DayOfYear:
    case DatePart::Day:
    case DatePart::Weekday:
        break;
    case DatePart::Millisecond:
        difference = days * 86'400'000 + from.time.msecsTo(to.time);
        break;
    default:
        difference = divided(zel::ticksOf(to), ticksOf(part)) - divided(zel::ticksOf(from), ticksOf(part));
        break;
    }
    if (difference != std::int32_t(difference))
        throw Error(
            535,
            std::string("The datediff function resulted in an overflow. The number of dateparts separating "
                        "two date/time instances is too large."));
    return difference;
}

int partOf(const DateTime &moment, DatePart part) {
    const QDate date = moment.date;
    switch (part) {
    case DatePart::Year:
        return date.year();
    case DatePart::Quarter:
        return (date.month() + 2) / 3;
    case DatePart::Month:
        return date.month();
    case DatePart::DayOfYear:
        return date.dayOfYear();
    case DatePart::Day:
        return date.day();
    case DatePart::Week:
        return (date.dayOfYear() + weekday(QDate(date.year(), 1, 1)) - 1) / 7 + 1;
    case DatePart::IsoWeek:
        return date.weekNumber();
    case DatePart::Weekday:
        return weekday(date) + 1;
    case DatePart::Hour:
        return moment.time.hour();
    case DatePart::Minute:
        return moment.time.minute();
    case DatePart::Second:
        return moment.time.second();
    case DatePart::Millisecond:
        return moment.time.msec();
    }
    return 0;
}

std::string partName(const DateTime &moment, DatePart part) {
    const int number = partOf(moment, part);
    if (part == DatePart::Month)
        return std::string(Months[std::size_t(number - 1)]);
    if (part == DatePart::Weekday)
        return std::string(Weekdays[std::size_t(number - 1)]);
    return std::to_string(number);
}

DateTime dateSum(const DateTime &left, const DateTime &right, bool subtract) {
    const std::int64_t further = zel::ticksOf(right);
    const auto sum = fromTicks(zel::ticksOf(left) + (subtract ? -further : further));
    if (!sum)
        throwDateError(8115);
    return *sum;
}

} // namespace zel::tsql
