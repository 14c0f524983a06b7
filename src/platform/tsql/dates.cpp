#include "platform/tsql/dates.h"

#include "platform/base/error.h"
#include "platform/tsql/text_rules.h"

#include <array>
#include <cmath>
#include <vector>

namespace zel::tsql {

namespace {

[[noreturn]] void noDate() {
    throw Error(241,
                std::string("Conversion failed when converting date and/or time from character string."));
}

[[noreturn]] void outOfRange() {
    throw Error(242,
                std::string("The conversion of a varchar data type to a datetime data type resulted in an "
                            "out-of-range value."));
}

[[noreturn]] void unknownStyle(int style) {
    throw Error(281, std::to_string(style) +
                         " is not a valid style number when converting between datetime and a "
                         "character string.");
}

const QDate FirstDay(1753, 1, 1);
const QDate DayZero(1900, 1, 1);

enum class Order { MonthFirst, DayFirst };

/// A date text cut into numbers, words and single marks.
struct Piece {
    enum class Kind { Number, Word, Mark } kind;
    int number = 0;
    std::size_t digits = 0;
    std::string word = {}; // lower case; of a mark its one character
};

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

std::vector<Piece> pieces(std::string_view text) {
    std::vector<Piece> result;
    while (!text.empty()) {
        std::size_t length = 1;
        const char front = text.front();
        if (isDigit(front)) {
            while (length < text.size() && isDigit(text[length]))
                ++length;
            if (length > 8)
                noDate();
            result.push_back(
                {Piece::Kind::Number, std::stoi(std::string(text.substr(0, length))), length, {}});
        } else if (isLetter(front)) {
            while (length < text.size() && isLetter(text[length]))
                ++length;
            result.push_back({Piece::Kind::Word, 0, 0, lowerCased(text.substr(0, length))});
        } else if (front != ' ') {
            result.push_back({Piece::Kind::Mark, 0, 0, std::string(1, front)});
        }
        text.remove_prefix(length);
    }
    return result;
}

int monthOfName(const std::string &word) {
    static constexpr std::array<std::string_view, 12> Names{"january",   "february", "march",    "april",
                                                            "may",       "june",     "july",     "august",
                                                            "september", "october",  "november", "december"};
    for (std::size_t i = 0; i < Names.size(); ++i) {
        if (word == Names[i] || word == Names[i].substr(0, 3))
            return int(i) + 1;
    }
    return 0;
}

int fullYear(const Piece &piece) {
    if (piece.digits > 4)
        noDate();
    if (piece.digits > 2)
        return piece.number;
    return piece.number + (piece.number < 50 ? 2000 : 1900);
}

QDate existing(int year, int month, int day) {
    const QDate date(year, month, day);
    if (!date.isValid() || date < FirstDay || year > 9999)
        outOfRange();
    return date;
}

/// Reads the pieces of one text, the date first or the time first.
class DateReader {
public:
    DateReader(std::vector<Piece> all, Order order) : m_pieces(std::move(all)), m_order(order) {}
    DateTime read();

private:
    [[nodiscard]] const Piece *peek(std::size_t ahead = 0) const {
        return m_at + ahead < m_pieces.size() ? &m_pieces[m_at + ahead] : nullptr;
    }
    [[nodiscard]] bool isMark(std::string_view marks, std::size_t ahead = 0) const {
        const Piece *piece = peek(ahead);
        return piece != nullptr && piece->kind == Piece::Kind::Mark &&
               marks.find(piece->word) != std::string_view::npos;
    }
    [[nodiscard]] bool isHalfOfDay(std::size_t ahead) const {
        const Piece *piece = peek(ahead);
        return piece != nullptr && piece->kind == Piece::Kind::Word &&
               (piece->word == "am" || piece->word == "pm");
    }
    [[nodiscard]] bool isTimeAhead() const {
        return peek() != nullptr && peek()->kind == Piece::Kind::Number && (isMark(":", 1) || isHalfOfDay(1));
    }
    Piece number() {
        const Piece *piece = peek();
        if (piece == nullptr || piece->kind != Piece::Kind::Number)
            noDate();
        ++m_at;
        return *piece;
    }
    int timePart(std::size_t mostDigits = 2) {
        const Piece part = number();
        if (part.digits > mostDigits)
            noDate();
        return part.number;
    }
    QTime time();
    QDate date();
    QDate numericDate();
    QDate namedDate();
    QDate joinedDate(const Piece &digits) const;
    [[nodiscard]] QDate ordered(const Piece &first, const Piece &second, const Piece &third) const;

