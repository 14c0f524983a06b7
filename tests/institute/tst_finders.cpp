#include "tests/institute/institute_desk.h"

using namespace zel;
using namespace zel::test;
using institute::frmFindApp;
using institute::frmSearchSub;

static void findApplications(int criterion, const QString &value) {
    frmFindApp::reference->Show();
    typeInto(form("frmFindApp"), "txt_s_value", value);
    // End, since the number between would search at once, for what is none.
    if (criterion > 0)
        pressOn(form("frmFindApp"), "cboCriteria", criterion == 1 ? Qt::Key_Down : Qt::Key_End);
}

static void findInScene(int criterion, const QString &value) {
    const InstituteDesk desk;
    findApplications(criterion, value);
}

static const Scenes scenes = {
    {"number of letters", [] { findInScene(1, "ali"); }},
    {"no number", [] { findInScene(1, ""); }},
    {"apostrophe", [] { findInScene(0, "o'"); }},
    {"no course",
     [] {
         InstituteDesk desk("delete from tblCourse");
         frmSearchSub::reference->Show();
     }},
};

class tst_finders : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void findsSubjects_data() {
        columns<int, QString, QString, QStringList>("application", "course", "value", "found");
        const QString heading = "Subject ID|Course|Subject Name|Course Durration|TotAmt";
        const QStringList none{"||||", "||||"};
        row("all of the first course", 0, "a", "",
            QStringList{heading, "1|ACCA|AUDIT|3|5000", "2|ACCA|TAX|3|7500.5"});
        row("by name, typed small", 0, "a", "ax", QStringList{heading, "2|ACCA|TAX|3|7500.5"});
        row("of another course", 0, "c", "", QStringList{heading, "3|CA INTER|LAW|18|"});
        row("no hit takes the headings", 0, "c", "tax", none);
        row("inactive ones of an application", 1, "", "au", QStringList{heading, "1|ACCA|AUDIT|3|5000"});
        row("application without inactive ones", 12, "", "a", none);
    }

    void findsSubjects() {
        QFETCH(int, application);
        QFETCH(QString, course);
        QFETCH(QString, value);
        QFETCH(QStringList, found);
        InstituteDesk desk;
        shell::gFoundAppID = application;
        frmSearchSub::reference->Show();
        desk.screen = form("frmSearchSub");
        QCOMPARE(focused(), "txtFind");
        QCOMPARE(cells(desk.screen, "Msh").first(), "Subject ID|Course|Subject Name|Course Durration|TotAmt");
        QCOMPARE(control(desk.screen, "DataCboCourse")->isEnabled(), application == 0);
        if (application == 0)
            typeInto(desk.screen, "DataCboCourse", course);
        typeInto(desk.screen, "txtFind", value);
        QCOMPARE(cells(desk.screen, "Msh"), found);
        picture(form("MDIForm1"), "find-subject-" + value);
        press(Qt::Key_Down);
        press(Qt::Key_Return);
        settle();
        const QStringList first = found.at(1).split('|');
        QCOMPARE(form("frmSearchSub") == nullptr, !first[0].isEmpty());
        QCOMPARE(QStringList({first[0], shell::gCourseName, shell::gSubName, shell::gCourseDur}),
                 first.mid(0, 4));
        QCOMPARE(shell::gSubID, first[0].toInt());
        QCOMPARE(shell::gSubAmount, first[4].toDouble());
    }

    void addsSubjectOnTheWay() {
        InstituteDesk desk;
        frmSearchSub::reference->Show();
        click(form("frmSearchSub"), "cmdSubject");
        QCOMPARE(activeForm(), "frmSubject");
        type("Ethics");
        press(Qt::Key_F9);
        press(Qt::Key_X, Qt::AltModifier);
        settle();
        QCOMPARE(activeForm() + ' ' + focused(), "frmSearchSub txtFind");
        QCOMPARE(cells(form("frmSearchSub"), "Msh").at(2), "5|ACCA|Ethics|3|");
        press(Qt::Key_X, Qt::AltModifier);
        settle();
        QVERIFY(!form("frmSearchSub") && shell::gSubID == 0 && form("frmSubject"));
    }

    void findsApplications_data() {
        columns<int, QString, int>("criterion", "value", "first"); // 0: none is found
        row("all, the newest first", 0, "", 12);
        row("by name in Urdu", 0, "رضا", 1);
        row("by number, no like", 1, "1", 1);
        row("by cell", 2, "0-11", 1);
        row("none", 0, "zz", 0);
    }

    void findsApplications() {
        QFETCH(int, criterion);
        QFETCH(QString, value);
        QFETCH(int, first);
        const InstituteDesk desk;
        findApplications(criterion, value);
        const QStringList list = cells(form("frmFindApp"), "Msh");
        QCOMPARE(list.first(), "Application ID|Reg #.|Fix Date|Date|Student Name|Father Name|Cell No.|Total "
                               "Amount|Cash Receive");
        if (first == 1)
            QCOMPARE(list.mid(1),
                     QStringList{"1|R-1|05-03-2024|01-03-2024|علی رضا|O'HARA|0300-11|12500.5|500"});
        picture(form("MDIForm1"), "find-application-" + value);
        pressOn(form("frmFindApp"), "Msh", Qt::Key_Return);
        settle();
        QCOMPARE(shell::gFoundAppID, first);
        QCOMPARE(form("frmFindApp") == nullptr, first > 0);
    }

    void endsProgram_data() {
        columns<QString, QString>("scene", "number");
        row("number of letters", "number of letters", "207");
        row("no number", "no number", "156");
        row("apostrophe", "apostrophe", "105");
        row("no course", "no course", "156");
    }

    void endsProgram() {
        QFETCH(QString, scene);
        QFETCH(QString, number);
        const Ended ended = play(scene);
        QVERIFY2(ended.box.startsWith("Error " + number + ":"), qPrintable(ended.box + ended.errorStream));
    }
};

int main(int argc, char *argv[]) {
    tst_finders tests;
    return run(argc, argv, tests, scenes);
}

#include "tst_finders.moc"
