#include "platform/report/viewer/cr_viewer.h"
#include "tests/reports/report_desk.h"
#include "tests/support/rows.h"
#include "tests/support/test_program.h"

#include <QtTest>

using namespace zel;
using namespace zel::test;

namespace {

/// Item and button of each report, and its file.
struct Run {
    const char *item;
    const char *button;
    const char *file;
};
constexpr Run Runs[] = {
    {"mnuCashBook", "cmdCashBook", "rptAcLedger3.rpt"},
    {"mnuBankBook", "cmdBankBook", "rptAcLedger3.rpt"},
    {"mnuSimpleLedger", "cmdLedger", "rptAcLedger.rpt"},
    {"mnuDetLedger", "cmdDetLedger", "rptAcLedger.rpt"},
    {"mnuSubTBSimple", "cmdTrialBal", "rptTrialBalance.rpt"},
    {"mnuControlTB", "cmdTrialControl", "rptTrialBalance2.rpt"},
    {"mnuSubTBWOB", "cmdTrialOpening", "rptTrialBalance3.rpt"},
    {"mnuFee", "cmdFeeDetail", "rptFeeDetail.rpt"},
};

viewer::CRViewer91 *shownReport() {
    QWidget *screen = form("frmVeiwer");
    return screen ? control<viewer::CRViewer91>(screen, "CRViewer91") : nullptr;
}

QString selectionOf(report::Report &report) {
    return QString::fromUtf8(report.RecordSelectionFormula.text());
}

/// Opens the item with the account CITY BANK where it asks for one, and the whole of March, and pushes the
/// button.
void runMarch(ReportDesk &desk, const Run &run) {
    desk.open(run.item);
    if (control(desk.screen, "cmdFindAC")->isVisible())
        desk.choose("CITY");
    desk.period(QDate(2026, 3, 1), QDate(2026, 3, 31));
    click(desk.screen, run.button);
}

} // namespace

Q_DECLARE_METATYPE(Run)

static void dropProcedures(ReportDesk &desk) {
    for (const char *name : {"AcLedger", "DetailAcLedger", "TrialBalance", "TrialBalance3"})
        desk.office.execute(Sql::trusted(std::string("drop procedure ") + name));
}

static void changeFile(ReportDesk &desk, const Run &run, const QByteArray &before, const QByteArray &after) {
    QFile file(desk.office.folder() + "/" + run.file);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("no definition");
    const QByteArray changed = file.readAll().replace(before, after);
    file.close();
    if (!file.open(QIODevice::WriteOnly) || file.write(changed) != changed.size())
        qFatal("the definition can't be written");
}

/// A scene is named "trouble, button".
static Scenes scenes() {
    using Trouble = void (*)(ReportDesk &, const Run &);
    static const std::map<QString, Trouble> troubles = {
        {"no file",
         [](ReportDesk &desk, const Run &run) {
             QFile::remove(desk.office.folder() + "/" + run.file);
             dropProcedures(desk);
         }},
        {"no procedure",
         [](ReportDesk &desk, const Run &) {
             dropProcedures(desk);
             desk.office.execute("sp_password NULL, 'NEW', 'sa'");
         }},
        {"no logon",
         [](ReportDesk &desk, const Run &) { desk.office.execute("sp_password NULL, 'NEW', 'sa'"); }},
        {"no such sub-report",
         [](ReportDesk &desk, const Run &run) { changeFile(desk, run, "rptSubAcOpen", "rptOther"); }},
        {"no Dates", [](ReportDesk &desk, const Run &run) { changeFile(desk, run, "Dates", "Period"); }},
        {"broken file", [](ReportDesk &desk, const Run &run) { changeFile(desk, run, "</report>", ""); }},
    };
    Scenes made;
    for (const auto &[name, trouble] : troubles)
        for (const Run &run : Runs)
            made[name + ", " + run.button] = [&run, trouble = trouble] {
                ReportDesk desk;
                trouble(desk, run);
                runMarch(desk, run);
            };
    return made;
}

