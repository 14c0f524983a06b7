// Saves vouchers in a process of its own, which the tests of cuts stop in the middle.
//
//   voucher_writer save FOLDER KIND new|changed fail|stop N
//       Saves one voucher of three lines; "changed" opens the newest of the kind and saves it with one line
//       more. The N-th statement of the save fails (exit status 1), or the process goes there (status 2).
//       Status 0: the save came to its end, no statement being the N-th.
//   voucher_writer loop FOLDER
//       Saves new and changed vouchers of all kinds without end; says "ready" after the first.

#include "platform/base/error.h"
#include "platform/controls/application.h"
#include "platform/controls/grid.h"
#include "platform/controls/text_box.h"
#include "shell/module1.h"
#include "vouchers/voucher.h"

#include <QAbstractButton>

#include <sqlite3.h>

#include <cstdio>
#include <iterator>
#include <unistd.h>

namespace {

/// Counts the statements that reach the engine; the one that brings `left` to 0 is cut.
struct Cut {
    int left = 0;
    bool stop = false;
    bool failing = false;
} cut;

int onStatement(unsigned, void *, void *, void *) {
    if (cut.left > 0 && --cut.left == 0) {
        if (cut.stop)
            _exit(2);
        cut.failing = true;
    }
    return 0;
}

int onProgress(void *) {
    return std::exchange(cut.failing, false) ? 1 : 0;
}

int watch(sqlite3 *database, char **, const sqlite3_api_routines *) {
    sqlite3_trace_v2(database, SQLITE_TRACE_STMT, onStatement, nullptr);
    sqlite3_progress_handler(database, 1, onProgress, nullptr);
    return SQLITE_OK;
}

using zel::controls::Grid;
using zel::controls::TextBox;

QWidget *open(const char *kind) {
    zel::vouchers::showVoucher(zel::vouchers::voucherKind(kind));
    for (QWidget *top : QApplication::topLevelWidgets())
        if (top->objectName() == zel::vouchers::voucherKind(kind).form)
            return top;
    std::abort();
}

void click(QWidget *screen, const char *button) {
    screen->findChild<QAbstractButton *>(button)->click();
}

void setBox(QWidget *screen, const char *name, const char *text) {
    screen->findChild<TextBox *>(name)->setText(text);
}

void addLine(QWidget *screen, int amount) {
    for (const auto &[box, tag] : {std::pair("txtDrAc", "1"), std::pair("txtCrAc", "2")}) {
        setBox(screen, box, tag);
        screen->findChild<TextBox *>(box)->setTag(tag);
    }
    setBox(screen, "txtDRCR", QByteArray::number(amount).constData());
    click(screen, "cmdAdd");
}

/// The header tells how many lines there are.
void tellLines(QWidget *screen) {
    const int lines = screen->findChild<Grid *>("MshEntry")->Rows() - 1;
    setBox(screen, "txtPaidTo", (QByteArray::number(lines) + " lines").constData());
}

void openNewest(QWidget *screen) {
    Grid *list = screen->findChild<Grid *>("mshSearch");
    Q_EMIT list->rowDoubleClicked(1);
}

int save(const char *kind, bool changed, int statement) {
    QWidget *screen = open(kind);
    if (changed)
        openNewest(screen);
    for (int line = 1; line <= (changed ? 1 : 3); ++line)
        addLine(screen, line * 10);
    tellLines(screen);
    cut.left = statement;
    try {
        click(screen, "cmdSave");
    } catch (const zel::Error &) {
        return 1;
    }
    return 0;
}

[[noreturn]] void loop() {
    const char *const kinds[] = {"BP", "CP", "CR", "BR", "JV"};
    for (int round = 0;; ++round) {
        QWidget *screen = open(kinds[round % int(std::size(kinds))]);
        if (round > 10 && round % 3 == 0)
            openNewest(screen);
        for (int line = 0; line <= round % 4; ++line)
            addLine(screen, round + line + 1);
        tellLines(screen);
        click(screen, "cmdSave");
        if (round == 0) {
            std::puts("ready");
            std::fflush(stdout);
        }
    }
}

} // namespace

int main(int argc, char **argv) {
    sqlite3_auto_extension(reinterpret_cast<void (*)()>(watch));
    zel::controls::Application application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    const QString folder = arguments.at(2);
    zel::shell::setApplicationPath(folder);
    zel::shell::gCon.setProperty("Data Source", folder + "/");
    zel::shell::gCon.setProperty("User ID", "sa");
    zel::shell::gCon.Open();
    zel::shell::gUserName = "sa";
    if (arguments.at(1) == "loop")
        loop();
    cut.stop = arguments.at(5) == "stop";
    _exit(save(arguments.at(3).toLatin1(), arguments.at(4) == "changed", arguments.at(6).toInt()));
}
