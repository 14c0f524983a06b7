#pragma once

#include <sqlite3.h>

namespace zel::test {

/// The file system as SQLite sees it, on a disk that gets full: from the n-th write on every write fails with
/// SQLITE_FULL, until it is made roomy again. Standard for all connections opened after install().
namespace faulty_disk {

void install();
/// The `writes` next ones go well, all after them fail.
void fullAfter(int writes);
void roomy();
/// Whether a write has failed since fullAfter().
[[nodiscard]] bool failed();

} // namespace faulty_disk

} // namespace zel::test
