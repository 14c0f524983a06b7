#pragma once

#include "platform/base/value.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace zel::tsql {

inline constexpr std::array<std::string_view, 12> MonthNames{"January",   "February", "March",    "April",
                                                             "May",       "June",     "July",     "August",
                                                             "September", "October",  "November", "December"};

/// The range of date-times begins here, and their count of days at the second.
[[nodiscard]] inline QDate firstDay() {
    return {1753, 1, 1};
}
[[nodiscard]] inline QDate dayZero() {
    return {1900, 1, 1};
}

enum class DateOrder { MonthFirst, DayFirst };

/// Reads one date text, the date first or the time first.
class DateReader {
public:
    DateReader(std::string_view text, DateOrder order);
    /// A text without a day is no date then, and years begin at 1.
    void acceptOnlyDays() { m_onlyDays = true; }
    DateTime read();

private:
    /// A date text cut into numbers, words and single marks.
    struct Piece {
        enum class Kind { Number, Word, Mark } kind;
        int number = 0;
        std::size_t digits = 0;
        std::string word = {}; // lower case; of a mark its one character
    };

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
    static int fullYear(const Piece &piece);
    Piece number();
    int timePart(std::size_t mostDigits = 2);
    [[nodiscard]] QDate existing(int year, int month, int day) const;
    QTime time();
    QDate date();
    QDate numericDate();
    QDate namedDate();
    [[nodiscard]] QDate joinedDate(const Piece &digits) const;
    [[nodiscard]] QDate ordered(const Piece &first, const Piece &second, const Piece &third) const;

    std::vector<Piece> m_pieces;
    std::size_t m_at = 0;
    DateOrder m_order;
    bool m_onlyDays = false;
};

} // namespace zel::tsql
