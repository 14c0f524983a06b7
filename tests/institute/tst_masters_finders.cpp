#include "tests/institute/institute_desk.h"
#include "tests/support/facts.h"

using namespace zel;
using namespace zel::test;
using institute::frmFindApp;
using institute::frmSearchSub;

static constexpr const char *Facts = "institute/masters_finders.json";

static void findApplications(const QString &value, Qt::Key criterion) {
    frmFindApp::reference->Show();
    typeInto(form("frmFindApp"), "txt_s_value", value);
    pressOn(form("frmFindApp"), "cboCriteria", criterion);
}

static void saveAmount(const QString &amount) {
    const InstituteDesk desk;
    typeInto(openByMenu("mnuSubject", "frmSubject"), "txtTotAmt", amount);
    press(Qt::Key_F9);
}

/// By the failure that each ends with.
static const Scenes scenes = {
    {"8114", [] { saveAmount("free"); }},
    {"8115", [] { saveAmount(QString(25, '9')); }},
    {"207",
     [] {
         const InstituteDesk desk;
         findApplications("ali", Qt::Key_Down);
     }},
    {"156",
     [] {
         const InstituteDesk desk("delete from tblCourse");
         frmSearchSub::reference->Show();
     }},
};

class tst_masters_finders : public QObject {
    Q_OBJECT
private Q_SLOTS:
    /// "v" turns the months to years.
    void saves_data() { rowsFrom<QString, QStringList, QString>(Facts); }

    void saves() {
        const auto [screen, typed, stored] = fetched<QString, QStringList, QString>();
        InstituteDesk desk;
        desk.screen = openByMenu("mnu" + screen, "frm" + screen);
        for (const QString &text : typed) {
            if (text == "v")
                press(Qt::Key_Down);
            else
                type(text);
            press(Qt::Key_Return);
        }
        QCOMPARE(focused(), "cmdSave");
        press(Qt::Key_Return);
        QCOMPARE(desk.office.rows("select * from "_sql + Sql::name("tbl" + screen)).last(), stored);
        // The new row comes first in the list; the boxes are empty, the combo stands, and the focus stays.
        QVERIFY(cells(desk.screen, "Msh").at(1).startsWith(stored.section('|', 0, 0)));
        const bool course = screen == "Course";
        QCOMPARE(desk.text(course ? "txtCourseName" : "txtSubName"), "");
        QCOMPARE(desk.text(course ? "cmbMYear" : "cboCource"), course ? stored.section('|', 3) : "ACCA");
        QCOMPARE(focused(), "cmdSave");
        settle();
        picture(desk.screen, screen);
    }

    void courseIsGone() {
        InstituteDesk desk;
        desk.screen = openByMenu("mnuSubject", "frmSubject");
        turnTo(desk.screen, "SSTab1", 1);
        QCOMPARE(cells(desk.screen, "Msh").mid(0, 3), QStringList({"CODE NO|COURSE|SUBJECTS|TOTAL AMOUNT|",
                                                                   "4||ORPHAN|100|9", "3|CA INTER|LAW||2"}));
        pressOn(desk.screen, "Msh", Qt::Key_Return);
        QCOMPARE(control<controls::DataCombo>(desk.screen, "cboCource")->BoundText(), "9");
        QCOMPARE(textsOf([&] { press(Qt::Key_F9); }), QStringList{"Please Select Cource"});

        // One that goes while the screen is open still stands in the list, and its number is stored.
        desk.office.execute("delete from tblCourse where CourseId = 1");
        pressOn(desk.screen, "cboCource", Qt::Key_A);
        press(Qt::Key_F9);
        QCOMPARE(desk.office.rows("select * from tblSubject where SubId = 4"), QStringList{"4|1|ORPHAN|100"});
    }

    void findsSubjects_data() { rowsFrom<int, QString, QString, QStringList>(Facts); }

    void findsSubjects() {
        const auto [application, course, value, found] = fetched<int, QString, QString, QStringList>();
        const InstituteDesk desk;
        shell::gFoundAppID = application;
        frmSearchSub::reference->Show();
        QWidget *finder = form("frmSearchSub");
        QCOMPARE(focused(), "txtFind");
        QCOMPARE(cells(finder, "Msh").first(), "Subject ID|Course|Subject Name|Course Durration|TotAmt");
        QCOMPARE(control(finder, "DataCboCourse")->isEnabled(), application == 0);
        if (application == 0)
            typeInto(finder, "DataCboCourse", course);
        typeInto(finder, "txtFind", value);
        QCOMPARE(cells(finder, "Msh").mid(1), found);
        settle();
        picture(form("MDIForm1"), "find-subject-" + value);
        press(Qt::Key_Down);
        press(Qt::Key_Return);
        settle();
        const QStringList first = found.first().split('|');
        QCOMPARE(form("frmSearchSub") == nullptr, !first[0].isEmpty());
        QCOMPARE(QStringList({first[0], shell::gCourseName, shell::gSubName, shell::gCourseDur}),
                 first.mid(0, 4));
        QCOMPARE(shell::gSubID, first[0].toInt());
        QCOMPARE(shell::gSubAmount, first[4].toDouble());
    }

    /// The subject's screen only hides: were it unloaded, it would end the program for want of menu rights.
    void addsSubjectOnTheWay() {
        InstituteDesk desk("update Menus set Active = '0'");
        frmSearchSub::reference->Show();
        click(form("frmSearchSub"), "cmdSubject");
        type("Ethics");
        press(Qt::Key_F9);
        press(Qt::Key_X, Qt::AltModifier);
        settle();
        QCOMPARE(activeForm() + ' ' + focused(), "frmSearchSub txtFind");
        QCOMPARE(cells(form("frmSearchSub"), "Msh").at(2), "5|ACCA|Ethics|3|");
        QVERIFY(form("frmSubject") && !form("frmSubject")->isVisible());
    }

    /// The first that is found; 0 for none.
    void findsApplications_data() { rowsFrom<Qt::Key, QString, int>(Facts); }

    void findsApplications() {
        const auto [criterion, value, first] = fetched<Qt::Key, QString, int>();
        const InstituteDesk desk;
        findApplications(value, criterion);
        const QStringList list = cells(form("frmFindApp"), "Msh");
        QVERIFY(
            list.first().startsWith("Application ID|Reg #.|Fix Date|Date|Student Name|Father Name|Cell No."));
        if (first == 1)
            QCOMPARE(list.mid(1), QStringList{"1|R-1|05-03-2024|01-03-2024|علی رضا|O'HARA|0300-11|12500.5|"});
        pressOn(form("frmFindApp"), "Msh", Qt::Key_Return);
        settle();
        QCOMPARE(shell::gFoundAppID, first);
        QCOMPARE(form("frmFindApp") == nullptr, first > 0);
    }

    void endsProgram() {
        for (const auto &[error, scene] : scenes)
            expectEnd(error, "Error " + error + ':');
    }
};

ZEL_TEST_MAIN(tst_masters_finders, scenes)

#include "tst_masters_finders.moc"
