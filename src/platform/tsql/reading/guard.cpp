#include "platform/tsql/reading/guard.h"

#include "platform/tsql/reading/failure.h"
#include "platform/tsql/text/names.h"

#include <algorithm>

namespace zel::tsql {

namespace {

using Piece = Sql::Piece;

bool isBlank(char c) {
    return c == ' ' || c == '\t';
}

class Guard {
public:
    Guard(std::string_view source, const std::vector<Token> &tokens) : m_source(source), m_tokens(tokens) {}

    void check(const Piece &piece) const {
        // The first token that ends behind the piece's begin; it is the one around the piece if there is one.
        const auto next = std::partition_point(m_tokens.begin(), m_tokens.end() - 1,
                                               [&](const Token &token) { return token.end <= piece.begin; });
        const auto index = static_cast<std::size_t>(next - m_tokens.begin());
        const Token &token = *next;
        if (token.kind == TokenKind::Text && token.begin < piece.begin)
            return checkInText(piece, token, index);
        checkBare(piece, index);
    }

private:
    [[nodiscard]] std::string_view view(const Token &token) const {
        return m_source.substr(token.begin, token.end - token.begin);
    }

    [[noreturn]] void refuse(const Piece &piece, std::size_t index) const {
        std::string_view text =
            m_source.substr(piece.begin, std::min<std::size_t>(piece.end - piece.begin, 40));
        if (text.empty())
            text = view(m_tokens[index]);
        fail(m_source, piece.begin, 102, "Incorrect syntax near '" + std::string(text) + "'.");
    }

    /// The token's quotes are read as the lexer did, pair by pair: no pair may have one quote inside the
    /// piece and the other outside, and the closing quote is the program's own.
    void checkInText(const Piece &piece, const Token &token, std::size_t index) const {
        const std::size_t open = m_source[token.begin] == '\'' ? token.begin : token.begin + 1;
        const std::size_t close = token.end - 1;
        if (piece.begin <= open || piece.end > close || takesPairApart(piece, m_source, open, close))
            refuse(piece, index);
    }

    void checkBare(const Piece &piece, std::size_t index) const {
        std::size_t begin = piece.begin;
        std::size_t end = piece.end;
        while (begin < end && isBlank(m_source[begin]))
            ++begin;
        while (end > begin && isBlank(m_source[end - 1]))
            --end;
        if (begin == end)
            syntaxError(m_source, m_tokens, index);

        // Whole tokens from here on: a piece that begins or ends within one has grown together with the
        // program's words.
        std::size_t last = index;
        while (m_tokens[last].kind != TokenKind::End && m_tokens[last].end < end)
            ++last;
        if (m_tokens[index].begin < begin || m_tokens[last].end > end ||
            m_tokens[last].kind == TokenKind::End)
            return checkInNumber(piece, index, begin, end);
        const Token &first = m_tokens[index];
        if (first.begin != begin || m_tokens[last].end != end)
            refuse(piece, index); // something in it is no token: a comment
        const bool isPassword = firstArgumentOfPassword(index, last);
        if (isPassword && index == last && first.kind == TokenKind::Word && first.keyword == Keyword::None)
            return;
        if (index == last && first.kind == TokenKind::Word)
            wordInNumbersPlace(first, index);
        const bool hasSign = first.kind == TokenKind::Sign && (first.sign == '-' || first.sign == '+');
        const Token &number = m_tokens[hasSign ? index + 1 : index];
        const bool isNumber = number.kind == TokenKind::Integer || number.kind == TokenKind::Decimal;
        if (!isNumber || last != index + (hasSign ? 1 : 0) ||
            (hasSign && !blanksOnly(first.end, number.begin)))
            refuse(piece, index);
        if (index > 0 && m_tokens[index - 1].end == first.begin && growsWith(m_tokens[index - 1]))
            refuse(piece, index);
        if (end < m_source.size() && m_source[end] == '.')
            refuse(piece, index);
    }

    /// What the program wrote directly before a number is one token with some numbers, and not with others.
    [[nodiscard]] static bool growsWith(const Token &token) {
        return token.kind != TokenKind::Sign || token.sign == '.';
    }

    /// Digits that lie within one number of the program's, whose point is its own.
    void checkInNumber(const Piece &piece, std::size_t index, std::size_t begin, std::size_t end) const {
        const Token &token = m_tokens[index];
        const bool isNumber = token.kind == TokenKind::Integer || token.kind == TokenKind::Decimal;
        const bool isDigits =
            std::all_of(m_source.begin() + std::ptrdiff_t(begin), m_source.begin() + std::ptrdiff_t(end),
                        [](char c) { return c >= '0' && c <= '9'; });
        if (!isNumber || !isDigits || token.begin > begin || token.end < end || begin != piece.begin ||
            end != piece.end)
            refuse(piece, index);
    }

    [[nodiscard]] bool blanksOnly(std::size_t begin, std::size_t end) const {
        return std::all_of(m_source.begin() + std::ptrdiff_t(begin), m_source.begin() + std::ptrdiff_t(end),
                           isBlank);
    }

    [[nodiscard]] bool firstArgumentOfPassword(std::size_t index, std::size_t last) const {
        if (index == 0 || !sameName(view(m_tokens[index - 1]), "sp_password"))
            return false;
        const bool atHead = index == 1 || m_tokens[index - 2].keyword == Keyword::Exec ||
                            m_tokens[index - 2].keyword == Keyword::Execute;
        return atHead && m_tokens[last + 1].sign == ',';
    }

    [[noreturn]] void wordInNumbersPlace(const Token &word, std::size_t index) const {
        if (word.keyword != Keyword::None)
            syntaxError(m_source, m_tokens, index);
        fail(m_source, word.begin, 207, "Invalid column name '" + std::string(view(word)) + "'.");
    }

    std::string_view m_source;
    const std::vector<Token> &m_tokens;
};

} // namespace

void checkPieces(const Sql &text, const std::vector<Token> &tokens) {
    const Guard guard(text.text(), tokens);
    for (const Piece &piece : text.pieces())
        guard.check(piece);
}

void checkPieces(const Sql &text) {
    if (!text.pieces().empty())
        checkPieces(text, tokenize(text.text()));
}

} // namespace zel::tsql
