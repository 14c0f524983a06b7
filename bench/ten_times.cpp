// What ten times the data cost: ten_times FOLDER FOLDER-OF-TEN-TIMES. Each report is a process of its own
// that runs the procedure and reads its rows.
#include "process.h"
#include "statements.h"

int main(int, char **argv) {
    bool within = true;
    const struct {
        const char *what;
        std::string statements;
    } reports[] = {{"trial balance of a year", bench::TrialBalance},
                   {"  with opening", bench::TrialBalance3},
                   {"ledger of a bank account", bench::ledgerOf(36)}};
    constexpr double Limit = 12;
    for (const auto &report : reports) {
        const auto ours = [&report](const char *folder) {
            return bench::Command{ZEL_BIN "/read_rows", folder, report.statements};
        };
        const bench::Paired paired = bench::inTurns(ours(argv[1]), ours(argv[2]), 7);
        const bool good = paired.ratio.seconds <= Limit && paired.ratio.megabytes <= Limit;
        within &= good;
        std::printf(
            "%-40s ten times the data: time %5.2f, memory %5.2f  limit %2.0f  %s   (%.1f and %.1f ms, "
            "%.1f and %.1f MB)\n",
            report.what, paired.ratio.seconds, paired.ratio.megabytes, Limit, good ? "ok  " : "OVER",
            paired.first.seconds * 1e3, paired.second.seconds * 1e3, paired.first.megabytes,
            paired.second.megabytes);
        std::fflush(stdout);
    }
    return within ? 0 : 1;
}
