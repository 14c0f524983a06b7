#pragma once

#include "platform/tsql/engines/writer.h"

/// How SQLite says what the dialect does with texts: case and trailing blanks that don't count, sets in
/// patterns. The engine's own operators and their indexes are used wherever they say the same.
namespace zel::tsql {

/// "=", "<>" ... for a Compare node's sign.
[[nodiscard]] std::string_view signText(int sign);

void writeTextComparison(Writer &out, const Expr &node);
void writeTextMembership(Writer &out, const Expr &node);
void writeBetween(Writer &out, const Expr &node);
void writeLike(Writer &out, const Expr &node);
void writeLeft(Writer &out, const Expr &node);
void writeRight(Writer &out, const Expr &node);
void writeReplace(Writer &out, const Expr &node);

} // namespace zel::tsql
