#pragma once

#include <QString>

#include <algorithm>
#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace zel {

class Sql;

/// Text that stands in the program's source: only the compiler makes one, so that no typed and no stored data
/// can become one. Tables of data hold it beside the rest of their rows.
class Literal {
public:
    template <std::size_t N>
    consteval Literal(const char (&text)[N]) : m_text(text, N - 1) {}

    [[nodiscard]] constexpr std::string_view text() const { return m_text; }
    /// What stands before and behind the first `mark`; all of it and nothing when it has none.
    [[nodiscard]] constexpr Literal before(char mark) const { return Literal(m_text.substr(0, at(mark))); }
    [[nodiscard]] constexpr Literal behind(char mark) const {
        return Literal(m_text.substr(std::min(at(mark) + 1, m_text.size())));
    }

private:
    friend consteval Sql operator""_sql(const char *literal, std::size_t length);
    constexpr explicit Literal(std::string_view text) : m_text(text) {}
    [[nodiscard]] constexpr std::size_t at(char mark) const {
        return std::min(m_text.find(mark), m_text.size());
    }

    std::string_view m_text;
};

/// A foreign piece that nobody may read again: it stands in no error's description.
struct Secret {
    const QString &typed;
};
[[nodiscard]] inline Secret secret(const QString &typed) {
    return {typed};
}

/// Statement text built by concatenation that remembers which pieces are not the program's own literals.
/// What reads the text (a statement's or a formula's lexer) checks each such piece by its place: it must lie
/// inside one token. The text is UTF-8.
///
///     "select * from tblSession where SessionName like '%"_sql + txt_s_value->text() + "%'"
class Sql {
public:
    /// A foreign piece: bytes [begin, end) of the text. An empty piece has begin == end.
    struct Piece {
        std::size_t begin = 0;
        std::size_t end = 0;
        bool secret = false;
    };

    constexpr Sql() = default;
    template <std::size_t N>
    consteval Sql(const char (&literal)[N]) : m_literal(literal, N - 1) {}
    constexpr Sql(Literal literal) : m_literal(literal.text()) {}
    Sql(const Sql &) = default; // what a destructor takes away is said again
    Sql(Sql &&) noexcept = default;
    Sql &operator=(const Sql &) = default;
    Sql &operator=(Sql &&) noexcept = default;
    /// Wipes the memory of a text with a secret piece.
    constexpr ~Sql() {
        if (!m_pieces.empty())
            wipe();
    }

    /// A text whose author is no user of a screen: a script, a definition's formula, a statement that a
    /// person typed as such (zeldb sql). Never a part that was typed into a box or read from a table.
    [[nodiscard]] static Sql trusted(std::string_view text);
    /// A name of a table or a column: letters, digits, _ # $ and points; 102 for anything else.
    [[nodiscard]] static Sql name(const QString &text);

    Sql &operator+=(const Sql &other);
    Sql &operator+=(const std::same_as<QString> auto &foreign) {
        return append(foreign.toStdString(), false);
    }
    Sql &operator+=(const Secret &foreign) { return append(foreign.typed.toStdString(), true); }
    Sql &operator+=(std::int64_t number) { return append(std::to_string(number), false); }

    friend Sql operator+(Sql left, const Sql &right) { return std::move(left += right); }
    friend Sql operator+(Sql left, const std::same_as<QString> auto &right) {
        return std::move(left += right);
    }
    friend Sql operator+(Sql left, const Secret &right) { return std::move(left += right); }
    friend Sql operator+(Sql left, std::int64_t right) { return std::move(left += right); }
    friend Sql operator+(Sql left, int right) { return std::move(left += std::int64_t(right)); }

    [[nodiscard]] constexpr std::string_view text() const {
        return m_built.empty() ? m_literal : std::string_view(m_built.data(), m_built.size());
    }
    /// In the order of the text.
    [[nodiscard]] const std::vector<Piece> &pieces() const { return m_pieces; }

private:
    Sql &append(std::string foreign, bool secret);
    void add(std::string_view text);
    void wipe() noexcept;

    std::string_view m_literal; ///< the text while it is one literal
    std::vector<char> m_built;  ///< else
    std::vector<Piece> m_pieces;
};

/// Whether a literal of the text, from its opening quote `open` to its closing one `close`, has a pair of
/// quotes that the piece takes apart: one of the two inside it and the other outside.
[[nodiscard]] bool takesPairApart(const Sql::Piece &piece, std::string_view text, std::size_t open,
                                  std::size_t close);

[[nodiscard]] consteval Sql operator""_sql(const char *literal, std::size_t length) {
    return Literal(std::string_view(literal, length));
}

} // namespace zel
