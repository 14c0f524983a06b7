#include "tools/tour/stations.h"

#include "tests/support/driver.h"
#include "tools/tour/hands.h"

#include <QWidget>

#include <cstdio>
#include <vector>

namespace zel::tour {

using namespace zel::test;

namespace {

/// The button that finds an account, by its key.
constexpr Qt::Key FindCredit = Qt::Key_F7;
constexpr Qt::Key FindDebit = Qt::Key_F8;

struct Pick {
    Qt::Key button;
    const char *account;
};

struct Line {
    std::vector<Pick> accounts;
    const char *amount;
    const char *naration;
};

struct Entered {
    const char *menu;
    const char *form;
    const char *name;
    const char *paidTo;
    std::vector<Line> lines;
    const char *total; ///< as the screen shows it
};

void enter(const Line &line) {
    for (const Pick &pick : line.accounts) {
        key(pick.button);
        find(pick.account);
    }
    tabTo("txtDRCR");
    type(line.amount);
    tabTo("txtNaration");
    retype(line.naration, Qt::ControlModifier);
    key(Qt::Key_A, Qt::AltModifier);
}

QWidget *enter(const Entered &voucher) {
    QWidget *screen = openByMenu(voucher.menu, voucher.form);
    tabTo("txtPaidTo");
    type(voucher.paidTo);
    for (const Line &line : voucher.lines)
        enter(line);
    if (text(screen, "lblTotalAmount") != QString("Total Amount : %1").arg(voucher.total))
        qFatal("%s: %s", voucher.form, qPrintable(text(screen, "lblTotalAmount")));
    shot(frame(), voucher.name);
    key(Qt::Key_F9);
    std::printf("    saved; the next number is %s\n", qPrintable(text(screen, "txtVoucher")));
    return screen;
}

/// The first of the list, found by a search for its number.
void openAgain(QWidget *screen, const Entered &voucher, const char *picture = nullptr) {
    turnTo(screen, "SSTab1", 1);
    tabTo("txtSearch");
    retype("1");
    if (picture)
        shot(frame(), picture);
    key(Qt::Key_Down);
    key(Qt::Key_F2);
    if (text(screen, "txtPaidTo") != voucher.paidTo)
        qFatal("%s: the voucher did not open", voucher.form);
}

void print(const Entered &voucher, const QString &total) {
    key(Qt::Key_P, Qt::AltModifier);
    const QString printed = exportPage(QString(voucher.name) + "-printed");
    if (!printed.contains(voucher.paidTo) || !printed.contains(total))
        qFatal("%s: the print lacks its payee or its total of %s", voucher.form, qPrintable(total));
    key(Qt::Key_X, Qt::AltModifier);
}

} // namespace

void bankPayment() {
    const Entered voucher = {"mnuBPVouc",
                             "frmBP",
                             "bank-payment",
                             "CITY ESTATES LTD",
                             {{{{FindDebit, "RENT"}}, "25000", "RENT OF NOVEMBER"},
                              {{{FindDebit, "LIGHT"}}, "3480.50", "ELECTRICITY"}},
                             "28,480.50"};
    QWidget *screen = enter(voucher);
    openAgain(screen, voucher, "search");

    // The second line was not 3480.50 but 3840.50.
    tabTo("MshEntry");
    key(Qt::Key_Home, Qt::ControlModifier);
    key(Qt::Key_Down);
    key(Qt::Key_F2);
    tabTo("txtDRCR");
    retype("3840.50");
    key(Qt::Key_A, Qt::AltModifier);
    shot(frame(), "corrected");
    key(Qt::Key_F9);

    openAgain(screen, voucher);
    print(voucher, "28,840.50");
}

void otherVouchers() {
    const std::vector<Entered> vouchers = {
        {"mnuBRVouc",
         "frmBR",
         "bank-receipt",
         "STUDENTS OF NOVEMBER",
         {{{{FindCredit, "ADMISSION"}}, "184500", "ADMISSION FEES PAID AT THE BANK"},
          {{{FindCredit, "HALL"}}, "12000", "HALL FOR THE BOOK FAIR"}},
         "196,500.00"},
        {"mnuCPVou",
         "frmCP",
         "cash-payment",
         "CITY POWER",
         {{{{FindDebit, "LIGHT"}}, "960.75", "HOSTEL METER"}},
         "960.75"},
        {"mnuCRVou",
         "frmCR",
         "cash-receipt",
         "WALK-IN STUDENTS",
         {{{{FindCredit, "ADMISSION"}}, "7500", "THREE ADMISSIONS"},
          {{{FindCredit, "HALL"}}, "1250", "HALL FOR AN EVENING"}},
         "8,750.00"},
        {"mnuJVVouc",
         "frmJV",
         "journal",
         "CORRECTION",
         {{{{FindDebit, "LIGHT"}, {FindCredit, "RENT"}}, "1200", "ELECTRICITY THAT STOOD UNDER RENT"}},
         "1,200.00"},
    };
    for (const Entered &voucher : vouchers) {
        QWidget *screen = enter(voucher);
        openAgain(screen, voucher);
        print(voucher, voucher.total);
    }
}

} // namespace zel::tour
