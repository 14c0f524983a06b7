#pragma once

struct sqlite3;

namespace zel::ado {

/// Gives an open SQLite connection the functions that the front end's written SQL calls. Their failures are
/// texts of the form "NUMBER|message", the number being the server's.
void registerFunctions(sqlite3 *db);

} // namespace zel::ado
