#pragma once

#include "platform/ado/recordset.h"
#include "platform/controls/grid.h"
#include "shell/screen_keys.h"

#include <QString>

#include <optional>

class QWidget;

namespace zel::controls {
class DataCombo;
class TextBox;
} // namespace zel::controls

/// What the entry screens share: the walk over the tagged boxes, the filling of lists and combos, the keys
/// that press a button, the account that the finder hands over.
/// A tagged box names its column in DataField.
namespace zel::shell {

/// Empties the tagged boxes; combos and grids stay as they are.
void ClearAll(QWidget &form, const QString &tag = "M");

/// Each tagged box but those named `except` gives its text to its field, an empty text as Null.
void saveTagged(const QWidget &form, ado::Recordset &row, const QStringList &except = {},
                const QString &tag = "M");

/// Each tagged box but the one named `except` shows its field of the current row, Null as ''.
void loadTagged(QWidget &form, ado::Recordset &row, const QString &except = {}, const QString &tag = "M");

/// How long a text the tagged boxes take: any, what the column defines, or the column's precision.
enum class TypingLimit { None, DefinedSize, Precision };
void limitTagged(QWidget &form, ado::Recordset &columns, TypingLimit limit, const QString &tag = "M");

/// Over a list without a row: nothing, or the headings all the same.
enum class Headings { Go, Stay };
/// The filling of a list from the statement's rows, on demand, through gRs: without a row the grid is
/// unbound, cleared and left with two rows; else it is bound without redrawing and gets its headings. Rows of
/// the list before that are still to come are never read.
void fillGrid(controls::Grid &grid, const Sql &statement, const QList<controls::Grid::Column> &columns,
              Headings whenEmpty = Headings::Go);

/// The row that a list picks when it is bound: none, its first, its last.
enum class Picked { None, First, Last };

/// The combo lists the rows of the statement, which are its own: it shows one column and holds another.
void bindCombo(controls::DataCombo &combo, const Sql &source, const char *listField, const char *boundColumn,
               Picked picked = Picked::None);
/// Reads the list anew, keeping the pick.
void refillCombo(controls::DataCombo &combo, const Sql &source);

/// The account that the finder has handed over.
struct FoundAccount {
    int rowID;
    QString name;
    /// The name as the box's text, the RowID as its Tag.
    void showIn(controls::TextBox &box) const;
};
/// Takes it, so that it is taken once; none when no account waits.
[[nodiscard]] std::optional<FoundAccount> takeFoundAccount();

} // namespace zel::shell
