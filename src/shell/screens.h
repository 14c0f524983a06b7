#pragma once

#include "platform/controls/form_life.h"

#include <QString>

#include <functional>
#include <map>

namespace zel::shell {

/// Brings a screen up: creates it when its reference is empty, shows it, brings it to the front.
using Opener = std::function<void()>;

/// The screens that there are, filled by the program's start: menu items by their names ("mnuSession"), and
/// the lock prompt's destinations by the screens' ("frmAccount", "frmSecMenus", "frmRemoveData"). The menu
/// itself knows none of them.
using Screens = std::map<QString, Opener>;

void setScreens(Screens screens);

/// Brings the screen of that name up. Error 730 when there is none.
void openScreen(const QString &name);

/// The opener of a screen without more to do.
template <class T>
[[nodiscard]] Opener shows(controls::FormReference<T> &reference) {
    return [&reference] { reference->Show(); };
}
template <class T>
[[nodiscard]] Opener showsMaximized(controls::FormReference<T> &reference) {
    return [&reference] { reference->ShowMaximized(); };
}

} // namespace zel::shell
