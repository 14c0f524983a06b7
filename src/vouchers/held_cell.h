#pragma once

#include "platform/base/rows.h"

#include <utility>

namespace zel::vouchers {

/// Rows of which one cell shows what it held before: that of `column`, in each row whose first cell is `key`.
class HeldCell final : public Rows {
public:
    HeldCell(RowsPtr rows, QString key, int column, Value held)
        : m_rows(std::move(rows)), m_key(std::move(key)), m_column(column), m_held(std::move(held)) {}

    [[nodiscard]] qsizetype rowCount() const override { return m_rows->rowCount(); }
    [[nodiscard]] qsizetype rowsRead() const override { return m_rows->rowsRead(); }
    [[nodiscard]] bool isWhole() const override { return m_rows->isWhole(); }
    void readOn(qsizetype count) const override { m_rows->readOn(count); }
    [[nodiscard]] int columnCount() const override { return m_rows->columnCount(); }
    [[nodiscard]] QString columnName(int column) const override { return m_rows->columnName(column); }
    [[nodiscard]] int columnIndex(const QString &name) const override { return m_rows->columnIndex(name); }
    [[nodiscard]] bool isNumber(int column) const override { return m_rows->isNumber(column); }
    [[nodiscard]] bool isAmount(int column) const override { return m_rows->isAmount(column); }
    [[nodiscard]] Value value(qsizetype row, int column) const override {
        return isHeld(row, column) ? m_held : m_rows->value(row, column);
    }
    [[nodiscard]] QString text(qsizetype row, int column) const override {
        return isHeld(row, column) ? m_held.text() : m_rows->text(row, column);
    }
    [[nodiscard]] bool isNull(qsizetype row, int column) const override {
        return isHeld(row, column) ? m_held.isNull() : m_rows->isNull(row, column);
    }

private:
    [[nodiscard]] bool isHeld(qsizetype row, int column) const {
        return column == m_column && m_rows->text(row, 0) == m_key;
    }

    RowsPtr m_rows;
    QString m_key;
    int m_column;
    Value m_held;
};

} // namespace zel::vouchers
