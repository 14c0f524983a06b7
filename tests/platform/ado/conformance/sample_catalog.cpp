#include "sample_catalog.h"

#include "platform/base/date_text.h"
#include "platform/base/error.h"
#include "tests/support/facts.h"

#include <QCryptographicHash>

using namespace zel;
using tsql::TypeKind;

namespace {

void runFile(ado::Driver &driver, const char *name) {
    const QByteArray text = test::fileText("platform/ado/conformance/" + QString(name));
    for (const std::string_view batch : tsql::batches({text.constData(), std::size_t(text.size())})) {
        try {
            ado::runStatements(driver, Sql::trusted(batch), [](const ado::Outcome &) {});
        } catch (const Error &error) {
            qFatal("%s: %d %s", name, error.number(), error.what());
        }
    }
}

QString shown(const DateTime &moment) {
    return moment.date.toString(Qt::ISODate) + moment.time.toString(QStringLiteral(" HH:mm:ss.zzz"));
}

QString quoted(const QString &text) {
    return u'\'' + text + u'\'';
}

QString shown(const Value &value, TypeKind kind) {
    const auto &held = value.storage();
    if (value.isNull())
        return QStringLiteral("NULL");
    if (const auto *moment = std::get_if<DateTime>(&held))
        return shown(*moment);
    if (std::holds_alternative<std::string>(held)) {
        // A char(n) bears its blanks or doesn't: nothing in the dialect but datalength tells the difference.
        QString text = value.text();
        while (kind == TypeKind::Char && text.endsWith(u' '))
            text.chop(1);
        return quoted(text);
    }
    return value.text();
}

QString shown(const QJsonValue &value, TypeKind kind) {
    if (value.isNull())
        return QStringLiteral("NULL");
    if (value.isBool())
        return value.toBool() ? QStringLiteral("1") : QStringLiteral("0");
    if (value.isDouble())
        return Value(value.toDouble()).text();
    const std::string text = value.toString().toStdString();
    if (kind == TypeKind::BigInt)
        return value.toString();
    if (kind == TypeKind::DateTime || kind == TypeKind::Date)
        return shown(fromStoredDate(text).value_or(DateTime{}));
    return shown(Value(text), kind);
}

} // namespace

QJsonArray facts(const char *name) {
    return test::facts("platform/ado/conformance/" + QString(name)).array();
}

SampleCatalog::SampleCatalog() {
    auto made = ado::SqliteDriver::make(m_folder.filePath(QLatin1String(ado::SqliteDriver::FileName)));
    for (const char *file : {"tables.sql", "rows.sql", "conversion_tables.sql"})
        runFile(*made, file);
    ado::SqliteDriver::seal(std::move(made));
    m_driver = ado::SqliteDriver::open(m_folder.path(), std::nullopt);
}

Answer SampleCatalog::run(const Sql &text) {
    Answer answer;
    try {
        ado::runStatements(*m_driver, text, [&answer](const ado::Outcome &outcome) {
            if (!answer.rows)
                answer.rows = outcome.rows;
        });
    } catch (const Error &error) {
        answer.error = error.number();
        answer.description = error.description();
    }
    return answer;
}

QByteArray SampleCatalog::checksum() {
    QCryptographicHash hash(QCryptographicHash::Sha256);
    ado::SqliteSession &session = m_driver->session();
    const ado::SqliteSession::OwnTables access(session);
    std::vector<std::string> tables;
    {
        ado::SqliteSession::Running schema =
            session.prepare("select name, sql from sqlite_master order by name");
        while (schema.step()) {
            hash.addData(QByteArray::fromStdString(schema.text(1)));
            tables.push_back(schema.text(0));
        }
    }
    for (const std::string &table : tables) {
        if (table.starts_with("sqlite_autoindex"))
            continue;
        ado::SqliteSession::Running rows = session.prepare("select * from \"" + table + "\" order by rowid");
        while (rows.step()) {
            for (int column = 0; column < sqlite3_column_count(rows.get()); ++column)
                hash.addData(QByteArray::number(sqlite3_column_type(rows.get(), column)) +
                             QByteArray::fromStdString(rows.text(column)) + '\0');
        }
    }
    return hash.result();
}

QStringList lines(const ado::RowSet &rows) {
    QStringList result;
    for (qsizetype row = 0; row < rows.rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < rows.columnCount(); ++column)
            cells += shown(rows.value(row, column), rows.columns()[std::size_t(column)].type.kind);
        result += cells.join(QStringLiteral(", "));
    }
    return result;
}

QStringList lines(const QJsonArray &measured, const ado::RowSet &like) {
    QStringList result;
    for (const QJsonValue &row : measured) {
        QStringList cells;
        const QJsonArray values = row.toArray();
        for (qsizetype column = 0; column < values.size(); ++column) {
            const auto kind = column < like.columnCount() ? like.columns()[std::size_t(column)].type.kind
                                                          : TypeKind::VarChar;
            cells += shown(values[column], kind);
        }
        result += cells.join(QStringLiteral(", "));
    }
    return result;
}
