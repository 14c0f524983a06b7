#pragma once

#include "platform/ado/drivers/sqlite_driver.h"

#include <QString>
#include <QStringList>

namespace zel::tool {

/// What is wrong in a catalog, one sentence each: damage of the file first, then what breaks a rule of the
/// books.
[[nodiscard]] QStringList findings(ado::SqliteDriver &driver);

} // namespace zel::tool
