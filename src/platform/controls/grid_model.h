#pragma once

#include "platform/base/rows.h"

#include <QAbstractTableModel>
#include <QHash>

#include <vector>

namespace zel::controls {

/// The cells of a grid as texts. Grid rows count from 0, the heading; the model's own rows from grid row 1.
/// While rows are bound it reads them cell by cell and copies none; the first change of a cell or of the
/// number of rows makes a copy.
class GridModel : public QAbstractTableModel {
    Q_OBJECT
public:
    using QAbstractTableModel::QAbstractTableModel;

    /// Whether the cell is an amount, which is painted grouped and with two decimals.
    static constexpr int AmountRole = Qt::UserRole;

    /// Shows these rows with their column names as headings. Null lets go of the bound rows and leaves as
    /// many blank ones; headings stay.
    void bind(RowsPtr rows);
    [[nodiscard]] const RowsPtr &bound() const { return m_bound; }
    /// Blanks every cell and heading.
    void clear();

    [[nodiscard]] int rows() const; ///< the heading counted
    /// The one row below the heading has no text.
    [[nodiscard]] bool isBlank() const;
    void setRows(int rows);
    [[nodiscard]] int cols() const { return m_cols; }
    void setCols(int cols);
    void removeRow(int row);

    /// Error 381 outside the grid.
    [[nodiscard]] QString text(int row, int col) const;
    void setText(int row, int col, const QString &text);
    void setAlignment(int col, Qt::Alignment alignment);
    /// Bound amounts, and what was told to stand at the right.
    [[nodiscard]] bool holdsAmounts(int col) const;

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    void checkCell(int row, int col) const;
    void copyBound();
    [[nodiscard]] Qt::Alignment alignment(int col) const;

    RowsPtr m_bound;
    std::vector<QStringList>
        m_cells; ///< rows below the heading while none are bound; a short one is blank at its end
    QStringList m_headings;
    QList<bool> m_numbers;
    QList<bool> m_amounts;
    QHash<int, Qt::Alignment> m_alignments;
    int m_cols = 2;
};

} // namespace zel::controls
