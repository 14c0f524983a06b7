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
    [[nodiscard]] const RowsPtr &RowSource() const { return m_rows; }
    /// Column names; Error 3265 when the rows have no such column.
    [[nodiscard]] const QString &ListField() const { return m_listField; }
    void setListField(const QString &column);
    [[nodiscard]] const QString &BoundColumn() const { return m_boundColumn; }
    void setBoundColumn(const QString &column);

    /// The bound column's text of the picked row, '' when none is.
    [[nodiscard]] QString BoundText() const;
    /// Picks the first row whose bound column has that text; none when there is no such row.
    void setBoundText(const QString &text);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void fill();

    RowsPtr m_rows;
    QString m_listField;
    QString m_boundColumn;
};

} // namespace zel::controls
