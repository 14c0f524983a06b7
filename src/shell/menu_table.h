#pragma once

#include <QString>

#include <span>

namespace zel::shell {

/// One row of the main window's menu, in order. `level` 0 stands in the menu bar; a row belongs to the
/// nearest row above it with a lower level. A row with the caption "-" is a separator.
struct MenuRow {
    int level = 0;
    const char *name = "";
    const char *caption = "";
    const char *key = "";
};

/// The whole menu of MDIForm1.
[[nodiscard]] std::span<const MenuRow> menuTable();

/// The caption of the row of that name; '' when there is none.
[[nodiscard]] QString menuCaption(const QString &name);

} // namespace zel::shell
