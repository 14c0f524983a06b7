#pragma once

class QWidget;

namespace zel::controls {

/// Whether a control is enabled and hidden by nothing but the page of a tab control that is not in front.
[[nodiscard]] bool mayHaveFocus(const QWidget *control);

/// Gives a control the focus. Error 5 when the control, or what it stands on, is disabled or hidden (the
/// pages of a tab control count as shown).
void SetFocus(QWidget *control);

/// What the Tab key does: the focus goes from `control` to the next one in its screen's tab order.
void focusNext(QWidget *control);

} // namespace zel::controls
