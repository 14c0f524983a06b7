#include "tools/zeldb/shown.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <vector>

namespace zel::tool {

namespace {

QString moment(const DateTime &value) {
    QString text = value.date.toString(Qt::ISODate);
    if (value.time != QTime(0, 0))
        text += value.time.toString(value.time.msec() ? QStringLiteral(" HH:mm:ss.zzz")
                                                      : QStringLiteral(" HH:mm:ss"));
    return text;
}

QByteArray line(const QJsonObject &object) {
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

QString countText(std::int64_t count, const char *what) {
    return QStringLiteral("%1 %2%3\n")
        .arg(count)
        .arg(QLatin1String(count == 1 ? "row" : "rows"), QLatin1String(what));
}

} // namespace

QString shown(const Value &value) {
    if (value.isNull())
        return QStringLiteral("NULL");
    if (const auto *date = std::get_if<DateTime>(&value.storage()))
        return moment(*date);
    return value.text();
}

QJsonValue asJson(const Value &value) {
    const auto &held = value.storage();
    if (value.isNull())
        return QJsonValue::Null;
    if (const auto *whole = std::get_if<std::int64_t>(&held))
        return qint64(*whole);
    if (const auto *exact = std::get_if<Decimal>(&held))
        return exact->isWhole() ? QJsonValue(qint64(exact->tenThousandths() / Decimal::Scale))
                                : QJsonValue(exact->toDouble());
    if (const auto *real = std::get_if<double>(&held))
        return *real;
    if (const auto *date = std::get_if<DateTime>(&held))
        return moment(*date);
    return value.text();
}

QString asTable(const ado::Outcome &outcome) {
    if (!outcome.rows)
        return countText(outcome.rowsAffected, " changed");
    const ado::RowSet &rows = *outcome.rows;
    std::vector<qsizetype> widths;
    for (int column = 0; column < rows.columnCount(); ++column) {
        widths.push_back(rows.columnName(column).size());
        for (qsizetype row = 0; row < rows.rowCount(); ++row)
            widths.back() = std::max(widths.back(), shown(rows.value(row, column)).size());
    }
    QString text;
    const auto put = [&](int column, const QString &cell, bool right) {
        const auto width = widths[std::size_t(column)];
        text += right ? cell.rightJustified(width) : cell.leftJustified(width);
        text += QLatin1String(column + 1 < rows.columnCount() ? "  " : "\n");
    };
    for (int column = 0; column < rows.columnCount(); ++column)
        put(column, rows.columnName(column), rows.isNumber(column));
    for (int column = 0; column < rows.columnCount(); ++column)
        put(column, QString(widths[std::size_t(column)], u'-'), false);
    for (qsizetype row = 0; row < rows.rowCount(); ++row)
        for (int column = 0; column < rows.columnCount(); ++column)
            put(column, shown(rows.value(row, column)), rows.isNumber(column));
    return text + countText(rows.rowCount(), "");
}

QByteArray asJson(const ado::Outcome &outcome) {
    QJsonArray columns;
    QJsonArray all;
    if (outcome.rows) {
        for (int column = 0; column < outcome.rows->columnCount(); ++column)
            columns.append(outcome.rows->columnName(column));
        for (qsizetype row = 0; row < outcome.rows->rowCount(); ++row) {
            QJsonArray cells;
            for (int column = 0; column < outcome.rows->columnCount(); ++column)
                cells.append(asJson(outcome.rows->value(row, column)));
            all.append(cells);
        }
    }
    return line({{QStringLiteral("ok"), true},
                 {QStringLiteral("columns"), columns},
                 {QStringLiteral("rows"), all},
                 {QStringLiteral("rows_affected"), qint64(outcome.rowsAffected)}});
}

QByteArray asJson(const Error &failure) {
    return line({{QStringLiteral("ok"), false},
                 {QStringLiteral("number"), failure.number()},
                 {QStringLiteral("error"), failure.description()}});
}

} // namespace zel::tool
