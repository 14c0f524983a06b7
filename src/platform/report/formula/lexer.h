#pragma once

#include "platform/base/sql.h"

#include <string>
#include <vector>

namespace zel::report {

enum class TokenKind { Number, Text, Date, Field, Word, Symbol, End };

/// A token of a formula. `text` is what it says: a text without its quotes, a field without its braces, a
/// word in lower case, a symbol as written.
struct Token {
    TokenKind kind = TokenKind::End;
    std::string text;
    std::size_t begin = 0;
    std::size_t end = 0;
};

/// The tokens of a formula, an End last. In a text between double quotes a foreign piece is what it says,
/// quotes and all; between single quotes its quotes count, two for one. FormulaError as parse() tells.
[[nodiscard]] std::vector<Token> tokens(const Sql &formula);

} // namespace zel::report
