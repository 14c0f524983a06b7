#pragma once

#include <sqlite3.h>

namespace zel::test {

/// The file system as SQLite sees it, on a disk that gets full: of the write that finds no more room, the
/// beginning is written and SQLITE_FULL the answer, until it is made roomy again. Standard for all
/// connections opened after install().
namespace faulty_disk {

void install();
/// There is room for so many bytes more.
void fullAfter(sqlite3_int64 bytes);
void roomy();
/// Whether a write has failed since fullAfter().
[[nodiscard]] bool failed();

} // namespace faulty_disk

} // namespace zel::test
