#pragma once

#include <QIcon>
#include <QString>

class QApplication;

namespace zel::controls {

/// Style, palette and font of the whole program, and its icons.
void applyLook(QApplication &application);

/// A line icon of the program's set: "save", "new", "delete", "print", "exit", "search", "add", "remove",
/// "cancel", "edit", "first", "previous", "next", "last", "zoom-in", "zoom-out", "fit-width", "fit-page",
/// "export", "refresh", "user", "calendar", "level-1", "level-2", "level-3", "logo",
/// "information", "critical", and what stands beside an address: "company", "contact", "telephone", "mobile",
/// "fax", "mail", "web", "place", "city", "country", "address". In a .ui file: the resource
/// ":/icons/<name>.svg".
[[nodiscard]] QIcon icon(const QString &name);

/// A style sheet for a single widget: "heading" of a table, "calendar". One for the whole program would
/// remember what it found out about each combo box that ever was.
[[nodiscard]] QString sheet(const QString &name);

/// Pixels of a length in twips (1440 to the inch) on the screen of the program.
[[nodiscard]] int pixels(int twips);

} // namespace zel::controls
