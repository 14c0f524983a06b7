#include "platform/controls/application.h"

#include "platform/controls/focus.h"

#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QShortcut>
#include <QShortcutEvent>

namespace zel::controls {

namespace {

bool anyTakes(const QList<QAction *> &actions, const QKeySequence &key) {
    for (const QAction *action : actions) {
        if (!action->isVisible() || !action->isEnabled())
            continue;
        if (action->shortcuts().contains(key) || (action->menu() && anyTakes(action->menu()->actions(), key)))
            return true;
    }
    return false;
}

bool hasSelection(const QWidget *control) {
    if (const auto *memo = qobject_cast<const QPlainTextEdit *>(control))
        return memo->textCursor().hasSelection();
    const auto *line = qobject_cast<const QLineEdit *>(control);
    if (!line)
        line = control->findChild<QLineEdit *>();
    return line && line->hasSelectedText();
}

/// The screen that has the focus: a child window or a window.
QWidget *activeScreen() {
    QWidget *at = QApplication::focusWidget();
    while (at && !at->isWindow() && at->windowType() != Qt::SubWindow)
        at = at->parentWidget();
    return at;
}

/// What the mnemonic leads to: the control itself, or the buddy of a label.
QWidget *targetOf(QWidget *widget, const QKeySequence &key) {
    if (auto *button = qobject_cast<QAbstractButton *>(widget))
        return button->shortcut() == key ? button : nullptr;
    if (auto *label = qobject_cast<QLabel *>(widget))
        return label->buddy() && QKeySequence::mnemonic(label->text()) == key ? label->buddy() : nullptr;
    return nullptr;
}

/// A screen without such a button may have the key for itself.
bool handToShortcut(QWidget *screen, const QKeySequence &key) {
    for (QShortcut *own : screen->findChildren<QShortcut *>())
        if (own->keys().contains(key))
            return QMetaObject::invokeMethod(own, "activated");
    return false;
}

} // namespace

bool Application::menuTakes(QObject *receiver, QEvent *event) const {
    const auto *pressed = static_cast<QKeyEvent *>(event);
    auto *control = qobject_cast<QWidget *>(receiver);
    if (!control || activeModalWidget() || activePopupWidget())
        return false;
    const QKeySequence key(pressed->keyCombination().toCombined() & ~int(Qt::KeypadModifier));
    for (const QMenuBar *bar : control->window()->findChildren<QMenuBar *>(Qt::FindDirectChildrenOnly)) {
        if (anyTakes(bar->actions(), key))
            return !(pressed->matches(QKeySequence::Copy) && hasSelection(control));
    }
    return false;
}

/// A letter with Alt is a key of the screen or of nothing.
bool Application::typesLetterWithAlt(QObject *receiver, QEvent *event) const {
    const auto *pressed = static_cast<QKeyEvent *>(event);
    return pressed->modifiers() == Qt::AltModifier && !pressed->text().isEmpty() &&
           pressed->text().at(0).isPrint() &&
           (qobject_cast<QLineEdit *>(receiver) || qobject_cast<QPlainTextEdit *>(receiver) ||
            qobject_cast<QComboBox *>(receiver));
}

/// A mnemonic that stands on the active screen and elsewhere is the screen's; so is one of the menu bar's
/// that belongs to a button on a page of the screen that is not in front: Exit leaves the screen, not all of
/// them.
bool Application::mnemonicGoesToScreen(QObject *receiver, QEvent *event) const {
    const auto *pressed = static_cast<QShortcutEvent *>(event);
    QWidget *screen = activeScreen();
    if (!screen || !(pressed->isAmbiguous() || qobject_cast<QMenuBar *>(receiver)))
        return false;
    QList<QWidget *> targets;
    QAbstractButton *behind = nullptr;
    for (QWidget *widget : screen->findChildren<QWidget *>()) {
        QWidget *target = targetOf(widget, pressed->key());
        if (target && target->isEnabled() && widget->isVisible() && target->isVisible())
            targets << target;
        else if (auto *button = qobject_cast<QAbstractButton *>(target); button && mayHaveFocus(button))
            behind = button;
    }
    if (targets.isEmpty() && behind) {
        behind->click();
        return true;
    }
    if (targets.isEmpty())
        return handToShortcut(screen, pressed->key());
    const auto next = targets.indexOf(focusWidget()) + 1;
    QWidget *target = targets[next % targets.size()];
    target->setFocus(Qt::ShortcutFocusReason);
    auto *button = qobject_cast<QAbstractButton *>(target);
    if (button && targets.size() == 1)
        button->click();
    return true;
}

} // namespace zel::controls
