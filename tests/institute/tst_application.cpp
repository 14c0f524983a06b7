#include "institute/frmZelApplication.h"
#include "platform/controls/date_box.h"
#include "platform/controls/grid.h"
#include "platform/report/viewer/cr_viewer.h"
#include "shell/MDIForm1.h"
#include "shell/module1.h"
#include "shell/screens.h"
#include "tests/support/driver.h"
#include "tests/support/office.h"
#include "tests/support/rows.h"
#include "tests/support/test_program.h"

#include <QFile>
#include <QtTest>

using namespace zel;
using namespace zel::test;

namespace {

/// The registry of an office with a small chart of accounts, where students stand below 1.2 and cash is
/// account 3; the form is open and empty.
struct Registry {
    explicit Registry(const Sql &more = {}) : office(Office::Chart::Demo) {
        office.execute("insert into tblSession (SessionId, SessionName) values (1, 'SPRING')\n"
                       "insert into tblSession (SessionId, SessionName) values (2, 'AUTUMN')\n"
                       "insert into tblCourse (CourseId, CourseName) values (7, 'FOUNDATION')\n"
                       "insert into tblSubject values (11, 7, 'LAW', 100)\n"
                       "insert into tblSubject values (12, 7, 'TAX', 2500.5)");
        if (!more.text().empty())
            office.execute(more);
        shell::setScreens({{"mnuApp", shell::shows(institute::frmZelApplication::reference)}});
        office.logIn();
        screen = openByMenu("mnuApp", "frmZelApplication");
        control<controls::DateBox>(screen, "DtpFix")->setValue(QDate(2026, 3, 5));
    }
    /// A subject from the finder to the grid, by Enter alone.
    void take(const QString &subject, const QString &discount = {}, const QString &narration = {},
              const QString &received = {}) {
        find(subject);
        for (const QString &text : {discount, narration, received}) {
            type(text);
            press(Qt::Key_Return);
        }
        press(Qt::Key_Return);
    }
    void find(const QString &subject) {
        click(screen, "cmdFindsubject");
        typeInto(form("frmSearchSub"), "txtFind", subject);
        press(Qt::Key_Down);
        press(Qt::Key_Return);
        QTRY_COMPARE(focused(), "txtDiscount");
    }
    void enrol(const QString &name, const QString &received) {
        typeInto(screen, "txtStuNm", name);
        typeInto(screen, "txtCellNo", "0300");
        take("LAW", {}, {}, received);
    }
    /// The row of the list of applications, 1 the newest.
    void open(int row) {
        turnTo(screen, "SSTab1", 1);
        control<controls::Grid>(screen, "Msh")->setRow(row);
        pressOn(screen, "Msh", Qt::Key_F2);
    }
    void clickLine(int row) {
        control<controls::Grid>(screen, "MshSubject")->setRow(row);
        pressOn(screen, "MshSubject", Qt::Key_F2);
    }
    /// The texts of boxes named with blanks between them.
    [[nodiscard]] QString boxes(const QString &names) {
        QStringList texts;
        for (const QString &name : names.split(' '))
            texts << test::text(screen, name);
        return texts.join('|');
    }
    [[nodiscard]] QString student() {
        return office.rows("select CusCode from tblMasApp where AppID = 1").first();
    }
    /// A definition of the tables that the selections name, in place of both reports: it prints names.
    void addReports() {
        for (const char *name : {"rptApplication", "rptAdmissionDetail"}) {
            QFile file(office.folder() + '/' + name + ".rpt");
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write(
                "<report name='r' title='r'><table name='tblMasApp'>AppId number, StuName text, CellNo text, "
                "RegNo text, FixDate date</table><table name='tblDetApp' join='left' on='{tblDetApp.AppID} = "
                "{tblMasApp.AppId}'>AppID number, SubID number</table><table name='tblSubject' join='left' "
                "on='{tblSubject.SubId} = {tblDetApp.SubID}'>SubId number, SubName text, CourseId "
                "number</table><table name='tblCourse' join='left' on='{tblCourse.CourseId} = "
                "{tblSubject.CourseId}'>CourseId number, CourseName text</table><sort "
                "by='{tblMasApp.StuName}'/><detail "
                "height='5'><field>{tblMasApp.StuName}</field></detail></report>");
        }
    }
    [[nodiscard]] static QString printedNames() {
        return control<viewer::CRViewer91>(form("frmVeiwer"), "CRViewer91")->plainText().simplified();
    }
    /// All that the screen has written, but for the journal.
    [[nodiscard]] QStringList written() { return applications() + subjects() + accounts(); }
    [[nodiscard]] QStringList applications() {
        return office.rows("select AppID, CusCode, SessionID, RegNo, StuName, FatherName, NIC, CellNo, "
                           "MailAdd, SectionAtoZ, AppDate, FixDate, RegFee, TotAmt, CashReceive, User_Name "
                           "from tblMasApp order by AppID");
    }
    [[nodiscard]] QStringList subjects() { return office.rows("select * from tblDetApp"); }
    [[nodiscard]] QStringList accounts() {
        return office.rows("select RowID, ParentID, Dcode, AcNodes, AcName, AcStatus, OpenBal, Addr, "
                           "Contact, Email from Accounts where ParentID = '1.2'");
    }
    [[nodiscard]] QStringList journal() {
        return office.rows("select VouNo, VouStatus, VouDate, EntryNo, AcCode, CrAc, DrAmt, CrAmt, Naration, "
                           "SessionID, SubID from DetJV");
    }

