// Where a grid's view asks its model for the number of rows: for those that are there now. A key or a click
// is the user's, and may lead to who wants all of them.

#include "platform/controls/grid.h"
#include "platform/controls/grid_model.h"

#include <QEvent>

#include <optional>

namespace zel::controls {

bool Grid::event(QEvent *event) {
    std::optional<GridModel::ForView> view;
    if (!event->isInputEvent())
        view.emplace(model());
    return QTableView::event(event);
}

bool Grid::viewportEvent(QEvent *event) {
    std::optional<GridModel::ForView> view;
    if (!event->isInputEvent())
        view.emplace(model());
    return QTableView::viewportEvent(event);
}

void Grid::currentChanged(const QModelIndex &current, const QModelIndex &previous) {
    const GridModel::ForView view(model());
    QTableView::currentChanged(current, previous);
}

void Grid::updateGeometries() {
    const GridModel::ForView view(model());
    QTableView::updateGeometries();
}

void Grid::doItemsLayout() {
    const GridModel::ForView view(model());
    QTableView::doItemsLayout();
}

void Grid::verticalScrollbarValueChanged(int value) {
    const GridModel::ForView view(model());
    QTableView::verticalScrollbarValueChanged(value);
}

/// The key may lead to a row that is not there yet.
QModelIndex Grid::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    if (action == MoveEnd && modifiers.testFlag(Qt::ControlModifier))
        m_model->showAll();
    else
        m_model->showUpTo(Row() + 2 * rowsOnView());
    const GridModel::ForView view(model());
    return QTableView::moveCursor(action, modifiers);
}

} // namespace zel::controls
