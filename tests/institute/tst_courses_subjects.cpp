#include "tests/institute/institute_desk.h"

#include <QTabWidget>

using namespace zel;
using namespace zel::test;

static const auto onSubjects = [](const char *box, const QString &text, bool save) {
    InstituteDesk desk;
    desk.open("mnuSubject", "frmSubject");
    turnTo(desk.screen, "SSTab1", save ? 0 : 1);
    typeInto(desk.screen, box, text);
    if (save)
        click(desk.screen, "cmdSave");
};

static const Scenes scenes = {
    {"amount of letters", [] { onSubjects("txtTotAmt", "free", true); }},
    {"many digits", [] { onSubjects("txtTotAmt", QString(25, '9'), true); }},
    {"over-long name", [] { onSubjects("txtSubName", QString(51, 'n'), true); }},
    {"quote searched for", [] { onSubjects("txt_s_value", "o'", false); }},
};

class tst_courses_subjects : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void saves_data() {
        // A combo is turned by a key. The value boxes, in their order, each left by Enter.
        columns<QString, QString, QStringList, QString>("item", "form", "typed", "stored");
        row("course", "mnuCourse", "frmCourse", QStringList{"o'hara \"q\"", "2 yrs", "v"},
            "3|O'HARA \"Q\"|2 YRS|Year");
        row("empty course", "mnuCourse", "frmCourse", QStringList{"", "", ""}, "3|NULL|NULL|Month");
        row("subject", "mnuSubject", "frmSubject", QStringList{"Tax Law", "1500.755"}, "5|1|Tax Law|1500.76");
        row("subject in Urdu", "mnuSubject", "frmSubject", QStringList{"ریاضی", ""}, "5|1|ریاضی|NULL");
    }

    void saves() {
        QFETCH(QString, item);
        QFETCH(QString, form);
        QFETCH(QStringList, typed);
        QFETCH(QString, stored);
        InstituteDesk desk;
        desk.screen = openByMenu(item, form);
        for (const QString &text : typed) {
            if (focused() == "cmbMYear")
                press(text.isEmpty() ? Qt::Key_Up : Qt::Key_Down);
            else
                type(text);
            press(Qt::Key_Return);
        }
        QCOMPARE(focused(), "cmdSave");
        press(Qt::Key_Return);
        const bool course = form == "frmCourse";
        QCOMPARE(desk.office
                     .rows(course ? "select * from tblCourse order by CourseId"_sql
                                  : "select * from tblSubject order by SubId"_sql)
                     .last(),
                 stored);
        QVERIFY(cells(desk.screen, "Msh").at(1).startsWith(stored.section('|', 0, 0)));
        // The boxes are empty, the combo stands as it stood, and the focus stays.
        QCOMPARE(desk.text(course ? "txtCourseName" : "txtSubName"), "");
        QCOMPARE(course ? desk.text("cmbMYear") : desk.bound("cboCource"),
                 stored.section('|', course ? 3 : 1).section('|', 0, 0));
        QCOMPARE(focused(), "cmdSave");
    }

    void choosesAndChanges() {
        InstituteDesk desk;
        desk.open("mnuCourse", "frmCourse");
        turnTo(desk.screen, "SSTab1", 1);
        typeInto(desk.screen, "txt_s_value", "inter");
        QCOMPARE(cells(desk.screen, "Msh"),
                 QStringList({"COURSE NO|COURSE NAME|COURSE DURRATION|MONTH/YEAR", "2|CA INTER|18|Month"}));
        picture(desk.screen, "course-search");
        press(Qt::Key_Down);
        press(Qt::Key_Return);
        QCOMPARE(cells(desk.screen, "Msh").first(), "Course no|COURSE NAME|COURSE DURRATION|MONTH/YEAR");
        QCOMPARE(focused() + desk.text("txtCourseDurr") + desk.text("cmbMYear"), "txtCourseName18Month");
        picture(desk.screen, "course-entry");
        typeInto(desk.screen, "txtCourseDurr", "");
        press(Qt::Key_F9);
        QCOMPARE(desk.office.rows("select * from tblCourse").last(), "2|CA INTER|NULL|Month");
    }

    void courseIsGone() {
        InstituteDesk desk;
        desk.open("mnuSubject", "frmSubject");
        QCOMPARE(desk.text("cboCource"), "ACCA");
        picture(desk.screen, "subject-entry");
        turnTo(desk.screen, "SSTab1", 1);
        QCOMPARE(cells(desk.screen, "Msh").mid(0, 3), QStringList({"CODE NO|COURSE|SUBJECTS|TOTAL AMOUNT|",
                                                                   "4||ORPHAN|100|9", "3|CA INTER|LAW||2"}));
        picture(desk.screen, "subject-search");
        pressOn(desk.screen, "Msh", Qt::Key_Return);
        QCOMPARE(desk.bound("cboCource") + desk.text("cboCource") + desk.text("txtTotAmt"), "9100");
        QCOMPARE(textsOf([&] { press(Qt::Key_F9); }), QStringList{"Please Select Cource"});

        // One that goes while the screen is open still stands in the list, and its number is stored.
        desk.office.execute("delete from tblCourse where CourseId = 1");
        pressOn(desk.screen, "cboCource", Qt::Key_A);
        click(desk.screen, "cmdSave");
        QCOMPARE(desk.office.rows("select * from tblSubject where SubId = 4"), QStringList{"4|1|ORPHAN|100"});
    }

    void finderHasOpenedIt() {
        InstituteDesk desk;
        desk.open("mnuSubject", "frmSubject");
        shell::gAddSubject = true;
        desk.office.execute("update Menus set Active = '0'"); // would end the program if it unloaded
        click(desk.screen, "cmdExit");
        QVERIFY(!desk.screen->isVisible() && form("frmSubject") == desk.screen);
        QCOMPARE(openByMenu("mnuSubject", "frmSubject"), desk.screen);
    }

    void endsProgram_data() {
        columns<QString, QString>("scene", "number");
        row("amount of letters", "amount of letters", "8114");
        row("many digits", "many digits", "8115");
        row("over-long name", "over-long name", "8152");
        row("quote searched for", "quote searched for", "105");
    }

    void endsProgram() {
        QFETCH(QString, scene);
        QFETCH(QString, number);
        const Ended ended = play(scene);
        QVERIFY2(ended.box.startsWith("Error " + number + ":"), qPrintable(ended.box + ended.errorStream));
    }
};

int main(int argc, char *argv[]) {
    tst_courses_subjects tests;
    return run(argc, argv, tests, scenes);
}

#include "tst_courses_subjects.moc"
