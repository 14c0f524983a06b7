#pragma once

#include "tests/support/rows.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

#include <deque>

/// Tables of tests that are data: JSON files beside the tests.
namespace zel::test {

/// The text of a file below tests/.
inline QByteArray fileText(const QString &path) {
    QFile file(QStringLiteral(ZEL_SOURCE_DIR "/tests/") + path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("%s can't be read", qPrintable(path));
    return file.readAll();
}

inline QJsonDocument facts(const QString &path) {
    QJsonParseError failure;
    const auto document = QJsonDocument::fromJson(fileText(path), &failure);
    if (document.isNull())
        qFatal("%s, byte %d: %s", qPrintable(path), failure.offset, qPrintable(failure.errorString()));
    return document;
}

/// A cell as a value of that type. A text of several lines is a list of them.
template <typename Type>
Type valueOf(const QVariant &cell) {
    if constexpr (std::is_same_v<Type, QString>)
        if (cell.typeId() == QMetaType::QVariantList)
            return cell.toStringList().join('\n');
    return cell.value<Type>();
}

/// The rows of the running test from the file's table of its name: a line of column names, then lines of
/// values. The first cell of a line names the row; it is a column of its own where there are types enough.
/// What is missing at a line's end is empty; {"text": "usual"} is the file's text of that name.
template <typename... Types>
void rowsFrom(const QString &path) {
    static std::deque<QByteArray> names; // which QTest only points at
    const char *function = QTest::currentTestFunction();
    if (!function)
        return; // no test runs: its rows' names alone are asked for
    const QJsonDocument file = facts(path);
    const QJsonArray lines = file[QLatin1String(function)].toArray();
    if (lines.size() < 2)
        qFatal("%s has no rows of %s", qPrintable(path), function);
    const qsizetype first = lines[0].toArray().size() - qsizetype(sizeof...(Types));
    qsizetype column = first;
    columnNames.clear();
    const auto add = [&](auto type) {
        names.push_back(lines[0][column++].toString().toUtf8());
        columnNames.push_back(names.back().constData());
        QTest::addColumn<typename decltype(type)::type>(columnNames.back());
    };
    (add(std::type_identity<Types>()), ...);
    for (qsizetype line = 1; line < lines.size(); ++line) {
        QVariantList cells;
        for (const QJsonValue &cell : lines[line].toArray()) {
            const QJsonValue value = cell.isObject() ? file[u"texts"][cell[u"text"].toString()] : cell;
            if (value.isUndefined())
                qFatal("%s has no text \"%s\"", qPrintable(path), qPrintable(cell[u"text"].toString()));
            cells << value.toVariant();
        }
        QTestData &row = QTest::newRow(cells[0].toString().toUtf8().constData());
        column = first;
        (static_cast<void>(row << valueOf<Types>(cells.value(column++))), ...);
    }
}

} // namespace zel::test
