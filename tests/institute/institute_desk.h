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
    explicit InstituteDesk(const Sql &rows = "select 1") {
        using namespace institute;
        shell::setScreens({{"mnuCourse", shell::shows(frmCourse::reference)},
                           {"mnuSubject", shell::shows(frmSubject::reference)},
                           {"mnuCarryFor", shell::shows(frmCarryForward::reference)}});
        office.execute(R"(
insert into tblSession values (1, 'SPRING 2024'), (2, 'AUTUMN 2024'), (3, 'SPRING 2025')
insert into tblCourse values (1, 'ACCA', '3', 'Year'), (2, 'CA INTER', '18', 'Month')
insert into tblSubject values (1, 1, 'AUDIT', 5000), (2, 1, 'TAX', 7500.5), (3, 2, 'LAW', null), (4, 9, 'ORPHAN', 100)
insert into tblMasApp (AppID, CusCode, SessionID, RegNo, StuName, FatherName, NIC, CellNo, AppDate, FixDate, TotAmt)
    values (1, 21, 1, 'R-1', 'علی رضا', 'O''HARA', '35202-1234567-1', '0300-11', '2024-03-01', '2024-03-05', 12500.5),
    (12, 22, 3, null, 'BILAL', null, null, '0300-22', '2025-01-31', '2025-02-01', null)
insert into tblDetApp (AppID, SubID, InActive) values (1, 1, '1'), (1, 2, '1'), (1, 3, null)
update VouSetting set AcCode = '30' where VouStatus = 'CR')");
        office.execute(rows);
        office.logIn();
    }
    [[nodiscard]] QString text(const char *name) const { return test::text(screen, name); }

    Office office;
    QWidget *screen = nullptr;
};

/// Finds in the finder that has come up, and chooses the first row; the finder goes.
inline void chooseFirst(const char *finder, const char *box, const QString &value) {
    settle();
    typeInto(form(finder), box, value);
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    settle();
    QVERIFY(!form(finder));
}

} // namespace zel::test