    Office office;
    QWidget *screen;
};

/// Both lines of a receipt of the fifth of March 2026.
QStringList receipt(const QString &student, const QString &name, const QString &amount) {
    const QString begin = student + "|AR|05/03/2026|";
    return {begin + "1|3|" + student + '|' + amount + "|0|App. Rec Amount (" + name + ")|NULL|NULL",
            begin + "2|" + student + "|3|0|" + amount + "|App. Rec Amount |NULL|NULL"};
}

} // namespace

static const Scenes scenes = {
    {"lines gone",
     [] {
         Registry registry("insert into tblMasApp (AppID, CusCode, StuName) values (4, 3, 'A')");
         registry.open(1);
     }},
    {"account gone",
     [] {
         Registry registry;
         registry.enrol("A", "1");
         press(Qt::Key_F9);
         registry.open(1);
         registry.office.execute("delete from Accounts where AcName = 'A'");
         press(Qt::Key_F9);
     }},
    {"renamed before it was opened again",
     [] {
         Registry registry;
         registry.enrol("A", "1");
         press(Qt::Key_F9);
         typeInto(registry.screen, "txtStuNm", "B");
         press(Qt::Key_F9);
     }},
    {"deleted before it was opened again",
     [] {
         Registry registry;
         registry.enrol("A", "1");
         press(Qt::Key_F9);
         click(registry.screen, "cmdDelete");
     }},
    {"apostrophe",
     [] {
         Registry registry;
         registry.enrol("O'HARA", "1");
         press(Qt::Key_F9);
     }},
    {"number to search for taken away",
     [] {
         Registry registry;
         turnTo(registry.screen, "SSTab1", 1);
         pressOn(registry.screen, "cmb_s_cri", Qt::Key_Down);
         typeInto(registry.screen, "txt_s_value", "1");
         press(Qt::Key_Backspace);
     }},
};

