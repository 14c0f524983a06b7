#include "tests/institute/institute_desk.h"
#include "tests/support/facts.h"

#include "platform/controls/date_box.h"

#include <QTabWidget>

using namespace zel;
using namespace zel::test;

namespace {

struct CarryDesk : InstituteDesk {
    explicit CarryDesk(const Sql &rows = "select 1") : InstituteDesk(rows) {
        screen = openByMenu("mnuCarryFor", "frmCarryForward");
        control<controls::DateBox>(screen, "dtpForm")->setValue(QDate(2025, 3, 7));
    }
    /// By keys from the student on: the student, then a line of each subject.
    void pickStudent(const QString &name) {
        press(Qt::Key_F7);
        chooseFirst("frmFindApp", "txt_s_value", name);
    }
    void add(const QString &subject, const QString &narration, const QString &session, const QString &amount,
             QMessageBox::StandardButton more = QMessageBox::No) {
        press(Qt::Key_F8);
        chooseFirst("frmSearchSub", "txtFind", subject);
        QCOMPARE(focused(), "txtNarration");
        type(narration);
        press(Qt::Key_Return);
        type(session);
        press(Qt::Key_Return);
        type(amount);
        press(Qt::Key_Return);
        QCOMPARE(textsOf([] { press(Qt::Key_Return); }, {more}), QStringList{"Add more subject in detail"});
    }
    [[nodiscard]] QStringList heads() { return office.rows("select * from tblMasCarryForw"); }
    [[nodiscard]] QStringList lines() {
        return office.rows("select * from tblDetCarryForw order by SubjectID");
    }
    [[nodiscard]] QStringList credits() {
        return office.rows("select VouNo,VouStatus,VouDate,SubID,SessionID,AcCode,CrAc,EntryNo,DRAmt,CRAmt,"
                           "Naration,ChecqNo from DetJV order by VouStatus desc,EntryNo");
    }
};

/// Form 4 of the first student: two lines, one of a subject that is gone; form 6 of the other.
const Sql Forms = R"(
insert into tblMasCarryForw values (4, '2025-01-31', 1), (6, '2024-12-01', 12)
insert into tblDetCarryForw values (4, '2025-01-31', 1, 2, 2, 1, 1500.5, 'LATE'), (4, '2025-01-31', 1, 77, 55, 1, null, null)
insert into DetJV (VouNo, VouStatus, SubID, AcCode, DrAmt, CrAmt) values (4, 'CF', 2, 21, 0, 1500.5), (4, 'FR', 2, 21, 0, 9)
)";

void openFirst(QWidget *screen) {
    turnTo(screen, "SSTab1", 1);
    pressOn(screen, "Msh", Qt::Key_F2);
}

} // namespace

