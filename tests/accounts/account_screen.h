#pragma once

#include "platform/base/sql.h"
#include "platform/controls/tree_view.h"

#include "tests/support/driver.h"
#include "tests/support/office.h"

/// What the tests of the account screens share.
namespace zel::test {

/// The menu's and the lock prompt's openers of the account screens.
void setAccountScreens();

/// ASSETS 1 (order 5), BANKS 1.1, CITY BANK 1.1.1 with all its details, HILL BANK 1.1.2, INCOME 2.
[[nodiscard]] const Sql &smallChart();

[[nodiscard]] controls::TreeView *tree(QWidget *screen);
[[nodiscard]] controls::TreeNode *node(QWidget *screen, const QString &code);
/// Key of the tree's current node; '' when it has none.
[[nodiscard]] QString currentKey(QWidget *screen);
[[nodiscard]] bool isShown(QWidget *screen, const QString &name);

/// The click on a node by the keyboard.
void clickNode(QWidget *screen, const QString &code);
/// The menu key on a node; when its menu comes up, its one item is chosen. True: it came.
bool editByPopup(QWidget *screen, const QString &code);

} // namespace zel::test
