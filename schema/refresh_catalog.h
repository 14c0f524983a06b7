#pragma once

#include <QString>

namespace zel::schema {

/// Brings a catalog that an earlier version made up to this one: the procedures, the work tables that they
/// refill, the indexes, and tables that are missing. What people entered stays as it is. All of it or, when
/// it fails, nothing. False when there was nothing to do. Fails as SqliteDriver::open does.
bool refreshCatalog(const QString &folder);

} // namespace zel::schema
