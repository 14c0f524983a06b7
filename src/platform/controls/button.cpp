#include "platform/controls/button.h"

#include "platform/controls/focus.h"
#include "platform/controls/look.h"
#include "platform/controls/typing.h"

#include <QShortcutEvent>

namespace zel::controls {

Button::Button(QWidget *parent) : QPushButton(parent) {
    setAutoDefault(false);
}

void Button::setIconName(const QString &name) {
    m_iconName = name;
    setIcon(controls::icon(name));
}

bool Button::event(QEvent *event) {
    if (event->type() == QEvent::Shortcut) {
        const auto *pressed = static_cast<QShortcutEvent *>(event);
        if (!pressed->isAmbiguous() && pressed->key() == shortcut() && isEnabled()) {
            setFocus(Qt::ShortcutFocusReason);
            click();
            return true;
        }
    }
    return QPushButton::event(event);
}

void Button::keyPressEvent(QKeyEvent *event) {
    if (!isEnter(event))
        QPushButton::keyPressEvent(event);
    else if (m_enterGoesOn)
        focusNext(this);
    else
        click();
}

void CheckBox::keyPressEvent(QKeyEvent *event) {
    if (!isEnter(event))
        QCheckBox::keyPressEvent(event);
    else if (m_enterKey == EnterKey::GoesOn)
        focusNext(this);
}

void OptionButton::keyPressEvent(QKeyEvent *event) {
    if (!isEnter(event))
        QRadioButton::keyPressEvent(event);
    else if (m_enterKey == EnterKey::GoesOn)
        focusNext(this);
}

} // namespace zel::controls
