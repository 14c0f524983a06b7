#pragma once

#include "platform/base/value.h"

#include <QString>

#include <memory>

namespace zel {

/// The rows of a result, as a grid, a combo or a report reads them: immutable while anybody holds them.
/// Columns and rows count from 0. Rows may come on demand: who asks for a row or for the count has them read
/// that far, and sees what stood when the query ran. Such reading may fail as the query may.
class Rows {
public:
    virtual ~Rows() = default;
    [[nodiscard]] virtual qsizetype rowCount() const = 0;
    /// How many are there already.
    [[nodiscard]] virtual qsizetype rowsRead() const { return rowCount(); }
    /// Whether these are all.
    [[nodiscard]] virtual bool isWhole() const { return true; }
    /// Reads until so many are there, or all.
    virtual void readOn([[maybe_unused]] qsizetype count) const {}
    [[nodiscard]] bool holds(qsizetype row) const {
        if (row >= rowsRead())
            readOn(row + 1);
        return row < rowsRead();
    }
    [[nodiscard]] virtual int columnCount() const = 0;
    [[nodiscard]] virtual QString columnName(int column) const = 0;
    /// The column of that name, case ignored; -1 when there is none. Of equal names the first.
    [[nodiscard]] virtual int columnIndex(const QString &name) const = 0;
    [[nodiscard]] virtual bool isNumber(int column) const = 0;
    /// A number with decimals, as money is.
    [[nodiscard]] virtual bool isAmount(int) const { return false; }
    [[nodiscard]] virtual Value value(qsizetype row, int column) const = 0;
    /// The cell as text for the screen, Null as ''; made on each call from the packed row.
    [[nodiscard]] virtual QString text(qsizetype row, int column) const = 0;
    [[nodiscard]] virtual bool isNull(qsizetype row, int column) const = 0;
};

using RowsPtr = std::shared_ptr<const Rows>;

} // namespace zel
