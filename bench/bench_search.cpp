// A key in the search box of the bank payments until the list is painted, against the statement that the
// screen runs, prepared and read whole by a bare C loop.
#include "bare_read.h"
#include "desk.h"
#include "measure.h"
#include "watched.h"

#include "platform/controls/application.h"
#include "platform/controls/combo_box.h"
#include "platform/controls/grid.h"
#include "platform/controls/text_box.h"

#include <QSignalBlocker>
#include <QTabWidget>
#include <QTest>

#include <string>

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
    bench::Paints paints(list->viewport());
    QTest::qWait(100);

    bench::Arena arena;
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
        const auto typeKey = [&] {
            const int before = paints.count;
            QTest::keyClick(box, search.key);
            while (paints.count == before)
                QCoreApplication::processEvents();
        };
        const auto empty = [&] {
            const QSignalBlocker quiet(box);
            box->clear();
            QTest::qWait(1);
        };
        empty();
        typeKey();
        const std::string statement = bench::watchedStatements().back();
        within = bench::compare(
                     search.what, 1.3, 15, typeKey, [&] { bench::readBare(db, statement.c_str(), arena); },
                     empty) &&
                 within;
        std::printf("    %d rows in the list, %ld read by the peer\n", list->Rows() - 1, arena.rows);
        if (list->Rows() - 1 != arena.rows)
            within = false;
    }
    std::fflush(stdout);
    std::_Exit(within ? 0 : 1);
}
