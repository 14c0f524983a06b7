#include "watched.h"

#include "platform/ado/drivers/sqlite_functions.h"

#include <sqlite3.h>

namespace bench {

namespace {

int onStatement(unsigned, void *, void *statement, void *) {
    watchedStatements().emplace_back(sqlite3_sql(static_cast<sqlite3_stmt *>(statement)));
    return 0;
}

int watch(sqlite3 *db, char **, const sqlite3_api_routines *) {
    return sqlite3_trace_v2(db, SQLITE_TRACE_STMT, onStatement, nullptr);
}

} // namespace

std::vector<std::string> &watchedStatements() {
    static std::vector<std::string> statements;
    return statements;
}

void watchStatements() {
    sqlite3_auto_extension(reinterpret_cast<void (*)()>(watch));
}

sqlite3 *openBare(const QString &database) {
    sqlite3 *db = nullptr;
    sqlite3_open_v2(database.toUtf8().constData(), &db, SQLITE_OPEN_READONLY, nullptr);
    zel::ado::registerFunctions(db);
    sqlite3_exec(db, "pragma temp_store = memory; pragma cache_size = -32768", nullptr, nullptr, nullptr);
    return db;
}

} // namespace bench
