#pragma once

#include "institute/frmCarryForward.h"
#include "institute/frmCourse.h"
#include "institute/frmFindApp.h"
#include "institute/frmSearchSub.h"
#include "institute/frmSubject.h"
#include "platform/controls/data_combo.h"
#include "platform/controls/focus.h"
#include "platform/controls/grid.h"
#include "shell/module1.h"
#include "shell/screens.h"
#include "tests/support/driver.h"
#include "tests/support/office.h"
#include "tests/support/rows.h"
#include "tests/support/test_program.h"

#include <QtTest>

/// An institute with courses, subjects, sessions and two students' applications, and a clerk logged in.
namespace zel::test {

struct InstituteDesk {
    /// The rows of a test's own come last.
    explicit InstituteDesk(const Sql &rows = {}) {
        using namespace institute;
        shell::setScreens({{"mnuCourse", shell::shows(frmCourse::reference)},
                           {"mnuSubject", shell::shows(frmSubject::reference)},
                           {"mnuCarryFor", shell::shows(frmCarryForward::reference)}});
        office.execute(
            "insert into tblSession values (1, 'SPRING 2024')\ninsert into tblSession values (2, 'AUTUMN "
            "2024')\n"
            "insert into tblSession values (3, 'SPRING 2025')\n"
            "insert into tblCourse values (1, 'ACCA', '3', 'Year')\n"
            "insert into tblCourse values (2, 'CA INTER', '18', 'Month')\n"
            "insert into tblSubject values (1, 1, 'AUDIT', 5000)\ninsert into tblSubject values (2, 1, "
            "'TAX', 7500.5)\n"
            "insert into tblSubject values (3, 2, 'LAW', null)\ninsert into tblSubject values (4, 9, "
            "'ORPHAN', 100)\n"
            "insert into tblMasApp (AppID, CusCode, SessionID, RegNo, StuName, FatherName, NIC, CellNo, "
            "AppDate, "
            "FixDate, TotAmt, CashReceive) values (1, 21, 1, 'R-1', 'علی رضا', 'O''HARA', '35202-1234567-1', "
            "'0300-11', '2024-03-01', '2024-03-05', 12500.5, 500)\n"
            "insert into tblMasApp (AppID, CusCode, SessionID, StuName, CellNo, AppDate, FixDate) values "
            "(12, 22, 3, "
            "'BILAL', '0300-22', '2025-01-31', '2025-02-01')\n"
            "insert into tblDetApp (AppID, SubID, InActive) values (1, 1, '1')\n"
            "insert into tblDetApp (AppID, SubID, InActive) values (1, 2, '1')\n"
            "insert into tblDetApp (AppID, SubID, InActive) values (1, 3, null)\n"
            "update VouSetting set AcCode = '30' where VouStatus = 'CR'");
        if (!rows.text().empty())
            office.execute(rows);
        office.logIn();
    }

    void open(const char *item, const char *form) { screen = openByMenu(item, form); }
    [[nodiscard]] QString text(const char *name) const { return test::text(screen, name); }
    [[nodiscard]] QString bound(const char *name) const {
        return control<controls::DataCombo>(screen, name)->BoundText();
    }

    Office office;
    QWidget *screen = nullptr;
};

/// Finds in the finder that has come up, and chooses the first row; the finder goes.
inline void chooseFirst(const char *finder, const char *box, const QString &value) {
    QVERIFY(form(finder));
    typeInto(form(finder), box, value);
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    settle();
    QVERIFY(!form(finder));
}

} // namespace zel::test
