// What a day's work leaves behind on the heap: each screen and finder opened and closed 300 times, 300
// searches in a finder, 300 prints of each kind with the viewer closed every other time. The heap after the
// first quarter is held against the end. bench_growth FOLDER [NAME]: only what has that in its name.
#include "books.h"
#include "desk.h"
#include "institute.h"
#include "measure.h"

#include "accounts/frmFindAC.h"
#include "institute/frmFindApp.h"
#include "institute/frmSearchSub.h"
#include "menu_screens.h"
#include "platform/controls/application.h"
#include "platform/controls/text_box.h"
#include "platform/report/report.h"
#include "reports/frmRPTAccounts.h"
#include "shell/MDIForm1.h"
#include "shell/frmLocPass.h"
#include "shell/frmVeiwer.h"
#include "shell/module1.h"
#include "shell/report_launcher.h"
#include "shell/screens.h"

#include <QFile>
#include <QProcess>

#include <malloc.h>

#include <functional>

namespace {

using namespace zel;

constexpr int Times = 300;
constexpr double MostBytes = 1024; ///< a time

const Sql from = "2024-01-01";
const Sql to = "2024-02-29";
const Sql account = "36"; ///< the busiest

/// A print as its screen makes it.
struct Print {
    QString file;
    Sql procedure; ///< that fills what the report reads
    shell::ReportSettings settings;
};

shell::ReportSettings dated(std::optional<Sql> selection = {},
                            std::vector<shell::ReportSettings::SubReport> subReports = {}) {
    shell::ReportSettings made;
    made.selection = std::move(selection);
    made.formulas = {{"Dates", "\"From :  01/01/2024  To :  29/02/2024\""}};
    made.subReports = std::move(subReports);
    return made;
}

shell::ReportSettings selected(Sql selection, shell::Logon logon = shell::Logon::User) {
    shell::ReportSettings made;
    made.logon = logon;
    made.selection = std::move(selection);
    return made;
}

shell::ReportSettings named(std::optional<Sql> selection, std::vector<Value> parameters = {}) {
    shell::ReportSettings made;
    made.parameters = std::move(parameters);
    made.selection = std::move(selection);
    made.formulas = {{"Batch", "\"SESSION 1\""}, {"UserName", "\"SA\""}};
    return made;
}

std::vector<Print> prints() {
    const Sql active = "{Company.comActive} = 'Y'";
    const Sql own = "{Accounts.RowID} = " + account;
    const Sql period = " '" + from + "','" + to + "'";
    const Sql attending = "IsNull({rptStudentDetail.inactive})";
    return {
        {"rptBP.rpt", {}, selected("{MasJV.VouNo}= 1 and {MasJV.VouStatus} = 'BP' and " + active)},
        {"rptChartAC.rpt", {}, {}},
        {"rptAcLedger.rpt", "exec AcLedger " + account + "," + period, dated({}, {{"rptSubAC", own}})},
        {"rptAcLedger3.rpt",
         {},
         dated(active + " and {DetJV.CrAc} = " + account + " and {DetJV.VouDate} in #" + from + "# to #" +
                   to + "#",
               {{"rptSubAc", own},
                {"rptSubOpening", "{DetJV.AcCode} = " + account + " and {DetJV.VouDate} < #" + from + "#"},
                {"rptSubAcOpen", own}})},
        {"rptTrialBalance.rpt", "exec TrialBalance" + period, dated(active)},
        {"rptTrialBalance2.rpt", "exec TrialBalance" + period, dated(active)},
        {"rptTrialBalance3.rpt", "exec TrialBalance3" + period, dated(active)},
        {"rptSlip.rpt", {}, selected("{MasJV.VouNo}= 1 and {MasJV.VouStatus} = 'FR' and {DetJv.CrAmt} > 0")},
        {"rptFeeDetail.rpt", {}, named({}, {1})},
        {"rptActStudentWiseDetail.rpt", "exec CreatStuWiseDet 1,0,0", named(attending)},
        {"rptActStudentWiseCourse.rpt", "exec CreatStuWiseDet 1,1,0", named(attending)},
        {"rptActStudentWiseSubject.rpt", "exec CreatStuWiseDet 1,1,1", named(attending)},
        {"rptStudentWiseDetail.rpt", "exec CreatStuWiseDet 1,0,0",
         named("{rptStudentDetail.inactive} = '1'"_sql)},
        {"rptApplication.rpt", {}, selected("{tblMasApp.AppId} = 1", shell::Logon::Fixed)},
        {"rptAdmissionDetail.rpt", {}, {}},
    };
}

double heapBytes() {
    const struct mallinfo2 heap = mallinfo2();
    return static_cast<double>(heap.uordblks + heap.hblkhd);
}

/// What is queued and painted is done, and what was to be deleted later is gone.
void settle() {
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}

void unloadScreens() {
    controls::FormLife::unloadScreens();
    settle();
}

QString only; ///< what has this in its name is measured

/// Does `once` so often and prints what each time adds; false where that is too much.
bool measure(const QString &what, const std::function<void(int)> &once) {
    if (!what.contains(only))
        return true;
    std::vector<double> heap;
    for (int time = 0; time < Times; ++time) {
        once(time);
        heap.push_back(heapBytes());
    }
    // Medians, since what waits to be painted or deleted differs from one time to the next.
    constexpr int Around = 10;
    const auto about = [&](int time) {
        return bench::median({heap.begin() + time - Around, heap.begin() + time + Around});
    };
    constexpr int Early = Times / 4;
    constexpr int Late = Times - Around;
    const double growth = (about(Late) - about(Early)) / (Late - Early);
    const bool within = growth < MostBytes;
    std::printf("%-58s bytes a time %8.0f  limit %5.0f  %s\n",
                qPrintable(QStringLiteral("300 times ") + what), growth, MostBytes, within ? "ok  " : "OVER");
    std::fflush(stdout);
    return within;
}

bool measureScreens() {
    bool within = true;
    shell::Screens screens = menuScreens();
    screens["lock prompt"] = shell::shows(shell::frmLocPass::reference);
    screens["frmFindAC"] = shell::shows(accounts::frmFindAC::reference);
    screens["frmFindApp"] = shell::shows(institute::frmFindApp::reference);
    screens["frmSearchSub"] = shell::shows(institute::frmSearchSub::reference);
    for (const auto &[name, screen] : screens) {
        within &= measure(name, [&open = screen.open](int) {
            open();
            settle();
            unloadScreens();
        });
    }
    accounts::frmFindAC::reference->Show();
    auto *box = accounts::frmFindAC::reference->findChild<controls::TextBox *>("txtFindAC");
    within &= measure("a search in the finder", [box](int time) {
        box->setText(QString::number(time));
        settle();
    });
    unloadScreens();
    return within;
}

bool measure(const Print &print) {
    shell::ReportLauncher launcher;
    return measure(print.file, [&](int time) {
        launcher.OpenReport(print.file);
        if (!print.procedure.text().empty())
            shell::gCon.Execute(print.procedure);
        launcher.prepare(print.settings);
        launcher.view();
        settle();
        // The next print comes from the screen, whether the viewer was closed before or not.
        if (time % 2 == 0)
            shell::frmVeiwer::reference->Unload();
        reports::frmRPTAccounts::reference->Show();
        settle();
    });
}

/// Small books of their own: what a print leaves behind doesn't depend on how long it is.
void makeBooks(const QString &folder) {
    if (QProcess::execute(QStringLiteral(ZEL_BIN "/zeldb"), {"create", folder}) != 0)
        qFatal("no catalog");
    const std::string database = (folder + "/ZEL.db").toStdString();
    bench::fillBooks(database, {1000, 60, 60});
    bench::fillInstitute(database, {.students = 60, .receipts = 200, .sessions = 2});
}

} // namespace

int main(int argc, char **argv) {
    controls::Application application(argc, argv);
    const QTemporaryDir folder(QString::fromLocal8Bit(argv[1]) + "/growth-XXXXXX");
    makeBooks(folder.path());
    only = QString::fromLocal8Bit(argc > 2 ? argv[2] : "");
    bench::connect(folder.path());
    shell::setScreens(menuScreens());
    shell::MDIForm1::reference->Show();
    bool within = measureScreens();
    for (const Print &print : prints())
        within &= measure(print);
    std::fflush(stdout);
    std::_Exit(within ? 0 : 1);
}
