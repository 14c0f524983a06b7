#pragma once

#include "platform/controls/shortcut.h"

/// The keys of the viewer. What they do is also said in the tools' tips.
namespace zel::viewer::keys {

using controls::Shortcut;

inline constexpr Shortcut FirstPage{Qt::Key_Home, "First page"};
inline constexpr Shortcut LastPage{Qt::Key_End, "Last page"};
inline constexpr Shortcut PreviousPage{Qt::ALT | Qt::Key_PageUp, "Previous page"};
inline constexpr Shortcut NextPage{Qt::ALT | Qt::Key_PageDown, "Next page"};
inline constexpr Shortcut ScrollUp{Qt::Key_PageUp, "Scrolls up"};
inline constexpr Shortcut ScrollDown{Qt::Key_PageDown, "Scrolls down"};
inline constexpr Shortcut Find{Qt::CTRL | Qt::Key_F, "To the words to find; Esc leaves them"};
inline constexpr Shortcut FindNext{Qt::Key_F3, "Find next"};
inline constexpr Shortcut FindBefore{Qt::SHIFT | Qt::Key_F3, "Find the one before"};
inline constexpr Shortcut ZoomIn{Qt::CTRL | Qt::Key_Plus, "Larger"};
inline constexpr Shortcut ZoomInToo{Qt::CTRL | Qt::Key_Equal, "Larger"};
inline constexpr Shortcut ZoomOut{Qt::CTRL | Qt::Key_Minus, "Smaller"};
inline constexpr Shortcut FitWidth{Qt::CTRL | Qt::Key_1, "Fit width"};
inline constexpr Shortcut FitPage{Qt::CTRL | Qt::Key_0, "Fit page"};
inline constexpr Shortcut Continuous{Qt::CTRL | Qt::Key_2, "Pages one below the other, or one at a time"};
inline constexpr Shortcut Refresh{Qt::Key_F5, "Read again"};
inline constexpr Shortcut Print{Qt::CTRL | Qt::Key_P, "Print"};
inline constexpr Shortcut Export{Qt::CTRL | Qt::Key_E, "Export as PDF"};

inline constexpr Shortcut All[] = {FirstPage, LastPage, PreviousPage, NextPage, ScrollUp,  ScrollDown,
                                   Find,      FindNext, FindBefore,   ZoomIn,   ZoomInToo, ZoomOut,
                                   FitWidth,  FitPage,  Continuous,   Refresh,  Print,     Export};

} // namespace zel::viewer::keys
