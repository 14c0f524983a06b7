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

/// Runs as an event of the program, where failures are caught.
static void asEvent(const std::function<void()> &action) {
    QMetaObject::invokeMethod(qApp, action, Qt::QueuedConnection);
    settle();
}

static const Scenes scenes = {
    {"missing file",
     [] {
         PrintingOffice printing;
         asEvent([&] { printing.launcher.print("rptNone.rpt", {}); });
     }},
    {"fixed logon",
     [] {
         PrintingOffice printing;
         printing.office.execute("sp_password NULL, 'NEW', 'sa'");
         shell::ReportSettings fixed;
         fixed.logon = shell::Logon::Fixed;
         asEvent([&] { printing.launcher.print("rptChartAC.rpt", fixed); });
     }},
    {"unknown formula",
     [] {
         PrintingOffice printing;
         shell::ReportSettings settings;
         settings.formulas = {{"Nothing", "\"x\""_sql}};
         asEvent([&] { printing.launcher.print("rptChartAC.rpt", settings); });
     }},
    {"unknown parameter",
     [] {
         PrintingOffice printing;
         shell::ReportSettings settings;
         settings.parameters = {7};
         asEvent([&] { printing.launcher.print("rptChartAC.rpt", settings); });
     }},
    {"selection",
     [] {
         PrintingOffice printing;
         shell::ReportSettings settings;
         settings.selection = "{MasJV.VouStatus} = '"_sql + QString("B' or '1' = '1") + "'";
         asEvent([&] { printing.launcher.print("rptBP.rpt", settings); });
     }},
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
        picture(form("MDIForm1"), "viewer");
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

    void endsProgram_data() {
        columns<QString, QString>("scene", "box");
        row("missing file", "missing file", "Error 53:");
        row("fixed logon where sa has a password", "fixed logon", "Error 18456:");
        row("formula that the file doesn't have", "unknown formula", "Error 3265:");
        row("parameter that the file doesn't have", "unknown parameter", "Error 3265:");
        row("selection from a box with an apostrophe", "selection", "Error ");
    }

    void endsProgram() {
        QFETCH(QString, scene);
        QFETCH(QString, box);
        const Ended ended = play(scene);
        QVERIFY2(ended.status == 1, qPrintable(ended.errorStream));
        QVERIFY2(ended.box.startsWith(box), qPrintable(ended.box));
    }
};

int main(int argc, char *argv[]) {
    tst_report_launch tests;
    return run(argc, argv, tests, scenes);
}

#include "tst_report_launch.moc"