    std::vector<Piece> m_pieces;
    std::size_t m_at = 0;
    Order m_order;
};

DateTime DateReader::read() {
    DateTime moment{DayZero, QTime(0, 0)};
    const bool timeFirst = isTimeAhead();
    if (timeFirst)
        moment.time = time();
    if (peek() != nullptr)
        moment.date = date();
    if (!timeFirst && peek() != nullptr) {
        if (peek()->kind == Piece::Kind::Word && peek()->word == "t")
            ++m_at;
        moment.time = time();
    }
    if (peek() != nullptr)
        noDate();
    return moment;
}

QTime DateReader::time() {
    int hour = timePart();
    int minute = 0;
    int second = 0;
    double thousandths = 0;
    if (isMark(":")) {
        ++m_at;
        minute = timePart();
        if (isMark(":")) {
            ++m_at;
            second = timePart();
            if (isMark(".") || isMark(":")) {
                const bool fraction = isMark(".");
                ++m_at;
                const Piece part = number();
                if (part.digits > 3)
                    noDate();
                thousandths =
                    fraction ? part.number * std::pow(10.0, 3.0 - double(part.digits)) : part.number;
            }
        }
    }
    if (isHalfOfDay(0)) {
        if (hour < 1 || hour > 12)
            noDate();
        hour = hour % 12 + (peek()->word == "pm" ? 12 : 0);
        ++m_at;
    }
    if (hour > 23 || minute > 59 || second > 59)
        outOfRange();
    // A date-time counts in three-hundredths of a second.
    const auto ticks = std::min(std::lround(thousandths * 0.3), 299L);
    return {hour, minute, second, int(std::lround(double(ticks) * 10.0 / 3.0))};
}

QDate DateReader::date() {
    const Piece *first = peek();
    if (first->kind == Piece::Kind::Word)
        return namedDate();
    if (first->kind != Piece::Kind::Number)
        noDate();
    const Piece *second = peek(1);
    if (isMark("-/.", 1))
        return numericDate();
    if (second != nullptr && second->kind == Piece::Kind::Word && monthOfName(second->word) != 0)
        return namedDate();
    ++m_at;
    return joinedDate(*first);
}

QDate DateReader::joinedDate(const Piece &digits) const {
    const int number = digits.number;
    switch (digits.digits) {
    case 4:
        return existing(number, 1, 1);
    case 6: {
        const int year = number / 10000;
        return existing(year + (year < 50 ? 2000 : 1900), number / 100 % 100, number % 100);
    }
    case 8:
        return existing(number / 10000, number / 100 % 100, number % 100);
    default:
        noDate();
    }
}

QDate DateReader::numericDate() {
    const Piece first = number();
    ++m_at;
    if (peek() != nullptr && peek()->kind == Piece::Kind::Word) { // 5-Mar-2024
        --m_at;
        m_pieces.erase(m_pieces.begin() + std::ptrdiff_t(m_at));
        --m_at;
        return namedDate();
    }
    const Piece second = number();
    if (!isMark("-/."))
        noDate();
    ++m_at;
    const Piece third = number();
    return ordered(first, second, third);
}

QDate DateReader::ordered(const Piece &first, const Piece &second, const Piece &third) const {
    if (first.digits > 2 && second.digits <= 2 && third.digits <= 2)
        return existing(fullYear(first), second.number, third.number);
    if (first.digits > 2 || second.digits > 2)
        noDate();
    const int year = fullYear(third);
    return m_order == Order::MonthFirst ? existing(year, first.number, second.number)
                                        : existing(year, second.number, first.number);
}

/// A month by its name with one or two numbers around it: the one with more than two digits is the year, else
/// the last; without a day it is the first.
QDate DateReader::namedDate() {
    int month = 0;
    std::vector<Piece> numbers;
    while (const Piece *piece = peek()) {
        if (isTimeAhead() && !(numbers.empty() && month == 0))
            break;
        if (piece->kind == Piece::Kind::Word && month == 0 && monthOfName(piece->word) != 0)
            month = monthOfName(piece->word);
        else if (piece->kind == Piece::Kind::Number && numbers.size() < 2)
            numbers.push_back(*piece);
        else if (!isMark(",-./"))
            break;
        ++m_at;
    }
    if (month == 0 || numbers.empty())
        noDate();
    if (numbers.size() == 1)
        return existing(fullYear(numbers[0]), month, 1);
    const bool yearFirst = numbers[0].digits > 2;
    const Piece &year = numbers[yearFirst ? 0 : 1];
    const Piece &day = numbers[yearFirst ? 1 : 0];
    if (day.digits > 2)
        noDate();
    return existing(fullYear(year), month, day.number);
}

DateTime read(std::string_view text, Order order) {
    return DateReader(pieces(text), order).read();
}

std::string digits(int number, std::size_t width) {
    std::string text = std::to_string(number);
    return text.size() < width ? std::string(width - text.size(), '0') + text : text;
}

std::string day(QDate date, const char *form) {
    return date.toString(QString::fromLatin1(form)).toStdString();
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
        if (!isDigit(c))
            return std::nullopt;
        number = number * 10 + (c - '0');
    }
    return number;
}

} // namespace

