#pragma once

#include <QString>

namespace zel::shell {

/// The first item of a text file such as Server.txt: up to the first comma or line end, without the blanks
/// around it and without a surrounding pair of double quotes (inside which a comma is part of the item).
/// Error 53 when there is no such file, 62 when it is empty.
[[nodiscard]] QString firstItem(const QString &path);

} // namespace zel::shell
