// What each index of the vouchers is worth to their search: it is dropped in a copy of the catalog.
#include "desk.h"
#include "measure.h"

#include "platform/controls/application.h"
#include "shell/module1.h"
#include "vouchers/voucher_store.h"

#include <sqlite3.h>

#include <QStringList>

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

void drop(const QString &database, const QStringList &indexes) {
    sqlite3 *db = nullptr;
    sqlite3_open_v2(database.toUtf8().constData(), &db, SQLITE_OPEN_READWRITE, nullptr);
    for (const QString &index : indexes)
        if (sqlite3_exec(db, ("drop index " + index).toUtf8().constData(), nullptr, nullptr, nullptr) !=
            SQLITE_OK)
            qFatal("%s: %s", qPrintable(index), sqlite3_errmsg(db));
    sqlite3_close(db);
}

struct Dropped {
    QStringList indexes;
    /// The search must be at least as many times slower; 0 for no claim: of the first two each stands in for
    /// the other, as few kinds share a number.
    double slower;
};

} // namespace

int main(int argc, char **argv) {
    zel::controls::Application application(argc, argv);
    const QString folder = QString::fromLocal8Bit(argv[1]);
    // Few vouchers are found, as each may cost a walk through all lines.
    const QString text = "777";
    bool within = true;
    const Dropped cases[] = {
        {{"ixDetJVVoucher"}, 0}, {{"ixDetJVNumber"}, 0},  {{"ixDetJVVoucher", "ixDetJVNumber"}, 10},
        {{"ixMasJVVoucher"}, 0}, {{"ixDetJVAccount"}, 0}, {{"ixDetJVContra"}, 0},
        {{"ixDetJVSubject"}, 0}};
    for (const Dropped &dropped : cases) {
        const bench::Copy copy(folder);
        bench::connect(copy.folder());
        const double with = search(text);
        const double withMany = search("1");
        zel::shell::gCon.Close();
        drop(copy.database(), dropped.indexes);
        bench::connect(copy.folder());
        const double without = search(text);
        const bool claimed = dropped.slower > 0;
        const bool stillQuick = dropped.indexes.size() == 1;
        const double withoutMany = !stillQuick ? 0 : search("1");
        zel::shell::gCon.Close();
        const bool enough = without >= dropped.slower * with;
        within &= enough;
        std::printf("search without %-43s %7.2f times slower%s   (with %.1f ms, without %.1f ms",
                    qPrintable(dropped.indexes.join(" and ")), without / with,
                    !claimed ? ""
                    : enough ? ", must be 10  ok"
                             : ", must be 10  UNDER",
                    with, without);
        if (!stillQuick)
            std::printf(")\n");
        else
            std::printf("; key 1: %.2f times, with %.1f ms, without %.1f ms)\n", withoutMany / withMany,
                        withMany, withoutMany);
        std::fflush(stdout);
    }
    return within ? 0 : 1;
}
