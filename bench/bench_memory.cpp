// What a day's work leaves behind on the heap: each screen opened and closed 300 times, and 300 searches in
// the finder. After the first quarter of the rounds each adds less than a kilobyte.
#include "desk.h"

#include "accounts/frmFindAC.h"
#include "menu_screens.h"
#include "platform/controls/application.h"
#include "platform/controls/text_box.h"
#include "shell/MDIForm1.h"
#include "shell/frmLocPass.h"
#include "shell/module1.h"

#include <malloc.h>

#include <cstdio>
#include <functional>

namespace {

using namespace zel;

constexpr int Rounds = 300;
constexpr double Limit = 1; // kilobytes a round

void settle() {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void unloadScreens() {
    controls::FormLife::unloadScreens();
    settle();
}

double kilobytesInUse() {
    const struct mallinfo2 heap = mallinfo2();
    return double(heap.uordblks + heap.hblkhd) / 1024;
}

bool measure(const QString &what, const std::function<void(int)> &round) {
    double begin = 0;
    for (int i = 0; i < Rounds; ++i) {
        if (i == Rounds / 4)
            begin = kilobytesInUse();
        round(i);
    }
    const double each = (kilobytesInUse() - begin) / (Rounds - Rounds / 4);
    const bool within = each < Limit;
    std::printf("%-40s adds %7.3f KiB a time  limit %5.2f  %s\n", qPrintable(what), each, Limit,
                within ? "ok" : "OVER");
    std::fflush(stdout);
    return within;
}

} // namespace

int main(int argc, char **argv) {
    controls::Application application(argc, argv);
    const bench::Copy copy(QString::fromLocal8Bit(argv[1]));
    bench::connect(copy.folder());
    shell::MDIForm1::reference->Show();
    bool within = true;
    for (const auto &[name, open] : menuScreens()) {
        within = measure(name,
                         [&open = open](int) {
                             open();
                             settle();
                             unloadScreens();
                         }) &&
                 within;
    }
    within = measure("lock prompt",
                     [](int) {
                         shell::frmLocPass::reference->Show();
                         settle();
                         unloadScreens();
                     }) &&
             within;
    accounts::frmFindAC::reference->Show();
    auto *box = accounts::frmFindAC::reference->findChild<controls::TextBox *>("txtFindAC");
    within = measure("search in the finder",
                     [box](int i) {
                         box->setText(QString::number(i));
                         settle();
                     }) &&
             within;
    std::fflush(stdout);
    std::_Exit(within ? 0 : 1);
}
