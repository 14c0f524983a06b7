#include "menu_screens.h"
#include "platform/controls/grid.h"
#include "platform/report/report.h"
#include "platform/report/viewer/cr_viewer.h"
#include "shell/menu_table.h"
#include "shell/module1.h"
#include "shell/screens.h"
#include "tests/support/driver.h"
#include "tests/support/facts.h"
#include "tests/support/office.h"
#include "tests/support/test_program.h"

#include <QtTest>

using namespace zel;
using namespace zel::test;

namespace {

constexpr const char *Facts = "admin/admin.json";

/// The administrator at one of the screens, and what is done there, step by step: "BOX=typed", "press
/// BUTTON", "open ROW" of the list, "key F9", "sql STATEMENT" past the program, "reports" to put the
/// definitions beside it.
struct AdminDesk {
    explicit AdminDesk(const QString &rows = {}) {
        office.execute(Sql::trusted(rows.toStdString()));
        shell::setScreens(menuScreens());
        office.logIn();
    }

    void open(const QString &item, const QString &name) {
        screen = openByMenu(item, item == "mnuRemoveData" ? "frmLocPass" : name);
        if (item != "mnuRemoveData")
            return;
        type("ZEL");
        press(Qt::Key_Return);
        settle();
        screen = form(name);
    }

    void step(const QString &told) {
        const QString word = told.section(' ', 0, 0);
        const QString rest = told.section(' ', 1);
        if (word == "press") {
            click(screen, rest);
        } else if (word == "open") {
            control<controls::Grid>(screen, "Msh")->setRow(rest.toInt());
            pressOn(screen, "Msh", Qt::Key_F2);
        } else if (word == "key") {
            QTest::keySequence(QApplication::focusWidget(), QKeySequence(rest));
        } else if (word == "sql") {
            office.execute(Sql::trusted(rest.toStdString()));
        } else if (word == "reports") {
            office.addReports(ZEL_SOURCE_DIR "/rpt");
        } else {
            typeInto(screen, told.section('=', 0, 0), told.section('=', 1));
        }
        settle();
    }

    /// Gives the texts of the boxes that came up; a first step "no" is their answer.
    QStringList act(const QStringList &steps) {
        const bool no = steps.first() == "no";
        QStringList texts;
        for (const QString &told : steps.mid(no ? 1 : 0))
            texts << textsOf([&] { step(told); }, {no ? QMessageBox::No : QMessageBox::Yes});
        return texts;
    }

    Office office;
    QWidget *screen = nullptr;
};

/// What ends the program: a scene for each row of the table.
Scenes scenesOf(const QJsonArray &lines) {
    Scenes scenes;
    for (qsizetype i = 1; i < lines.size(); ++i) {
        const QVariantList cells = lines[i].toArray().toVariantList();
        scenes[cells[0].toString()] = [cells] {
            AdminDesk desk(cells[3].toString());
            desk.open(cells[1].toString(), cells[2].toString());
            desk.act(cells[4].toStringList());
        };
    }
    return scenes;
}

} // namespace

