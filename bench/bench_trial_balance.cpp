// A year's trial balance, from the procedure to the rows read as the program does it, against the query that
// a hand would write through SQLite's C interface with the same exact sum.
#include "bare_read.h"
#include "measure.h"

#include "platform/ado/connection.h"
#include "platform/ado/drivers/sqlite_functions.h"
#include "platform/ado/recordset.h"

#include <sqlite3.h>

namespace {

constexpr char Period[] =
    "select a.AcNodes, a.AcName, m.Dr, m.Cr from (select AcCode, zel_sum2(DrAmt) as Dr, zel_sum2(CrAmt) as Cr"
    " from DetJV where VouDate >= '2025-01-01' and VouDate <= '2025-12-31' group by AcCode) m"
    " left join Accounts a on a.RowID = m.AcCode order by a.ParentID, a.Dcode";
constexpr char WithOpening[] =
    "select a.AcNodes, a.AcName, m.Opening + a.OpenBal, m.Dr, m.Cr from (select AcCode,"
    " zel_sum2(case when VouDate < '2025-01-01' then DrAmt - CrAmt end) as Opening,"
    " zel_sum2(case when VouDate >= '2025-01-01' then DrAmt end) as Dr,"
    " zel_sum2(case when VouDate >= '2025-01-01' then CrAmt end) as Cr"
    " from DetJV where VouDate <= '2025-12-31' group by AcCode) m"
    " left join Accounts a on a.RowID = m.AcCode order by a.ParentID, a.Dcode";

} // namespace

int main(int, char **argv) {
    const QString folder = QString::fromLocal8Bit(argv[1]);
    sqlite3 *db = nullptr;
    sqlite3_open_v2((folder + "/ZEL.db").toUtf8().constData(), &db, SQLITE_OPEN_READONLY, nullptr);
    zel::ado::registerFunctions(db);
    bench::Arena arena;
    zel::ado::Connection connection;
    connection.setProperty("User ID", "sa");
    connection.setProperty("Data Source", folder);
    connection.Open();
    qsizetype rows = 0;
    const auto ours = [&](const zel::Sql &procedure) {
        connection.Execute(procedure);
        zel::ado::Recordset balance;
        balance.Open("Select * From rptTrialBalance", connection);
        rows = balance.RecordCount();
    };
    bool within = bench::compare(
        "trial balance of a year, procedure and rows", 1.5, 15,
        [&] { ours("exec TrialBalance '2025-01-01','2025-12-31'"); },
        [&] { bench::readBare(db, Period, arena); });
    std::printf("    %lld rows, the peer's %ld\n", static_cast<long long>(rows), arena.rows);
    within &= bench::compare(
        "trial balance with opening, procedure and rows", 1.5, 15,
        [&] { ours("exec TrialBalance3 '2025-01-01','2025-12-31'"); },
        [&] { bench::readBare(db, WithOpening, arena); });
    std::printf("    %lld rows, the peer's %ld\n", static_cast<long long>(rows), arena.rows);
    sqlite3_close(db);
    return within ? 0 : 1;
}
