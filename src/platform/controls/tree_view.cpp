#include "platform/controls/tree_view.h"

#include "platform/base/error.h"
#include "platform/controls/cell_delegate.h"
#include "platform/controls/shortcut.h"
#include "platform/controls/typing.h"

#include <QContextMenuEvent>
#include <QMouseEvent>

namespace zel::controls {

TreeView::TreeView(QWidget *parent) : QTreeWidget(parent) {
    setColumnCount(1);
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setItemDelegate(new CellDelegate(this));
    connect(this, &QTreeWidget::itemExpanded, this,
            [this](QTreeWidgetItem *item) { Q_EMIT nodeExpanded(static_cast<TreeNode *>(item)); });
    connect(this, &QTreeWidget::itemCollapsed, this,
            [this](QTreeWidgetItem *item) { Q_EMIT nodeCollapsed(static_cast<TreeNode *>(item)); });
}

TreeNode *TreeView::addNode(const QString &parentKey, const QString &key, const QString &text, int image) {
    if (m_nodes.contains(key))
        throw Error(35602, QStringLiteral("Key is not unique in collection"));
    TreeNode *parent = parentKey.isEmpty() ? nullptr : node(parentKey);
    auto *added = new TreeNode(key, text);
    if (image >= 1 && image <= m_images.size())
        added->setIcon(0, m_images[image - 1]);
    m_nodes.insert(key, added);
    m_order << added;
    if (parent)
        parent->addChild(added);
    else
        addTopLevelItem(added);
    return added;
}

TreeNode *TreeView::node(const QString &key) const {
    TreeNode *found = find(key);
    if (!found)
        throw Error(35601, QStringLiteral("Element not found"));
    return found;
}

void TreeView::clearNodes() {
    m_nodes.clear();
    m_order.clear();
    m_pressedKey.clear();
    clear();
}

void TreeView::select(TreeNode *node) {
    scrollToItem(node); // opens those that it lies in, which may highlight them
    highlight(node);
}

/// Scrolling to a node would open those that it lies in.
void TreeView::highlight(TreeNode *node) {
    const bool scrolls = hasAutoScroll();
    setAutoScroll(false);
    setCurrentItem(node);
    setAutoScroll(scrolls);
}

void TreeView::mousePressEvent(QMouseEvent *event) {
    const auto *item = static_cast<TreeNode *>(itemAt(event->position().toPoint()));
    m_pressedKey = item ? item->Key() : QString();
    Q_EMIT mouseDown(event->button());
    QTreeWidget::mousePressEvent(event);
}

void TreeView::mouseReleaseEvent(QMouseEvent *event) {
    QTreeWidget::mouseReleaseEvent(event);
    const QPoint place = event->position().toPoint();
    auto *item = static_cast<TreeNode *>(itemAt(place));
    const bool onText = item && place.x() >= visualItemRect(item).left(); // not on its branch mark
    if (onText && item->Key() == m_pressedKey)
        Q_EMIT nodeClicked(item, event->button());
}

void TreeView::keyPressEvent(QKeyEvent *event) {
    const auto click = [this](TreeNode *node) {
        Q_EMIT mouseDown(Qt::LeftButton);
        Q_EMIT nodeClicked(node, Qt::LeftButton);
    };
    auto *item = static_cast<TreeNode *>(currentItem());
    if (item && (isEnter(event) || keys::ClickNode.is(event)))
        return click(item);
    const bool wasHighlighted = item && item->isSelected();
    QTreeWidget::keyPressEvent(event);
    auto *now = static_cast<TreeNode *>(currentItem());
    if (now && now->isSelected() && (now != item || !wasHighlighted))
        click(now);
}

/// A right click tells of itself when the button is let go; the menu key has to be told as one.
void TreeView::contextMenuEvent(QContextMenuEvent *event) {
    auto *item = static_cast<TreeNode *>(currentItem());
    if (event->reason() != QContextMenuEvent::Keyboard || !item)
        return;
    Q_EMIT mouseDown(Qt::RightButton);
    Q_EMIT nodeClicked(item, Qt::RightButton);
}

} // namespace zel::controls