class tst_report_runs : public QObject {
    Q_OBJECT
private Q_SLOTS:
    /// The statement that runs, and what is set on the report and its sub-reports.
    void runs_data() {
        columns<Run, QString, QString, QString, QStringList>("run", "ran", "selection", "dates",
                                                             "subReports");
        const QString dates = "\"From :  01/03/2026  To :  31/03/2026\"";
        const QString trialDates = "\"From :  01/03/2026   To :  31/03/2026\"";
        const QString active = "{Company.comActive} = 'Y'";
        const QStringList none;
        for (const int nth : {0, 1}) {
            const QString code = QString::number(3 + nth);
            row(Runs[nth].button, Runs[nth], "",
                "{Company.comActive}='Y' and {DetJV.CrAc} = " + code +
                    " and {DetJV.VouDate} in #2026-03-01# to #2026-03-31#",
                dates,
                QStringList{"rptSubAc: {Accounts.RowID} = " + code,
                            "rptSubOpening: {DetJV.AcCode} = " + code + " and {DetJV.VouDate} < #2026-03-01#",
                            "rptSubAcOpen: {Accounts.RowID}  = " + code});
        }
        const QStringList account = {"rptSubAC: {Accounts.RowID} = 4"};
        row("cmdLedger", Runs[2], "AcLedger 4,2026-03-01,2026-03-31", "", dates, account);
        row("cmdDetLedger", Runs[3], "DetailAcLedger 4,1,3,2026,31,3,2026", "", dates, account);
        const char *trial = "TrialBalance 2026-03-01,2026-03-31";
        row("cmdTrialBal", Runs[4], trial, active, trialDates, none);
        row("cmdTrialControl", Runs[5], trial, active, trialDates, none);
        row("cmdTrialOpening", Runs[6], "TrialBalance3 2026-03-01,2026-03-31", active, trialDates, none);
        row("cmdFeeDetail", Runs[7], "", "", dates, none);
    }

    void runs() {
        const auto [run, ran, selection, dates, subReports] =
            fetched<Run, QString, QString, QString, QStringList>();
        ReportDesk desk;
        runMarch(desk, run);
        QCOMPARE(desk.office.rows("select Call from Ran").join('\n'), ran);
        QVERIFY(shownReport());
        QCOMPARE(activeForm(), "frmVeiwer");
        report::Report &report = *shownReport()->ReportSource();
        QCOMPARE(selectionOf(report), selection);
        QCOMPARE(QString::fromUtf8(report.FormulaFields("Dates").Text.text()), dates);
        QCOMPARE(report.EnableParameterPrompting, !ran.startsWith("Trial") && run.button != Runs[7].button);
        for (const QString &sub : subReports)
            QCOMPARE(selectionOf(report.OpenSubreport(sub.section(": ", 0, 0))), sub.section(": ", 1));
        QCOMPARE(report.Database().Tables().Item(1).ConnectionProperties("User ID").Value, "sa");
    }

    /// The student reports: the statement, the file, and what is set on it.
    void students_data() {
        columns<bool, QString, QString, QString, QString>("course", "subject", "ran", "file", "formulas");
        const QString session = "\"AUTUMN 2026\"|\"sa\"|";
        row("session", false, "", "CreatStuWiseDet 10,0,0", "Detail", session + "''|''");
        row("course", true, "", "CreatStuWiseDet 10,7,0", "Course", session + "\"PHYSICS\"|''");
        row("subject", true, "MECHANICS", "CreatStuWiseDet 10,7,4", "Subject",
            session + "\"PHYSICS\"|\"MECHANICS\"");
    }

    void students() {
        const auto [course, subject, ran, file, formulas] =
            fetched<bool, QString, QString, QString, QString>();
        ReportDesk desk;
        for (const bool active : {true, false}) {
            const QString name = QString(active ? "rptAct" : "rpt") + "StudentWise" + file + ".rpt";
            QDir folder(desk.office.folder());
            for (const QString &other : folder.entryList({"rpt*StudentWise*.rpt"}))
                QVERIFY(other == name || folder.rename(other, other + ".away"));
            desk.open(active ? "mnuStuFeeDet" : "mnuInctiveStuWiseRPT");
            if (course) {
                press(Qt::Key_C, Qt::AltModifier);
                type("P");
            }
            while (text(desk.screen, "DtaSubject") != subject) {
                press(Qt::Key_U, Qt::AltModifier);
                press(Qt::Key_Down);
            }
            desk.office.execute("delete from Ran");
            press(Qt::Key_F9);
            QCOMPARE(desk.office.rows("select Call from Ran"), QStringList(ran));
            report::Report &report = *shownReport()->ReportSource();
            QCOMPARE(selectionOf(report),
                     active ? "IsNull({rptStudentDetail.inactive})" : "{rptStudentDetail.inactive} = '1'");
            QStringList set;
            for (const char *field : {"Batch", "UserName", "Course", "Subject"})
                set << QString::fromUtf8(report.FormulaFields(field).Text.text());
            QCOMPARE(set.join('|'), formulas);
            // The row that the procedure left is of an active student; read again, it is asked for again.
            press(Qt::Key_F5);
            QCOMPARE(desk.office.rows("select Call from Ran").size(), 2);
            QCOMPARE(shownReport()->plainText().contains("22.00"), active);
            desk.screen->parentWidget()->close();
            settle();
            for (const QString &other : folder.entryList({"*.away"}))
                QVERIFY(folder.rename(other, other.chopped(5)));
        }
    }

