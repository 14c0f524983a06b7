#pragma once

#include <QString>

#include <string>
#include <vector>

struct sqlite3;

namespace zel::controls {
class Grid;
class TextBox;
} // namespace zel::controls

/// What reaches the engine and what reaches the screen while the program is measured.
namespace bench {

/// The statements of the program's connections, latest last, from now on; those that bare connections run
/// are not among them when these were opened before.
void watchStatements();
[[nodiscard]] std::vector<std::string> &watchedStatements();

/// A connection for a bare loop: read-only, with the program's functions and its cache. Open it before
/// watchStatements.
[[nodiscard]] sqlite3 *openBare(const QString &database);

/// A list shows long before its query is read whole, except where rows must be sorted before the first one:
/// names of accounts are, since no index has their order beyond ASCII.
constexpr double StreamedLimit = 0.125;
constexpr double SortedLimit = 1.3;

/// A key in the box of a search.
struct KeySearch {
    const char *what;
    char key;
    zel::controls::TextBox *box;
    zel::controls::Grid *list;
    double limit = StreamedLimit;
};

/// From the key to the painted list, against the statement that the key runs, prepared and read whole by a
/// bare loop. Prints the ratio and the rows; says whether it is within its limit and the rows are as many.
bool searchByKey(sqlite3 *db, const KeySearch &search);

} // namespace bench
