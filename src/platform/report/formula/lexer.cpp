#include "platform/report/formula/lexer.h"

#include "platform/base/decimal.h"
#include "platform/report/formula/expression.h"

#include <algorithm>
#include <array>

namespace zel::report {

namespace {

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

class Lexer {
public:
    explicit Lexer(const Sql &formula) : m_text(formula.text()), m_pieces(formula.pieces()) {}

    std::vector<Token> run() {
        if (const auto zero = m_text.find('\0'); zero != std::string_view::npos)
            throw FormulaError(102, QStringLiteral("Incorrect syntax near a zero character."), zero);
        std::vector<Token> all;
        while (skipBlanks(), m_at < m_text.size()) {
            Token token;
            token.begin = m_at;
            read(token);
            token.end = m_at;
            all.push_back(std::move(token));
        }
        all.push_back({TokenKind::End, {}, m_text.size(), m_text.size()});
        return all;
    }

private:
    void skipBlanks() {
        while (m_at < m_text.size() && isBlank(m_text[m_at]))
            ++m_at;
    }

    void read(Token &token) {
        const char c = m_text[m_at];
        if (c == '\'' || c == '"')
            return readText(token, c);
        if (c == '{')
            return readEnclosed(token, TokenKind::Field, '}',
                                QStringLiteral("The field has no closing brace."));
        if (c == '#')
            return readEnclosed(token, TokenKind::Date, '#', QStringLiteral("The date has no closing #."));
        if (isDigit(c) || (c == '.' && m_at + 1 < m_text.size() && isDigit(m_text[m_at + 1])))
            return readNumber(token);
        if (isLetter(c))
            return readWord(token);
        readSymbol(token);
    }

    void readText(Token &token, char quote) {
        const auto isQuote = [&](std::size_t at) {
            return at < m_text.size() && m_text[at] == quote && (quote != '"' || !isForeign(at));
        };
        token.kind = TokenKind::Text;
        for (++m_at; m_at < m_text.size(); ++m_at) {
            if (isQuote(m_at)) {
                ++m_at;
                if (!isQuote(m_at))
                    return;
            }
            token.text += m_text[m_at];
        }
        throw FormulaError(105, QStringLiteral("Unclosed quotation mark in the formula."), token.begin);
    }

    [[nodiscard]] bool isForeign(std::size_t at) const {
        const auto next =
            std::ranges::partition_point(m_pieces, [&](const Sql::Piece &piece) { return piece.end <= at; });
        return next != m_pieces.end() && next->begin <= at;
    }

    void readEnclosed(Token &token, TokenKind kind, char close, const QString &unclosed) {
        const std::size_t end = m_text.find(close, m_at + 1);
        if (end == std::string::npos)
            throw FormulaError(105, unclosed, token.begin);
        token.kind = kind;
        token.text = std::string(m_text.substr(m_at + 1, end - m_at - 1));
        m_at = end + 1;
    }

    void readNumber(Token &token) {
        token.kind = TokenKind::Number;
        bool point = false;
        for (; m_at < m_text.size(); ++m_at) {
            if (m_text[m_at] == '.' && !point)
                point = true;
            else if (!isDigit(m_text[m_at]))
                break;
        }
        token.text = std::string(m_text.substr(token.begin, m_at - token.begin));
        if (m_at < m_text.size() && (isLetter(m_text[m_at]) || m_text[m_at] == '.'))
            throw FormulaError(102, QStringLiteral("Incorrect syntax: a number ends in letters."), m_at);
    }

    void readWord(Token &token) {
        token.kind = TokenKind::Word;
        for (; m_at < m_text.size() && (isLetter(m_text[m_at]) || isDigit(m_text[m_at])); ++m_at) {
            const char c = m_text[m_at];
            token.text += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
        }
    }

    void readSymbol(Token &token) {
        static constexpr std::array<std::string_view, 13> symbols{"<>", "<=", ">=", "=", "<", ">", "(",
                                                                  ")",  ",",  "+",  "-", "*", "/"};
        token.kind = TokenKind::Symbol;
        const std::string_view rest = m_text.substr(m_at);
        if (rest.front() == '&') {
            token.text = "&";
            ++m_at;
            return;
        }
        const auto *found =
            std::ranges::find_if(symbols, [&](auto symbol) { return rest.starts_with(symbol); });
        if (found == symbols.end())
            throw FormulaError(102, QStringLiteral("Incorrect syntax: this character means nothing here."),
                               m_at);
        token.text = *found;
        m_at += found->size();
    }

    std::string_view m_text;
    const std::vector<Sql::Piece> &m_pieces;
    std::size_t m_at = 0;
};

bool isSignedNumber(std::string_view text) {
    return Decimal::parse(text).has_value();
}

void checkPiece(const Sql::Piece &piece, std::string_view text, const std::vector<Token> &all) {
    const auto within = [&](const Token &token) {
        return (token.kind == TokenKind::Text || token.kind == TokenKind::Date) &&
               token.begin < piece.begin && piece.end < token.end &&
               (text[token.begin] != '\'' || !takesPairApart(piece, text, token.begin, token.end - 1));
    };
    if (std::ranges::any_of(all, within))
        return;
    const std::string_view foreign = text.substr(piece.begin, piece.end - piece.begin);
    if (std::ranges::all_of(foreign, isBlank))
        throw FormulaError(102, QStringLiteral("Incorrect syntax: a number is missing here."), piece.begin);
    const auto touches = [&](const Token &token) {
        return token.begin < piece.end && piece.begin < token.end;
    };
    const bool number = isSignedNumber(foreign) && std::ranges::none_of(all, [&](const Token &token) {
                            return touches(token) && token.kind != TokenKind::Number && token.text != "-" &&
                                   token.text != "+";
                        });
    if (number)
        return;
    const bool word = std::ranges::any_of(
        all, [&](const Token &token) { return token.kind == TokenKind::Word && touches(token); });
    if (word && std::ranges::all_of(foreign, [](char c) { return isLetter(c) || isDigit(c) || isBlank(c); }))
        throw FormulaError(207, QStringLiteral("Invalid name in a number's place."), piece.begin);
    throw FormulaError(102, QStringLiteral("Incorrect syntax: this is neither a number nor inside a text."),
                       piece.begin);
}

} // namespace

std::vector<Token> tokens(const Sql &formula) {
    std::vector<Token> all = Lexer(formula).run();
    for (const Sql::Piece &piece : formula.pieces())
        checkPiece(piece, formula.text(), all);
    return all;
}

} // namespace zel::report
