#pragma once

#include "platform/controls/shortcut.h"

#include <functional>
#include <span>

class QWidget;

/// The keys of a screen beside those of its controls and the letters underlined in its captions.
namespace zel::shell {

/// What a class of screens offers as keys(), for the sheet of keys. The rows must outlive the program's
/// screens.
using Shortcuts = std::span<const controls::Shortcut>;

inline constexpr controls::Shortcut SheetKey{Qt::Key_F1, "This sheet of keys"};
inline constexpr controls::Shortcut SaveKey{Qt::Key_F9, "Saves what is entered", "cmdSave"};

/// The keys of the screens that have no other.
inline constexpr controls::Shortcut SaveAlone[] = {SaveKey};
inline constexpr controls::Shortcut CloseAlone[] = {controls::keys::Close};

/// Tells that these are the screen's keys. Each that names a control is answered as onKey does; the others
/// the screen answers by itself.
void connectKeys(QWidget &screen, Shortcuts keys);
/// Those that the screen has told; none where it has not.
[[nodiscard]] Shortcuts keysOf(const QWidget &screen);

/// On that screen the key gives the focus to the control that `target` names, and clicks a button. Nothing
/// happens while the control is null, disabled or out of sight.
void onKey(QWidget &screen, const controls::Shortcut &key, std::function<QWidget *()> target);
/// The tooltip: what the control is for, and its key.
void tellKey(QWidget &control, const controls::Shortcut &key);
/// Both, for the one control.
void onKey(QWidget &screen, const controls::Shortcut &key, QWidget &control);

} // namespace zel::shell
