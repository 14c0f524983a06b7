#pragma once

#include "platform/ado/drivers/sqlite_driver.h"
#include "platform/ado/statements.h"

#include <QJsonArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>
#include <optional>

/// A file of facts beside the tests.
[[nodiscard]] QJsonArray facts(const char *name);

/// What a statement text left: rows of the first statement that gave any, or the failure.
struct Answer {
    std::optional<int> error; ///< the server's number
    QString description;
    std::shared_ptr<const zel::ado::RowSet> rows;
    [[nodiscard]] bool ok() const { return !error; }
};

/// An embedded catalog with the tables and rows that the facts were measured on.
class SampleCatalog {
public:
    SampleCatalog();

    [[nodiscard]] Answer run(const zel::Sql &text);
    /// Everything that is run until undo() leaves no trace.
    void begin() { m_driver->begin(zel::ado::Durability::Now); }
    void undo() { m_driver->rollback(); }
    /// A digest of all tables with their rows, and of the schema.
    [[nodiscard]] QByteArray checksum();
    [[nodiscard]] zel::ado::Driver &driver() { return *m_driver; }

private:
    QTemporaryDir m_folder;
    std::unique_ptr<zel::ado::SqliteDriver> m_driver;
};

/// Rows as lines of comparable texts: numbers plain, moments in full, texts in quotes.
[[nodiscard]] QStringList lines(const zel::ado::RowSet &rows);
/// The same of measured rows, whose dates and big numbers are texts: the columns of `like` say which.
[[nodiscard]] QStringList lines(const QJsonArray &measured, const zel::ado::RowSet &like);
