#pragma once

#include "platform/ado/recordset.h"

#include <QString>

#include <functional>
#include <span>
#include <vector>

class QComboBox;
class QWidget;

namespace zel::controls {
class Grid;
class TextBox;
} // namespace zel::controls

/// What the entry screens share: the walk over the tagged boxes, the filling of the list, the search keys.
namespace zel::shell {

/// The text boxes of a form that bear this Tag, in the order of their making in the design.
[[nodiscard]] std::vector<controls::TextBox *> taggedBoxes(const QWidget &form, const QString &tag = "M");

/// Empties the tagged boxes; combos and grids stay as they are.
void ClearAll(QWidget &form, const QString &tag = "M");

/// Each tagged box but `except` gives its text to the field that its DataField names, an empty text as Null.
void saveTagged(const QWidget &form, ado::Recordset &row, const QString &except = {},
                const QString &tag = "M");

/// Each tagged box but `except` shows its field of the current row, Null as ''.
void loadTagged(QWidget &form, ado::Recordset &row, const QString &except = {}, const QString &tag = "M");

/// The tagged boxes take no longer typing than their columns hold.
void limitTagged(QWidget &form, ado::Recordset &columns, const QString &tag = "M");

struct GridColumn {
    QString heading;
    int width; ///< twips; 0 hides the column
};

/// The headings of row 0 and the widths.
void setHeadings(controls::Grid &grid, std::span<const GridColumn> columns);

/// The filling of a list from rows just opened: without a row the grid is unbound, cleared and left with two
/// empty rows, headings gone; else it is bound without redrawing and gets its headings.
void fillGrid(controls::Grid &grid, const ado::Recordset &rows, std::span<const GridColumn> columns);

/// The search tab's keys: a change of the value searches with the criterion shown, Up and Down go into the
/// list, Enter goes on, letters turn to upper case; the criterion takes no typing.
void wireSearch(controls::TextBox &value, QComboBox &criterion, controls::Grid &list,
                std::function<void(const QString &criterion)> search);

} // namespace zel::shell
