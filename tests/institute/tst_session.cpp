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

#include <QtTest>

using namespace zel;
using namespace zel::test;

namespace {

/// An office with three sessions, logged in, the screen opened by its menu key.
struct OpenSessions {
    OpenSessions() {
        shell::setScreens({{"mnuSession", shell::shows(institute::frmSession::reference)}});
        office.execute("insert into tblSession (SessionId, SessionName) values (1, 'SPRING 2024'), "
                       "(2, 'AUTUMN 2024'), (10, 'SPRING 2025')");
        office.logIn();
        screen = openByMenu("mnuSession", "frmSession");
    }
    [[nodiscard]] QStringList stored() {
        return office.rows("select SessionId, SessionName from tblSession order by SessionId");
    }
    [[nodiscard]] QStringList listed() const { return cells(screen, "Msh"); }
    void toSearch() const { turnTo(screen, "SSTab1", 1); }
    void choose(int row) const {
        toSearch();
        control<controls::Grid>(screen, "Msh")->setRow(row);
        pressOn(screen, "Msh", Qt::Key_Return);
        settle();
    }
    void save(const QString &name) const {
        typeInto(screen, "txtSessionName", name);
        click(screen, "cmdSave");
    }

    Office office;
    QWidget *screen;
};

const QStringList everything = {"SESSION NO|SESSION NAME", "10|SPRING 2025", "2|AUTUMN 2024",
                                "1|SPRING 2024"};

} // namespace

static std::function<void()> scene(void (*act)(OpenSessions &)) {
    return [act] {
        OpenSessions sessions;
        act(sessions);
    };
}

