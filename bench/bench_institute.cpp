// The institute's screens on 20,000 students, 100,000 subject lines and 100,000 receipts: opening each, until
// it is painted, and a key in the searches of students, until the list is painted, against the statement that
// the key runs, prepared and read whole by a bare C loop.
#include "bare_read.h"
#include "desk.h"
#include "institute.h"
#include "measure.h"
#include "watched.h"

#include "accounts/frmFindAC.h"
#include "institute/frmFindApp.h"
#include "institute/frmSearchSub.h"
#include "menu_screens.h"
#include "platform/controls/application.h"
#include "platform/controls/grid.h"
#include "platform/controls/text_box.h"
#include "shell/MDIForm1.h"
#include "shell/module1.h"

#include <QSignalBlocker>
#include <QTabWidget>
#include <QTest>

#include <optional>

namespace {

using namespace zel;

void settle() {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}

/// The first opening of a screen builds what all later ones find; these are what a day consists of.
bool opens(const QString &name, const shell::Opener &open) {
    constexpr double MostMilliseconds = 30;
    std::vector<double> times;
    for (int turn = 0; turn < 8; ++turn) {
        times.push_back(1e3 * bench::seconds([&] {
                            open();
                            QCoreApplication::processEvents(); // shown and painted
                        }));
        controls::FormLife::unloadScreens();
        settle();
    }
    const double first = times.front();
    times.erase(times.begin());
    const bool within = bench::median(times) <= MostMilliseconds;
    std::printf("%-58s ms    %6.1f  limit %5.1f  %s   (the first time %.1f)\n", qPrintable("opening " + name),
                bench::median(times), MostMilliseconds, within ? "ok  " : "OVER", first);
    std::fflush(stdout);
    return within;
}

struct KeySearch {
    const char *what;
    QWidget *screen;
    const char *box;
    const char *list;
    char key;
};

bool searches(sqlite3 *db, const KeySearch &search) {
    auto *box = search.screen->findChild<controls::TextBox *>(search.box);
    auto *list = search.screen->findChild<controls::Grid *>(search.list);
    bench::Paints paints(list->viewport());
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
    bench::Arena arena;
    const bool within = bench::compare(
        search.what, 1.3, 15, typeKey, [&] { bench::readBare(db, statement.c_str(), arena); }, empty);
    std::printf("    %d rows in the list, %ld read by the peer\n", list->Rows() - 1, arena.rows);
    return within && list->Rows() - 1 == arena.rows;
}

} // namespace

int main(int argc, char **argv) {
    std::optional<bench::Copy> copy(QString::fromLocal8Bit(argv[1]));
    bench::fillInstitute(copy->database().toStdString());
    sqlite3 *db = bench::openBare(copy->database());
    bench::watchStatements();
    controls::Application application(argc, argv);
    bench::connect(copy->folder());
    shell::MDIForm1::reference->Show();
    const shell::Screens screens = menuScreens();
    bool within = true;
    for (const char *item :
         {"mnuApp", "mnuRecvVou", "mnuCarryFor", "mnuCourse", "mnuSubject", "mnuStuFeeDet"})
        within &= opens(item, screens.at(item));
    within &= opens("frmFindApp", shell::shows(institute::frmFindApp::reference));
    within &= opens("frmSearchSub", shell::shows(institute::frmSearchSub::reference));
    within &= opens("frmFindAC", shell::shows(accounts::frmFindAC::reference));

    institute::frmFindApp::reference->Show();
    accounts::frmFindAC::reference->Show();
    QWidget *finder = &*institute::frmFindApp::reference;
    QWidget *accounts = &*accounts::frmFindAC::reference;
    for (const KeySearch &search :
         {KeySearch{"search of applications, key 1, until it is painted", finder, "txt_s_value", "Msh", '1'},
          KeySearch{"search of applications, key T (all), until it is painted", finder, "txt_s_value", "Msh",
                    'T'},
          KeySearch{"search of accounts, key 7, until it is painted", accounts, "txtFindAC", "mshSearch",
                    '7'}})
        within &= searches(db, search);
    copy.reset();
    std::fflush(stdout);
    std::_Exit(within ? 0 : 1);
}
