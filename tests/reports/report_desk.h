#pragma once

#include "menu_screens.h"
#include "platform/controls/date_box.h"
#include "shell/screens.h"
#include "tests/support/driver.h"
#include "tests/support/office.h"

#include <QDir>
#include <QFile>

namespace zel::test {

/// A clerk at the screen of reports, on a catalog with the small chart of accounts, a few vouchers, three
/// sessions and two courses. Beside the program lie small definitions of the reports, of the students' ones
/// those shipped; each procedure that a button runs writes its call into the table Ran and one row, 11 and
/// 22, into its work table.
class ReportDesk {
public:
    explicit ReportDesk(const Sql &more = {}) : office(Office::Chart::Demo) {
        office.addReports(ZEL_SOURCE_DIR "/rpt");
        office.addReports(ZEL_SOURCE_DIR "/tests/reports/definitions");
        post();
        recordProcedures();
        if (!more.text().empty())
            office.execute(more);
        shell::setScreens(menuScreens());
        office.logIn();
    }

    QWidget *open(const QString &item) { return screen = openByMenu(item, "frmRPTAccounts"); }

    /// Picks an account in the finder by keys.
    void choose(const QString &account) {
        press(Qt::Key_F7);
        settle();
        typeInto(form("frmFindAC"), "txtFindAC", account);
        press(Qt::Key_Down);
        press(Qt::Key_Return);
        settle();
    }
    void period(QDate from, QDate to) {
        control<controls::DateBox>(screen, "DTPicker1")->setValue(from);
        control<controls::DateBox>(screen, "DTPicker2")->setValue(to);
    }

    Office office;
    QWidget *screen = nullptr;

    static constexpr int Cash = 3;
    static constexpr int Bank = 4;

private:
    /// A cash receipt before March 2026; in March a cash payment of three lines and a bank payment.
    void post() {
        office.execute(
            "update Accounts set OpenBal = 1000 where RowID = 3\n"
            "insert into DetJV (VouNo, VouStatus, VouDate, EntryNo, AcCode, CrAc, DrAmt, CrAmt) values "
            "(1, 'CR', '2026-02-28', 1, 14, 3, 0, 40), (1, 'CR', '2026-02-28', 1, 3, null, 40, 0), "
            "(2, 'CP', '2026-03-01', 1, 18, 3, 100, 0), (2, 'CP', '2026-03-01', 2, 19, 3, 50, 0), "
            "(2, 'CP', '2026-03-01', 3, 20, 3, 25, 0), (2, 'CP', '2026-03-01', 1, 3, null, 0, 175), "
            "(3, 'BP', '2026-03-31', 1, 18, 4, 300, 0), (3, 'BP', '2026-03-31', 1, 4, 18, 0, 300), "
            "(4, 'CP', '2026-04-01', 1, 18, 3, 1, 0), (4, 'CP', '2026-04-01', 1, 3, null, 0, 1)\n"
            "insert into tblSession (SessionId, SessionName) values (1, 'SPRING 2026'), "
            "(10, 'AUTUMN 2026'), (2, 'WINTER 2026')\n"
            "insert into tblCourse (CourseId, CourseName) values (7, 'PHYSICS'), (8, 'CHEMISTRY'), "
            "(9, null)\n"
            "insert into tblSubject (SubId, CourseId, SubName) values (5, 7, 'OPTICS'), (6, 8, 'ACIDS'), "
            "(4, 7, 'MECHANICS')");
    }

    void recordProcedures() {
        office.execute("create table Ran (Call varchar(100))");
        record("AcLedger", 3, "rptAcLedger (DrAmt, CrAmt)");
        record("DetailAcLedger", 7, "rptAcLedger (DrAmt, CrAmt)");
        record("TrialBalance", 2, "rptTrialBalance (PeriodDr, PeriodCr)");
        record("TrialBalance3", 2, "rptTrialBalance (PeriodDr, PeriodCr)");
        record("CreatStuWiseDet", 3, "rptStudentDetail (SubID, OutStanding)");
    }
    void record(const std::string &name, int arguments, const std::string &work) {
        std::string declared;
        std::string joined;
        for (int i = 1; i <= arguments; ++i) {
            const std::string argument = "@a" + std::to_string(i);
            declared += (i > 1 ? ", " : "") + argument + " varchar(20)";
            joined += " + '" + std::string(i > 1 ? "," : " ") + "' + " + argument;
        }
        office.execute(Sql::trusted("drop procedure " + name));
        office.execute(Sql::trusted("create procedure " + name + " " + declared +
                                    " as begin\ninsert into Ran (Call) values ('" + name + "'" + joined +
                                    ")\ninsert into " + work + " values (11, 22)\nend"));
    }
};

} // namespace zel::test
