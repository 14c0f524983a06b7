#pragma once

#include "platform/base/sql.h"

#include <span>

/// The five hand-entered voucher kinds and all that tells one from another, as data.
namespace zel::vouchers {

enum class Side { None, Debit, Credit };

/// The two account boxes, as a step treats them.
struct Sides {
    bool debit;
    bool credit;
};

/// Where a step leaves the focus.
enum class Focus { Stays, SelectDr, SelectCr, Amount };

/// What stands behind a column of the entry grid: the Tag or Text of an account box, or a line box.
enum class Box { DebitTag, DebitText, CreditTag, CreditText, Amount, Cheque, Naration, File, Bill };

/// One column of the entry grid: cmdAdd fills it from the box, editing the line fills the box from it.
struct EntryColumn {
    const char *heading;
    int width; ///< twips; 0 hides the column
    Box box;
};

/// How a column that was read stands in the grid: text that must not be Null, text with Null as blank, or a
/// number in the picture "##,###0.00".
enum class Shown { Text, TextOrBlank, Amount };

/// One column of the entry grid when a voucher is read back.
struct ReadColumn {
    const char *field;
    Shown shown;
};

/// What a column of a written line takes.
enum class From {
    Number,       ///< the voucher's number
    Kind,         ///< the two letters
    Date,         ///< the voucher's date
    GridRow,      ///< the grid row's number, from 1
    GridRows,     ///< the grid's row count with the heading, one more than the last line's number
    Cell,         ///< the cell as it stands, blank as an empty text
    CellOrNull,   ///< the cell, blank as Null
    CellAmount,   ///< the cell in the picture "###0.00"
    FirstRowCell, ///< the cell of grid row 1
    Zero,
    Sum,       ///< the sum of the grid's amounts, each in the picture "###0.00"
    DebitTag,  ///< Tag of txtDrAc
    CreditTag, ///< Tag of txtCrAc
};

/// One column of a written line; columns that a line does not name stay Null.
struct Posted {
    const char *column = nullptr;
    From from = From::Zero;
    int cell = -1; ///< grid column, where `from` is a cell
};

using PostedLine = std::span<const Posted>;

struct VoucherKind {
    Literal code;       ///< VouStatus
    const char *form;   ///< objectName of the screen
    const char *menu;   ///< the menu item that opens it
    const char *report; ///< the definition that prints it

    const char *caption;
    const char *paidToLabel;
    bool fileBeforeBill;      ///< File No stands where the others have Bill No, and the other way round
    bool amountTurnsYellow;   ///< while txtDRCR has the focus
    bool statusHandsFocusOn;  ///< txtVouStatus gives the focus to DTPicker
    Side bankSide;            ///< the button that lists banks only and offers "All Accounts"
    bool emptiesFinderFilter; ///< on each activation
    Focus afterFoundDebit;
    Focus afterFoundCredit;

    std::span<const EntryColumn> entry;
    Focus afterNoDebit;
    Focus afterNoCredit;
    Focus afterSameAccount;
    Sides emptiedByAdd;
    Sides emptiedByRemove;
    Sides emptiedByClearAll;

    std::span<const PostedLine> lines; ///< written for each grid row, in this order
    PostedLine summary;                ///< written once after the last grid row; empty for none

    Literal readLines;            ///< the statement up to the number
    Literal readLinesTail;        ///< and after it
    const char *keptWhenPositive; ///< a row read is shown when this column is above 0
    bool readsHeaderCheque;       ///< txtChecque from the header row
    Side firstRowBox;             ///< the account box filled from the first row read
    const char *firstRowText;
    const char *firstRowTag;
    std::span<const ReadColumn> read; ///< one for each column of `entry`
};

/// BP, BR, CP, CR, JV.
[[nodiscard]] std::span<const VoucherKind> voucherKinds();
/// The kind of that code, which must be one of the five.
[[nodiscard]] const VoucherKind &voucherKind(const char *code);

/// The grid column that the box stands behind; -1 when no column has it.
[[nodiscard]] int columnOf(const VoucherKind &kind, Box box);

} // namespace zel::vouchers
