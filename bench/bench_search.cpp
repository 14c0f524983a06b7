// A key in the search box of the bank payments until the list is painted, against the statement that the
// screen runs, prepared and read whole by a bare C loop.
#include "desk.h"
#include "watched.h"

#include "platform/controls/application.h"
#include "platform/controls/combo_box.h"
#include "platform/controls/grid.h"
#include "platform/controls/text_box.h"

#include <QTabWidget>
#include <QTest>

int main(int argc, char **argv) {
    const QString folder = QString::fromLocal8Bit(argv[1]);
    sqlite3 *db = bench::openBare(folder + "/ZEL.db");
    bench::watchStatements();
    zel::controls::Application application(argc, argv);
    bench::connect(folder);
    QWidget *screen = bench::openVoucher("BP");
    screen->resize(1100, 750);
    screen->findChild<QTabWidget *>("SSTab1")->setCurrentIndex(1);
    auto *box = screen->findChild<zel::controls::TextBox *>("txtSearch");
    auto *list = screen->findChild<zel::controls::Grid *>("mshSearch");
    QTest::qWait(100);

    bool within = true;
    const struct {
        const char *what;
        const char *criterion;
        char key;
    } searches[] = {{"search by number, key 1, until the list is painted", "Voucher #", '1'},
                    {"search by number, key 7, until the list is painted", "Voucher #", '7'},
                    {"search by payee, key P (all), until the list is painted", "Paid To", 'P'}};
    for (const auto &search : searches) {
        screen->findChild<zel::controls::ComboBox *>("cboSearch")->setCurrentText(search.criterion);
        within &= bench::searchByKey(db, {search.what, search.key, box, list});
    }
    std::fflush(stdout);
    std::_Exit(within ? 0 : 1);
}
