#include "platform/tsql/text/date_text.h"

#include <chrono>
#include <cmath>

namespace zel::tsql {

namespace {

constexpr std::array<std::string_view, 12> Months = {"january",   "february", "march",    "april",
                                                     "may",       "june",     "july",     "august",
                                                     "september", "october",  "november", "december"};

constexpr int NotADate = 241;
constexpr int OutOfRange = 242;

struct Reader {
    std::string_view rest;

    [[nodiscard]] bool atEnd() const { return rest.empty(); }
    [[nodiscard]] char peek() const { return rest.empty() ? '\0' : rest.front(); }
    void skipBlanks() {
        while (!rest.empty() && (rest.front() == ' ' || rest.front() == '\t'))
            rest.remove_prefix(1);
    }
    bool take(char c) {
        if (peek() != c)
            return false;
        rest.remove_prefix(1);
        return true;
    }
    /// Digits as a number and their count; count 0 when there are none, more than eight digits stay unread.
    int number(int &digits) {
        int value = 0;
        digits = 0;
        while (digits < 9 && peek() >= '0' && peek() <= '9') {
            value = value * 10 + (peek() - '0');
            rest.remove_prefix(1);
            ++digits;
        }
        return value;
    }
    /// 1 to 12 for a month's name or its first three letters; 0 for anything else.
    int month() {
        std::size_t length = 0;
        while (length < rest.size() && ((rest[length] | 0x20) >= 'a' && (rest[length] | 0x20) <= 'z'))
            ++length;
        for (std::size_t m = 0; m < Months.size() && length >= 3; ++m) {
            if (length != 3 && length != Months[m].size())
                continue;
            std::size_t i = 0;
            while (i < length && char(rest[i] | 0x20) == Months[m][i])
                ++i;
            if (i == length) {
                rest.remove_prefix(length);
                return int(m) + 1;
            }
        }
        return 0;
    }
};

struct Parts {
    int year = 1900;
    int month = 1;
    int day = 1;
    int hour = 0;
    int minute = 0;
    int second = 0;
    int millisecond = 0;
};

int fullYear(int year, int digits) {
    if (digits > 2)
        return year;
    return year < 50 ? 2000 + year : 1900 + year;
}

bool isSeparator(char c) {
    return c == '-' || c == '/' || c == '.';
}

/// Hours have been read already; the reader stands at the ':' or at "am"/"pm".
int readTime(Reader &in, int hour, Parts &parts) {
    int digits = 0;
    parts.hour = hour;
    if (in.take(':')) {
        parts.minute = in.number(digits);
        if (digits < 1 || digits > 2)
            return NotADate;
        if (in.take(':')) {
            parts.second = in.number(digits);
            if (digits < 1 || digits > 2)
                return NotADate;
            if (in.take('.') || in.take(':')) {
                const int fraction = in.number(digits);
                if (digits < 1 || digits > 7)
                    return NotADate;
                double milliseconds = fraction;
                for (int i = digits; i < 3; ++i)
                    milliseconds *= 10;
                for (int i = digits; i > 3; --i)
                    milliseconds /= 10;
                parts.millisecond = int(milliseconds);
            }
        }
    }
    in.skipBlanks();
    const char letter = char(in.peek() | 0x20);
    if ((letter == 'a' || letter == 'p') && in.rest.size() >= 2 && char(in.rest[1] | 0x20) == 'm') {
        if (parts.hour < 1 || parts.hour > 12)
            return OutOfRange;
        parts.hour = parts.hour % 12 + (letter == 'p' ? 12 : 0);
        in.rest.remove_prefix(2);
        in.skipBlanks();
    }
    if (!in.atEnd())
        return NotADate;
    return parts.hour > 23 || parts.minute > 59 || parts.second > 59 ? OutOfRange : 0;
}

/// The date at the reader's place, up to where its time of day may begin.
int readDate(Reader &in, bool dayFirst, Parts &parts, bool &timeAlone) {
    int digits = 0;
    if (const int month = in.month(); month != 0) { // Mon d yyyy
        parts.month = month;
        in.skipBlanks();
        parts.day = in.number(digits);
        if (digits < 1 || digits > 2)
            return NotADate;
        in.take(',');
        in.skipBlanks();
        const int year = in.number(digits);
        parts.year = fullYear(year, digits);
        return digits == 2 || digits == 4 ? 0 : NotADate;
    }
    const int first = in.number(digits);
    if (digits == 0)
        return NotADate;
    const char letter = char(in.peek() | 0x20);
    if (in.peek() == ':' || (digits <= 2 && (letter == 'a' || letter == 'p') && in.rest.size() == 2)) {
        timeAlone = true;
        return digits <= 2 ? readTime(in, first, parts) : NotADate;
    }
    if (digits == 8) { // yyyymmdd
        parts.year = first / 10000;
        parts.month = first / 100 % 100;
        parts.day = first % 100;
        return 0;
    }
    if (isSeparator(in.peek())) {
        const char separator = in.peek();
        in.take(separator);
        int digits2 = 0;
        const int second = in.number(digits2);
        if (digits2 < 1 || digits2 > 2 || !in.take(separator))
            return NotADate;
        int digits3 = 0;
        const int third = in.number(digits3);
        if (digits == 4 && digits3 >= 1 && digits3 <= 2) {
            parts.year = first;
            parts.month = second;
            parts.day = third;
            return 0;
        }
        if (digits > 2 || (digits3 != 2 && digits3 != 4))
            return NotADate;
        parts.month = dayFirst ? second : first;
        parts.day = dayFirst ? first : second;
        parts.year = fullYear(third, digits3);
        return 0;
    }
    if (digits == 4 && in.atEnd()) { // a year alone
        parts.year = first;
        return 0;
    }
    if (digits <= 2) { // d Mon yyyy
        in.skipBlanks();
        parts.day = first;
        parts.month = in.month();
        if (parts.month == 0)
            return NotADate;
        in.take(',');
        in.skipBlanks();
        const int year = in.number(digits);
        parts.year = fullYear(year, digits);
        return digits == 2 || digits == 4 ? 0 : NotADate;
    }
    return NotADate;
}

void put(StoredDate &date, int value, int digits) {
    for (int i = digits - 1; i >= 0; --i) {
        date.characters[date.size + std::size_t(i)] = char('0' + value % 10);
        value /= 10;
    }
    date.size += std::size_t(digits);
}

void put(StoredDate &date, char c) {
    date.characters[date.size++] = c;
}

} // namespace

int daysInMonth(int year, int month) {
    constexpr std::array<int, 13> Days = {0, 31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (month < 1 || month > 12)
        return 0;
    const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    return Days[std::size_t(month)] + (month == 2 && leap ? 1 : 0);
}

StoredDate storedDate(int year, int month, int day, int hour, int minute, int second, int millisecond) {
    StoredDate date;
    put(date, year, 4);
    put(date, '-');
    put(date, month, 2);
    put(date, '-');
    put(date, day, 2);
    if (hour != 0 || minute != 0 || second != 0 || millisecond != 0) {
        put(date, ' ');
        put(date, hour, 2);
        put(date, ':');
        put(date, minute, 2);
        put(date, ':');
        put(date, second, 2);
        put(date, '.');
        put(date, millisecond, 3);
    }
    return date;
}

DateReading parseDate(std::string_view text, DateTarget target, int style) {
    Reader in{text};
    while (!in.rest.empty() && in.rest.back() == ' ')
        in.rest.remove_suffix(1);
    in.skipBlanks();
    Parts parts;
    if (in.atEnd())
        return target == DateTarget::Date ? DateReading{NotADate, {}}
                                          : DateReading{0, storedDate(1900, 1, 1)};

    const int century = style > 100 ? style - 100 : style;
    bool timeAlone = false;
    if (const int error = readDate(in, century >= 3 && century <= 5, parts, timeAlone); error != 0)
        return {error, {}};
    if (timeAlone && target == DateTarget::Date)
        return {NotADate, {}};
    if (!timeAlone && !in.atEnd()) {
        if (!in.take('T') && in.peek() != ' ')
            return {NotADate, {}};
        in.skipBlanks();
        int digits = 0;
        const int hour = in.number(digits);
        if (digits < 1 || digits > 2 || in.atEnd())
            return {NotADate, {}};
        if (const int error = readTime(in, hour, parts); error != 0)
            return {error, {}};
    }
    const int firstYear = target == DateTarget::Date ? 1 : 1753;
    if (parts.year < firstYear || parts.day < 1 || parts.day > daysInMonth(parts.year, parts.month))
        return {OutOfRange, {}};
    if (target == DateTarget::Date)
        return {0, storedDate(parts.year, parts.month, parts.day)};
    return {0, storedDate(parts.year, parts.month, parts.day, parts.hour, parts.minute, parts.second,
                          parts.millisecond)};
}

DateReading dateFromDays(double days, DateTarget target) {
    using namespace std::chrono;
    constexpr double MillisecondsPerDay = 86'400'000.0;
    if (!(days > -53'691.0 && days < 2'958'464.0))
        return {8115, {}};
    const auto whole = std::floor(days);
    auto rest = long(std::llround((days - whole) * MillisecondsPerDay));
    if (target == DateTarget::Date)
        rest = 0;
    const year_month_day date{sys_days{year{1900} / 1 / 1} + std::chrono::days{int(whole)}};
    return {0, storedDate(int(date.year()), int(unsigned(date.month())), int(unsigned(date.day())),
                          int(rest / 3'600'000), int(rest / 60'000 % 60), int(rest / 1000 % 60),
                          int(rest % 1000))};
}

} // namespace zel::tsql
