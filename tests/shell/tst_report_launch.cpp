#include "platform/report/viewer/cr_viewer.h"
#include "shell/MDIForm1.h"
#include "shell/frmVeiwer.h"
#include "shell/module1.h"
#include "shell/report_launcher.h"
#include "tests/support/driver.h"
#include "tests/support/office.h"
#include "tests/support/rows.h"
#include "tests/support/test_program.h"

#include <QFile>
#include <QMdiSubWindow>
#include <QtTest>

using namespace zel;
using namespace zel::test;

namespace {

/// An office with a small chart of accounts and its report beside the program, logged in.
struct PrintingOffice {
    explicit PrintingOffice(const QString &user = "sa", const QString &password = {})
        : office(Office::Chart::Demo) {
        office.addReports(ZEL_SOURCE_DIR "/rpt");
        office.execute("sp_addlogin 'CLERK', 'SECRET', 'ZEL'");
        office.execute("sp_adduser 'CLERK'");
        office.logIn(user, password);
    }
    Office office;
    shell::ReportLauncher launcher;
};

} // namespace

/// A print as an event of the program, where failures are caught.
static std::function<void()> scene(const char *file, void (*set)(shell::ReportSettings &),
                                   const char *statement = "") {
    return [=] {
        PrintingOffice printing;
        printing.office.execute(Sql::trusted(statement));
        shell::ReportSettings settings;
        set(settings);
        QMetaObject::invokeMethod(
            qApp, [&] { printing.launcher.print(file, settings); }, Qt::QueuedConnection);
        settle();
    };
}

using shell::ReportSettings;
static const Scenes scenes = {
    {"missing file", scene("rptNone.rpt", [](ReportSettings &) {})},
    {"fixed logon", scene(
                        "rptChartAC.rpt", [](ReportSettings &set) { set.logon = shell::Logon::Fixed; },
                        "sp_password NULL, 'NEW', 'sa'")},
    {"unknown formula", scene("rptChartAC.rpt",
                              [](ReportSettings &set) {
                                  set.formulas = {{"Nothing", "\"x\""_sql}};
                              })},
    {"unknown parameter", scene("rptChartAC.rpt", [](ReportSettings &set) { set.parameters = {7}; })},
    {"apostrophe", scene("rptBP.rpt",
                         [](ReportSettings &set) {
                             set.selection = "{MasJV.VouStatus} = '"_sql + QString("B' or '1' = '1") + "'";
                         })},
};

class tst_report_launch : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void showsInOneWindow() {
        PrintingOffice printing("CLERK", "SECRET");
        printing.launcher.print("rptChartAC.rpt", {});
        QWidget *screen = form("frmVeiwer");
        QVERIFY(screen);
        QCOMPARE(screen->windowTitle(), "");
        QVERIFY(screen->parentWidget()->isMaximized());
        const auto *viewer = control<viewer::CRViewer91>(screen, "CRViewer91");
        QCOMPARE(viewer->geometry(), screen->rect());
        QVERIFY(viewer->pageCount() >= 1);
        const QString chart = viewer->plainText();
        const QString account =
            printing.office.rows("select AcName from Accounts where acStatus = 'DD'").first();
        QVERIFY2(chart.contains(account), qPrintable(chart));

        // The second print takes the place of the first; an empty selection is a page without rows.
        shell::ReportSettings none;
        none.selection = "{MasJV.VouNo}= "_sql + QString("7") +
                         " and {MasJV.VouStatus} = 'BP' and {Company.comActive} = 'Y'";
        printing.launcher.print("rptBP.rpt", none);
        QCOMPARE(form("frmVeiwer"), screen);
        QVERIFY(viewer->pageCount() >= 1);
        QVERIFY(!viewer->plainText().contains(account));
    }

    void closingKeepsPanelHidden() {
        PrintingOffice printing;
        shell::MDIForm1::reference->close_Menu();
        shell::ReportSettings fixed;
        fixed.logon = shell::Logon::Fixed;
        printing.launcher.print("rptChartAC.rpt", fixed);
        form("frmVeiwer")->parentWidget()->close();
        settle();
        QVERIFY(!form("frmVeiwer"));
        QVERIFY(control(form("MDIForm1"), "Picture1")->isHidden());
        printing.launcher.print("rptChartAC.rpt", fixed);
        QVERIFY(form("frmVeiwer"));
    }

    void endsProgram() {
        expectEnd("missing file", "Error 53:");
        expectEnd("fixed logon", "Error 18456:"); // sa has a password
        expectEnd("unknown formula", "Error 3265:");
        expectEnd("unknown parameter", "Error 3265:");
        expectEnd("apostrophe", "Error ");
    }
};

ZEL_TEST_MAIN(tst_report_launch, scenes)

#include "tst_report_launch.moc"
