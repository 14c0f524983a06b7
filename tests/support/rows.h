#pragma once

#include <QTest>

#include <tuple>
#include <vector>

/// The tables of data-driven tests.
namespace zel::test {

/// Those that columns() named last.
inline std::vector<const char *> columnNames;

/// The running test's columns: their types, then their names.
template <typename... Types, typename... Names>
void columns(Names... names) {
    static_assert(sizeof...(Types) == sizeof...(Names));
    columnNames = {names...};
    (static_cast<void>(QTest::addColumn<Types>(names)), ...);
}

/// The running row's values, a type for each of the test's columns. Another number of them, or another type
/// than the column's, ends the tests.
template <typename... Types>
std::tuple<Types...> fetched() {
    if (sizeof...(Types) != columnNames.size())
        qFatal("%zu columns, not %zu", columnNames.size(), sizeof...(Types));
    auto name = columnNames.cbegin();
    const auto next = [&name](int type) { return QTest::qData(*name++, type); };
    return {*static_cast<Types *>(next(qMetaTypeId<Types>()))...};
}

/// Fills a row that QTest made: a value for each column.
template <typename... Values>
void fill(QTestData &row, const Values &...values) {
    (static_cast<void>(row << values), ...);
}

/// A row of the running test: its name, then a value for each column.
template <typename... Values>
void row(const char *name, const Values &...values) {
    fill(QTest::newRow(name), values...);
}

} // namespace zel::test
