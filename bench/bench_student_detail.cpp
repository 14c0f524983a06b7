// A session of 20,000 students with 100,000 subject lines and 100,000 receipts: the procedure behind the
// student reports against the one statement that a hand would fill the same rows with through SQLite's C
// interface.
#include "desk.h"
#include "institute.h"
#include "measure.h"

#include "platform/ado/drivers/sqlite_functions.h"
#include "platform/ado/recordset.h"
#include "shell/module1.h"

#include <QCoreApplication>

#include <sqlite3.h>

#include <cstdlib>

namespace {

constexpr char Fill[] =
    "insert into peer select m.AppID, m.CusCode, m.RegNo, m.StuName, m.FatherName, m.CellNo, m.SessionID, "
    "n.SessionName,"
    " s.CourseId, c.CourseName, d.SubID, s.SubName, d.SubAmt, d.Discount, d.NetAmount,"
    " ifnull(d.RecAmount, 0) + ifnull(p.Paid, 0),"
    " ifnull(d.NetAmount - ifnull(d.RecAmount, 0) - ifnull(p.Paid, 0), 0), d.InActive"
    " from tblMasApp m join tblDetApp d on d.AppID = m.AppID"
    " left join (select AcCode, SubID, zel_sum2(CrAmt) as Paid from DetJV where SubID is not null and "
    "VouStatus in ('FR', 'CF')"
    " group by AcCode, SubID) p on p.AcCode = m.CusCode and p.SubID = d.SubID"
    " left join tblSubject s on s.SubId = d.SubID left join tblCourse c on c.CourseId = s.CourseId"
    " left join tblSession n on n.SessionId = m.SessionID where m.SessionID = 1";

void run(sqlite3 *db, const char *sql) {
    char *error = nullptr;
    if (sqlite3_exec(db, sql, nullptr, nullptr, &error) != SQLITE_OK) {
        std::fprintf(stderr, "peer: %s\n", error);
        std::exit(1);
    }
}

} // namespace

int main(int argc, char **argv) {
    const QCoreApplication application(argc, argv);
    const bench::Copy copy(QString::fromLocal8Bit(argv[1]));
    bench::InstituteSize size;
    size.sessions = 1;
    bench::fillInstitute(copy.database().toStdString(), size);
    bench::connect(copy.folder());
    sqlite3 *db = nullptr;
    sqlite3_open_v2(copy.database().toUtf8().constData(), &db, SQLITE_OPEN_READONLY, nullptr);
    zel::ado::registerFunctions(db);
    run(db,
        "pragma temp_store = memory; pragma cache_size = -32768;"
        "create temp table peer(AppID int, CusCode int, RegNo, StuName, FatherName, CellNo, SessionID int, "
        "SessionName,"
        " CourseId int, CourseName, SubID int, SubName, SubAmt numeric, Discount numeric, NetAmount numeric,"
        " Received numeric, OutStanding numeric, inactive)");
    const bool within = bench::compare(
        "students of a session, procedure", 1.5, 9,
        [] { zel::shell::gCon.Execute("exec CreatStuWiseDet 1,0,0 "); },
        [&] {
            run(db, "delete from peer");
            run(db, Fill);
        });
    zel::ado::Recordset rows;
    rows.Open("Select count(*) as Lines, sum(OutStanding) as Owed From rptStudentDetail", zel::shell::gCon);
    std::printf("    %s rows, %s outstanding\n", qPrintable(rows.Fields("Lines").text()),
                qPrintable(rows.Fields("Owed").text()));
    run(db, "create temp table told as select count(*) as Lines, zel_sum2(OutStanding) as Owed from peer");
    sqlite3_stmt *told = nullptr;
    sqlite3_prepare_v2(db, "select Lines || ' rows, ' || Owed || ' outstanding' from told", -1, &told,
                       nullptr);
    sqlite3_step(told);
    std::printf("    the peer's: %s\n", reinterpret_cast<const char *>(sqlite3_column_text(told, 0)));
    sqlite3_finalize(told);
    sqlite3_close(db);
    std::fflush(stdout);
    std::_Exit(within ? 0 : 1);
}
