#pragma once

#include <cstdint>

namespace zel::tsql {

/// A place that holds a value while a batch runs.
using Slot = std::uint32_t;

/// The places that the batch's connection keeps from one batch to the next; those of variables follow.
inline constexpr Slot RowCountSlot = 0;      ///< @@rowcount
inline constexpr Slot IdentitySlot = 1;      ///< @@identity
inline constexpr Slot ScopeIdentitySlot = 2; ///< scope_identity() outside procedures
inline constexpr Slot KeptSlots = 3;

} // namespace zel::tsql
