#pragma once

#include "platform/base/error.h"
#include "platform/report/query/source.h"

#include <QRegularExpression>
#include <QStringList>

#include <map>
#include <vector>

namespace zel::report {

/// Rows written down in a test: a heading "MasJV_VouNo | MasJV_VouDate", then a line a row. A cell is a
/// number if it looks like one, Null if it is "-".
class TextRows final : public Rows {
public:
    TextRows(const QStringList &names, std::vector<std::vector<Value>> cells)
        : m_names(names), m_cells(std::move(cells)) {}
    [[nodiscard]] qsizetype rowCount() const override { return std::ssize(m_cells); }
    [[nodiscard]] int columnCount() const override { return static_cast<int>(m_names.size()); }
    [[nodiscard]] QString columnName(int column) const override { return m_names[column]; }
    [[nodiscard]] int columnIndex(const QString &name) const override {
        return static_cast<int>(m_names.indexOf(name, Qt::CaseInsensitive));
    }
    [[nodiscard]] bool isNumber(int) const override { return false; }
    [[nodiscard]] Value value(qsizetype row, int column) const override {
        return m_cells[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)];
    }
    [[nodiscard]] QString text(qsizetype row, int column) const override { return value(row, column).text(); }
    [[nodiscard]] bool isNull(qsizetype row, int column) const override {
        return value(row, column).isNull();
    }

private:
    QStringList m_names;
    std::vector<std::vector<Value>> m_cells;
};

/// Answers a statement by the first table that it reads from, with the columns that it names.
class MemorySource final : public Source {
public:
    void add(const QString &table, const QString &written) {
        QStringList lines = written.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        Table &made = m_tables[table];
        made.names = cellsOf(lines.takeFirst());
        for (const QString &line : lines)
            made.rows.push_back(cellsOf(line));
    }

    RowsPtr rows(const Sql &select) override {
        const QString text = QString::fromUtf8(select.text());
        statements.push_back(text);
        static const QRegularExpression shape(
            QStringLiteral("^select (.*?) from (\\w+)( (?!where|order|left|inner)(\\w+))?"));
        const auto match = shape.match(text);
        const QString name = match.captured(4).isEmpty() ? match.captured(2) : match.captured(4);
        const auto table = m_tables.find(name);
        if (table == m_tables.end())
            throw Error(208, QStringLiteral("Invalid object name '%1'.").arg(name));
        QStringList names;
        for (const QString &column : match.captured(1).split(QStringLiteral(", ")))
            names += column.section(QStringLiteral(" as "), 1);
        std::vector<std::vector<Value>> cells;
        for (const QStringList &row : table->second.rows) {
            auto &made = cells.emplace_back();
            for (const QString &column : names)
                made.push_back(valueOf(row.value(table->second.names.indexOf(column), QStringLiteral("-"))));
        }
        return std::make_shared<TextRows>(names, std::move(cells));
    }

    QStringList statements;

private:
    struct Table {
        QStringList names;
        std::vector<QStringList> rows;
    };

    static QStringList cellsOf(const QString &line) {
        QStringList cells = line.split(QLatin1Char('|'));
        for (QString &cell : cells)
            cell = cell.trimmed();
        return cells;
    }

    static Value valueOf(const QString &cell) {
        if (cell == QStringLiteral("-"))
            return {};
        if (const auto number = Decimal::parse(cell.toStdString()))
            return *number;
        return cell;
    }

    std::map<QString, Table> m_tables;
};

} // namespace zel::report
