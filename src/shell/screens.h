#pragma once

#include "platform/controls/form_life.h"
#include "shell/screen_keys.h"

#include <QString>

#include <concepts>
#include <functional>
#include <map>
#include <utility>

namespace zel::shell {

/// Brings a screen up: creates it when its reference is empty, shows it, brings it to the front.
using Opener = std::function<void()>;

/// What the sheet of keys tells of a screen beside its opener: its keys, and a title where it is no menu
/// item.
struct Screen {
    Screen() = default;
    Screen(std::invocable auto opener, Shortcuts keysOfScreen = {}, const char *titleOfKeys = "")
        : open(std::move(opener)), keys(keysOfScreen), title(titleOfKeys) {}

    Opener open;
    Shortcuts keys;
    const char *title = "";
};

/// The screens that there are, filled by the program's start: menu items by their names ("mnuSession"), and
/// the lock prompt's destinations by the screens' ("frmAccount", "frmSecMenus", "frmRemoveData"). The menu
/// itself knows none of them.
using Screens = std::map<QString, Screen>;

void setScreens(Screens screens);
[[nodiscard]] const Screens &screens();

/// Brings the screen of that name up. Error 730 when there is none.
void openScreen(const QString &name);

template <class T>
[[nodiscard]] Shortcuts keysOfClass() {
    if constexpr (requires { T::keys(); })
        return T::keys();
    else
        return {};
}

/// A screen without more to do.
template <class T>
[[nodiscard]] Screen shows(controls::FormReference<T> &reference, const char *title = "") {
    return {[&reference] { reference->Show(); }, keysOfClass<T>(), title};
}
template <class T>
[[nodiscard]] Screen showsMaximized(controls::FormReference<T> &reference) {
    return {[&reference] { reference->ShowMaximized(); }, keysOfClass<T>()};
}

} // namespace zel::shell