class tst_application : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void tabOrder() {
        Registry registry;
        QStringList names;
        for (int i = 0; i < 30; ++i) {
            names << focused();
            press(Qt::Key_Tab);
        }
        QCOMPARE(names.join(' '),
                 "dtpDate cmbAtoZ cboSession txtICAPReg txtStuNm txtfathNm mskNIC txtCellNo txtConRes txtoff "
                 "txtMailAdd txtEmail txtLastEduQua txtAuditFirm txtExamAtt txtModules txtRegfee "
                 "cmdFindsubject txtDiscount txtNarration txtRecAmt ChkInactive cmd_ADD_1 cmd_Delete_2 "
                 "MshSubject cmdSave cmdDelete cmdCancel cmdPrint cmdExit");
        // What shows only, and the fix date, hand the focus on.
        for (const auto &[box, next] : {std::pair("txtAppId", "dtpDate"),
                                        {"DtpFix", "dtpDate"},
                                        {"txtTotAmount", "cmdFindsubject"},
                                        {"txtReceive", "cmdFindsubject"}}) {
            control(registry.screen, box)->setFocus();
            QCOMPARE(focused(), next);
        }
    }

    void savesAndOpensAgain() {
        Registry registry("insert into tblMasApp (AppID, StuName) values (8, 'EARLIER')");
        QCOMPARE(registry.boxes("cboSession cmbAtoZ lblLogin"), "SPRING|A|User Name : sa");
        for (const char *typed :
             {"01022026", "b", "", "r-1", "ali raza é", "nadeem \"n\"", "3520212345671", "0300"}) {
            type(typed);
            press(Qt::Key_Return);
        }
        typeInto(registry.screen, "txtMailAdd", "12 o'connor road");
        typeInto(registry.screen, "txtRegfee", "5 0.5.x");
        registry.take("LAW", "9", "half of it", "40");
        registry.find("TAX");
        click(registry.screen, "ChkInactive");
        click(registry.screen, "cmd_ADD_1");
        QCOMPARE(focused(), "cmdFindsubject");
        const QStringList lines = {"11|FOUNDATION|LAW|100|9|HALF OF IT|91|40|0",
                                   "12|FOUNDATION|TAX|2500.5|||2500.5||1"};
        QCOMPARE(cells(registry.screen, "MshSubject").mid(1), lines);
        QCOMPARE(registry.boxes("txtTotAmount txtReceive txtBalance"), "2591.5|40|2551.5");
        picture(form("MDIForm1"), "application");
        press(Qt::Key_F9);

        const QString student = registry.accounts().first().section('|', 0, 0);
        const QString rest =
            "|1|R-1|ALI RAZA É|NADEEM \"N\"|35202-1234567-1|0300|12 O'CONNOR ROAD|B|01/02/2026|"
            "05/03/2026|50.5|2591.5|40|sa";
        QCOMPARE(registry.applications().last(), "9|" + student + rest);
        QCOMPARE(registry.subjects(),
                 QStringList({"9|11|100|9|91|40|HALF OF IT|NULL", "9|12|2500.5|0|2500.5|NULL|NULL|1"}));
        QCOMPARE(registry.accounts(),
                 QStringList{student + "|1.2|1|1.2.1|ALI RAZA É|DD|2591.5|12 O'CONNOR ROAD||NULL"});
        QCOMPARE(registry.journal(), receipt(student, "ALI RAZA É", "40"));
        QCOMPARE(said() + '|' + underWay() + '|' + focused(),
                 "Application 9 saved, 2,591.50|correcting application 9|txtStuNm");
        QCOMPARE(textsOf([] { press(Qt::Key_F9); }), QStringList{"this Student is already exitis!"});

        // What is read back is what was written, and stays so when it is written again.
        registry.open(1);
        QCOMPARE(registry.boxes(
                     "txtAppId cboSession cmbAtoZ mskNIC txtStuNm txtMailAdd dtpDate txtRegfee txtBalance"),
                 "9|SPRING|B|35202-1234567-1|ALI RAZA É|12 O'CONNOR ROAD|01/02/2026|50.5|2551.5");
        QCOMPARE(cells(registry.screen, "MshSubject").mid(1),
                 QStringList(
                     {"11|FOUNDATION|LAW|100|9|HALF OF IT|91|40|", "12|FOUNDATION|TAX|2500.5|0||2500.5||1"}));
        QCOMPARE(focused(), "dtpDate");
        const QStringList written = registry.written();
        press(Qt::Key_F9);
        QCOMPARE(registry.written(), written);
    }

    void correctionReplacesReceipt_data() {
        columns<QString, QString, bool>("name", "received", "posted");
        row("renamed", "BEN", "60", true);
        row("other blanks only", "A N N A", "7", true);
        row("nothing received any more", "ANNA", "0", false);
    }

    void correctionReplacesReceipt() {
        QFETCH(QString, name);
        QFETCH(QString, received);
        QFETCH(bool, posted);
        Registry registry;
        registry.enrol("ANNA", "50");
        press(Qt::Key_F9);
        const QString student = registry.student();
        registry.open(1);
        // A further line of the account's number goes, too, whatever its kind.
        registry.office.execute("insert into DetJV (VouNo, VouStatus) values ("_sql + student + ", 'BP')");
        typeInto(registry.screen, "txtStuNm", name);
        registry.clickLine(1);
        typeInto(registry.screen, "txtRecAmt", received);
        click(registry.screen, "cmd_ADD_1");
        press(Qt::Key_F9);
        QCOMPARE(registry.accounts(), QStringList{student + "|1.2|1|1.2.1|" + name + "|DD|100|||NULL"});
        QCOMPARE(registry.journal(), posted ? receipt(student, name, received) : QStringList());
        QVERIFY(registry.applications().first().startsWith("1|" + student + "|1|NULL|" + name));
    }

    void clearedFormKeepsTheAccountOpenedLast() {
        Registry registry("insert into Accounts (ParentID, AcName, AcStatus) values ('9', 'N EW', 'DD')");
        registry.enrol("OLD", "50");
        press(Qt::Key_F9);
        registry.open(1);
        const QString fixed = registry.boxes("DtpFix");
        click(registry.screen, "cmdCancel");
        QCOMPARE(registry.boxes("txtAppId txtStuNm txtTotAmount DtpFix") + underWay(), "|||" + fixed);
        QCOMPARE(cells(registry.screen, "MshSubject").size(), 1);
        registry.enrol("NEW", "20");
        press(Qt::Key_F9);
        // The old student's receipt has gone; the new one's stands on the first account of that name.
        const QString other =
            registry.office.rows("select RowID from Accounts where AcName = 'N EW'").first();
        QCOMPARE(registry.journal(), receipt(other, "NEW", "20"));
        QCOMPARE(registry.applications().last().section('|', 0, 1), "2|" + other);
        QCOMPARE(registry.accounts().size(), 2);
    }

    void amountsFollowTheKeys_data() {
        columns<QString, QString, QString>("box", "keys", "boxes");
        row("a part", "txtDiscount", "50", "50|50|");
        row("above the net amount shown before", "txtDiscount", "99", "|100|");
        row("all of it", "txtDiscount", "100", "|100|");
        row("a letter and a second point", "txtDiscount", "1x.5.5 ", "1.55|98.45|");
        row("received", "txtRecAmt", "100", "|100|100");
        row("received above the net amount", "txtRecAmt", "100.01", "|100|1");
    }

    void amountsFollowTheKeys() {
        QFETCH(QString, box);
        QFETCH(QString, keys);
        QFETCH(QString, boxes);
        Registry registry;
        registry.find("LAW");
        typeInto(registry.screen, box, keys);
        QCOMPARE(registry.boxes("txtDiscount txtNetAmt txtRecAmt"), boxes);
    }

    void lines() {
        Registry registry;
        const auto add = [&] { return textsOf([&] { click(registry.screen, "cmd_ADD_1"); }); };
        QCOMPARE(add(), QStringList{"Please select Subject Name "});
        QCOMPARE(focused(), "txtSubName");
        registry.take("LAW", "1");
        registry.take("TAX", "", "", "5");
        registry.find("LAW");
        QCOMPARE(add(), QStringList{"This Subject Name is already exitis in detail"});
        // A line that is corrected may take another's subject.
        registry.clickLine(2);
        QCOMPARE(registry.boxes("txtEditRow txtSubId txtSubName txt_rate txtNetAmt txtRecAmt"),
                 "2|12|TAX|2500.5|2500.5|5");
        registry.find("LAW");
        QCOMPARE(add(), QStringList());
        QCOMPARE(cells(registry.screen, "MshSubject").mid(1),
                 QStringList({"11|FOUNDATION|LAW|100|1||99||0", "11|FOUNDATION|LAW|100|||100|5|0"}));
        QCOMPARE(registry.boxes("txtTotAmount txtReceive"), "199|5");
        click(registry.screen, "cmd_Delete_2");
        QCOMPARE(registry.boxes("txtTotAmount txtReceive"), "99|0");
        click(registry.screen, "cmd_Delete_2");
        QCOMPARE(cells(registry.screen, "MshSubject").size(), 1);
        QCOMPARE(registry.boxes("txtTotAmount txtBalance"), "0|0");
    }

    void refuses_data() {
        columns<QString, QString, QString, QString, QString>("catalog", "name", "cell", "message", "focus");
        const QString setting = "update VouSetting set AcCode = '%1' where VouStatus = '%2'";
        row("head account is no HD", setting.arg("3", "IR"), "", "",
            "please set SubControl Account in Voucher Setup ", "cmdSave");
        row("no name", "", "", "", "Please enter Student Name", "txtStuNm");
        row("no cell", setting.arg("", "CR"), "ANNA", "", "Please enter Cell No", "txtCellNo");
        row("no cash account", setting.arg("", "CR"), "ANNA", "1", "please select Account In Vouchere Setup",
            "cmdSave");
        row("a name but for blanks",
            "update Accounts set AcName = ' An Na', ParentID = '1.2' where RowID = 4", "ANNA", "1",
            "this Student is already exitis!", "txtStuNm");
        row("no subject", "delete from tblSubject where SubId = 11", "ANNA", "1",
            "Please enter subject in detail", "cmdFindsubject");
    }

    void refuses() {
        QFETCH(QString, catalog);
        QFETCH(QString, name);
        QFETCH(QString, cell);
        QFETCH(QString, message);
        QFETCH(QString, focus);
        Registry registry(Sql::trusted(catalog.toStdString()));
        if (focus != "cmdFindsubject")
            registry.take("LAW", "", "", "1");
        typeInto(registry.screen, "txtStuNm", name);
        typeInto(registry.screen, "txtCellNo", cell);
        QCOMPARE(textsOf([&] { click(registry.screen, "cmdSave"); }), QStringList{message});
        QCOMPARE(focused(), focus);
        QCOMPARE(registry.written().join(""), "");
    }

    void deletes_data() {
        columns<QString, QMessageBox::StandardButton, QString, int>("kind", "answer", "asked", "left");
        const QString question = "Are you sure Delete this Application";
        row("a fee was received", "FR", QMessageBox::Yes, "this Account use in vouceher detail", 1);
        row("no", "AR", QMessageBox::No, question, 1);
        row("yes", "AR", QMessageBox::Yes, question, 0);
    }

    void deletes() {
        QFETCH(QString, kind);
        QFETCH(QMessageBox::StandardButton, answer);
        QFETCH(QString, asked);
        QFETCH(int, left);
        Registry registry;
        registry.enrol("ANNA", "50");
        press(Qt::Key_F9);
        registry.office.execute("insert into DetJV (VouNo, VouStatus, AcCode) values (1, '"_sql + kind +
                                "', " + registry.student() + ")");
        registry.open(1);
        QCOMPARE(textsOf([&] { click(registry.screen, "cmdDelete"); }, {answer}), QStringList{asked});
        QCOMPARE(registry.written().join("").isEmpty(), left == 0);
        QCOMPARE(registry.journal().size(), 3);
        QCOMPARE(registry.boxes("txtAppId") + '|' + focused(), left ? "1|cmdDelete" : "|txtStuNm");
        QCOMPARE(cells(registry.screen, "Msh").size(), 2);
    }

    void searchesAndPrints_data() {
        columns<QString, QString, QString>("value", "found", "printed");
        row("Student Name", "NN", "3 1", "ANNA DINNA");
        row("Application ID", "2", "2", "BEN");
        row("Cell No.", "55", "2", "BEN");
        row("Reg.#", "R-3", "3", "DINNA");
        row("Date", "05032026", "3 1", "ANNA DINNA");
        row("Course Wise", "FOUNDATION", "3 2 1", "BEN");
        row("Subject Wise", "AX", "3 2 1", "BEN");
    }

    void searchesAndPrints() {
        QFETCH(QString, value);
        QFETCH(QString, found);
        QFETCH(QString, printed);
        Registry registry("insert into tblMasApp (AppID, StuName, CellNo, RegNo, FixDate) values (1, 'ANNA', "
                          "'1', 'R-1', '2026-03-05')\n"
                          "insert into tblMasApp (AppID, StuName, CellNo, RegNo, FixDate) values (2, 'BEN', "
                          "'155', 'R-2', '2026-03-06')\n"
                          "insert into tblMasApp (AppID, StuName, CellNo, RegNo, FixDate) values (3, "
                          "'DINNA', '3', 'R-3', '2026-03-05')\n"
                          "insert into tblDetApp (AppID, SubID) values (2, 12)");
        registry.addReports();
        turnTo(registry.screen, "SSTab1", 1);
        const QString criterion = QTest::currentDataTag();
        while (registry.boxes("cmb_s_cri") != criterion)
            pressOn(registry.screen, "cmb_s_cri", Qt::Key_Down);
        const bool byDate = criterion == "Date";
        QCOMPARE(control(registry.screen, "DTPicker1")->isVisible(), byDate);
        typeInto(registry.screen, byDate ? "DTPicker1" : "txt_s_value", value);
        QStringList numbers;
        for (const QString &line : cells(registry.screen, "Msh").mid(1))
            numbers << line.section('|', 0, 0);
        QCOMPARE(numbers.join(' '), found);
        picture(form("MDIForm1"), "application-search-" + value);
        click(registry.screen, "cmdPrintStuRecord");
        QCOMPARE(Registry::printedNames(), printed);
    }

    void printsTheOneThatIsOpen() {
        Registry registry("insert into tblMasApp (AppID, StuName) values (1, 'ANNA')");
        registry.addReports();
        QCOMPARE(textsOf([&] { click(registry.screen, "cmdPrint"); }), QStringList{"Please select Student"});
        registry.enrol("BEN", "");
        press(Qt::Key_F9);
        click(registry.screen, "cmdPrint");
        QCOMPARE(Registry::printedNames(), "BEN");
    }

    void endsProgram_data() {
        columns<QString>("number");
        row("lines gone", "3021");
        row("account gone", "3021");
        row("renamed before it was opened again", "207");
        row("deleted before it was opened again", "207");
        row("apostrophe", "105");
        row("number to search for taken away", "102");
    }

    void endsProgram() {
        QFETCH(QString, number);
        const Ended ended = play(QTest::currentDataTag());
        QVERIFY2(ended.status == 1 && ended.box.startsWith("Error " + number),
                 qPrintable(ended.box + ended.errorStream));
    }
};

int main(int argc, char *argv[]) {
    tst_application tests;
    return run(argc, argv, tests, scenes);
}

#include "tst_application.moc"
