#include "platform/tsql/reading/lexer.h"

#include "platform/tsql/reading/failure.h"

#include <array>
#include <string>

namespace zel::tsql {

namespace {

enum Class : std::uint8_t { Wrong, Blank, WordStart, Digit, At, Punctuation, Quote, DoubleQuote, Bracket };

constexpr auto Classes = [] {
    std::array<Class, 256> table{};
    for (const char c : {' ', '\t', '\r', '\n', '\f', '\v'})
        table[static_cast<unsigned char>(c)] = Blank;
    for (std::size_t letter = 0; letter < 26; ++letter)
        table['a' + letter] = table['A' + letter] = WordStart;
    for (std::size_t c = 0x80; c < 0x100; ++c)
        table[c] = WordStart;
    table['_'] = table['#'] = WordStart;
    for (std::size_t c = '0'; c <= '9'; ++c)
        table[c] = Digit;
    table['@'] = At;
    for (const char c :
         {'(', ')', ',', '.', ';', '=', '<', '>', '!', '+', '-', '*', '/', '%', '&', '|', '^', '~'})
        table[static_cast<unsigned char>(c)] = Punctuation;
    table['\''] = Quote;
    table['"'] = DoubleQuote;
    table['['] = Bracket;
    return table;
}();

Class classOf(char c) {
    return Classes[static_cast<unsigned char>(c)];
}

class Lexer {
public:
    explicit Lexer(std::string_view source) : m_source(source) {}

    std::vector<Token> run() {
        if (const auto zero = m_source.find('\0'); zero != std::string_view::npos)
            fail(m_source, zero, 102, "Incorrect syntax near a zero character.");
        m_tokens.reserve(m_source.size() / 4 + 8);
        while (skipBlanksAndComments())
            readToken();
        add(TokenKind::End, m_at);
        return std::move(m_tokens);
    }

private:
    [[nodiscard]] char at(std::size_t i) const { return i < m_source.size() ? m_source[i] : '\0'; }

    void add(TokenKind kind, std::size_t end, Keyword word = Keyword::None, char sign = '\0') {
        m_tokens.push_back(
            {kind, word, sign, static_cast<std::uint32_t>(m_at), static_cast<std::uint32_t>(end)});
        m_at = end;
    }

    bool skipBlanksAndComments() {
        while (m_at < m_source.size()) {
            if (classOf(m_source[m_at]) == Blank) {
                ++m_at;
            } else if (m_source[m_at] == '-' && at(m_at + 1) == '-') {
                const auto end = m_source.find('\n', m_at);
                m_at = end == std::string_view::npos ? m_source.size() : end + 1;
            } else if (m_source[m_at] == '/' && at(m_at + 1) == '*') {
                skipComment();
            } else {
                return true;
            }
        }
        return false;
    }

    void skipComment() // they nest
    {
        const std::size_t begin = m_at;
        int depth = 0;
        do {
            if (m_at + 1 >= m_source.size())
                fail(m_source, begin, 113, "Missing end comment mark '*/'.");
            const char c = m_source[m_at];
            const char next = m_source[m_at + 1];
            const int step = c == '/' && next == '*' ? 1 : c == '*' && next == '/' ? -1 : 0;
            depth += step;
            m_at += step != 0 ? 2 : 1;
        } while (depth != 0);
    }

    void readToken() {
        const char c = m_source[m_at];
        switch (classOf(c)) {
        case WordStart:
            if ((c == 'N' || c == 'n') && at(m_at + 1) == '\'')
                return add(TokenKind::Text, closing(m_at + 1, '\''));
            return readWord();
        case Digit:
            return readNumber();
        case At: {
            std::size_t end = m_at + 1;
            while (end < m_source.size() && isWordPart(m_source[end]))
                ++end;
            return add(TokenKind::Variable, end);
        }
        case Quote:
            return add(TokenKind::Text, closing(m_at, '\''));
        case DoubleQuote:
            return add(TokenKind::Quoted, closing(m_at, '"'));
        case Bracket:
            return add(TokenKind::Quoted, closing(m_at, ']'));
        case Punctuation:
            if (c == '.' && classOf(at(m_at + 1)) == Digit && !afterName())
                return readNumber();
            return readSign(c);
        case Blank:
        case Wrong:
            break;
        }
        fail(m_source, m_at, 102, "Incorrect syntax near '" + std::string(1, c) + "'.");
    }

