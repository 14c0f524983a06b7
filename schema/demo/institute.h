#pragma once

#include "schema/demo/records.h"

namespace zel::demo {

/// The seed of `zeldb demo`.
inline constexpr std::uint64_t Seed = 20240701;
inline constexpr int Vouchers = 2000;

/// Two years of the books of an institute, the same for the same seed everywhere: students are admitted, pay
/// by instalments, drop out and are carried forward; rent, salaries, bills and purchases are paid; what comes
/// in as cash is brought to the bank. At the end of no day is the cash or a bank account below nothing.
[[nodiscard]] Institute makeInstitute(std::uint64_t seed = Seed);

} // namespace zel::demo
