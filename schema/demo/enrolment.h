#pragma once

#include "schema/demo/records.h"

namespace zel::demo {

/// The students: their applications, their fee receipts, what is carried forward and what is written off, and
/// the registration fees of each day. The receipts and journals come as vouchers, in no order.
void enrol(Institute &institute, std::uint64_t seed);

} // namespace zel::demo
