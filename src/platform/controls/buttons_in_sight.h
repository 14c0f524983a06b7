#pragma once

class QWidget;

namespace zel::controls {

/// Puts what stands above the screen's row of buttons, the layout "layoutButtons" of a column, into a frame
/// of its own, which scrolls where there is less room than it asks for and follows the focus. A screen
/// without such a row stays as it is.
void keepButtonsInSight(QWidget &screen);

} // namespace zel::controls
