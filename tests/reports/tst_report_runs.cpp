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
    using Trouble = std::function<void(ReportDesk &, const Run &)>;
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
    for (const auto &[name, trouble] : troubles) {
        for (const Run &run : Runs) {
            made[name + ", " + run.button] = [&run, &trouble = trouble] {
                ReportDesk desk;
                trouble(desk, run);
                runMarch(desk, run);
            };
        }
    }
    return made;
}

class tst_report_runs : public QObject {
    Q_OBJECT
private Q_SLOTS:
    /// The statement that runs, and what is set on the report and its sub-reports.
    void runs_data() {
        columns<Run, QStringList, QString, QString, bool, QStringList>("run", "ran", "selection", "dates",
                                                                       "prompting", "subReports");
        const QString dates = "\"From :  01/03/2026  To :  31/03/2026\"";
        const QString trialDates = "\"From :  01/03/2026   To :  31/03/2026\"";
        const QString active = "{Company.comActive} = 'Y'";
        const auto book = [&](const Run &run, const QString &code) {
            row(run.button, run, QStringList(),
                "{Company.comActive}='Y' and {DetJV.CrAc} = " + code +
                    " and {DetJV.VouDate} in #2026-03-01# to #2026-03-31#",
                dates, true,
                QStringList{"rptSubAc: {Accounts.RowID} = " + code,
                            "rptSubOpening: {DetJV.AcCode} = " + code + " and {DetJV.VouDate} < #2026-03-01#",
                            "rptSubAcOpen: {Accounts.RowID}  = " + code});
        };
        book(Runs[0], "3");
        book(Runs[1], "4");
        const QStringList account = {"rptSubAC: {Accounts.RowID} = 4"};
        row("cmdLedger", Runs[2], QStringList{"AcLedger 4,2026-03-01,2026-03-31"}, "", dates, true, account);
        row("cmdDetLedger", Runs[3], QStringList{"DetailAcLedger 4,1,3,2026,31,3,2026"}, "", dates, true,
            account);
        const QStringList trial = {"TrialBalance 2026-03-01,2026-03-31"};
        row("cmdTrialBal", Runs[4], trial, active, trialDates, false, QStringList());
        row("cmdTrialControl", Runs[5], trial, active, trialDates, false, QStringList());
        row("cmdTrialOpening", Runs[6], QStringList{"TrialBalance3 2026-03-01,2026-03-31"}, active,
            trialDates, false, QStringList());
        row("cmdFeeDetail", Runs[7], QStringList(), "", dates, false, QStringList());
    }

