#pragma once

#include <QString>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zel {

/// Statement text built by concatenation that remembers which pieces are not the program's own literals.
/// What reads the text (a statement's or a selection formula's lexer) checks each such piece by its place:
/// it must lie inside one token. The text is UTF-8.
///
///     "select * from tblSession where SessionName like '%"_sql + txt_s_value->text() + "%'"
class Sql {
public:
    /// A foreign piece: bytes [begin, end) of the text. An empty piece has begin == end.
    struct Piece {
        std::size_t begin;
        std::size_t end;
    };

    Sql() = default;
    template <std::size_t N>
    Sql(const char (&literal)[N]) : m_text(literal, N - 1) {}
    /// Text of the program's own that is not a literal at the place of use: a row of a table of statements,
    /// a stored procedure's body, a schema file. Never typed or stored data.
    [[nodiscard]] static Sql trusted(std::string_view text) {
        Sql sql;
        sql.m_text = text;
        return sql;
    }
    /// A whole statement that a person typed (zeldb sql): the person is its author, so nothing is foreign.
    [[nodiscard]] static Sql authored(std::string_view text) { return trusted(text); }

    Sql &operator+=(const Sql &other);
    Sql &operator+=(const QString &foreign) { return append(foreign.toUtf8().toStdString()); }
    Sql &operator+=(std::int64_t number) { return append(std::to_string(number)); }

    friend Sql operator+(Sql left, const Sql &right) { return left += right; }
    friend Sql operator+(Sql left, const QString &right) { return left += right; }
    template <std::size_t N>
    friend Sql operator+(Sql left, const char (&right)[N]) {
        left.m_text.append(right, N - 1);
        return left;
    }
    friend Sql operator+(Sql left, std::int64_t right) { return left += right; }
    friend Sql operator+(Sql left, int right) { return left += std::int64_t(right); }

    [[nodiscard]] const std::string &text() const { return m_text; }
    [[nodiscard]] const std::vector<Piece> &pieces() const { return m_pieces; }

private:
    Sql &append(const std::string &foreign);

    std::string m_text;
    std::vector<Piece> m_pieces;
};

[[nodiscard]] inline Sql operator""_sql(const char *literal, std::size_t length) {
    return Sql::trusted({literal, length});
}

} // namespace zel
