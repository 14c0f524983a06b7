#pragma once

#include <QStyledItemDelegate>

namespace zel::controls {

/// Paints the cells of grids and trees. An amount is grouped, with two decimals and its sign, a negative one
/// in a colour of its own; the cell's own text stays as it is. A cell that is cut shows its whole text in a
/// tooltip.
class CellDelegate : public QStyledItemDelegate {
    Q_OBJECT
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                   const QModelIndex &index) override;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;
};

} // namespace zel::controls
