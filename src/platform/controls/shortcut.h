#pragma once

#include <QKeyEvent>
#include <QKeySequence>
#include <QString>

namespace zel::controls {

/// A key and what it does: who answers it and the sheet of keys read the same row.
struct Shortcut {
    QKeyCombination key;
    const char *does = "";
    /// objectName of what it presses, or gives the focus; null where the screen answers it by itself.
    const char *control = nullptr;

    [[nodiscard]] bool is(const QKeyEvent *event) const {
        return (event->keyCombination().toCombined() & ~int(Qt::KeypadModifier)) == key.toCombined();
    }
    [[nodiscard]] QString shown() const { return QKeySequence(key).toString(); }
};

/// What the controls answer wherever they stand.
namespace keys {
inline constexpr Shortcut TakeRow{Qt::Key_F2, "In a list what a double click does: opens it, takes it back"};
inline constexpr Shortcut OpenList{Qt::Key_F4, "Opens a calendar or a list of choices; Esc closes it"};
inline constexpr Shortcut OpenListToo{Qt::ALT | Qt::Key_Down, OpenList.does};
inline constexpr Shortcut Unpick{Qt::Key_Delete, "In a list of choices: none of them"};
inline constexpr Shortcut UnpickToo{Qt::Key_Backspace, Unpick.does};
inline constexpr Shortcut ClickNode{Qt::Key_Space, "In the tree of accounts what a click does"};
inline constexpr Shortcut Close{Qt::CTRL | Qt::Key_W, "Closes the screen"};
inline constexpr Shortcut Leave{Qt::ALT | Qt::Key_X, "Leaves the screen; with none open, logs out"};

inline constexpr Shortcut Everywhere[] = {
    {Qt::Key_Enter, "The next box; on a button, presses it; in a list, chooses"},
    {Qt::Key_Tab, "The next box, with Shift the one before"},
    {Qt::Key_Down, "From a search box into its list"},
    TakeRow,
    OpenList,
    OpenListToo,
    Unpick,
    UnpickToo,
    ClickNode,
    {Qt::SHIFT | Qt::Key_F10, "What a right click does"},
    {Qt::CTRL | Qt::Key_Tab, "The next open screen"},
    Leave,
};
} // namespace keys

} // namespace zel::controls
