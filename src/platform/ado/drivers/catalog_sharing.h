#pragma once

#include <QString>

#include <sys/types.h>

namespace zel::ado {

/// The permissions of a catalog that is made in a folder. It is its maker's alone, unless the folder belongs
/// to a group whose members all write in it and which gets what is made there (setgid): then it is the
/// group's. The engine gives the catalog's log and its index the same.
[[nodiscard]] mode_t catalogMode(const QString &folder);

/// Why a folder can't be entered, and what to do about it.
[[nodiscard]] QString whoMayEnter(const QString &folder);

} // namespace zel::ado
