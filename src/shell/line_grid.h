#pragma once

#include "platform/ado/recordset.h"
#include "platform/base/decimal.h"
#include "platform/controls/grid.h"
#include "shell/screen_box.h"

#include <functional>

/// The grid in which a screen gathers the lines of a voucher, an application or a form until they are saved,
/// and the boxes in which a line is typed: a table says how they belong together.
namespace zel::shell {

/// How a value stands in the grid. An amount is "##,###0.00" there and "###0.00" in its box; a number is as
/// it was typed, to the right.
enum class Picture { Plain, Number, Amount };

/// One column: adding a line fills it from its box, taking a line back fills the box from it.
struct LineColumn {
    const char *heading = nullptr;
    int twips = 0; ///< 0 hides the column
    Box box;
    Picture picture = Picture::Plain;
    bool takenBack = true;
};

enum class TakenBackBy { DoubleClick, Click };

struct LineTable {
    const char *grid;
    const char *rowUnderEdit; ///< a box with the row that the next line overwrites, empty for a new one
    TakenBackBy takenBackBy = TakenBackBy::DoubleClick;
    std::span<const LineColumn> columns; ///< column 0 is the line's code; rows without it are not taken back
    bool countsWithoutCode = false;      ///< totals count rows without it, too
    std::span<const Box> emptiedByAdd;   ///< beside rowUnderEdit, after a line was added
    std::span<const Box> emptiedByRemove;
};

/// How a column that was read stands in the grid: text that must not be Null, text with Null as blank, or a
/// number as an amount.
enum class Shown { Text, TextOrBlank, Amount };

/// One column of a line that is read back; without a field it stays blank.
struct ReadColumn {
    const char *field = nullptr;
    Shown shown = Shown::TextOrBlank;
};

class LineGrid : public QObject {
public:
    /// `taken` runs after a line was taken back. The table must outlive the grid. Error 730 for a control
    /// that the screen does not have.
    LineGrid(QWidget &screen, const LineTable &table, std::function<void(int row)> taken = {});

    [[nodiscard]] controls::Grid &grid() const { return m_grid; }
    [[nodiscard]] bool isEmpty() const { return m_grid.Rows() <= 1; }

    /// The heading alone.
    void reset();
    /// Whether the line in the boxes is a new one whose code a row has already.
    [[nodiscard]] bool isRepeated() const;
    /// Writes the line in the boxes as a new row, or over the row under edit.
    void add();
    /// Shows a line in the boxes; the next add() overwrites it. Not the heading, nor a row without a code.
    void takeBack(int row);
    /// Takes the current row out; of a single line, whichever row is current.
    void remove();
    /// Adds a row from the recordset's current one. Error 94 for a Null where there must be none.
    void append(ado::Recordset &line, std::span<const ReadColumn> columns);

    /// The sum of a column.
    [[nodiscard]] Decimal total(int column) const;

private:
    const LineTable &m_table;
    controls::Grid &m_grid;
    ScreenBox m_rowUnderEdit;
    std::vector<ScreenBox> m_boxes; ///< one for each column
    std::vector<ScreenBox> m_emptiedByAdd;
    std::vector<ScreenBox> m_emptiedByRemove;
    std::function<void(int row)> m_taken;
};

} // namespace zel::shell
