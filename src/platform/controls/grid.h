#pragma once

#include "platform/base/rows.h"

#include <QHash>
#include <QTableView>

namespace zel::controls {

class GridModel;

/// A grid of texts whose row 0 is the heading. Columns are measured in twips, 1440 to the inch; one of width
/// 0 is hidden and can still be read. A new grid has two columns and one blank row.
class Grid : public QTableView {
    Q_OBJECT
public:
    explicit Grid(QWidget *parent = nullptr);

    [[nodiscard]] int Rows() const; ///< the heading counted: 1 is an empty grid
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
    /// bound anew, cleared or destroyed. Null unbinds: as many blank rows are left.
    void setDataSource(zel::RowsPtr rows);
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

    void keyboardSearch(const QString &) override {}

Q_SIGNALS:
    void rowClicked(int row);
    /// A double click, whichever of the row's cells were hit, or F2 (which gives rowClicked, too).
    void rowDoubleClicked(int row);
    void enterPressed(int row);                          ///< Enter; row is 0 on an empty grid
    void contextMenuAsked(const QPoint &globalPosition); ///< right click, Shift+F10 or the menu key

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void applyWidth(int col);
    void applyWidths();
    void keepRow(int row);

    GridModel *m_model;
    QHash<int, int> m_twips;
};

} // namespace zel::controls
