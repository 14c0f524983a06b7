#include "platform/tsql/date_reader.h"

#include "platform/base/error.h"
#include "platform/tsql/text_rules.h"

#include <algorithm>
#include <cmath>

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

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

int monthOfName(const std::string &word) {
    for (std::size_t i = 0; i < MonthNames.size(); ++i) {
        const std::string name = lowerCased(MonthNames[i]);
        if (word == name || word == name.substr(0, 3))
            return int(i) + 1;
    }
    return 0;
}

} // namespace

DateReader::DateReader(std::string_view text, DateOrder order) : m_order(order) {
    while (!text.empty()) {
        std::size_t length = 1;
        const char front = text.front();
        if (isDigit(front)) {
            while (length < text.size() && isDigit(text[length]))
                ++length;
            if (length > 8)
                noDate();
            m_pieces.push_back(
                {Piece::Kind::Number, std::stoi(std::string(text.substr(0, length))), length, {}});
        } else if (isLetter(front)) {
            while (length < text.size() && isLetter(text[length]))
                ++length;
            m_pieces.push_back({Piece::Kind::Word, 0, 0, lowerCased(text.substr(0, length))});
        } else if (front != ' ') {
            m_pieces.push_back({Piece::Kind::Mark, 0, 0, std::string(1, front)});
        }
        text.remove_prefix(length);
    }
}

int DateReader::fullYear(const Piece &piece) {
    if (piece.digits > 4)
        noDate();
    if (piece.digits > 2)
        return piece.number;
    return piece.number + (piece.number < 50 ? 2000 : 1900);
}

DateReader::Piece DateReader::number() {
    const Piece *piece = peek();
    if (piece == nullptr || piece->kind != Piece::Kind::Number)
        noDate();
    ++m_at;
    return *piece;
}

int DateReader::timePart(std::size_t mostDigits) {
    const Piece part = number();
    if (part.digits > mostDigits)
        noDate();
    return part.number;
}

QDate DateReader::existing(int year, int month, int day) const {
    const QDate date(year, month, day);
    if (!date.isValid() || (!m_onlyDays && date < firstDay()) || year > 9999)
        outOfRange();
    return date;
}

DateTime DateReader::read() {
    DateTime moment{dayZero(), QTime(0, 0)};
    const bool timeFirst = isTimeAhead();
    if (timeFirst)
        moment.time = time();
    if (peek() != nullptr)
        moment.date = date();
    else if (m_onlyDays)
        noDate();
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
    return m_order == DateOrder::MonthFirst ? existing(year, first.number, second.number)
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

} // namespace zel::tsql
