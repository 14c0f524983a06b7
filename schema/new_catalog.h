#pragma once

#include <QString>

#include <functional>

namespace zel::ado {
class Driver;
}

namespace zel::schema {

struct NewCatalog {
    bool bare = false;                           ///< no tables, procedures and rows
    bool demoChart = false;                      ///< a small chart of accounts, set up in the voucher kinds
    QString saPassword;                          ///< of the administrator's login "sa"
    std::function<void(ado::Driver &)> filled{}; ///< writes further rows, with which the catalog is whole
};

/// Makes the catalog ZEL.db in a folder, and the folder when only that is missing. It comes under its name
/// when it is whole and on the disk, and never over one that is there (Error 1802); a failure leaves nothing
/// behind.
void createCatalog(const QString &folder, const NewCatalog &wanted = {});

/// The same of what `fill` writes, all of it in one transaction: it makes the tables too, and the logins.
void makeCatalog(const QString &folder, const std::function<void(ado::Driver &)> &fill);

/// 1802 when the folder holds a catalog.
void requireNoCatalog(const QString &folder);

/// The same in place of a catalog that is there, which is kept beside it whole, under the name that is given
/// back; '' when there was none. 1222 when a program has it open. When it fails or is killed, the old one
/// stands.
QString replaceCatalog(const QString &folder, const std::function<void(ado::Driver &)> &fill);

/// The tables, indexes and procedures, without rows, in an empty catalog.
void define(ado::Driver &driver);

} // namespace zel::schema
