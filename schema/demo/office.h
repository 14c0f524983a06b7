#pragma once

#include "schema/demo/records.h"

namespace zel::demo {

/// What comes again by the calendar besides fees (schedule.txt), as vouchers in no order.
void keepOffice(Institute &institute, std::uint64_t seed);

/// So many small vouchers in cash of a kind (sundries.txt) on any days.
void addSundries(Institute &institute, std::uint64_t seed, const char *kind, int count);

/// Puts the vouchers in the order of their days, receipts of a day first, and adds what keeps money at hand:
/// cash is brought to the bank when there is much and drawn when there is little, and a savings account gives
/// to the current one and takes from it.
void keepMoney(Institute &institute);

} // namespace zel::demo
