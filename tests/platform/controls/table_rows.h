#pragma once

#include "platform/base/rows.h"

#include <QStringList>

/// Rows given as texts; a "#" before a column's name makes it one of numbers, a "$" one of amounts.
class TableRows : public zel::Rows {
public:
    TableRows(QStringList names, QList<QStringList> cells)
        : m_names(std::move(names)), m_cells(std::move(cells)) {}

    static zel::RowsPtr make(const QStringList &names, const QList<QStringList> &cells) {
        return std::make_shared<TableRows>(names, cells);
    }

    qsizetype rowCount() const override { return m_cells.size(); }
    int columnCount() const override { return int(m_names.size()); }
    QString columnName(int column) const override { return QString(m_names[column]).remove('#').remove('$'); }
    int columnIndex(const QString &name) const override {
        for (int column = 0; column < m_names.size(); ++column) {
            if (columnName(column).compare(name, Qt::CaseInsensitive) == 0)
                return column;
        }
        return -1;
    }
    bool isNumber(int column) const override { return m_names[column].startsWith('#') || isAmount(column); }
    bool isAmount(int column) const override { return m_names[column].startsWith('$'); }
    zel::Value value(qsizetype row, int column) const override { return m_cells[row][column]; }
    QString text(qsizetype row, int column) const override { return m_cells[row][column]; }
    bool isNull(qsizetype, int) const override { return false; }

private:
    QStringList m_names;
    QList<QStringList> m_cells;
};
