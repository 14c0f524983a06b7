#pragma once

#include "shell/search.h"

/// The search of applications, the latest number first. The list's column 0 is the AppID.
namespace zel::institute {

/// All criteria, as the application form has them; another one searches with the next value or date.
[[nodiscard]] shell::SearchTable applicationSearch();

/// As the finder has them: by student, number and cell; another one searches at once.
[[nodiscard]] shell::SearchTable applicationFinderSearch();

} // namespace zel::institute
