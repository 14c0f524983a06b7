// What each index of the vouchers is worth to their search: it is dropped in a copy of the catalog.
#include "desk.h"
#include "measure.h"

#include "platform/controls/application.h"
#include "shell/module1.h"
#include "vouchers/voucher_store.h"

#include <sqlite3.h>

#include <string>

namespace {

/// Milliseconds that a search by number takes; one that goes on for seconds is measured once.
double search(const QString &text) {
    const auto byNumber = zel::vouchers::searchOf(zel::vouchers::voucherKind("BP")).criteria.front();
    std::vector<double> turns;
    for (int turn = 0; turn < 4; ++turn) {
        turns.push_back(
            1e3 * bench::seconds([&] { zel::shell::OpenRs(byNumber.before + text + byNumber.behind); }));
        if (turns.back() > 2000)
            return turns.back();
    }
    turns.erase(turns.begin());
    return bench::median(turns);
}

void drop(const QString &database, const char *index) {
    sqlite3 *db = nullptr;
    sqlite3_open_v2(database.toUtf8().constData(), &db, SQLITE_OPEN_READWRITE, nullptr);
    if (sqlite3_exec(db, (std::string("drop index ") + index).c_str(), nullptr, nullptr, nullptr) !=
        SQLITE_OK)
        qFatal("%s: %s", index, sqlite3_errmsg(db));
    sqlite3_close(db);
}

struct Dropped {
    const char *index;
    double slower; ///< the search must be at least as many times; 0 for no claim
};

} // namespace

int main(int argc, char **argv) {
    zel::controls::Application application(argc, argv);
    const QString folder = QString::fromLocal8Bit(argv[1]);
    // Few vouchers are found, as each may cost a walk through all lines.
    const QString text = "777";
    bool within = true;
    const Dropped cases[] = {{"ixDetJVVoucher", 10},
                             {"ixMasJVVoucher", 0},
                             {"ixDetJVAccount", 0},
                             {"ixDetJVDate", 0},
                             {"ixDetJVSubject", 0}};
    for (const Dropped &dropped : cases) {
        const bench::Copy copy(folder);
        bench::connect(copy.folder());
        const double with = search(text);
        const double withMany = search("1");
        zel::shell::gCon.Close();
        drop(copy.database(), dropped.index);
        bench::connect(copy.folder());
        const double without = search(text);
        const bool claimed = dropped.slower > 0;
        const double withoutMany = claimed ? 0 : search("1");
        zel::shell::gCon.Close();
        const bool enough = without >= dropped.slower * with;
        within &= enough;
        std::printf("search without %-43s %7.2f times slower%s   (with %.1f ms, without %.1f ms",
                    dropped.index, without / with,
                    !claimed ? ""
                    : enough ? ", must be 10  ok"
                             : ", must be 10  UNDER",
                    with, without);
        if (claimed)
            std::printf(")\n");
        else
            std::printf("; key 1: %.2f times, with %.1f ms, without %.1f ms)\n", withoutMany / withMany,
                        withMany, withoutMany);
        std::fflush(stdout);
    }
    return within ? 0 : 1;
}
