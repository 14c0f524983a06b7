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
/// Two sessions, a course and its two subjects.
void enterMasterData();
/// A student with both subjects, a discount and the money taken; the application printed.
void registerStudent();
/// A fee of the student, and its slip.
void receiveFee();
/// A subject made inactive on the application and carried forward to the later session.
void carryForward();
/// The company's name and numbers, as the main window and the documents show them.
void keepCompany();
/// An entry of the telephone directory, printed.
void keepDirectory();
/// A new user, who then logs in.
void addUser();
/// The removal of all vouchers, on a copy of the catalog.
void removeFromCopy();
/// The sheet of keys.
void showKeys();
/// The list of admissions, what the sessions are owed, and the active and inactive students.
void printStudents();

} // namespace zel::tour
