#pragma once

#include "platform/tsql/engines/writer.h"

/// How SQLite sums exactly, and quickly.
namespace zel::tsql {

void writeSum(Writer &out, const Expr &node);
/// One sum by itself, of so many decimals.
void writeSumOf(Writer &out, const Expr &node, int scale);
void writeGroupsByIndex(Writer &out, const BoundSelect &select);

} // namespace zel::tsql
