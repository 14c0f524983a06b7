#include "platform/ado/connection.h"

#include "platform/ado/statements.h"
#include "platform/base/error.h"

#include <map>

namespace zel::ado {

struct Connection::Private {
    std::map<QString, QString> properties{
        {QStringLiteral("data source"), {}},
        {QStringLiteral("initial catalog"), {}},
        {QStringLiteral("password"), {}},
        {QStringLiteral("user id"), {}},
    };
    std::unique_ptr<Driver> driver;

    QString &property(const QString &name) {
        const auto found = properties.find(name.toLower());
        if (found == properties.end())
            throw Error(errors::ItemNotFound,
                        QStringLiteral("A connection has no property \"%1\".").arg(name));
        return found->second;
    }
};

Connection::Connection() : d(std::make_unique<Private>()) {}

Connection::~Connection() = default;

QString Connection::property(const QString &name) const {
    return d->property(name);
}

void Connection::setProperty(const QString &name, const QString &value) {
    d->property(name) = value;
}

void Connection::Open() {
    if (d->driver)
        throw Error(3705, "Operation is not allowed when the object is open.");
    d->driver = openCatalog(d->property(QStringLiteral("Data Source")),
                            d->property(QStringLiteral("User ID")), d->property(QStringLiteral("Password")));
}

void Connection::Close() {
    (void)driver();
    d->driver.reset();
}

ObjectState Connection::State() const {
    return d->driver ? adStateOpen : adStateClosed;
}

QString Connection::Engine() const {
    return QString::fromStdString(driver().engine());
}

void Connection::Execute(const Sql &statement) {
    runStatements(driver(), statement, [](const Outcome &) {});
}

Driver &Connection::driver() const {
    if (!d->driver)
        throw Error(errors::ObjectClosed, "Operation is not allowed when the object is closed.");
    return *d->driver;
}

Transaction::Transaction(Connection &connection) : m_connection(connection) {
    m_connection.driver().begin(Durability::Now);
}

Transaction::~Transaction() {
    if (m_open && m_connection.State() == adStateOpen)
        m_connection.driver().rollback();
}

void Transaction::commit() {
    m_connection.driver().commit();
    m_open = false;
}

} // namespace zel::ado