class tst_carry_forward : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void posts_data() { rowsFrom<QString, QString, QString, QString>("institute/carry_forward.json"); }

    void posts() {
        const auto [narration, amount, stored, credit] = fetched<QString, QString, QString, QString>();
        CarryDesk desk;
        QCOMPARE(focused(), "cmdFindApplication");
        desk.pickStudent("رضا");
        QCOMPARE(desk.text("txtStudent") + desk.text("txtfathNm") + desk.text("txtICAPReg") +
                     desk.text("mskNIC") + desk.text("dtpStudent") + desk.text("cboMasSession"),
                 "1O'HARAR-135202-1234567-105/03/2024SPRING 2024");
        desk.add("audit", "", "", "100", QMessageBox::Yes);
        QCOMPARE(focused(), "cmdFindsubject");
        desk.add("tax", narration, "a", amount);
        QCOMPARE(focused(), "cmdSave");
        picture(form("MDIForm1"), "carry-forward");
        press(Qt::Key_Return);

        QCOMPARE(desk.heads(), QStringList{"1|07/03/2025|1"});
        QCOMPARE(desk.lines(),
                 QStringList({"1|07/03/2025|1|1|3|1|100|NULL", "1|07/03/2025|1|2|2|1|" + stored}));
        QStringList credits{"1|CF|07/03/2025|1|3|21|30|1|0|100|0|NULL"};
        if (!credit.isEmpty())
            credits << "1|CF|07/03/2025|2|2|21|30|2|0|" + credit + "|NULL";
        QCOMPARE(desk.credits(), credits);
        QCOMPARE(said() + '|' + underWay(), "Carry forward 1 saved|correcting carry forward 1");

        // The form stays on view, and saving it again replaces what it wrote.
        press(Qt::Key_F9);
        QCOMPARE(desk.heads().size() + desk.lines().size() + desk.credits().size(), 3 + credits.size());
    }

    void refuses() {
        CarryDesk desk;
        const auto told = [&](const char *button, const char *text, const char *next) {
            const std::vector<Box> boxes = boxesOf([&] { click(desk.screen, button); });
            QCOMPARE(boxes.size(), 1U);
            QCOMPARE(boxes[0].text + '|' + boxes[0].title, QString(text) + "|ZEL");
            QCOMPARE(boxes[0].icon, QMessageBox::Information);
            QCOMPARE(focused(), next);
        };
        told("cmdSave", "please select Student", "cmdFindApplication");
        told("cmdFindsubject", "please select Student", "cmdFindApplication");
        QVERIFY(textsOf([&] { click(desk.screen, "cmdDelete"); }).isEmpty());
        desk.pickStudent("bilal");
        told("cmdSave", "please enter at least one subject in detail", "cmdFindsubject");
        told("cmd_ADD_1", "Please select Subject Name ", "txtSubName");
        desk.pickStudent("رضا");
        press(Qt::Key_F8);
        chooseFirst("frmSearchSub", "txtFind", "tax");
        pressOn(desk.screen, "cboSession", Qt::Key_Up);
        told("cmd_ADD_1", "this Subject is already in this session ", "cboSession");
        press(Qt::Key_Down);
        QCOMPARE(textsOf([&] { click(desk.screen, "cmd_ADD_1"); }).size(), 1);
        press(Qt::Key_F8);
        chooseFirst("frmSearchSub", "txtFind", "tax");
        told("cmd_ADD_1", "This Subject Name is already exitis in detail", "txtSubName");
        QVERIFY(desk.heads().isEmpty());
    }

    void changesAndDeletes() {
        CarryDesk desk(Forms);
        openFirst(desk.screen);
        QCOMPARE(focused(), "cmdFindApplication");
        QCOMPARE(desk.text("txtFormID") + desk.text("dtpForm") + desk.text("txtStuNm"), "431/01/2025علی رضا");
        QCOMPARE(cells(desk.screen, "MshSubject").mid(1),
                 QStringList({"2|ACCA|TAX|LATE|AUTUMN 2024|1500.5|2", "77||||||55"}));
        // The first line taken back, its amount changed; the second, of a session that is gone, as it stands.
        control<controls::Grid>(desk.screen, "MshSubject")->setRow(1);
        pressOn(desk.screen, "MshSubject", Qt::Key_F2);
        QCOMPARE(desk.text("txtSubName") + desk.text("txtNarration") + desk.text("cboSession"),
                 "TAXLATEAUTUMN 2024");
        typeInto(desk.screen, "txtForAmt", "1600");
        press(Qt::Key_Return);
        (void)boxesOf([] { press(Qt::Key_Return); });
        press(Qt::Key_F9);
        QCOMPARE(desk.lines(),
                 QStringList({"4|31/01/2025|1|2|2|1|1600|LATE", "4|31/01/2025|1|77|55|1|NULL|NULL"}));
        QCOMPARE(desk.credits(), QStringList({"4|FR|NULL|2|NULL|21|NULL|NULL|0|9|NULL|NULL",
                                              "4|CF|31/01/2025|2|2|21|30|1|0|1600|0|NULL"}));

        // A line removed, then the form.
        control<controls::Grid>(desk.screen, "MshSubject")->setRow(2);
        press(Qt::Key_F6);
        QCOMPARE(cells(desk.screen, "MshSubject").size(), 2);
        QCOMPARE(textsOf([&] { click(desk.screen, "cmdDelete"); }, {QMessageBox::No}),
                 QStringList{"are you sure delete"});
        QCOMPARE(desk.heads().size(), 2);
        (void)boxesOf([&] { click(desk.screen, "cmdDelete"); }, {QMessageBox::Yes});
        QCOMPARE(desk.heads() + desk.lines(), QStringList{"6|01/12/2024|12"});
        QCOMPARE(desk.credits(), QStringList{"4|FR|NULL|2|NULL|21|NULL|NULL|0|9|NULL|NULL"});
        QCOMPARE(desk.text("txtFormID") + desk.text("txtStudent") + desk.text("txtStuNm") +
                     desk.text("mskNIC"),
                 "7_____-_______-_");
    }

    void searches() {
        CarryDesk desk(Forms);
        turnTo(desk.screen, "SSTab1", 1);
        const auto found = [&] {
            QStringList numbers;
            for (const QString &row : cells(desk.screen, "Msh"))
                numbers << row.section('|', 0, 0);
            return numbers.join(' ');
        };
        picture(desk.screen, "carry-search");
        QCOMPARE(found(), "Form ID 4 6"); // the latest date first
        for (const auto &[value, forms] : {std::pair("رض", "Form ID 4"), {"zz", " "}, {"12", " "}}) {
            typeInto(desk.screen, "txt_s_value", value);
            QCOMPARE(found(), forms);
        }
        // Another criterion searches at once.
        pressOn(desk.screen, "cboCriteria", Qt::Key_Down);
        QCOMPARE(found(), "Form ID 6");
        typeInto(desk.screen, "txt_s_value", "4");
        press(Qt::Key_Backtab);
        press(Qt::Key_Down);
        QCOMPARE(found(), "Form ID 4");
        QVERIFY(!control(desk.screen, "DTPicker1")->isVisible());
        press(Qt::Key_Down);
        typeInto(desk.screen, "DTPicker1", "01122024");
        QCOMPARE(found(), "Form ID 6");
    }

    /// The application handed over stays until the screen unloads, and each return shows it again.
    void returnsToFoundStudent() {
        CarryDesk desk(Sql(Forms) + "\ndelete from VouSetting where VouStatus = 'CR'");
        desk.pickStudent("bilal");
        openFirst(desk.screen);
        QCOMPARE(desk.text("txtStudent"), "1");
        openByMenu("mnuCourse", "frmCourse");
        openByMenu("mnuCarryFor", "frmCarryForward");
        QCOMPARE(desk.text("txtStudent") + desk.text("txtStuNm") + desk.text("mskNIC"),
                 "12BILAL_____-_______-_");
        press(Qt::Key_F9);
        QCOMPARE(desk.credits().last(), "4|CF|31/01/2025|2|2|22|0|1|0|1500.5|0|NULL");
        desk.office.execute("delete from tblMasApp where AppID = 12");
        openByMenu("mnuCourse", "frmCourse");
        openByMenu("mnuCarryFor", "frmCarryForward");
        QCOMPARE(desk.text("txtFormID") + '|' + desk.text("txtStudent"), "7|");
        press(Qt::Key_X, Qt::AltModifier);
        settle();
        QVERIFY(!form("frmCarryForward") && shell::gFoundAppID == 0);
    }
};

ZEL_TEST_MAIN(tst_carry_forward)

#include "tst_carry_forward.moc"
