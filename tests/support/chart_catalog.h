#pragma once

#include "platform/ado/connection.h"
#include "schema/new_catalog.h"

#include <QFile>
#include <QTemporaryDir>

namespace zel::test {

/// A catalog of its own with the small chart of accounts, and the administrator's connection to it. It is
/// made once and copied after that.
class ChartCatalog {
public:
    ChartCatalog() {
        static const QTemporaryDir first;
        static const bool made = [] {
            schema::NewCatalog wanted;
            wanted.demoChart = true;
            schema::createCatalog(first.path(), wanted);
            return true;
        }();
        if (!made || !QFile::copy(first.filePath("ZEL.db"), m_folder.filePath("ZEL.db")))
            qFatal("no catalog");
        m_program.setProperty("Data Source", m_folder.path());
        m_program.setProperty("User ID", "sa");
        m_program.Open();
    }

    [[nodiscard]] ado::Connection &program() { return m_program; }
    [[nodiscard]] QString filePath(const QString &name) const { return m_folder.filePath(name); }

private:
    QTemporaryDir m_folder;
    ado::Connection m_program;
};

} // namespace zel::test
