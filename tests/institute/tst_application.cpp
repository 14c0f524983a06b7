#include "institute/frmZelApplication.h"
#include "platform/controls/date_box.h"
#include "platform/controls/grid.h"
#include "platform/report/viewer/cr_viewer.h"
#include "shell/screens.h"
#include "tests/support/driver.h"
#include "tests/support/facts.h"
#include "tests/support/office.h"
#include "tests/support/test_program.h"

#include <QtTest>

using namespace zel;
using namespace zel::test;

namespace {

constexpr const char *Facts = "institute/application.json";

/// An office with a small chart of accounts, where students stand below 1.2 and cash is account 3; the first
/// student's account is 23. The form is open and empty.
struct Registry {
    Registry() : office(Office::Chart::Demo) {
        office.execute("insert into tblSession (SessionId, SessionName) values (1, 'SPRING')\n"
                       "insert into tblSession (SessionId, SessionName) values (2, 'AUTUMN')\n"
                       "insert into tblCourse (CourseId, CourseName) values (7, 'FOUNDATION')\n"
                       "insert into tblSubject values (11, 7, 'LAW', 100)\n"
                       "insert into tblSubject values (12, 7, 'TAX', 2500.5)");
        shell::setScreens({{"mnuApp", shell::shows(institute::frmZelApplication::reference)}});
        office.logIn();
        show();
    }
    void show() {
        screen = openByMenu("mnuApp", "frmZelApplication");
        control<controls::DateBox>(screen, "DtpFix")->setValue(QDate(2026, 3, 5));
    }
    /// Steps parted by ";": "txtCellNo=0300" types into a box, "find LAW" chooses in the finder, "line 1" and
    /// "open 1" choose in a grid, "sql " is somebody else's statement, "again" a fresh form, "apply ANNA" a
    /// whole application; any other name is a button.
    void perform(const QString &steps) {
        for (const QString &step : steps.split(';', Qt::SkipEmptyParts)) {
            const QString what = step.section(' ', 1);
            if (step.startsWith("apply "))
                perform("txtStuNm=" + what + ";txtCellNo=1;find LAW;txtRecAmt=50;cmd_ADD_1;cmdSave");
            else if (step.startsWith("sql "))
                office.execute(Sql::trusted(what.toStdString()));
            else if (step.contains('='))
                typeInto(screen, step.section('=', 0, 0), step.section('=', 1));
            else if (step.startsWith("find "))
                find(what);
            else if (step.startsWith("line "))
                choose("MshSubject", what.toInt());
            else if (step.startsWith("open "))
                choose("Msh", what.toInt());
            else if (step == "again")
                click(screen, "cmdExit"), show();
            else
                click(screen, step);
        }
    }
    void find(const QString &subject) {
        click(screen, "cmdFindsubject");
        typeInto(form("frmSearchSub"), "txtFind", subject);
        press(Qt::Key_Down);
        press(Qt::Key_Return);
        QTRY_COMPARE(focused(), "txtDiscount");
    }
    void choose(const char *grid, int row) {
        turnTo(screen, "SSTab1", qstrcmp(grid, "Msh") == 0);
        control<controls::Grid>(screen, grid)->setRow(row);
        pressOn(screen, grid, Qt::Key_F2);
    }
    [[nodiscard]] QString boxes(const QString &names) const {
        QStringList texts;
        for (const QString &name : names.split(' '))
            texts << test::text(screen, name);
        return texts.join('|');
    }
    /// What an accountant looks at.
    [[nodiscard]] QStringList ledger() {
        return office.rows("select AppID, CusCode, StuName, TotAmt, CashReceive from tblMasApp") +
               office.rows("select RowID, AcNodes, AcName, OpenBal from Accounts where ParentID = '1.2'") +
               office.rows("select VouStatus, VouNo, VouDate, EntryNo, AcCode, CrAc, DrAmt, CrAmt, Naration "
                           "from DetJV");
    }

    Office office;
    QWidget *screen = nullptr;
};

/// Which of the three students a text tells of.
QString namesIn(const QString &text) {
    QStringList names;
    for (const char *name : {"ANNA", "BEN", "DINNA"})
        if (text.contains(QRegularExpression(QString("\\b%1\\b").arg(name))))
            names << name;
    return names.join(' ');
}

} // namespace

static const Scenes scenes = {
    {"lines gone", [] { Registry().perform("apply ANNA;sql delete from tblDetApp;open 1"); }},
    {"account gone",
     [] { Registry().perform("apply ANNA;open 1;sql delete Accounts where RowID > 22;cmdSave"); }},
    {"renamed unopened", [] { Registry().perform("apply ANNA;txtStuNm=BEN;cmdSave"); }},
};

