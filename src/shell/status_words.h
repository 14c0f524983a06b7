#pragma once

#include <QString>

class QMdiArea;
class QStatusBar;
class QWidget;

/// What the clerk is told without a box, in the main window's status bar.
namespace zel::shell {

/// What has just happened ("BP 112 saved, 25,000.00"): shown for ten seconds, or until the next is said.
void say(const QString &happened);

/// What the clerk is in the middle of on that screen ("correcting BP 111"): shown at the right while the
/// screen is the active one; '' ends it.
void setUnderWay(QWidget &screen, const QString &words);

/// The main window's own bar and area; without them nothing is shown.
void showStatusIn(QStatusBar &bar, QMdiArea &area);

} // namespace zel::shell
