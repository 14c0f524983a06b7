#pragma once

#include <QFocusEvent>
#include <QKeyEvent>

namespace zel::controls {

[[nodiscard]] inline bool isEnter(const QKeyEvent *event) {
    return event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
}

/// The printable text that a key types, '' for keys that command. AltGr arrives as Ctrl+Alt on some
/// platforms.
[[nodiscard]] inline QString typedText(const QKeyEvent *event) {
    constexpr auto commands = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
    const auto held = event->modifiers() & commands;
    const bool types = !held || held == (Qt::ControlModifier | Qt::AltModifier);
    const QString text = event->text();
    return types && !text.isEmpty() && QChar::isPrint(text.toUcs4().front()) ? text : QString();
}

/// A letter pressed with Alt that no shortcut took: it commands nothing here, and must not be typed.
[[nodiscard]] inline bool isStrayCommand(const QKeyEvent *event) {
    const QString text = event->text();
    return (event->modifiers() & (Qt::AltModifier | Qt::MetaModifier)) && typedText(event).isEmpty() &&
           !text.isEmpty() && QChar::isPrint(text.toUcs4().front());
}

/// Focus that a menu or a drop-down borrows is not lost by its control.
[[nodiscard]] inline bool isBorrowed(const QFocusEvent *event) {
    return event->reason() == Qt::PopupFocusReason || event->reason() == Qt::MenuBarFocusReason;
}

} // namespace zel::controls
