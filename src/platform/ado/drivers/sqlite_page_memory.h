#pragma once

namespace zel::ado {

/// From here on SQLite keeps the pages of its caches in memory that the system hands out by the two megabytes
/// instead of by the four kilobytes, where it can: an eighth of a balance over all lines went into getting
/// these. To be called before SQLite is used; later it does nothing.
void useLargePageMemory();

} // namespace zel::ado
