#include "tools/tour/stations.h"

#include "tests/support/driver.h"
#include "tools/tour/hands.h"

#include <QRegularExpression>
#include <QWidget>

#include <cstdio>

namespace zel::tour {

using namespace zel::test;

namespace {

struct Report {
    const char *menu;
    const char *name;
    const char *account;      ///< '' where the screen asks for none
    const char *run;          ///< the button
    const char *session = ""; ///< its first letter; '' where it is the preset one, or none is asked for
};

/// The numbers of the line that begins so, as they are printed. A page that lacks the line ends the tour.
QStringList numbersOf(const QString &page, const QString &beginning) {
    static const QRegularExpression number("-?[0-9,]+\\.[0-9]{2}");
    for (const QString &line : page.split('\n')) {
        if (!line.startsWith(beginning))
            continue;
        QStringList numbers;
        for (auto found = number.globalMatch(line.mid(beginning.size())); found.hasNext();)
            numbers << found.next().captured();
        return numbers;
    }
    qFatal("no line '%s' is printed", qPrintable(beginning));
}

void mustBe(const char *what, const QStringList &printed, const QStringList &wanted) {
    if (printed != wanted)
        qFatal("%s: %s is printed, %s was wanted", what, qPrintable(printed.join(' ')),
               qPrintable(wanted.join(' ')));
}

QString print(const Report &report) {
    QWidget *screen = openByMenu(report.menu, "frmRPTAccounts");
    if (*report.account) {
        tabTo("cmdFindAC");
        key(Qt::Key_Return);
        find(report.account);
    }
    if (*report.session) {
        tabTo("cboSession");
        type(report.session);
    }
    tabTo(report.run);
    shot(frame(), report.name);
    key(Qt::Key_Return);
    QString page = exportPage(QString(report.name) + "-printed");
    screen->close(); // the screen has no button for it, only its window's close box
    settle();
    return page;
}

} // namespace

void printBooks() {
    const QString cashBook = print({"mnuCashBook", "cash-book", "", "cmdCashBook"});
    const QString bankBook = print({"mnuBankBook", "bank-book", "CITY BANK", "cmdBankBook"});
    const QString ledger = print({"mnuSimpleLedger", "simple-ledger", "CASH", "cmdLedger"});
    const QString detail = print({"mnuDetLedger", "detail-ledger", "CITY BANK", "cmdDetLedger"});
    const QString trial = print({"mnuSubTBSimple", "trial-balance", "", "cmdTrialBal"});
    const QString controls = print({"mnuControlTB", "trial-balance-of-controls", "", "cmdTrialControl"});
    const QString opening = print({"mnuSubTBWOB", "trial-balance-with-opening", "", "cmdTrialOpening"});

    // What the vouchers of the tour come to.
    const QString cash = "57,789.25";
    const QString bank = "167,659.50";
    mustBe("cash book", numbersOf(cashBook, "Closing balance"), {cash});
    mustBe("ledger of the cash", numbersOf(ledger, "Closing balance"), {cash});
    mustBe("bank book", numbersOf(bankBook, "Closing balance"), {bank});
    mustBe("ledger of the bank", numbersOf(detail, "Closing balance"), {bank});
    mustBe("cash in the trial balance", numbersOf(opening, "1.1.1 CASH IN HAND"),
           {"50,000.00", "8,750.00", "960.75", cash});
    mustBe("bank in the trial balance", numbersOf(opening, "1.1.2 CITY BANK"),
           {"196,500.00", "28,840.50", bank});
    const QStringList period = {"236,251.25", "236,251.25"};
    mustBe("trial balance", numbersOf(trial, "Grand total"), period);
    mustBe("trial balance of the controls", numbersOf(controls, "Grand total"), period);
    mustBe("trial balance with opening", numbersOf(opening, "Grand total").mid(2, 2), period);
    std::printf("    books, ledgers and trial balances agree: cash %s, bank %s\n", qPrintable(cash),
                qPrintable(bank));
}

void printStudents() {
    QWidget *applications = openByMenu("mnuApp", "frmZelApplication");
    turnTo(applications, "SSTab1", 1);
    tabTo("cmdPrintStuRecord");
    key(Qt::Key_Return);
    mustBe("list of admissions", numbersOf(exportPage("admissions-printed"), "Grand total"),
           {"83,500.50", "5,000.00", "78,500.50", "15,000.00"});
    key(Qt::Key_X, Qt::AltModifier);

    const std::pair<Report, QStringList> reports[] = {
        {{"mnuFee", "outstanding", "", "cmdFeeDetail", "a"},
         {"78,500.50", "15,000.00", "10,000.00", "38,500.50", "15,000.00"}},
        {{"mnuStuFeeDet", "active-students", "", "cmdStuFeeDet", "a"},
         {"45,000.00", "5,000.00", "40,000.00", "25,000.00", "15,000.00"}},
        {{"mnuInctiveStuWiseRPT", "inactive-students", "", "cmdInActiveStuFeeDet", "a"},
         {"38,500.50", "38,500.50", "38,500.50", "0.00"}},
    };
    for (const auto &[report, totals] : reports)
        mustBe(report.name, numbersOf(print(report), "Grand total"), totals);
}

} // namespace zel::tour
