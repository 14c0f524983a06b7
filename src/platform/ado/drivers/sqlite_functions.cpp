#include "platform/ado/drivers/sqlite_functions.h"

#include <sqlite3.h>

namespace zel::ado {

void registerFunctions(sqlite3 *) {}

} // namespace zel::ado
