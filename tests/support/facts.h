#pragma once

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

/// The rows of the running test from the file's table of its name: a line of column names, then lines of
/// values. The first cell of a line names the row; it is a column of its own where there are types enough.
/// What is missing at a line's end is empty.
template <typename... Types>
void rowsFrom(const QString &path) {
    static std::deque<QByteArray> names; // which QTest only points at
    const char *function = QTest::currentTestFunction();
    if (!function)
        return; // no test runs: its rows' names alone are asked for
    const QJsonArray lines = facts(path)[QLatin1String(function)].toArray();
    if (lines.size() < 2)
        qFatal("%s has no rows of %s", qPrintable(path), function);
    const qsizetype first = lines[0].toArray().size() - qsizetype(sizeof...(Types));
    qsizetype column = first;
    const auto add = [&](auto type) {
        names.push_back(lines[0][column++].toString().toUtf8());
        QTest::addColumn<typename decltype(type)::type>(names.back().constData());
    };
    (add(std::type_identity<Types>()), ...);
    for (qsizetype line = 1; line < lines.size(); ++line) {
        const QVariantList cells = lines[line].toArray().toVariantList();
        QTestData &row = QTest::newRow(cells[0].toString().toUtf8().constData());
        column = first;
        (static_cast<void>(row << cells.value(column++).template value<Types>()), ...);
    }
}

} // namespace zel::test
