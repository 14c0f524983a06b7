#include "institute/frmSession.h"
#include "platform/controls/focus.h"
#include "platform/controls/grid.h"
#include "shell/MDIForm1.h"
#include "shell/module1.h"
#include "shell/screens.h"
#include "tests/support/driver.h"
#include "tests/support/office.h"
#include "tests/support/rows.h"
#include "tests/support/test_program.h"

#include <QTabWidget>
#include <QtTest>

using namespace zel;
using namespace zel::test;

namespace {

/// An office with three sessions, logged in, the screen opened by its menu key.
struct OpenSessions {
    OpenSessions() {
        shell::setScreens({{"mnuSession", shell::shows(institute::frmSession::reference)}});
        office.execute("insert into tblSession (SessionId, SessionName) values (1, 'SPRING 2024')\n"
                       "insert into tblSession (SessionId, SessionName) values (2, 'AUTUMN 2024')\n"
                       "insert into tblSession (SessionId, SessionName) values (10, 'SPRING 2025')");
        office.logIn();
        screen = openByMenu("mnuSession", "frmSession");
    }
    [[nodiscard]] QStringList stored() {
        return office.rows("select SessionId, SessionName from tblSession order by SessionId");
    }

    Office office;
    QWidget *screen;
};

const QStringList everything = {"SESSION NO|SESSION NAME", "10|SPRING 2025", "2|AUTUMN 2024",
                                "1|SPRING 2024"};

} // namespace

static const Scenes scenes = {
    {"over-long name",
     [] {
         OpenSessions sessions;
         type(QString(300, 'n'));
         click(sessions.screen, "cmdSave");
     }},
    {"no such number",
     [] {
         OpenSessions sessions;
         click(sessions.screen, "cmdCancel");
         typeInto(sessions.screen, "txtSessionNo", "7");
         click(sessions.screen, "cmdSave");
     }},
    {"apostrophe",
     [] {
         OpenSessions sessions;
         turnTo(sessions.screen, "SSTab1", 1);
         typeInto(sessions.screen, "txt_s_value", "o'hara");
     }},
    {"no rights",
     [] {
         OpenSessions sessions;
         sessions.office.execute("update Menus set Active = '0'");
         click(sessions.screen, "cmdExit");
     }},
};