    void refuses_data() {
        columns<Run, QString, QString, QString, QString>("run", "change", "account", "message", "focus");
        const char *select = "please select Account";
        const char *cash = "Cash Book Account not found!";
        const QString gone = "delete from VouSetting where VouStatus = 'CP'";
        for (const Run &run : {Runs[1], Runs[2], Runs[3]})
            fill(QTest::addRow("%s, no account", run.button), run, "", "", select, "cmdFindAC");
        const QString set = "update VouSetting set AcCode = %1 where VouStatus = 'CP'";
        for (const QString &change : {gone, set.arg("null"), set.arg("''"), set.arg("'0'")}) {
            fill(QTest::addRow("cash book, %s", qPrintable(change)), Runs[0], change, "", cash,
                 "cmdCashBook");
            fill(QTest::addRow("bank book, %s", qPrintable(change)), Runs[1], change, "CITY", cash,
                 "cmdBankBook");
        }
        row("bank book, neither", Runs[1], gone, "", select, "cmdFindAC");
        // The tests come before the file is looked for.
        row("cash book, no row and no file", Runs[0], gone + "; --nofile", "", cash, "cmdCashBook");
    }

    void refuses() {
        const auto [run, change, account, message, focus] =
            fetched<Run, QString, QString, QString, QString>();
        ReportDesk desk(Sql::trusted(change.toStdString()));
        if (change.endsWith("--nofile"))
            QVERIFY(QFile::remove(desk.office.folder() + "/" + run.file));
        desk.open(run.item);
        if (!account.isEmpty())
            desk.choose(account);
        const std::vector<Box> boxes =
            boxesOf([&desk, button = run.button] { click(desk.screen, button); }, {QMessageBox::Ok});
        QCOMPARE(boxes.size(), 1U);
        QCOMPARE(boxes[0].text, message);
        QCOMPARE(boxes[0].icon, QMessageBox::Information);
        QCOMPARE(boxes[0].buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
        QCOMPARE(focused(), focus);
        QVERIFY(!form("frmVeiwer"));
        QCOMPARE(desk.office.rows("select Call from Ran"), QStringList());
    }

    /// Read again after the work tables were filled for someone else, the report still is what was asked for.
    void readsAgain() {
        ReportDesk desk;
        QWidget *viewerScreen = nullptr;
        const Sql emptied = "delete from rptAcLedger delete from rptTrialBalance";
        for (const Run &run : Runs) {
            desk.office.execute(emptied + " delete from Ran");
            runMarch(desk, run);
            QVERIFY(!viewerScreen || form("frmVeiwer") == viewerScreen); // one for all reports
            viewerScreen = form("frmVeiwer");
            const QString first = shownReport()->plainText();
            desk.office.execute(emptied);
            press(Qt::Key_F5);
            QCOMPARE(shownReport()->plainText(), first);
            const QStringList ran = desk.office.rows("select Call from Ran");
            const bool procedure = run.file != QByteArray("rptAcLedger3.rpt") && run.button != Runs[7].button;
            QCOMPARE(ran.size(), procedure ? 2 : 0);
            QVERIFY(ran.isEmpty() || ran[0] == ran[1]);
            desk.screen->parentWidget()->close();
            settle();
        }
    }

    void endsProgram_data() {
        QTest::addColumn<QString>("box");
        for (const Run &run : Runs)
            fill(QTest::addRow("no file, %s", run.button), "Error 53:");
        // After the file, before the logon.
        for (const char *button :
             {"cmdLedger", "cmdDetLedger", "cmdTrialBal", "cmdTrialControl", "cmdTrialOpening"})
            fill(QTest::addRow("no procedure, %s", button), "Error 2812:");
        for (const Run &run : Runs)
            fill(QTest::addRow("no logon, %s", run.button), "Error 18456:");
        row("no such sub-report, cmdCashBook", "Error 3265:");
        row("no Dates, cmdTrialBal", "Error 3265:");
        row("broken file, cmdLedger", "Error 54:");
    }

    void endsProgram() {
        QFETCH(QString, box);
        expectEnd(QTest::currentDataTag(), box);
    }
};

ZEL_TEST_MAIN(tst_report_runs, scenes())

#include "tst_report_runs.moc"
