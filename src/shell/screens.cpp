#include "shell/screens.h"

#include <utility>

namespace zel::shell {

namespace {
Screens theScreens;
} // namespace

void setScreens(Screens screens) {
    theScreens = std::move(screens);
}

const Opener *opener(const QString &name) {
    const auto found = theScreens.find(name);
    return found == theScreens.end() ? nullptr : &found->second;
}

} // namespace zel::shell
