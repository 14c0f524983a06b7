#include "platform/base/date_text.h"

#include <cmath>

namespace zel {

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
            // Behind a point stands a fraction, behind a colon a count of thousandths.
            const bool fraction = in.take('.');
            if (fraction || in.take(':')) {
                parts.millisecond = in.number(digits);
                if (digits < 1 || digits > 3)
                    return NotADate;
                for (int i = digits; fraction && i < 3; ++i)
                    parts.millisecond *= 10;
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

/// The digits at `text[from, from + length)`; -1 when one of them is no digit.
int digitsAt(std::string_view text, std::size_t from, std::size_t length) {
    int number = 0;
    for (const char c : text.substr(from, length)) {
        if (c < '0' || c > '9')
            return -1;
        number = number * 10 + (c - '0');
    }
    return number;
}

const QDate FirstDay(1900, 1, 1);
constexpr int FirstYear = 1753;
constexpr int LastYear = 9999;

DateReading reading(std::optional<DateTime> moment, int error) {
    return moment ? DateReading{0, storedDate(*moment)} : DateReading{error, {}};
}

} // namespace

std::int64_t ticksOf(const DateTime &moment) {
    const auto thousandths = std::int64_t(QTime(0, 0).msecsTo(moment.time));
    return FirstDay.daysTo(moment.date) * TicksPerDay + (thousandths * 3 + 5) / 10;
}

std::optional<DateTime> fromTicks(std::int64_t ticks) {
    std::int64_t days = ticks / TicksPerDay;
    std::int64_t rest = ticks % TicksPerDay;
    if (rest < 0) {
        --days;
        rest += TicksPerDay;
    }
    constexpr std::int64_t Enough = 4'000'000;
    if (days > Enough || days < -Enough)
        return std::nullopt;
    const QDate date = FirstDay.addDays(days);
    if (date.year() < FirstYear || date.year() > LastYear)
        return std::nullopt;
    return DateTime{date, QTime::fromMSecsSinceStartOfDay(int((rest * 10 + 1) / 3))};
}

StoredDate storedDate(const DateTime &moment) {
    int year = 0;
    int month = 0;
    int day = 0;
    moment.date.getDate(&year, &month, &day);
    StoredDate date;
    put(date, year, 4);
    put(date, '-');
    put(date, month, 2);
    put(date, '-');
    put(date, day, 2);
    const QTime &time = moment.time;
    if (time == QTime(0, 0))
        return date;
    put(date, ' ');
    put(date, time.hour(), 2);
    put(date, ':');
    put(date, time.minute(), 2);
    put(date, ':');
    put(date, time.second(), 2);
    put(date, '.');
    put(date, time.msec(), 3);
    return date;
}

std::optional<DateTime> fromStoredDate(std::string_view text) {
    if (text.size() < 10 || text[4] != '-' || text[7] != '-')
        return std::nullopt;
    const int year = digitsAt(text, 0, 4);
    DateTime moment{QDate(year, digitsAt(text, 5, 2), digitsAt(text, 8, 2)), QTime(0, 0)};
    if (year < 1 || !moment.date.isValid())
        return std::nullopt;
    if (text.size() == 10)
        return moment;
    const bool seconds = text.size() >= 19 && text[16] == ':';
    const bool thousandths = seconds && text.size() >= 23 && text[19] == '.';
    if (text.size() < 16 || (text[10] != ' ' && text[10] != 'T') || text[13] != ':')
        return std::nullopt;
    moment.time = QTime(digitsAt(text, 11, 2), digitsAt(text, 14, 2), seconds ? digitsAt(text, 17, 2) : 0,
                        thousandths ? digitsAt(text, 20, 3) : 0);
    return moment.time.isValid() ? std::optional(moment) : std::nullopt;
}

DateReading parseDate(std::string_view text, DateTarget target, DateOrder order) {
    Reader in{text};
    while (!in.rest.empty() && in.rest.back() == ' ')
        in.rest.remove_suffix(1);
    in.skipBlanks();
    if (in.atEnd())
        return reading(target == DateTarget::Date ? std::nullopt : std::optional(DateTime{FirstDay}),
                       NotADate);
    Parts parts;
    bool timeAlone = false;
    if (const int error = readDate(in, order == DateOrder::DayFirst, parts, timeAlone); error != 0)
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
    const DateTime moment{QDate(parts.year, parts.month, parts.day),
                          QTime(parts.hour, parts.minute, parts.second, parts.millisecond)};
    if (!moment.date.isValid() || parts.year < 1 || parts.year > LastYear)
        return {OutOfRange, {}};
    if (target == DateTarget::Date)
        return {0, storedDate({moment.date, QTime(0, 0)})};
    return reading(fromTicks(ticksOf(moment)), OutOfRange);
}

DateReading dateFromDays(double days, DateTarget target) {
    constexpr double First = -53'690.0;
    constexpr double Behind = 2'958'464.0;
    if (!(days >= First && days < Behind))
        return {8115, {}};
    const auto whole = std::floor(days);
    const auto rest = target == DateTarget::Date ? 0 : std::llround((days - whole) * double(TicksPerDay));
    return reading(fromTicks(std::int64_t(whole) * TicksPerDay + rest), 8115);
}

QString dayText(QDate date) {
    int year = 0;
    int month = 0;
    int day = 0;
    date.getDate(&year, &month, &day);
    if (year < 1000 || year > LastYear)
        return date.toString(QStringLiteral("dd/MM/yyyy"));
    const auto digit = [](int number) { return QChar(static_cast<char16_t>(u'0' + number % 10)); };
    // Without a locale's detours: books show thousands of dates.
    const QChar text[] = {digit(day / 10),    digit(day),        u'/',
                          digit(month / 10),  digit(month),      u'/',
                          digit(year / 1000), digit(year / 100), digit(year / 10),
                          digit(year)};
    return QString(text, std::size(text));
}

} // namespace zel
