#pragma once

#include "vouchers/voucher_kind.h"

namespace zel::institute {

/// The kind FR. A line debits the cash or bank account and credits the student's, and both of its rows say
/// for which subject of which session.
[[nodiscard]] const vouchers::VoucherKind &feeReceipt();

/// The entry grid's column with the subject's id.
constexpr int SubjectColumn = 12;

} // namespace zel::institute
