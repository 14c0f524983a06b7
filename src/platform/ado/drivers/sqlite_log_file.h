#pragma once

#include <sqlite3.h>

namespace zel::ado {

/// The name of a VFS for catalogs: the standard one, but what SQLite writes to a write-ahead log piece by
/// piece, two pieces a page, goes to the system in one write when a commit ends, and before the log is
/// synchronised, read or measured.
/// Nullptr, which is the standard VFS, when it can't be had.
[[nodiscard]] const char *gatheringVfs();

/// For a connection whose files are of that VFS: what a transaction left waiting goes with it when it is
/// undone. From then on its place in the log may be another program's.
void dropUndonePages(sqlite3 *db);

} // namespace zel::ado
