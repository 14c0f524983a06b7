#pragma once

#include "platform/base/decimal.h"
#include "vouchers/voucher_kind.h"

#include <QDate>
#include <QString>

namespace zel::controls {
class Grid;
}

/// What the five kinds read and write in MasJV and DetJV, each statement on gCon and gRs.
namespace zel::vouchers {

struct VoucherHeader {
    QString number;
    QDate date;
    QString paidTo;
    Decimal total;
};

/// The entry grid, whose row 0 is the heading, and the accounts that stand beside it.
struct VoucherLines {
    const controls::Grid &grid;
    QString debitTag;  ///< Tag of txtDrAc
    QString creditTag; ///< Tag of txtCrAc
};

/// What a new voucher of the kind is numbered: the highest number plus one, `start` while there is none.
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

enum class Criterion { Number, Date, PaidTo };

/// Opens the vouchers found on gRs, the newest number first.
void openSearch(const VoucherKind &kind, Criterion criterion, const QString &text, QDate date);

} // namespace zel::vouchers
