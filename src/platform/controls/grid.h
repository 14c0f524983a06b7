#pragma once

#include "platform/base/rows.h"

#include <QHash>
#include <QTableView>

class QLabel;

namespace zel::controls {

class GridModel;

/// A grid of texts whose row 0 is the heading. Columns are measured in twips, 1440 to the inch; one of width
/// 0 is hidden and can still be read. A new grid has two columns and one blank row.
///
/// Widths are the least: a column has room for its heading and, if it holds amounts, for the largest, and
/// what is left falls to the last of the widest columns. A blank row that stands alone is not to be seen;
/// what emptyText says is shown in its place.
class Grid : public QTableView {
    Q_OBJECT
    Q_PROPERTY(QString emptyText READ emptyText WRITE setEmptyText)
public:
    explicit Grid(QWidget *parent = nullptr);

    /// The heading counted: 1 is an empty grid. Rows on demand are read for this to their end.
    [[nodiscard]] int Rows() const;
    void setRows(int rows);
    [[nodiscard]] int Cols() const;
    void setCols(int cols);
    /// Cell text; Error 381 outside the grid.
    [[nodiscard]] QString TextMatrix(int row, int col) const;
    void setTextMatrix(int row, int col, const QString &text);
    /// A row below the heading. Error 30009 for any other.
    void RemoveItem(int row);
    /// Blanks every cell, headings too; Rows and Cols stay.
    void Clear();
    /// Shows these rows, their column names as headings, without a copy; the grid holds them until it is
    /// bound anew, cleared or destroyed. Null unbinds: as many blank rows are left. Of rows on demand a
    /// screenful is read, and more are shown as they come.
    void setDataSource(zel::RowsPtr rows);
    /// What a search without a row shows: unbound and cleared, one blank row below the heading.
    void showNone();
    void setRedraw(bool redraw) { setUpdatesEnabled(redraw); }

    void setColWidth(int col, int twips);
    [[nodiscard]] int ColWidth(int col) const;
    /// Default: numbers of bound rows to the right, everything else to the left.
    void setColAlignment(int col, Qt::Alignment alignment);
    /// Cols, headings and widths in one go.
    struct Column {
        QString heading{};
        int twips = 0;
        Qt::Alignment alignment{}; ///< none: the default
    };
    void setColumns(const QList<Column> &columns);

    [[nodiscard]] int Row() const; ///< the current row; 0 when there is none below the heading
    void setRow(int row);
    [[nodiscard]] int Col() const;

    /// In a label of the name "lblEmpty" while the list has no row, or a blank one alone; '' for none.
    [[nodiscard]] QString emptyText() const;
    void setEmptyText(const QString &text);

    void keyboardSearch(const QString &) override {}

Q_SIGNALS:
    void rowClicked(int row);
    /// A double click, whichever of the row's cells were hit, or F2 (which gives rowClicked, too).
    void rowDoubleClicked(int row);
    void enterPressed(int row);                          ///< Enter; row is 0 on an empty grid
    void contextMenuAsked(const QPoint &globalPosition); ///< right click, Shift+F10 or the menu key

protected:
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;
    void updateGeometries() override;
    void doItemsLayout() override;
    bool event(QEvent *event) override;
    bool viewportEvent(QEvent *event) override;
    void verticalScrollbarValueChanged(int value) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void changeEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex &index,
                                                         const QEvent *event) const override;

private:
    void applyWidth(int col);
    void applyWidths();
    void spreadRest();
    void keepRow(int row);
    [[nodiscard]] qsizetype rowsOnView() const;
    void showEmptiness();

    GridModel *m_model;
    QHash<int, int> m_twips;
    QLabel *m_emptyLabel = nullptr; ///< on the viewport
};

} // namespace zel::controls
