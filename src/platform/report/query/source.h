#pragma once

#include "platform/base/rows.h"
#include "platform/base/sql.h"

#include <QString>

#include <memory>

namespace zel::report {

/// Where a report reads from. A refused logon and every failed statement is an Error.
class Source {
public:
    virtual ~Source() = default;
    [[nodiscard]] virtual RowsPtr rows(const Sql &select) = 0;
};

/// What a report's own connection is opened with.
struct Logon {
    QString provider;
    QString dataSource;
    QString initialCatalog;
    QString userId;
    QString password;
};

/// Opens a connection of its own.
[[nodiscard]] std::unique_ptr<Source> openSource(const Logon &logon);

} // namespace zel::report
