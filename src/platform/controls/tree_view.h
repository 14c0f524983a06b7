#pragma once

#include <QHash>
#include <QTreeWidget>

namespace zel::controls {

/// A node with a key that is its own in the whole tree, and a tag.
class TreeNode : public QTreeWidgetItem {
public:
    TreeNode(QString key, const QString &text) : m_key(std::move(key)) { setText(0, text); }
    [[nodiscard]] const QString &Key() const { return m_key; }
    QString Tag;

private:
    QString m_key;
};

class TreeView : public QTreeWidget {
    Q_OBJECT
public:
    explicit TreeView(QWidget *parent = nullptr);

    /// The pictures that nodes name by number from 1.
    void setImages(const QList<QIcon> &images) { m_images = images; }
    /// Adds a root ('' for `parentKey`) or the last child of a node; a node begins closed. Error 35601 when
    /// the parent isn't there, 35602 when the key is taken.
    TreeNode *addNode(const QString &parentKey, const QString &key, const QString &text, int image = 0);
    /// Error 35601 when there is none.
    [[nodiscard]] TreeNode *node(const QString &key) const;
    [[nodiscard]] TreeNode *find(const QString &key) const { return m_nodes.value(key, nullptr); }
    /// All nodes in the order in which they were added.
    [[nodiscard]] const QList<TreeNode *> &nodes() const { return m_order; }
    void clearNodes();
    /// Makes it the current node and scrolls to it.
    void select(TreeNode *node);
    /// Makes it the current node where it stands.
    void highlight(TreeNode *node);

Q_SIGNALS:
    void mouseDown(Qt::MouseButton button);
    /// Enter and Space click, too, and so does every key that moves the highlight.
    void nodeClicked(zel::controls::TreeNode *node, Qt::MouseButton button);
    /// By the user or by the program.
    void nodeExpanded(zel::controls::TreeNode *node);
    void nodeCollapsed(zel::controls::TreeNode *node);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    QHash<QString, TreeNode *> m_nodes;
    QList<TreeNode *> m_order;
    QList<QIcon> m_images;
    QString m_pressedKey;
};

} // namespace zel::controls
