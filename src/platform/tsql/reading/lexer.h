#pragma once

#include "platform/tsql/reading/keywords.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace zel::tsql {

enum class TokenKind : std::uint8_t {
    End,
    Word,   ///< a name or a keyword
    Quoted, ///< [name] or "name"
    Text,   ///< 'text', N'text'
    Integer,
    Decimal,  ///< with a point
    Float,    ///< with an exponent
    Variable, ///< @name, @@name
    Sign,     ///< punctuation; `sign` tells which
};

/// Signs of two characters; the others are their own character.
inline constexpr char LessOrEqual = 'l';
inline constexpr char GreaterOrEqual = 'g';
inline constexpr char NotEqual = 'n';

struct Token {
    TokenKind kind = TokenKind::End;
    Keyword keyword = Keyword::None;
    char sign = '\0';
    std::uint32_t begin = 0; ///< bytes of the source
    std::uint32_t end = 0;
};

/// The tokens of the source, an End token last; blanks and comments are left out. Throws 105 for an unclosed
/// quote, 113 for an unclosed comment, 102 for a character that begins no token.
[[nodiscard]] std::vector<Token> tokenize(std::string_view source);

/// "Incorrect syntax near ..." at a token: 156 for a reserved word, else 102. At the end of the source the
/// token before it is named.
[[noreturn]] void syntaxError(std::string_view source, const std::vector<Token> &tokens, std::size_t index);

[[nodiscard]] bool isWordStart(char c);
[[nodiscard]] bool isWordPart(char c);

} // namespace zel::tsql
