#pragma once

namespace zel::ado {

/// The name of a VFS for catalogs: the standard one, but what SQLite writes to a write-ahead log piece by
/// piece, two pieces a page, goes to the system in one write when a commit ends, and before the log is
/// synchronised, read or measured.
/// Nullptr, which is the standard VFS, when it can't be had.
[[nodiscard]] const char *gatheringVfs();

} // namespace zel::ado
