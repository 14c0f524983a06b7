// What an administrator's tools ask of an embedded catalog.

#include "platform/ado/drivers/sqlite_driver.h"

namespace zel::ado {

bool SqliteDriver::setVersion() {
    {
        SqliteSession::Running version = m_session.prepare("pragma user_version");
        if (version.step() && version.integer(0) == CatalogVersion)
            return false;
    }
    m_session.execute(("pragma user_version = " + std::to_string(CatalogVersion)).c_str());
    return true;
}

std::vector<std::string> SqliteDriver::damage() {
    std::vector<std::string> found;
    SqliteSession::Running integrity = m_session.prepare("pragma integrity_check(20)");
    while (integrity.step())
        if (std::string line = integrity.text(0); line != "ok")
            found.push_back("The file is damaged: " + line + '.');
    return found;
}

void SqliteDriver::analyze() {
    m_session.execute("pragma analysis_limit = 0; analyze");
}

} // namespace zel::ado
