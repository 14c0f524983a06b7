#pragma once

#include "shell/line_grid.h"
#include "shell/search.h"

/// The voucher kinds and all that tells one from another, as data.
namespace zel::vouchers {

enum class Side { None, Debit, Credit };

/// Where a step leaves the focus.
enum class Focus { Stays, SelectDr, SelectCr, Amount };

/// Whose highest number a new voucher follows: the headers', beginning with the number of the kind's setup
/// row, or the lines', beginning with 1.
enum class Numbers { OfHeaders, OfLines };

/// What a column of the header row takes.
enum class HeaderFrom { Date, Kind, Total, User, Text, TextOrNull };

struct HeaderColumn {
    const char *column = nullptr;
    HeaderFrom from{};
    const char *box = nullptr; ///< where `from` is a text, unless the screen shows it in another way
};

[[nodiscard]] constexpr bool takesText(const HeaderColumn &column) {
    return column.from == HeaderFrom::Text || column.from == HeaderFrom::TextOrNull;
}

/// A column of the header row that is shown when a voucher is opened, Null as ''.
struct HeaderShown {
    const char *column = nullptr;
    const char *box = nullptr;
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

/// How the vouchers of a kind are searched. The list's statement names the kind twice.
struct VoucherSearch {
    struct Criterion {
        const char *caption = nullptr;
        Literal before; ///< the condition up to what is searched for
        Literal behind;
        shell::Searched searched = shell::Searched::Text;
    };
    struct Column {
        const char *heading;
        int twips;
    };
    Literal list; ///< the statement up to the kind
    Literal from; ///< behind it, up to the kind again
    std::span<const Criterion> criteria;
    std::span<const Column> columns;
};

/// What a screen of its own design has no use for stays at its default.
struct VoucherKind {
    Literal code;       ///< VouStatus
    Literal setting;    ///< VouStatus of its row in VouSetting
    const char *form;   ///< objectName of the screen
    const char *menu;   ///< the menu item that opens it
    const char *report; ///< the definition that prints it
    Literal printed;    ///< of the print's selection, behind the kind

    const char *caption = nullptr;
    const char *paidToLabel = nullptr;
    bool fileBeforeBill = false;    ///< File No stands where the others have Bill No, and the other way round
    bool amountTurnsYellow = false; ///< while txtDRCR has the focus
    bool statusHandsFocusOn = true; ///< txtVouStatus gives the focus to DTPicker
    Side bankSide = Side::None;     ///< the button that lists banks only and offers "All Accounts"
    bool emptiesFinderFilter = true; ///< on each activation
    Focus afterFoundDebit = Focus::Amount;
    Focus afterFoundCredit = Focus::Amount;

    shell::LineTable entry;
    shell::Part accountKnownBy = shell::Part::Tag; ///< what of the account boxes a line's checks look at
    Focus afterNoDebit;
    Focus afterNoCredit;
    Focus afterSameAccount = Focus::Stays;
    std::span<const shell::Box> emptiedByClearAll;

    Numbers numbers = Numbers::OfHeaders;
    bool savedWhole = true;  ///< in one transaction
    bool plainTotal = false; ///< txtTotAmount takes the sum as it comes, and that of no line, too
    std::span<const HeaderColumn> header;
    std::span<const HeaderShown> headerShown;
    std::span<const PostedLine> lines; ///< written for each grid row, in this order
    PostedLine summary = {};           ///< written once after the last grid row; empty for none

    Literal readLines;             ///< the statement up to the number
    Literal readLinesTail;         ///< and after it
    const char *keptWhenPositive;  ///< a row read is shown when this column is above 0
    Side firstRowBox = Side::None; ///< the account box filled from the first row read
    const char *firstRowText = nullptr;
    const char *firstRowTag = nullptr;
    std::span<const shell::ReadColumn> read; ///< one for each column of `entry`

    const VoucherSearch *search;
};

/// The five hand-entered kinds: BP, BR, CP, CR, JV.
[[nodiscard]] std::span<const VoucherKind> voucherKinds();
/// The kind of that code, which must be one of the five.
[[nodiscard]] const VoucherKind &voucherKind(const char *code);

/// The grid column with the line's amount.
[[nodiscard]] constexpr int amountColumn(const VoucherKind &kind) {
    int column = 0;
    while (kind.entry.columns[std::size_t(column)].picture != shell::Picture::Amount)
        ++column;
    return column;
}

/// Whether the kind reads back as many columns as it shows, and posts only cells that it has.
[[nodiscard]] constexpr bool isSound(const VoucherKind &kind) {
    const auto fits = [&](PostedLine line) {
        for (const Posted &posted : line)
            if (posted.cell >= int(kind.entry.columns.size()))
                return false;
        return true;
    };
    for (const PostedLine &line : kind.lines)
        if (!fits(line))
            return false;
    return kind.entry.columns.size() == kind.read.size() && fits(kind.summary);
}

} // namespace zel::vouchers