DateTime dateFromText(std::string_view text) {
    if (const auto stored = fromStoredDate(text); stored && stored->date >= FirstDay)
        return *stored;
    return read(text, Order::MonthFirst);
}

DateTime dateFromFieldText(std::string_view text) {
    const bool dayFirst = text.size() >= 10 && text[2] == '/' && text[5] == '/' && digitsAt(text, 0, 2) &&
                          digitsAt(text, 3, 2) && digitsAt(text, 6, 4) &&
                          (text.size() == 10 || text[10] == ' ');
    return dayFirst ? read(text, Order::DayFirst) : dateFromText(text);
}

DateTime dateFromDays(double days) {
    const double whole = std::floor(days);
    if (!(whole >= double(DayZero.daysTo(FirstDay)) && whole <= double(DayZero.daysTo(QDate(9999, 12, 31)))))
        throw Error(8115,
                    std::string("Arithmetic overflow error converting expression to data type datetime."));
    const auto ticks = std::llround((days - whole) * 24 * 60 * 60 * 300);
    const auto thousandths = std::llround(double(ticks) * 10.0 / 3.0);
    if (thousandths >= 86'400'000)
        return {DayZero.addDays(std::llround(whole) + 1), QTime(0, 0)};
    return {DayZero.addDays(std::llround(whole)), QTime::fromMSecsSinceStartOfDay(int(thousandths))};
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

std::string dateText(const DateTime &moment) {
    return dateText(moment, 120);
}

std::string dateText(const DateTime &moment, int style) {
    switch (style) {
    case 101:
        return day(moment.date, "MM/dd/yyyy");
    case 103:
        return day(moment.date, "dd/MM/yyyy");
    case 104:
        return day(moment.date, "dd.MM.yyyy");
    case 105:
        return day(moment.date, "dd-MM-yyyy");
    case 108:
        return clock(moment.time);
    case 112:
        return day(moment.date, "yyyyMMdd");
    case 120:
        return isoDay(moment.date) + ' ' + clock(moment.time);
    case 121:
        return isoDay(moment.date) + ' ' + clock(moment.time) + '.' + digits(moment.time.msec(), 3);
    default:
        unknownStyle(style);
    }
}

DateTime dateFromText(std::string_view text, int style) {
    switch (style) {
    case 103:
    case 104:
    case 105:
        return read(text, Order::DayFirst);
    case 101:
    case 112:
    case 120:
    case 121:
        return read(text, Order::MonthFirst);
    default:
        unknownStyle(style);
    }
}

} // namespace zel::tsql
