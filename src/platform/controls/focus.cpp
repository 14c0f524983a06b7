#include "platform/controls/focus.h"

#include "platform/base/error.h"
#include "platform/controls/form_life.h"

#include <QStackedWidget>
#include <QWidget>

namespace zel::controls {

namespace {

/// Opens the way to QWidget's own step through the tab order.
class Steps : public QWidget {
public:
    using QWidget::focusNextPrevChild;
};

bool wasHidden(const QWidget *widget) {
    return widget->testAttribute(Qt::WA_WState_ExplicitShowHide) &&
           widget->testAttribute(Qt::WA_WState_Hidden);
}

bool standsOnHidden(const QWidget *control) {
    for (const QWidget *at = control; at && !dynamic_cast<const FormLife *>(at); at = at->parentWidget()) {
        const bool page = qobject_cast<const QStackedWidget *>(at->parentWidget()) != nullptr;
        if (!page && wasHidden(at))
            return true;
        if (at->isWindow())
            break;
    }
    return false;
}

} // namespace

bool mayHaveFocus(const QWidget *control) {
    return control->isEnabled() && !standsOnHidden(control);
}

void SetFocus(QWidget *control) {
    if (!mayHaveFocus(control))
        throw Error(errors::InvalidCall, QStringLiteral("Invalid procedure call or argument"));
    control->setFocus(Qt::OtherFocusReason);
}

void focusNext(QWidget *control) {
    (control->*(&Steps::focusNextPrevChild))(true);
}

} // namespace zel::controls