class tst_admin : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void everyItemHasItsScreen() {
        const shell::Screens screens = menuScreens();
        const std::map<QString, QString> elsewhere = {{"mnuSetMenu", "frmSecMenus"},
                                                      {"mnuRemoveData", "frmRemoveData"}};
        for (const shell::MenuRow &row : shell::menuTable()) {
            const auto locked = elsewhere.find(row.name);
            const QString name = locked == elsewhere.end() ? row.name : locked->second;
            const bool opens = row.level > 0 && QByteArray(row.caption) != "-" && name != "mnuMainVouc";
            QVERIFY2(!opens || screens.contains(name), row.name);
        }
    }

    /// The boxes that came up, what the screen shows then, and what a statement finds.
    void screens_data() {
        rowsFrom<QString, QString, QString, QStringList, QStringList, QString, QString, QStringList>(Facts);
    }

    void screens() {
        const auto [item, name, rows, steps, boxes, shown, asked, found] =
            fetched<QString, QString, QString, QStringList, QStringList, QString, QString, QStringList>();
        AdminDesk desk(rows);
        desk.open(item, name);
        QVERIFY(desk.screen);
        QCOMPARE(desk.act(steps), boxes);
        expect(desk.screen, shown);
        QCOMPARE(desk.office.rows(Sql::trusted(asked.toStdString())), found);
        picture(form("MDIForm1"), QTest::currentDataTag());
    }

    /// Each of these buttons, with a row in each table.
    void masters_data() { rowsFrom<QString>(Facts); }

    void masters() {
        const auto [emptied] = fetched<QString>();
        AdminDesk desk(facts(Facts)["texts"]["a row in each"].toString());
        desk.open("mnuRemoveData", "frmRemoveData");
        QCOMPARE(desk.act({QString("press ") + QTest::currentDataTag()}),
                 QStringList{"are you sure delete "});
        QStringList empty;
        for (const char *table :
             {"tblSession", "tblCourse", "tblSubject", "tblMasApp", "tblDetApp", "Company",
              "tbl_Tele_Directory", "Accounts", "VouSetting", "tblMasCarryForw", "tblDetCarryForw"})
            if (desk.office.rows("select * from "_sql + Sql::name(table)).isEmpty())
                empty << table;
        QCOMPARE(empty.join(' '), emptied);
    }

    /// A new user is a login at once, and an administrator whatever was chosen.
    void userLogsIn() {
        AdminDesk desk;
        desk.open("mnuAddUser", "Frm_User");
        desk.act(QStringList{"txt_User_Nm=زید Khan", "txt_User_pass=se cret1", "press Opt_User", "key F9"});
        press(Qt::Key_X, Qt::AltModifier);
        openByMenu("mnuExit", {});
        typeInto(form("frmLogin"), "cboUsers", "زید KHAN");
        typeInto(form("frmLogin"), "txtPassword", "secret1");
        QCOMPARE(textsOf([] { press(Qt::Key_Return); }), QStringList{"Login failed for user 'زید KHAN'."});
        typeInto(form("frmLogin"), "txtPassword", "SECRET1");
        press(Qt::Key_Return);
        QVERIFY(QTest::qWaitForWindowActive(form("MDIForm1")));
        expect(form("MDIForm1"), "lblTitle=Login :   زید KHAN");
        desk.open("mnuAddUser", "Frm_User");
        desk.act(QStringList{"open 1", "txt_User_pass=NEW2", "key F9"});
        desk.act(QStringList{"txt_User_Nm=second", "key F9"});
        QCOMPARE(desk.office.rows("select User_Name,PassWard from User_Information"),
                 QStringList({"زید KHAN|NEW2", "SECOND|NULL"}));
        openByMenu("mnuExit", {});
        desk.office.logIn("زید khan", "NEW2");
    }

    /// One entry, or all of them.
    void directoryPrints() {
        AdminDesk desk("insert into tbl_Tele_Directory (Row_No, Code_No, Client_Name, Tele_No) values (1, "
                       "'TD-1', 'ALI', '0300-1'), "
                       "(2, 'TD-2', N'زید', '0300-2')");
        desk.open("mnu_TelDir", "frm_Tele_Directory");
        desk.act({"reports"});
        for (const char *step : {"open 2", "press cmdCancel"}) {
            desk.act(QStringList{step, "press cmdPrint"});
            const auto *viewer = control<viewer::CRViewer91>(form("frmVeiwer"), "CRViewer91");
            QVERIFY(viewer->plainText().contains("0300-1"));
            QCOMPARE(viewer->plainText().contains("0300-2"), *step == 'p');
            picture(form("MDIForm1"), QString("directory-printed-") + *step);
        }
    }

    void usersReportIsWhole() {
        AdminDesk desk("insert into User_Information values (1, 'UC-1', 'ALI', null, 'SECRET', 'A'), "
                       "(2, 'UC-2', N'زید', 'CLERK', null, null)");
        desk.act({"reports"});
        const auto report = report::Application(shell::gCon)
                                .OpenReport(desk.office.folder() + "/Wrd_Report/rpt_User_Name.rpt");
        report->Database().Tables().Item(1).ConnectionProperties("User ID").Value = "sa";
        const QString text = report->document()->plainText();
        QVERIFY2(text.contains("UC-1 ALI Administrator") && text.contains("2 users") &&
                     !text.contains("SECRET"),
                 qPrintable(text));
    }

    void endsProgram_data() { rowsFrom<QString>(Facts); }

    void endsProgram() {
        const auto [box] = fetched<QString>();
        expectEnd(QTest::currentDataTag(), box);
    }
};

static const Scenes scenes = scenesOf(facts(Facts)["endsProgram"].toArray());
ZEL_TEST_MAIN(tst_admin, scenes)

#include "tst_admin.moc"
