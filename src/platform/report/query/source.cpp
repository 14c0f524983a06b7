#include "platform/report/query/source.h"

#include "platform/ado/recordset.h"

#include <memory>

namespace zel::report {

namespace {

class ConnectionSource final : public Source {
public:
    explicit ConnectionSource(const Logon &logon) {
        m_connection.Provider = logon.provider;
        m_connection.setProperty(QStringLiteral("Data Source"), logon.dataSource);
        m_connection.setProperty(QStringLiteral("Initial Catalog"), logon.initialCatalog);
        m_connection.setProperty(QStringLiteral("User ID"), logon.userId);
        m_connection.setProperty(QStringLiteral("Password"), logon.password);
        m_connection.Open();
    }

    RowsPtr rows(const Sql &select) override {
        ado::Recordset recordset;
        recordset.Open(select, m_connection, ado::adOpenKeyset, ado::adLockReadOnly);
        return recordset.rows();
    }

private:
    ado::Connection m_connection;
};

} // namespace

std::unique_ptr<Source> openSource(const Logon &logon) {
    return std::make_unique<ConnectionSource>(logon);
}

} // namespace zel::report
