#pragma once

#include "platform/base/rows.h"
#include "platform/controls/combo_box.h"

class QAbstractListModel;

namespace zel::controls {

/// A drop-down over rows that shows one column and holds another. Letters pick; Delete and Backspace empty
/// it. In a .ui file: ListField and BoundColumn.
class DataCombo : public ComboBox {
    Q_OBJECT
    Q_PROPERTY(QString ListField READ ListField WRITE setListField)
    Q_PROPERTY(QString BoundColumn READ BoundColumn WRITE setBoundColumn)
public:
    explicit DataCombo(QWidget *parent = nullptr);

    /// Lists these rows (null: none) with nothing picked; holds them until the next call.
    void setRowSource(RowsPtr rows);
    /// Lists these rows in place of the ones before and keeps the pick, told by its bound column; a pick that
    /// they don't have is dropped.
    void ReFill(RowsPtr rows);
    [[nodiscard]] const RowsPtr &RowSource() const { return m_rows; }
    /// Column names; Error 3265 when the rows have no such column.
    [[nodiscard]] const QString &ListField() const { return m_listField; }
    void setListField(const QString &column);
    [[nodiscard]] const QString &BoundColumn() const { return m_boundColumn; }
    void setBoundColumn(const QString &column);

    /// The bound column's text of the picked row, or what was set; '' when nothing is picked.
    [[nodiscard]] QString BoundText() const;
    /// Picks the first row whose bound column has that text. Without such a row the combo shows nothing and
    /// stays bound to the text until something is picked, or the list is filled anew.
    void setBoundText(const QString &text);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void fill(int picked = -1);
    [[nodiscard]] int rowBoundTo(const QString &text) const;

    RowsPtr m_rows;
    QString m_absent; ///< bound to, while no row has it
    QString m_listField;
    QString m_boundColumn;
};

} // namespace zel::controls
