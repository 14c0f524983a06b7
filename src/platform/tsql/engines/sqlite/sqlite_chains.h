#pragma once

#include "platform/tsql/engines/writer.h"

/// Chains of one operator, of any length: SQLite's expressions may be a thousand deep, its parentheses
/// thirty.
namespace zel::tsql {

void writeAnd(Writer &out, const Expr &node);
void writeOr(Writer &out, const Expr &node);
void writeConcat(Writer &out, const Expr &node);
/// Sums and differences.
void writeSummands(Writer &out, const Expr &node);

} // namespace zel::tsql
