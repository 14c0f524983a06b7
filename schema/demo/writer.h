#pragma once

#include "schema/demo/records.h"

namespace zel::ado {
class Driver;
}

namespace zel::demo {

/// Writes the rows that the screens would have written, into a catalog with its first rows and no others. The
/// chart with the setup alone, or all.
void writeChart(ado::Driver &driver, const Institute &institute);
void write(ado::Driver &driver, const Institute &institute);

} // namespace zel::demo
