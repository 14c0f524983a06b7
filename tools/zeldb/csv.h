#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <QDate>

#include <cstdint>
#include <optional>

namespace zel::tool {

/// A table as spreadsheets save it: a line of column names, then the rows; UTF-8, with a mark at its
/// beginning or not; cells parted by commas, semicolons or tabs, whichever the first line has most of; quoted
/// or not.
struct Csv {
    struct Row {
        qsizetype line;    ///< that it begins on, from 1
        QStringList cells; ///< without the blanks around them
    };
    QStringList columns;
    QList<Row> rows; ///< without the empty ones
    QChar separator;
};

/// Fails with a sentence for a file that can't be read as such a table.
[[nodiscard]] Csv readCsv(const QString &path);
[[nodiscard]] Csv csvOf(const QByteArray &bytes, const QString &path);

/// What is wrong with one row; caught where rows are counted.
struct RefusedRow {
    QString why;
};

/// One row by its columns' names.
class Record {
public:
    Record(const Csv &table, const Csv::Row &row) : m_table(table), m_row(row) {}

    /// '' where the table has no such column.
    [[nodiscard]] QString text(const char *column) const;
    /// In capitals, as a box that turns what is typed to upper case holds it.
    [[nodiscard]] QString upper(const char *column) const;
    /// In hundredths; nothing for an empty cell.
    [[nodiscard]] std::optional<std::int64_t> cents(const char *column) const;
    /// Day first, or yyyy-mm-dd; today for an empty cell.
    [[nodiscard]] QDate date(const char *column) const;
    /// '' or a text of that mask, in which # stands for a digit; digits alone get the mask's signs.
    [[nodiscard]] QString masked(const char *column, const char *mask) const;
    [[nodiscard]] qsizetype line() const { return m_row.line; }

private:
    const Csv &m_table;
    const Csv::Row &m_row;
};

} // namespace zel::tool