    /// A point behind a name parts names, so that `a.1` is no number.
    [[nodiscard]] bool afterName() const {
        return !m_tokens.empty() && m_tokens.back().end == m_at &&
               (m_tokens.back().kind == TokenKind::Word || m_tokens.back().kind == TokenKind::Quoted);
    }

    void readWord() {
        std::size_t end = m_at + 1;
        while (end < m_source.size() && isWordPart(m_source[end]))
            ++end;
        add(TokenKind::Word, end, keyword(m_source.substr(m_at, end - m_at)));
    }

    void readNumber() {
        std::size_t end = m_at;
        TokenKind kind = TokenKind::Integer;
        while (classOf(at(end)) == Digit)
            ++end;
        if (end == m_at + 1 && m_source[m_at] == '0' && (at(end) | 0x20) == 'x')
            fail(m_source, m_at, 102, "Incorrect syntax near '0x': there are no binary values.");
        if (at(end) == '.') {
            kind = TokenKind::Decimal;
            ++end;
            while (classOf(at(end)) == Digit)
                ++end;
        }
        if ((at(end) | 0x20) == 'e') {
            std::size_t exponent = end + 1;
            if (at(exponent) == '+' || at(exponent) == '-')
                ++exponent;
            if (classOf(at(exponent)) == Digit) {
                kind = TokenKind::Float;
                end = exponent;
                while (classOf(at(end)) == Digit)
                    ++end;
            }
        }
        add(kind, end);
    }

    void readSign(char c) {
        const char next = at(m_at + 1);
        if (c == '<' && next == '=')
            return add(TokenKind::Sign, m_at + 2, Keyword::None, LessOrEqual);
        if (c == '>' && next == '=')
            return add(TokenKind::Sign, m_at + 2, Keyword::None, GreaterOrEqual);
        if ((c == '<' && next == '>') || (c == '!' && next == '='))
            return add(TokenKind::Sign, m_at + 2, Keyword::None, NotEqual);
        if (c == '!' && next == '<')
            return add(TokenKind::Sign, m_at + 2, Keyword::None, GreaterOrEqual);
        if (c == '!' && next == '>')
            return add(TokenKind::Sign, m_at + 2, Keyword::None, LessOrEqual);
        add(TokenKind::Sign, m_at + 1, Keyword::None, c);
    }

    /// The byte behind the quote that closes the one at `open`; two of them are one of the text.
    [[nodiscard]] std::size_t closing(std::size_t open, char quote) const {
        std::size_t end = open + 1;
        while (true) {
            end = m_source.find(quote, end);
            if (end == std::string_view::npos) {
                fail(m_source, open, 105,
                     "Unclosed quotation mark after the character string '" +
                         std::string(m_source.substr(open + 1, 128)) + "'.");
            }
            if (at(end + 1) != quote)
                return end + 1;
            end += 2;
        }
    }

    std::string_view m_source;
    std::size_t m_at = 0;
    std::vector<Token> m_tokens;
};

} // namespace

bool isWordStart(char c) {
    return classOf(c) == WordStart;
}

bool isWordPart(char c) {
    const Class kind = classOf(c);
    return kind == WordStart || kind == Digit || kind == At || c == '$';
}

std::vector<Token> tokenize(std::string_view source) {
    return Lexer(source).run();
}

void syntaxError(std::string_view source, const std::vector<Token> &tokens, std::size_t index) {
    const Token &place = tokens[index];
    const Token &named = place.kind == TokenKind::End && index > 0 ? tokens[index - 1] : place;
    std::string_view text = source.substr(named.begin, named.end - named.begin);
    if (text.size() > 128)
        text = text.substr(0, 128);
    if (place.keyword != Keyword::None)
        fail(source, place.begin, 156, "Incorrect syntax near the keyword '" + std::string(text) + "'.");
    fail(source, place.begin, 102, "Incorrect syntax near '" + std::string(text) + "'.");
}

} // namespace zel::tsql
