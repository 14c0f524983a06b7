#pragma once

/// The stations of the tour, in their order. Each leaves the screens that it opened closed, unless it says
/// so.
namespace zel::tour {

/// Accounts of all levels, and the printed chart.
void buildChart();
/// The account that each kind of voucher starts with.
void setUpVouchers();
/// A bank payment entered, found again, corrected and printed.
void bankPayment();
/// One voucher of each other kind, entered, opened again and printed.
void otherVouchers();
/// Cash book, bank book, both ledgers and the three trial balances, whose closing balances must agree.
void printBooks();
/// A session of the institute; the screen stays.
void session();

} // namespace zel::tour
