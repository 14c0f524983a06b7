// A year's trial balance and the ledger of the busiest account, against `ledger`, the double-entry tool of
// the command line, on the same books written as its journal. ledger reads its file and prints the figures to
// nowhere; ours runs the procedure and reads its rows: in the program, which is open all day, and again as a
// process that opens the catalog for this alone, whose peak memory counts.
#include "process.h"
#include "statements.h"

#include "platform/ado/drivers/sqlite_driver.h"
#include "platform/ado/statements.h"

#include <QCoreApplication>

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

struct Limits {
    double times;  ///< at least so many times faster in the program
    double own;    ///< and as a process of its own; 0 for no limit
    double memory; ///< at least so many times smaller, when it isn't 0
};

class Comparison {
public:
    Comparison(const std::string &folder, std::string journal)
        : m_folder(folder), m_journal(std::move(journal)),
          m_open(zel::ado::SqliteDriver::open(QString::fromStdString(folder), std::nullopt)) {}

    bool faster(const char *what, const std::string &statements, const bench::Command &arguments,
                const Limits &limits) {
        bench::Command ledger{"ledger", "--args-only", "-f", m_journal};
        ledger.insert(ledger.end(), arguments.begin(), arguments.end());
        const bench::Command process{ZEL_BIN "/read_rows", m_folder, statements};
        const bool quick = inTheProgram(what, statements, ledger, limits.times);
        const bench::Paired own = bench::inTurns(process, ledger, Turns);
        const bool alone = print("    in a process of its own", own.ratio.seconds, limits.own,
                                 own.first.seconds, own.second.seconds);
        const bool small = own.ratio.megabytes >= limits.memory;
        std::printf("%-58s %6.1f times smaller limit %4.0f  %s   (ours %.1f MB, ledger %.1f MB)\n",
                    "    its peak memory", own.ratio.megabytes, limits.memory, small ? "ok  " : "OVER",
                    own.first.megabytes, own.second.megabytes);
        std::fflush(stdout);
        return quick && alone && small;
    }

private:
    static constexpr int Turns = 5;

    bool inTheProgram(const char *what, const std::string &statements, const bench::Command &ledger,
                      double limit) {
        std::vector<double> ours;
        std::vector<double> theirs;
        std::vector<double> ratios;
        read(statements);
        for (int turn = 0; turn < Turns; ++turn) {
            ours.push_back(bench::seconds([&] { read(statements); }));
            theirs.push_back(bench::run(ledger).seconds);
            ratios.push_back(theirs.back() / ours.back());
        }
        return print(what, bench::median(ratios), limit, bench::median(ours), bench::median(theirs));
    }

    void read(const std::string &statements) {
        qsizetype rows = 0;
        zel::ado::runStatements(*m_open, zel::Sql::trusted(statements.c_str()),
                                [&rows](const zel::ado::Outcome &outcome) {
                                    rows += outcome.rows ? outcome.rows->rowCount() : 0;
                                });
        if (rows == 0)
            std::exit(1);
    }

    static bool print(const char *what, double ratio, double limit, double ours, double ledger) {
        const bool within = ratio >= limit;
        std::printf("%-58s %6.1f times faster  limit %4.0f  %s   (ours %.1f ms, ledger %.1f ms)\n", what,
                    ratio, limit, within ? "ok  " : "OVER", ours * 1e3, ledger * 1e3);
        std::fflush(stdout);
        return within;
    }

    std::string m_folder;
    std::string m_journal;
    std::unique_ptr<zel::ado::SqliteDriver> m_open;
};

} // namespace

int main(int argc, char **argv) {
    QCoreApplication application(argc, argv);
    const std::string folder = argv[1];
    const std::string journal = folder + "/journal.dat";
    writeJournal(folder + "/ZEL.db", journal);
    Comparison comparison(folder, journal);
    constexpr Limits Balance{40, 40, 10};
    bool within = comparison.faster(
        "trial balance of a year", bench::TrialBalance,
        {"balance", "--flat", "-b", "2025-01-01", "-e", "2026-01-01", "^Account:"}, Balance);
    within &= comparison.faster("trial balance with opening", bench::TrialBalance3,
                                {"balance", "--flat", "-e", "2026-01-01", "^Account:"}, Balance);
    within &= comparison.faster(
        "ledger of the busiest account", bench::ledgerOf(busiest),
        {"register", "-b", "2025-01-01", "-e", "2026-01-01", "^Account:" + std::to_string(busiest) + "$"},
        {25, 0, 0});
    std::printf("    account %d, %d lines of the year\n", busiest, busiestLines);
    std::remove(journal.c_str());
    return within ? 0 : 1;
}
