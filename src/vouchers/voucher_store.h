#pragma once

#include "platform/base/decimal.h"
#include "vouchers/voucher_kind.h"

#include <QDate>
#include <QStringList>

namespace zel::controls {
class Grid;
}

/// What the kinds read and write in MasJV and DetJV, each statement on gCon and gRs.
namespace zel::vouchers {

struct VoucherHeader {
    QString number;
    QDate date;
    QStringList texts; ///< of the kind's header columns that take one, in their order
    Decimal total;
};

/// The entry grid, whose row 0 is the heading, and the accounts that stand beside it.
struct VoucherLines {
    const controls::Grid &grid;
    QString debitTag;  ///< Tag of txtDrAc
    QString creditTag; ///< Tag of txtCrAc
};

/// What a new voucher of the kind is numbered: the highest number plus one; while there is none, `start`
/// where headers are counted, else 1.
[[nodiscard]] QString nextNumber(const VoucherKind &kind, std::int64_t start);

/// Adds the header row, or changes the one of that number. Error 3021 when it is to be changed and gone.
void writeHeader(const VoucherKind &kind, const VoucherHeader &header, bool isNew);

/// Deletes the voucher's lines and writes those of the grid's rows that have a code in column 0.
void replaceLines(const VoucherKind &kind, const VoucherHeader &header, const VoucherLines &lines);

/// Deletes the lines, then the header.
void deleteVoucher(const VoucherKind &kind, const QString &number);

/// Opens the header row on gRs; no row when there is no such voucher.
void openHeader(const VoucherKind &kind, const QString &number);
/// Opens on gRs the lines that the grid may show.
void openLines(const VoucherKind &kind, const QString &number);
/// Opens the kind's setup row on gRs.
void openSetting(const VoucherKind &kind);

/// The voucher's row of the list, as it stands now.
[[nodiscard]] RowsPtr listedVoucher(const VoucherKind &kind, const QString &number);
/// The search of the kind's vouchers, the newest number first.
[[nodiscard]] shell::SearchTable searchOf(const VoucherKind &kind);

} // namespace zel::vouchers