class tst_application : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void savesAndOpensByKeys() {
        Registry registry;
        for (const char *typed : {"01022026", "b", "", "r-1", "ali raza é", "n. \"nadeem\"", "3520212345671",
                                  "0300", "042", "043", "12 o'connor road", "", "", "", "", "", "5 0.5.x"}) {
            type(typed);
            press(Qt::Key_Return);
        }
        QCOMPARE(focused(), "cmdFindsubject");
        registry.find("LAW");
        for (const char *typed : {"9", "half of it", "40", ""}) { // the last presses "Add"
            type(typed);
            press(Qt::Key_Return);
        }
        registry.perform("find TAX;ChkInactive;cmd_ADD_1");
        press(Qt::Key_F9);
        const QStringList application = registry.office.rows("select * from tblMasApp");
        QCOMPARE(application,
                 QStringList{"1|23|1|R-1|ALI RAZA É|N. \"NADEEM\"|35202-1234567-1|0300|042|043|NULL|"
                             "12 O'CONNOR ROAD|NULL|NULL|NULL|NULL|B|01/02/2026|05/03/2026|50.5|"
                             "2591.5|40|NULL|sa"});
        const QStringList lines = registry.office.rows("select * from tblDetApp");
        QCOMPARE(lines,
                 QStringList({"1|11|100|9|91|40|HALF OF IT|NULL", "1|12|2500.5|0|2500.5|NULL|NULL|1"}));
        QCOMPARE(registry.office.rows(
                     "select Dcode, AcStatus, Addr, Contact, Email from Accounts where RowID = 23"),
                 QStringList{"1|DD|12 O'CONNOR ROAD|042|NULL"});
        QCOMPARE(said() + '|' + underWay(), "Application 1 saved, 2,591.50|correcting application 1");

        registry.perform("open 1");
        QCOMPARE(registry.boxes("cboSession cmbAtoZ mskNIC dtpDate txtBalance") + '|' + focused(),
                 "SPRING|B|35202-1234567-1|01/02/2026|2551.5|dtpDate");
        QCOMPARE(cells(registry.screen, "MshSubject").mid(1),
                 QStringList(
                     {"11|FOUNDATION|LAW|100|9|HALF OF IT|91|40|", "12|FOUNDATION|TAX|2500.5|0||2500.5||1"}));
        press(Qt::Key_F9);
        QCOMPARE(registry.office.rows("select * from tblMasApp"), application);
        QCOMPARE(registry.office.rows("select * from tblDetApp"), lines);
    }

    void posts_data() { rowsFrom<QString, QString, QString, QString>(Facts); }

    void posts() {
        const auto [steps, says, focus, ledger] = fetched<QString, QString, QString, QString>();
        Registry registry;
        QCOMPARE(textsOf([&] { registry.perform(steps); }, {QMessageBox::Yes}).join('|').remove("|"), says);
        QCOMPARE(focused(), focus);
        QCOMPARE(registry.ledger().join('\n'), ledger);
    }

    void searchesAndPrints_data() { rowsFrom<QString, QString, QString>(Facts); }

    void searchesAndPrints() {
        const auto [value, found, printed] = fetched<QString, QString, QString>();
        Registry registry;
        registry.office.execute(
            "insert into tblMasApp (AppID, StuName) values (1, 'ANNA')\n"
            "insert into tblMasApp (AppID, StuName) values (2, 'BEN')\n"
            "insert into tblMasApp (AppID, StuName) values (3, 'DINNA')\n"
            "update tblMasApp set FixDate = '2026-03-05', CellNo = '1', RegNo = 'R-' + rtrim(AppID)\n"
            "update tblMasApp set FixDate = '2026-03-06', CellNo = '155' where AppID = 2\n"
            "insert into tblDetApp (AppID, SubID) values (2, 12)");
        registry.office.addReports(ZEL_SOURCE_DIR "/rpt");
        turnTo(registry.screen, "SSTab1", 1);
        const QString criterion = QTest::currentDataTag();
        while (registry.boxes("cmb_s_cri") != criterion)
            pressOn(registry.screen, "cmb_s_cri", Qt::Key_Down);
        typeInto(registry.screen, criterion == "Date" ? "DTPicker1" : "txt_s_value", value);
        QCOMPARE(namesIn(cells(registry.screen, "Msh").join(' ')), found);
        registry.perform("cmdPrintStuRecord");
        QCOMPARE(namesIn(control<viewer::CRViewer91>(form("frmVeiwer"), "CRViewer91")->plainText()), printed);
    }

    void endsProgram() {
        expectEnd("lines gone", "Error 3021:");
        expectEnd("account gone", "Error 3021:");
        expectEnd("renamed unopened", "Error 207:");
    }
};

ZEL_TEST_MAIN(tst_application, scenes)

#include "tst_application.moc"