static const Scenes scenes = {
    {"over-long name", scene([](OpenSessions &sessions) { sessions.save(QString(300, 'n')); })},
    {"no such number", scene([](OpenSessions &sessions) {
         click(sessions.screen, "cmdCancel");
         typeInto(sessions.screen, "txtSessionNo", "7");
         click(sessions.screen, "cmdSave");
     })},
    {"apostrophe", scene([](OpenSessions &sessions) {
         sessions.toSearch();
         typeInto(sessions.screen, "txt_s_value", "o'hara");
     })},
    {"closed while no right is active", scene([](OpenSessions &sessions) {
         sessions.office.execute("update Menus set Active = '0'");
         click(sessions.screen, "cmdExit");
     })},
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
        sessions.toSearch();
        controls::SetFocus(control(sessions.screen, "cmb_s_cri"));
        QCOMPARE(round(10), "cmb_s_cri txt_s_value Msh" + buttons + " cmb_s_cri");
    }

    void savesByKeys() {
        OpenSessions sessions;
        expect(sessions.screen, "txtSessionNo.enabled=false; focus=txtSessionName");
        QCOMPARE(sessions.listed(), everything);

        type("autumn 2025 é");
        press(Qt::Key_Return);
        QCOMPARE(focused(), "cmdSave");
        press(Qt::Key_Return);

        QCOMPARE(sessions.stored().last(), "11|AUTUMN 2025 É");
        QCOMPARE(sessions.listed().at(1), "11|AUTUMN 2025 É");
        expect(sessions.screen,
               "said=Session 11 saved; underWay=; txtSessionNo=; txtSessionName=; focus=txtSessionName");

        // The form is ready for the next one; an empty name is stored as Null.
        click(sessions.screen, "cmdSave");
        QCOMPARE(sessions.stored().last(), "12|NULL");
        sessions.office.execute("delete from tblSession");
        sessions.save("o'hara");
        QCOMPARE(sessions.stored(), QStringList{"1|O'HARA"});
    }

    void changesChosenRow() {
        OpenSessions sessions;
        sessions.toSearch();
        typeInto(sessions.screen, "txt_s_value", "au");
        press(Qt::Key_Down);
        QCOMPARE(focused(), "Msh");
        press(Qt::Key_Return);

        expect(sessions.screen,
               "SSTab1.currentIndex=0; txtSessionNo=2; txtSessionName=AUTUMN 2024; cmdSave=&Save; "
               "underWay=correcting session 2; focus=txtSessionName");
        QCOMPARE(sessions.listed().first(), "Session No|SESSION NAME");

        press(Qt::Key_End);
        type(" late");
        press(Qt::Key_F9);
        QCOMPARE(underWay(), "");
        QCOMPARE(sessions.stored().at(1), "2|AUTUMN 2024 LATE");
        QCOMPARE(sessions.listed().size(), 4);
        QCOMPARE(sessions.listed().first(), everything.first());

        // F2 does what a double click does.
        sessions.toSearch();
        controls::Grid *grid = control<controls::Grid>(sessions.screen, "Msh");
        grid->setRow(3);
        pressOn(sessions.screen, "Msh", Qt::Key_F2);
        QCOMPARE(text(sessions.screen, "txtSessionName"), "SPRING 2024");
        sessions.save("");
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
        const auto [criterion, value, rows] = fetched<QString, QString, QString>();
        QStringList found;
        for (const QString &row : rows.split(' ', Qt::SkipEmptyParts))
            found << everything[row.toInt()];
        if (found.isEmpty())
            found = QStringList{"|", "|"};
        OpenSessions sessions;
        sessions.toSearch();
        if (criterion == "Session No")
            pressOn(sessions.screen, "cmb_s_cri", Qt::Key_Down);
        QCOMPARE(text(sessions.screen, "cmb_s_cri"), criterion);
        typeInto(sessions.screen, "txt_s_value", value);
        QCOMPARE(sessions.listed(), found);

        // A choice in an empty list does nothing; taking the value back brings all rows with their headings.
        if (found.first() == "|") {
            pressOn(sessions.screen, "Msh", Qt::Key_Return);
            expect(sessions.screen, "txtSessionNo=; focus=Msh");
        }
        typeInto(sessions.screen, "txt_s_value", "");
        QCOMPARE(sessions.listed(), everything);
    }

    void criterionWaitsForValue() {
        OpenSessions sessions;
        sessions.toSearch();
        typeInto(sessions.screen, "txt_s_value", "2");
        QCOMPARE(sessions.listed(), everything);
        controls::SetFocus(control(sessions.screen, "cmb_s_cri"));
        type("S");
        QCOMPARE(text(sessions.screen, "cmb_s_cri"), "Session Name");
        press(Qt::Key_Down);
        QCOMPARE(text(sessions.screen, "cmb_s_cri"), "Session No");
        QCOMPARE(sessions.listed(), everything);
        typeInto(sessions.screen, "txt_s_value", "2");
        QCOMPARE(sessions.listed(), QStringList({everything[0], everything[2]}));
    }

    void deletes() {
        OpenSessions sessions;
        const QStringList all = sessions.stored();
        const auto remove = [&sessions] { click(sessions.screen, "cmdDelete"); };
        QVERIFY(boxesOf(remove).empty()); // nothing is chosen
        sessions.choose(2);
        const std::vector<Box> boxes = boxesOf(remove, {QMessageBox::No});
        QCOMPARE(boxes.size(), 1U);
        QCOMPARE(boxes[0].title, "Confirm");
        QCOMPARE(boxes[0].text, "Are you sure delete this information");
        QCOMPARE(boxes[0].icon, QMessageBox::Information);
        QCOMPARE(boxes[0].buttons, QMessageBox::Yes | QMessageBox::No);
        expect(sessions.screen, "said=; Msh=4; txtSessionNo=2");
        QCOMPARE(sessions.stored(), all);
        QCOMPARE(boxesOf(remove, {QMessageBox::Yes}).size(), 1U);
        expect(sessions.screen, "said=Session 2 deleted; Msh=3; txtSessionNo=");
        QCOMPARE(sessions.stored(), QStringList({all[0], all[2]}));
    }

    void cancelOpensKeyBox() {
        OpenSessions sessions;
        typeInto(sessions.screen, "txtSessionName", "half");
        click(sessions.screen, "cmdCancel");
        expect(sessions.screen, "txtSessionName=; txtSessionNo.enabled=true");

        typeInto(sessions.screen, "txtSessionNo", "2");
        press(Qt::Key_Return);
        QCOMPARE(focused(), "txtSessionName");
        sessions.save("typed");
        QCOMPARE(sessions.stored().at(1), "2|TYPED");
        expect(sessions.screen, "txtSessionNo.enabled=true");
    }

    void finderClosesScreen() {
        OpenSessions sessions;
        shell::gFinderOpen = true;
        sessions.choose(1);
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

    void endsProgram() {
        expectEnd("over-long name", "Error 8152:");
        expectEnd("no such number", "Error 3021:");
        expectEnd("apostrophe", "Error 105:");
        expectEnd("closed while no right is active", "Error 91:");
    }
};

ZEL_TEST_MAIN(tst_session, scenes)

#include "tst_session.moc"
