#pragma once

#include "menu_screens.h"
#include "platform/controls/date_box.h"
#include "platform/report/viewer/cr_viewer.h"
#include "shell/module1.h"
#include "shell/screens.h"
#include "tests/reports/book_sums.h"
#include "tests/support/driver.h"
#include "tests/support/office.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTest>

namespace zel::test {

/// Generated books and the shipped reports, in a catalog of their own.
class BooksOffice {
public:
    explicit BooksOffice(const Held &held) : catalog(office.folder().toStdString() + "/ZEL.db") {
        catalog.open(held.books);
    }

    void connect() const { connectProgram(office.folder()); }

    Office office;
    BookCatalog catalog;
};

/// A document is made anew each time it is asked for, with the minute of that moment.
inline QString withoutTime(QString text) {
    static const QRegularExpression Time("\\b\\d\\d:\\d\\d\\b");
    return text.remove(Time);
}

/// A clerk at the screen of reports, who worked through the menus with real keys.
class BooksDesk : public BooksOffice {
public:
    explicit BooksDesk(const Held &held) : BooksOffice(held) {
        office.addReports(ZEL_SOURCE_DIR "/rpt");
        shell::setScreens(menuScreens());
        post(catalog, held.vouchers);
        office.logIn();
    }

    /// Runs a report from its menu item; the account is picked in the finder where the item asks for one.
    /// Gives what the viewer was given.
    report::DocumentPtr run(const char *item, const char *button, const Period &period,
                            const std::string &account = {}) {
        QWidget *screen = openByMenu(item, "frmRPTAccounts");
        if (control(screen, "cmdFindAC")->isVisible()) {
            press(Qt::Key_F7);
            settle();
            typeInto(form("frmFindAC"), "txtFindAC", QString::fromStdString(account));
            press(Qt::Key_Down);
            press(Qt::Key_Return);
            settle();
        }
        control<controls::DateBox>(screen, "DTPicker1")->setValue(period.from);
        control<controls::DateBox>(screen, "DTPicker2")->setValue(period.to);
        click(screen, button);
        QWidget *viewer = form("frmVeiwer");
        if (!viewer)
            qFatal("no viewer");
        auto *pages = control<viewer::CRViewer91>(viewer, "CRViewer91");
        const report::DocumentPtr document = pages->ReportSource()->document();
        if (withoutTime(pages->plainText()) != withoutTime(document->plainText()))
            qFatal("the viewer shows something else than it was given");
        screen->parentWidget()->close();
        settle();
        return document;
    }
    report::DocumentPtr cashBook(const Period &period) { return run("mnuCashBook", "cmdCashBook", period); }
    report::DocumentPtr bankBook(const Period &period, const std::string &account) {
        return run("mnuBankBook", "cmdBankBook", period, account);
    }
    report::DocumentPtr ledger(Ledger form, const Period &period, const std::string &account) {
        return form == Ledger::Simple ? run("mnuSimpleLedger", "cmdLedger", period, account)
                                      : run("mnuDetLedger", "cmdDetLedger", period, account);
    }
    /// "", "2" or "3".
    report::DocumentPtr balance(const char *which, const Period &period) {
        return which[0] == '3'   ? run("mnuSubTBWOB", "cmdTrialOpening", period)
               : which[0] == '2' ? run("mnuControlTB", "cmdTrialControl", period)
                                 : run("mnuSubTBSimple", "cmdTrialBal", period);
    }
};

} // namespace zel::test
