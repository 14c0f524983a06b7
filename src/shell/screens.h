#pragma once

#include <QString>

#include <functional>
#include <map>

namespace zel::shell {

/// Brings a screen up: creates it when its reference is empty, shows it, brings it to the front.
using Opener = std::function<void()>;

/// The screens that there are, filled by the program's start: menu items by their names ("mnuSession"), and
/// the lock prompt's destinations by the screens' ("frmAccount", which is shown maximised there,
/// "frmSecMenus", "frmRemoveData"). The shell itself knows none of them.
using Screens = std::map<QString, Opener>;

void setScreens(Screens screens);

/// The opener of that name, or nullptr while there is no such screen.
[[nodiscard]] const Opener *screen(const QString &name);

} // namespace zel::shell
