// A year's trial balance and the ledger of the busiest account, against `ledger`, the double-entry tool of
// the command line, on the same books written as its journal. Each side is a fresh process that opens its
// file and finds the figures: ours runs the procedure and reads its rows, ledger prints them to nowhere. Time
// and peak memory.
#include "process.h"
#include "statements.h"

#include <sqlite3.h>

#include <fstream>

namespace {

int busiest = 0;
int busiestLines = 0;

/// Each voucher is a transaction, each line a posting; an opening balance is a transaction of its own.
void writeJournal(const std::string &database, const std::string &path) {
    sqlite3 *db = nullptr;
    sqlite3_open_v2(database.c_str(), &db, SQLITE_OPEN_READONLY, nullptr);
    std::ofstream journal(path);
    const auto each = [db](const char *sql, auto &&row) {
        sqlite3_stmt *statement = nullptr;
        sqlite3_prepare_v2(db, sql, -1, &statement, nullptr);
        while (sqlite3_step(statement) == SQLITE_ROW)
            row(statement);
        sqlite3_finalize(statement);
    };
    const auto text = [](sqlite3_stmt *statement, int column) {
        return reinterpret_cast<const char *>(sqlite3_column_text(statement, column));
    };
    each("select RowID, printf('%.2f', OpenBal) from Accounts where OpenBal <> 0", [&](sqlite3_stmt *row) {
        journal << "2023-12-31 Opening\n    Account:" << text(row, 0) << "  " << text(row, 1)
                << "\n    Opening\n\n";
    });
    std::string before;
    each("select VouStatus || '-' || VouNo, VouDate, AcCode, printf('%.2f', DrAmt - CrAmt) from DetJV"
         " order by VouDate, VouStatus, VouNo, EntryNo, rowid",
         [&](sqlite3_stmt *row) {
             const std::string voucher = text(row, 0);
             if (voucher != before)
                 journal << '\n' << text(row, 1) << " * " << voucher << '\n';
             before = voucher;
             journal << "    Account:" << text(row, 2) << "  " << text(row, 3) << '\n';
         });
    each("select AcCode, count(*) as n from DetJV where VouDate between '2025-01-01' and '2025-12-31'"
         " group by AcCode order by n desc limit 1",
         [](sqlite3_stmt *row) {
             busiest = sqlite3_column_int(row, 0);
             busiestLines = sqlite3_column_int(row, 1);
         });
    sqlite3_close(db);
}

/// At least so many times faster; with `least` of the memory too when it isn't 0.
bool faster(const char *what, const bench::Command &ours, const bench::Command &theirs, double times,
            double leastMemory) {
    const bench::Paired paired = bench::inTurns(ours, theirs, 5);
    const bool quick = paired.ratio.seconds >= times;
    std::printf("%-58s %6.1f times faster  limit %4.0f  %s   (ours %.1f ms, ledger %.1f ms)\n", what,
                paired.ratio.seconds, times, quick ? "ok  " : "OVER", paired.first.seconds * 1e3,
                paired.second.seconds * 1e3);
    const bool small = paired.ratio.megabytes >= leastMemory;
    std::printf("%-58s %6.1f times smaller limit %4.0f  %s   (ours %.1f MB, ledger %.1f MB)\n",
                "    peak memory", paired.ratio.megabytes, leastMemory, small ? "ok  " : "OVER",
                paired.first.megabytes, paired.second.megabytes);
    std::fflush(stdout);
    return quick && small;
}

} // namespace

int main(int, char **argv) {
    const std::string folder = argv[1];
    const std::string journal = folder + "/journal.dat";
    writeJournal(folder + "/ZEL.db", journal);
    const auto ours = [&folder](const std::string &statements) {
        return bench::Command{ZEL_BIN "/read_rows", folder, statements};
    };
    const auto ledger = [&journal](bench::Command what) {
        bench::Command command{"ledger", "--args-only", "-f", journal};
        command.insert(command.end(), what.begin(), what.end());
        return command;
    };
    bool within =
        faster("trial balance of a year, a process of its own", ours(bench::TrialBalance),
               ledger({"balance", "--flat", "-b", "2025-01-01", "-e", "2026-01-01", "^Account:"}), 40, 10);
    within &= faster("  with opening", ours(bench::TrialBalance3),
                     ledger({"balance", "--flat", "-e", "2026-01-01", "^Account:"}), 40, 10);
    within &= faster("ledger of the busiest account, a process of its own", ours(bench::ledgerOf(busiest)),
                     ledger({"register", "-b", "2025-01-01", "-e", "2026-01-01",
                             "^Account:" + std::to_string(busiest) + "$"}),
                     25, 0);
    std::printf("    account %d, %d lines of the year\n", busiest, busiestLines);
    std::remove(journal.c_str());
    return within ? 0 : 1;
}
