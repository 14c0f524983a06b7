#pragma once

#include "platform/base/sql.h"
#include "platform/tsql/reading/lexer.h"

namespace zel::tsql {

/// The text guard: every foreign piece of the text must lie inside one token. Inside a text literal it may
/// hold anything whose quotes pair up within the piece; elsewhere it must be a number (blanks, a sign,
/// digits, one point) or the bare first argument of sp_password. Knows no engine: it needs the tokens only.
/// Throws 102, 156 or 207.
void checkPieces(const Sql &text, const std::vector<Token> &tokens);
/// Lexes the text first.
void checkPieces(const Sql &text);

} // namespace zel::tsql