    void runs() {
        QFETCH(Run, run);
        QFETCH(QStringList, ran);
        QFETCH(QString, selection);
        QFETCH(QString, dates);
        QFETCH(bool, prompting);
        QFETCH(QStringList, subReports);
        ReportDesk desk;
        runMarch(desk, run);
        QCOMPARE(desk.office.rows("select Call from Ran"), ran);
        QVERIFY(shownReport());
        QCOMPARE(activeForm(), "frmVeiwer");
        report::Report &report = *shownReport()->ReportSource();
        QCOMPARE(selectionOf(report), selection);
        QCOMPARE(QString::fromUtf8(report.FormulaFields("Dates").Text.text()), dates);
        QCOMPARE(report.EnableParameterPrompting, prompting);
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
        QFETCH(bool, course);
        QFETCH(QString, subject);
        QFETCH(QString, ran);
        QFETCH(QString, file);
        QFETCH(QString, formulas);
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
            picture(form("MDIForm1"), QString("students-") + name);
            desk.screen->parentWidget()->close();
            settle();
            for (const QString &other : folder.entryList({"*.away"}))
                QVERIFY(folder.rename(other, other.chopped(5)));
        }
    }

    /// What stands on the paper.
    void reads_data() {
        columns<Run, QString, QDate, QDate, QString>("run", "change", "from", "to", "printed");
        const QDate first(2026, 3, 1);
        const QDate last(2026, 3, 31);
        const QString march = "From :  01/03/2026  To :  31/03/2026";
        const QString april = "From :  01/04/2026  To :  31/03/2026";
        const QString idle = "update Company set comActive = 'N'";
        // A payment of three lines is three rows; its summary row has no contra account.
        row("cash book", Runs[0], "", first, last,
            "CASH IN HAND; 1000; 40\n" + march +
                "\nCP 2 RENT 100 0\nCP 2 ELECTRICITY 50 0\nCP 2 SALARIES 25 0");
        row("bank book", Runs[1], "", first, last, "CITY BANK; ; 0\n" + march + "\nBP 3 RENT 300 0");
        row("cash book, reversed dates", Runs[0], "", QDate(2026, 4, 1), last,
            "CASH IN HAND; 1000; -135\n" + april);
        row("cash book, no active company", Runs[0], idle, first, last, "");
        row("bank book, no active company", Runs[1], idle, first, last, "");
        // The procedure's row, read after it ran.
        row("ledger", Runs[2], "", first, last, "CITY BANK\n" + march + "\n11 22");
        row("ledger, no active company", Runs[2], idle, first, last, "CITY BANK\n" + march + "\n11 22");
        row("detail ledger, no active company", Runs[3], idle, first, last,
            "CITY BANK\n" + march + "\n11 22");
        row("ledger, reversed dates", Runs[2], "", QDate(2026, 4, 1), last,
            "CITY BANK\n" + april + "\n11 22");
        const QString trial = "From :  01/03/2026   To :  31/03/2026\n11 22";
        row("trial balance", Runs[4], "", first, last, trial);
        row("of controls", Runs[5], "", first, last, "2" + trial);
        row("with opening", Runs[6], "", first, last, "3" + trial);
        for (const Run &run : {Runs[4], Runs[5], Runs[6]})
            fill(QTest::addRow("%s, no active company", run.button), run, idle, first, last, "");
    }

    void reads() {
        QFETCH(Run, run);
        QFETCH(QString, change);
        QFETCH(QDate, from);
        QFETCH(QDate, to);
        QFETCH(QString, printed);
        ReportDesk desk(Sql::trusted(change.toStdString()));
        desk.open(run.item);
        if (control(desk.screen, "cmdFindAC")->isVisible())
            desk.choose("CITY");
        desk.period(from, to);
        click(desk.screen, run.button);
        QVERIFY(shownReport());
        QCOMPARE(shownReport()->pageCount(), 1);
        QCOMPARE(shownReport()->plainText().trimmed(), printed);
    }

    void refuses_data() {
        columns<Run, QString, QString, QStringList, QString>("run", "change", "account", "said", "focus");
        const QStringList select = {"please select Account"};
        const QStringList cash = {"Cash Book Account not found!"};
        const QString gone = "delete from VouSetting where VouStatus = 'CP'";
        for (const Run &run : {Runs[1], Runs[2], Runs[3]})
            fill(QTest::addRow("%s, no account", run.button), run, "", "", select, "cmdFindAC");
        const std::pair<const char *, QString> settings[] = {
            {"no row", gone},
            {"Null", "update VouSetting set AcCode = null where VouStatus = 'CP'"},
            {"blank", "update VouSetting set AcCode = '' where VouStatus = 'CP'"},
            {"zero", "update VouSetting set AcCode = '0' where VouStatus = 'CP'"}};
        for (const auto &[name, change] : settings) {
            fill(QTest::addRow("cash book, %s", name), Runs[0], change, "", cash, "cmdCashBook");
            fill(QTest::addRow("bank book, %s", name), Runs[1], change, "CITY", cash, "cmdBankBook");
        }
        row("bank book, neither", Runs[1], gone, "", select, "cmdFindAC");
        // The tests come before the file is looked for.
        row("cash book, no row and no file", Runs[0], gone + "; --nofile", "", cash, "cmdCashBook");
    }

    void refuses() {
        QFETCH(Run, run);
        QFETCH(QString, change);
        QFETCH(QString, account);
        QFETCH(QStringList, said);
        QFETCH(QString, focus);
        ReportDesk desk(Sql::trusted(change.toStdString()));
        if (change.endsWith("--nofile"))
            QVERIFY(QFile::remove(desk.office.folder() + "/" + run.file));
        desk.open(run.item);
        if (!account.isEmpty())
            desk.choose(account);
        const std::vector<Box> boxes = boxesOf([&] { click(desk.screen, run.button); }, {QMessageBox::Ok});
        QStringList texts;
        for (const Box &box : boxes) {
            texts << box.text;
            QCOMPARE(box.icon, QMessageBox::Information);
            QCOMPARE(box.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
        }
        QCOMPARE(texts, said);
        QCOMPARE(focused(), focus);
        QVERIFY(!form("frmVeiwer"));
        QCOMPARE(desk.office.rows("select Call from Ran"), QStringList());
    }

    void oneViewerForAll() {
        ReportDesk desk;
        QWidget *viewerScreen = nullptr;
        for (const Run &run : Runs) {
            runMarch(desk, run);
            QVERIFY(!viewerScreen || form("frmVeiwer") == viewerScreen);
            viewerScreen = form("frmVeiwer");
            desk.screen->parentWidget()->close();
            settle();
        }
        QVERIFY(shownReport()->plainText().contains("SESSION WISE OUTSTANDING"));
    }

    void readsAgain_data() {
        QTest::addColumn<Run>("run");
        QTest::addColumn<int>("calls"); // of the procedure, once the report was read again
        for (const Run &run : Runs)
            row(run.button, run, (QByteArray(run.file) == "rptAcLedger3.rpt" || &run == &Runs[7] ? 0 : 2));
    }

    /// Read again after the work tables were filled for someone else, the report still is what was asked for.
    void readsAgain() {
        QFETCH(Run, run);
        QFETCH(int, calls);
        ReportDesk desk;
        runMarch(desk, run);
        const QString first = shownReport()->plainText();
        desk.office.execute("delete from rptAcLedger\ndelete from rptTrialBalance");
        press(Qt::Key_F5);
        QCOMPARE(shownReport()->plainText(), first);
        const QStringList ran = desk.office.rows("select Call from Ran");
        QCOMPARE(ran.size(), calls);
        QVERIFY(ran.isEmpty() || ran[0] == ran[1]);
    }

    /// The shipped files have what the buttons set.
    void realDefinitions_data() {
        QTest::addColumn<Run>("run");
        for (const Run &run : Runs)
            row(run.button, run);
    }

    void realDefinitions() {
        QFETCH(Run, run);
        ReportDesk desk;
        desk.office.addReports(ZEL_SOURCE_DIR "/rpt");
        runMarch(desk, run);
        QVERIFY(shownReport());
        QVERIFY(shownReport()->plainText().contains("01/03/2026"));
        picture(form("MDIForm1"), QString("printed-") + run.button);
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
        const Ended ended = play(QTest::currentDataTag());
        QVERIFY2(ended.status == 1, qPrintable(ended.errorStream));
        QVERIFY2(ended.box.startsWith(box), qPrintable(ended.box));
    }
};

int main(int argc, char *argv[]) {
    tst_report_runs tests;
    return run(argc, argv, tests, scenes());
}

#include "tst_report_runs.moc"
