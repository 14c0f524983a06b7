#pragma once

#include "platform/base/rows.h"

#include <QAbstractTableModel>
#include <QBasicTimer>
#include <QHash>

#include <vector>

namespace zel::controls {

/// The cells of a grid as texts. Grid rows count from 0, the heading; the model's own rows from grid row 1.
/// While rows are bound it reads them cell by cell and copies none; the first change of a cell or of the
/// number of rows makes a copy.
///
/// Of rows that come on demand the view is shown those that are there, and told of more as they come; who
/// else asks for the count, or for a row beyond these, has them read.
class GridModel : public QAbstractTableModel {
    Q_OBJECT
public:
    using QAbstractTableModel::QAbstractTableModel;

    /// Whether the cell is an amount, which is painted grouped and with two decimals.
    static constexpr int AmountRole = Qt::UserRole;

    /// Shows these rows with their column names as headings, at first at least `atOnce` of them. Null lets go
    /// of the bound rows and leaves as many blank ones; headings stay.
    void bind(RowsPtr rows, qsizetype atOnce = 0);
    [[nodiscard]] const RowsPtr &bound() const { return m_bound; }
    /// Blanks every cell and heading.
    void clear();
    /// Unbound and blank, with one row below the heading; the bound rows are not read on for this.
    void showNone();

    /// While one lives, the view asks; another model than this class is let be.
    class ForView {
    public:
        explicit ForView(const QAbstractItemModel *model) : m_model(qobject_cast<const GridModel *>(model)) {
            if (m_model)
                ++m_model->m_forView;
        }
        ~ForView() {
            if (m_model)
                --m_model->m_forView;
        }
        ForView(const ForView &) = delete;
        ForView &operator=(const ForView &) = delete;

    private:
        const GridModel *m_model;
    };
    /// Reads and shows at least so many of the bound rows, where there are so many.
    void showUpTo(qsizetype count);
    void showAll();
    /// While the user moves through the rows by the scroll bar, none come under it.
    void holdRows(bool hold);

    [[nodiscard]] int rows() const; ///< that are shown, the heading counted
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
    [[nodiscard]] QModelIndex index(int row, int column, const QModelIndex &parent = {}) const override;
    [[nodiscard]] bool canFetchMore(const QModelIndex &parent) const override;
    void fetchMore(const QModelIndex &parent) override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    void checkCell(int row, int col) const;
    void blank(std::size_t count);
    void beginReset();
    void endReset();
    /// Tells the view of the rows that were read meanwhile.
    void showRead();
    void copyBound();
    [[nodiscard]] Qt::Alignment alignment(int col) const;

    RowsPtr m_bound;
    int m_shown = 0; ///< of the bound rows
    mutable int m_forView = 0;
    bool m_changing = false; ///< whoever is told of a change may ask for more; that waits
    bool m_holdsRows = false;
    QBasicTimer m_looks; ///< for rows that were read meanwhile
    std::vector<QStringList>
        m_cells; ///< rows below the heading while none are bound; a short one is blank at its end
    QStringList m_headings;
    QList<bool> m_numbers;
    QList<bool> m_amounts;
    QHash<int, Qt::Alignment> m_alignments;
    int m_cols = 2;
};

} // namespace zel::controls