class tst_session : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void tabOrder() {
        OpenSessions sessions;
        const auto round = [](int steps) {
            QStringList names;
            for (int i = 0; i < steps; ++i) {
                names << focused();
                press(Qt::Key_Tab);
            }
            return names.join(' ');
        };
        const QString buttons = " cmdSave cmdDelete cmdCancel cmdPrint cmdExit SSTab1";
        QCOMPARE(round(8), "txtSessionName" + buttons + " txtSessionName");
        turnTo(sessions.screen, "SSTab1", 1);
        controls::SetFocus(control(sessions.screen, "cmb_s_cri"));
        QCOMPARE(round(10), "cmb_s_cri txt_s_value Msh" + buttons + " cmb_s_cri");
    }

    void savesByKeys() {
        OpenSessions sessions;
        QCOMPARE(focused(), "txtSessionName");
        QVERIFY(!control(sessions.screen, "txtSessionNo")->isEnabled());
        QCOMPARE(cells(sessions.screen, "Msh"), everything);

        type("autumn 2025 é");
        press(Qt::Key_Return);
        QCOMPARE(focused(), "cmdSave");
        press(Qt::Key_Return);

        QCOMPARE(sessions.stored().last(), "11|AUTUMN 2025 É");
        QCOMPARE(said() + '|' + underWay(), "Session 11 saved|");
        QCOMPARE(cells(sessions.screen, "Msh").at(1), "11|AUTUMN 2025 É");
        QCOMPARE(text(sessions.screen, "txtSessionNo"), "");
        QCOMPARE(text(sessions.screen, "txtSessionName"), "");
        QCOMPARE(focused(), "txtSessionName");

        // The form is ready for the next one; an empty name is stored as Null.
        click(sessions.screen, "cmdSave");
        QCOMPARE(sessions.stored().last(), "12|NULL");
        sessions.office.execute("delete from tblSession");
        typeInto(sessions.screen, "txtSessionName", "o'hara");
        click(sessions.screen, "cmdSave");
        QCOMPARE(sessions.stored(), QStringList{"1|O'HARA"});
    }

    void changesChosenRow() {
        OpenSessions sessions;
        turnTo(sessions.screen, "SSTab1", 1);
        typeInto(sessions.screen, "txt_s_value", "au");
        press(Qt::Key_Down);
        QCOMPARE(focused(), "Msh");
        press(Qt::Key_Return);

        QCOMPARE(control<QTabWidget>(sessions.screen, "SSTab1")->currentIndex(), 0);
        QCOMPARE(focused(), "txtSessionName");
        QCOMPARE(text(sessions.screen, "txtSessionNo"), "2");
        QCOMPARE(text(sessions.screen, "txtSessionName"), "AUTUMN 2024");
        QCOMPARE(text(sessions.screen, "cmdSave"), "&Save");
        QCOMPARE(underWay(), "correcting session 2");
        QCOMPARE(cells(sessions.screen, "Msh").first(), "Session No|SESSION NAME");
        settle();
        picture(sessions.screen, "session-entry");
        picture(form("MDIForm1"), "main-session");

        press(Qt::Key_End);
        type(" late");
        press(Qt::Key_F9);
        QCOMPARE(underWay(), "");
        QCOMPARE(sessions.stored().at(1), "2|AUTUMN 2024 LATE");
        QCOMPARE(cells(sessions.screen, "Msh").size(), 4);
        QCOMPARE(cells(sessions.screen, "Msh").first(), everything.first());

        // F2 does what a double click does.
        turnTo(sessions.screen, "SSTab1", 1);
        controls::Grid *grid = control<controls::Grid>(sessions.screen, "Msh");
        grid->setRow(3);
        pressOn(sessions.screen, "Msh", Qt::Key_F2);
        QCOMPARE(text(sessions.screen, "txtSessionName"), "SPRING 2024");
        typeInto(sessions.screen, "txtSessionName", "");
        click(sessions.screen, "cmdSave");
        QCOMPARE(sessions.stored().first(), "1|NULL");
    }

    void searches_data() {
        columns<QString, QString, QString>("criterion", "value", "rows");
        row("name, typed small", "Session Name", "spring", "0 1 3");
        row("name with a blank", "Session Name", "n 2", "0 2");
        row("number is like, too", "Session No", "1", "0 1 3");
        row("number, no name", "Session No", "S", "");
        row("no hit takes the headings", "Session Name", "X", "");
        row("wildcard", "Session Name", "%5", "0 1");
    }

    void searches() {
        QFETCH(QString, criterion);
        QFETCH(QString, value);
        QFETCH(QString, rows);
        QStringList found;
        for (const QString &row : rows.split(' ', Qt::SkipEmptyParts))
            found << everything[row.toInt()];
        if (found.isEmpty())
            found = QStringList{"|", "|"};
        OpenSessions sessions;
        turnTo(sessions.screen, "SSTab1", 1);
        if (criterion == "Session No")
            pressOn(sessions.screen, "cmb_s_cri", Qt::Key_Down);
        QCOMPARE(text(sessions.screen, "cmb_s_cri"), criterion);
        typeInto(sessions.screen, "txt_s_value", value);
        QCOMPARE(cells(sessions.screen, "Msh"), found);
        picture(sessions.screen, "session-search-" + value);

        // A choice in an empty list does nothing; taking the value back brings all rows with their headings.
        if (found.first() == "|") {
            pressOn(sessions.screen, "Msh", Qt::Key_Return);
            QCOMPARE(focused(), "Msh");
            QCOMPARE(text(sessions.screen, "txtSessionNo"), "");
        }
        typeInto(sessions.screen, "txt_s_value", "");
        QCOMPARE(cells(sessions.screen, "Msh"), everything);
    }

    void criterionWaitsForValue() {
        OpenSessions sessions;
        turnTo(sessions.screen, "SSTab1", 1);
        typeInto(sessions.screen, "txt_s_value", "2");
        QCOMPARE(cells(sessions.screen, "Msh"), everything);
        controls::SetFocus(control(sessions.screen, "cmb_s_cri"));
        type("S");
        QCOMPARE(text(sessions.screen, "cmb_s_cri"), "Session Name");
        press(Qt::Key_Down);
        QCOMPARE(text(sessions.screen, "cmb_s_cri"), "Session No");
        QCOMPARE(cells(sessions.screen, "Msh"), everything);
        typeInto(sessions.screen, "txt_s_value", "2");
        QCOMPARE(cells(sessions.screen, "Msh"), QStringList({everything[0], everything[2]}));
    }

    void deletes_data() {
        QTest::addColumn<int>("row"); // of the list; 0 chooses none
        columns<QMessageBox::StandardButton, int, QStringList>("answer", "asked", "left");
        const QStringList all = {"1|SPRING 2024", "2|AUTUMN 2024", "10|SPRING 2025"};
        zel::test::row("nothing chosen", 0, QMessageBox::Yes, 0, all);
        zel::test::row("no", 2, QMessageBox::No, 1, all);
        zel::test::row("yes", 2, QMessageBox::Yes, 1, QStringList{all[0], all[2]});
    }

    void deletes() {
        QFETCH(int, row);
        QFETCH(QMessageBox::StandardButton, answer);
        QFETCH(int, asked);
        QFETCH(QStringList, left);
        OpenSessions sessions;
        if (row > 0) {
            turnTo(sessions.screen, "SSTab1", 1);
            control<controls::Grid>(sessions.screen, "Msh")->setRow(row);
            pressOn(sessions.screen, "Msh", Qt::Key_Return);
        }
        const std::vector<Box> boxes = boxesOf([&] { click(sessions.screen, "cmdDelete"); }, {answer});
        QCOMPARE(int(boxes.size()), asked);
        for (const Box &box : boxes) {
            QCOMPARE(box.title, "Confirm");
            QCOMPARE(box.text, "Are you sure delete this information");
            QCOMPARE(box.icon, QMessageBox::Information);
            QCOMPARE(box.buttons, QMessageBox::Yes | QMessageBox::No);
        }
        QCOMPARE(said(), left.size() < 3 ? "Session 2 deleted" : "");
        QCOMPARE(sessions.stored(), left);
        QCOMPARE(cells(sessions.screen, "Msh").size(), left.size() + 1);
        QCOMPARE(text(sessions.screen, "txtSessionNo"), answer == QMessageBox::No ? "2" : "");
    }

    void cancelOpensKeyBox() {
        OpenSessions sessions;
        typeInto(sessions.screen, "txtSessionName", "half");
        click(sessions.screen, "cmdCancel");
        QCOMPARE(text(sessions.screen, "txtSessionName"), "");
        QVERIFY(control(sessions.screen, "txtSessionNo")->isEnabled());

        typeInto(sessions.screen, "txtSessionNo", "2");
        press(Qt::Key_Return);
        QCOMPARE(focused(), "txtSessionName");
        type("typed");
        click(sessions.screen, "cmdSave");
        QCOMPARE(sessions.stored().at(1), "2|TYPED");
        QVERIFY(control(sessions.screen, "txtSessionNo")->isEnabled());
    }

    void finderClosesScreen() {
        OpenSessions sessions;
        shell::gFinderOpen = true;
        turnTo(sessions.screen, "SSTab1", 1);
        control<controls::Grid>(sessions.screen, "Msh")->setRow(1);
        pressOn(sessions.screen, "Msh", Qt::Key_Return);
        settle();
        QVERIFY(!form("frmSession"));
        QVERIFY(!institute::frmSession::reference);
    }

    void closesByItsKeys() {
        OpenSessions sessions;
        QVERIFY(control(form("MDIForm1"), "Picture1")->isHidden());
        typeInto(sessions.screen, "txtSessionName", "kept");
        QCOMPARE(openByMenu("mnuSession", "frmSession"), sessions.screen);
        QCOMPARE(text(sessions.screen, "txtSessionName"), "KEPT");

        press(Qt::Key_X, Qt::AltModifier);
        settle();
        QVERIFY(!form("frmSession"));
        QVERIFY(!control(form("MDIForm1"), "Picture1")->isHidden());
        QWidget *fresh = openByMenu("mnuSession", "frmSession");
        QCOMPARE(text(fresh, "txtSessionName"), "");
        fresh->parentWidget()->close();
        settle();
        QVERIFY(!form("frmSession"));
        QVERIFY(!control(form("MDIForm1"), "Picture1")->isHidden());
    }

    void endsProgram_data() {
        columns<QString, QString>("scene", "number");
        row("name longer than its column", "over-long name", "8152");
        row("number without a row", "no such number", "3021");
        row("apostrophe in the search", "apostrophe", "105");
        row("closed while no right is active", "no rights", "91");
    }

    void endsProgram() {
        QFETCH(QString, scene);
        QFETCH(QString, number);
        const Ended ended = play(scene);
        QVERIFY2(ended.status == 1, qPrintable(ended.errorStream));
        QVERIFY2(ended.box.startsWith(QString("Error %1:").arg(number)), qPrintable(ended.box));
        QVERIFY(ended.errorStream.contains(QString("error %1: ").arg(number)));
    }
};

int main(int argc, char *argv[]) {
    tst_session tests;
    return run(argc, argv, tests, scenes);
}

#include "tst_session.moc"
