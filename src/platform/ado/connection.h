#pragma once

#include "platform/base/sql.h"

#include <QString>

#include <memory>

namespace zel::ado {

enum ObjectState { adStateClosed = 0, adStateOpen = 1 };

class Driver;

/// A connection to a catalog, with the members that the program uses. The properties are read by Open.
/// Every failure is an Error with the server's number.
class Connection {
public:
    Connection();
    ~Connection();
    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;

    QString Provider;
    /// "User ID", "Password", "Data Source", "Initial Catalog".
    [[nodiscard]] QString property(const QString &name) const;
    void setProperty(const QString &name, const QString &value);

    /// Chooses the engine by the form of "Data Source" (see Server.txt in the README), opens the catalog and
    /// checks the login: 18456 for an unknown login or a wrong password.
    void Open();
    void Close();
    [[nodiscard]] ObjectState State() const;
    /// Name and version of the open catalog's engine: "SQLite 3.40.1".
    [[nodiscard]] QString Engine() const;

    /// Runs any number of statements; rows that they give are dropped.
    void Execute(const Sql &statement);

    /// The open driver; Error 3704 when the connection is closed. For Recordset and Transaction.
    [[nodiscard]] Driver &driver() const;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

/// From construction to commit(): one transaction on the connection. Without commit() the destructor undoes
/// all.
class Transaction {
public:
    explicit Transaction(Connection &connection);
    ~Transaction();
    Transaction(const Transaction &) = delete;
    Transaction &operator=(const Transaction &) = delete;
    void commit();

private:
    Connection &m_connection;
    bool m_open = true;
};

} // namespace zel::ado
