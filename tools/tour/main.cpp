// The main job of the program, done by the keyboard alone on a fresh catalog, with a numbered picture of each
// station and the printed pages as PDF: zel_tour FOLDER.
#include "menu_screens.h"

#include "platform/controls/application.h"
#include "shell/module1.h"
#include "shell/screens.h"
#include "tests/support/driver.h"
#include "tests/support/office.h"
#include "tools/tour/hands.h"
#include "tools/tour/stations.h"

#include <QDir>
#include <QFile>
#include <QWidget>

#include <cstdio>

using namespace zel;
using namespace zel::test;

namespace {

void logIn() {
    shell::Main();
    settle();
    tour::shot(form("frmLogin"), "login");
    tour::logIn("sa", {});
    tour::shot(tour::frame(), "main-window");
}

void tell(Office &office, const Sql &statement) {
    std::printf("%s\n", qPrintable(office.rows(statement).join('\n')));
}

} // namespace

int main(int argc, char *argv[]) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: zel_tour FOLDER\n");
        return 2;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    controls::Application application(argc, argv);
    const QString folder = QDir(argv[1]).absolutePath();
    if (!QDir().mkpath(folder))
        qFatal("%s can't be made", qPrintable(folder));
    for (const QString &old : QDir(folder).entryList({"*.png", "*.pdf"}, QDir::Files))
        QFile::remove(folder + "/" + old);
    tour::setFolder(folder);

    return application.run([] {
        shell::setScreens(menuScreens());
        Office office;
        office.addReports(QCoreApplication::applicationDirPath());
        logIn();
        for (const auto station :
             {tour::buildChart, tour::setUpVouchers, tour::bankPayment, tour::otherVouchers, tour::printBooks,
              tour::enterMasterData, tour::registerStudent, tour::receiveFee, tour::carryForward,
              tour::printStudents, tour::keepCompany, tour::keepDirectory, tour::addUser,
              tour::removeFromCopy, tour::showKeys})
            station();
        tell(office, "select VouNo,VouStatus,VouDate,PaidReceive,TotalAmount from MasJV");
        tell(office, "select EntryNo,AcCode,CrAc,DrAmt,CrAmt,Naration from DetJV");
        std::fflush(stdout);
        std::_Exit(0);
    });
}
