#pragma once

#include <QTest>

/// The tables of data-driven tests.
namespace zel::test {

/// The running test's columns: their types, then their names.
template <typename... Types, typename... Names>
void columns(Names... names) {
    static_assert(sizeof...(Types) == sizeof...(Names));
    (static_cast<void>(QTest::addColumn<Types>(names)), ...);
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
