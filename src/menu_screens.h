#pragma once

#include "shell/screens.h"

namespace zel {

/// The screens behind the menu; an item without a row here says that its screen is not part of this version.
[[nodiscard]] shell::Screens menuScreens();

} // namespace zel
