#pragma once

#include "platform/ado/recordset.h"
#include "platform/base/error.h"
#include "schema/new_catalog.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <sqlite3.h>

#include <memory>

namespace zel::test {

/// A new catalog in a folder of its own. The first one of a run is made, the others are copies of it.
class CatalogFolder {
public:
    CatalogFolder() {
        static const QTemporaryDir first;
        static const bool made = (schema::createCatalog(first.path()), true);
        if (!made || !QFile::copy(first.filePath(QStringLiteral("ZEL.db")), file()))
            qFatal("the catalog can't be copied");
    }
    [[nodiscard]] QString path() const { return m_folder.path(); }
    [[nodiscard]] QString file() const { return m_folder.filePath(QStringLiteral("ZEL.db")); }

private:
    QTemporaryDir m_folder;
};

inline void open(ado::Connection &connection, const QString &folder,
                 const QString &user = QStringLiteral("sa"), const QString &password = {}) {
    connection.setProperty(QStringLiteral("Data Source"), folder);
    connection.setProperty(QStringLiteral("User ID"), user);
    connection.setProperty(QStringLiteral("Password"), password);
    connection.Open();
}

/// A new catalog with the administrator's connection to it.
class OpenCatalog : public CatalogFolder {
public:
    OpenCatalog() { open(con, path()); }
    ado::Connection con;
};

/// What `action` throws: its number; 0 when it throws nothing.
template <class Action>
int failure(Action &&action) {
    try {
        action();
    } catch (const Error &error) {
        return error.number();
    }
    return 0;
}

/// The same of a statement.
inline int refusal(ado::Connection &connection, const Sql &statement) {
    return failure([&] { connection.Execute(statement); });
}

/// Rows as one text: cells parted by '|', rows by ';', Null as '~'.
inline QString shown(const RowsPtr &rows) {
    QStringList lines;
    for (qsizetype row = 0; row < rows->rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < rows->columnCount(); ++column)
            cells.append(rows->isNull(row, column) ? QStringLiteral("~") : rows->text(row, column));
        lines.append(cells.join(u'|'));
    }
    return lines.join(u';');
}

inline QString shown(ado::Connection &connection, const Sql &statement) {
    ado::Recordset rs;
    rs.Open(statement, connection);
    return shown(rs.rows());
}

/// What plain SQLite, without any function of ours, says to one statement: the cells of the first column by
/// ';'.
inline QString plain(const QString &file, const char *statement) {
    sqlite3 *db = nullptr;
    sqlite3_open(file.toUtf8().constData(), &db);
    sqlite3_stmt *running = nullptr;
    QStringList cells;
    if (sqlite3_prepare_v2(db, statement, -1, &running, nullptr) != SQLITE_OK)
        cells.append(QString::fromUtf8(sqlite3_errmsg(db)));
    while (running && sqlite3_step(running) == SQLITE_ROW)
        cells.append(QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(running, 0))));
    sqlite3_finalize(running);
    sqlite3_close(db);
    return cells.join(u';');
}

} // namespace zel::test
