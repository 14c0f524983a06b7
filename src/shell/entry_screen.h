#pragma once

#include "platform/ado/recordset.h"
#include "platform/controls/grid.h"

#include <QString>

#include <functional>

class QWidget;

namespace zel::controls {
class ComboBox;
class TextBox;
} // namespace zel::controls

/// What the entry screens share: the walk over the tagged boxes, the filling of the list, the search keys.
/// A tagged box names its column in DataField.
namespace zel::shell {

/// Empties the tagged boxes; combos and grids stay as they are.
void ClearAll(QWidget &form, const QString &tag = "M");

/// Each tagged box but the one named `except` gives its text to its field, an empty text as Null.
void saveTagged(const QWidget &form, ado::Recordset &row, const QString &except = {},
                const QString &tag = "M");

/// Each tagged box but the one named `except` shows its field of the current row, Null as ''.
void loadTagged(QWidget &form, ado::Recordset &row, const QString &except = {}, const QString &tag = "M");

/// The tagged boxes take no longer typing than their columns hold.
void limitTagged(QWidget &form, ado::Recordset &columns, const QString &tag = "M");

/// The filling of a list from rows just opened: without a row the grid is unbound, cleared and left with two
/// rows, headings gone; else it is bound without redrawing and gets its headings.
void fillGrid(controls::Grid &grid, const ado::Recordset &rows, const QList<controls::Grid::Column> &columns);

/// The search tab's keys: a change of the value searches with the criterion shown, Up and Down go into the
/// list. Upper case, Enter and the criterion's lock are the controls' own (keys = Upper, ComboBox).
void wireSearch(controls::TextBox &value, controls::ComboBox &criterion, controls::Grid &list,
                std::function<void(const QString &criterion)> search);

/// A double click on the list, or Enter on it, runs `choose`.
void wireChoice(controls::Grid &list, std::function<void()> choose);

} // namespace zel::shell
