#include "shell/screens.h"

#include "platform/base/error.h"

#include <utility>

namespace zel::shell {

namespace {
Screens theScreens;
} // namespace

void setScreens(Screens screens) {
    theScreens = std::move(screens);
}

const Screens &screens() {
    return theScreens;
}

void openScreen(const QString &name) {
    const auto found = theScreens.find(name);
    if (found == theScreens.end())
        throw Error(errors::ControlNotFound, "There is no screen " + name + ".");
    found->second.open();
}

} // namespace zel::shell
