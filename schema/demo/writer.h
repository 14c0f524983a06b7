#pragma once

#include "schema/demo/records.h"

namespace zel::ado {
class Driver;
}

namespace zel::demo {

/// Writes the rows that the screens write for these records, column for column, into a catalog with its first
/// rows and no others. In no transaction of its own.
void write(ado::Driver &driver, const Institute &institute);

} // namespace zel::demo
