#include "shell/MDIForm1.h"
#include "shell/frmLocPass.h"
#include "shell/frmSecMenus.h"
#include "shell/menu_table.h"
#include "shell/module1.h"
#include "shell/screens.h"
#include "tests/support/driver.h"
#include "tests/support/facts.h"
#include "tests/support/office.h"
#include "tests/support/test_program.h"

#include <QAction>
#include <QCheckBox>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTimer>
#include <QtTest>

using namespace zel;
using namespace zel::test;

namespace {

constexpr const char *Facts = "shell/menu.json";

/// A screen of the test's own, as far as the lock prompt and the menu need one.
class OtherScreen : public controls::Form {
public:
    inline static controls::FormReference<OtherScreen> reference;
    OtherScreen() { setObjectName("other"); }

protected:
    void Form_Unload() override { shell::ApplyMenus(); }
};

/// An office, logged in, with the lock's two screens and one of the test's own behind "Company".
struct OpenFrame {
    OpenFrame() {
        shell::setScreens({
            {"frmSecMenus", shell::shows(shell::frmSecMenus::reference)},
            {"frmRemoveData", [this] { opened << "frmRemoveData"; }},
            {"frmAccount", [this] { opened << "frmAccount"; }},
            {"mnuCompany", shell::shows(OtherScreen::reference)},
        });
        office.logIn();
        frame = form("MDIForm1");
    }
    ~OpenFrame() { shell::setScreens({}); }

    [[nodiscard]] QString hiddenItems() const {
        QStringList names;
        for (const QAction *action : frame->findChildren<QAction *>())
            if (action->property("Caption").isValid() && !action->isVisible())
                names << action->objectName();
        names.sort();
        return names.join(' ');
    }
    [[nodiscard]] bool panelShown() const { return !control(frame, "Picture1")->isHidden(); }
    /// The lock's password, typed and entered.
    static void unlock(const QString &password = "ZEL") {
        type(password);
        press(Qt::Key_Return);
        settle();
    }

    Office office;
    QWidget *frame = nullptr;
    QStringList opened;
};

} // namespace

/// A scene: a statement, then what a user does.
static std::function<void()> scene(const char *statement, void (*act)()) {
    return [statement, act] {
        OpenFrame frame;
        frame.office.execute(Sql::trusted(statement));
        act();
    };
}

static void closeOther() {
    openByMenu("mnuCompany", "other")->parentWidget()->close();
}

static constexpr const char *AllOff = "update Menus set Active = '0'";
static const Scenes scenes = {
    {"no row", scene("delete from Menus", closeOther)},
    {"all off", scene(AllOff, closeOther)},
    {"by the lock's Cancel",
     scene(AllOff, [] { click(openByMenu("mnuSetMenu", "frmLocPass"), "cmdCancel"); })},
    {"a quote at the lock",
     [] {
         OpenFrame frame;
         openByMenu("mnuSetMenu", "frmLocPass");
         OpenFrame::unlock("S'ECRET");
     }},
    {"by Exit with a screen open",
     [] {
         OpenFrame frame;
         openByMenu("mnuCompany", "other");
         frame.office.execute(Sql::trusted(AllOff));
         openByMenu("mnuExit", {});
     }},
};

class tst_menu : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void appliesRights_data() { rowsFrom<QString, QString>(Facts); }

    void appliesRights() {
        const auto [statement, hidden] = fetched<QString, QString>();
        OpenFrame frame;
        frame.office.execute(Sql::trusted(statement.toStdString()));
        QCOMPARE(frame.hiddenItems(), "");
        QVERIFY(frame.panelShown());
        QWidget *other = openByMenu("mnuCompany", "other");
        QCOMPARE(frame.hiddenItems(), "");
        QVERIFY(!frame.panelShown());
        QCOMPARE(openByMenu("mnuCompany", "other"), other);
        other->parentWidget()->close();
        QVERIFY(frame.panelShown());
        QCOMPARE(frame.hiddenItems(), hidden);
    }

    void endsProgram() {
        for (const char *scene : {"no row", "all off", "by the lock's Cancel", "by Exit with a screen open"})
            expectEnd(scene, "Error 91:\n\nObject variable or With block variable not set");
        const Ended quote = play("a quote at the lock"); // told without what was typed
        QCOMPARE(
            quote.box,
            "Error 105:\n\nUnclosed quotation mark after the character string '***'.\nLine 1, column 39:\n"
            "Select * From LctPswd Where Pswd= '***'\n                                      ^");
        QVERIFY2(quote.status == 1 && !quote.errorStream.contains("ECRET"), qPrintable(quote.errorStream));
    }

    void clockRuns() {
        OpenFrame frame;
        QCOMPARE(frame.frame->findChild<QTimer *>("Timer1")->interval(), 500);
        QTRY_VERIFY(text(frame.frame, "lblDate").endsWith("M"));
    }

    /// At the login, and anew when a screen closes.
    void companyIsNamed() {
        for (const auto &[statement, name] :
             {std::pair("update Company set Company = 'CITY <b>COLLEGE'", "CITY <b>COLLEGE"),
              {"update Company set comActive = 'N'", ""},
              {"update Company set Company = null", ""},
              {"drop table Company", ""}}) {
            OpenFrame frame;
            expect(frame.frame, "lblCompany=ZEL INSTITUTE; lblCompany.visible=true");
            frame.office.execute(Sql::trusted(statement));
            closeOther();
            expect(frame.frame,
                   QString("lblCompany=%1; lblCompany.visible=%2").arg(name, *name ? "true" : "false"));
        }
    }

    /// By the flags set before.
    void lockLeadsTo_data() { rowsFrom<QString, QString, QString>(Facts); }

    void lockLeadsTo() {
        const auto [before, item, destination] = fetched<QString, QString, QString>();
        OpenFrame frame;
        shell::gAddAccount = before.contains("account");
        shell::gLockSpare = before.contains("spare");
        shell::gOpenSetMenus = before.contains("menus");
        shell::gOpenRemoveData = before.contains("remove");

        openByMenu(item, "frmLocPass");
        QVERIFY(!frame.panelShown());
        QCOMPARE(focused(), "txtPassword");
        OpenFrame::unlock();
        QVERIFY(!form("frmLocPass"));
        QVERIFY(!shell::frmLocPass::reference);
        QCOMPARE(frame.opened.join(' ') + (form("frmSecMenus") ? "frmSecMenus" : ""), destination);
        QCOMPARE(shell::gOpenRemoveData, before.contains("remove") || item == "mnuRemoveData");
        QCOMPARE(shell::gOpenSetMenus, before.contains("menus") || item == "mnuSetMenu");
    }

    void lockKeepsItsSize() {
        OpenFrame frame;
        QWidget *other = openByMenu("mnuCompany", "other")->parentWidget();
        other->showMaximized();
        QWidget *lock = openByMenu("mnuSetMenu", "frmLocPass");
        QVERIFY(!lock->parentWidget()->isMaximized());
        QCOMPARE(lock->size(), lock->sizeHint());
        const QPoint middle = frame.frame->findChild<QMdiArea *>()->viewport()->rect().center();
        QVERIFY((lock->parentWidget()->geometry().center() - middle).manhattanLength() <= 2);
        QVERIFY(other->isMaximized());
        click(lock, "cmdCancel");
        QCOMPARE(frame.frame->findChild<QMdiArea *>()->activeSubWindow(), other);
        QVERIFY(other->isMaximized());
    }

    void lockRefuses() {
        OpenFrame frame;
        QWidget *lock = openByMenu("mnuSetMenu", "frmLocPass");
        for (const auto &[password, message] :
             {std::pair("", "please enter your password"), {"wrong", "please check your password"}}) {
            type(password);
            const std::vector<Box> boxes = boxesOf([lock] { click(lock, "cmdOK"); });
            QCOMPARE(boxes.size(), 1U);
            QCOMPARE(boxes[0].text, message);
            QCOMPARE(boxes[0].icon, QMessageBox::Information);
            expect(lock, "txtPassword=; focus=txtPassword");
        }
        QVERIFY(!form("frmSecMenus"));

        // Typed text is kept over a refusal only; the next activation empties the box.
        type("half");
        openByMenu("mnuCompany", "other");
        QCOMPARE(openByMenu("mnuRemoveData", "frmLocPass"), lock);
        expect(lock, "txtPassword=");
    }

    void lockCancels() {
        OpenFrame frame;
        frame.office.execute("update Menus set Active = '0' where Menus = 'Course'");
        QWidget *lock = openByMenu("mnuSetMenu", "frmLocPass");
        shell::gFinderOpen = true;
        click(lock, "cmdCancel");
        QVERIFY(form("frmLocPass"));
        QVERIFY(!shell::frmLocPass::reference->isShown());
        QVERIFY(!frame.panelShown());

        shell::gFinderOpen = false;
        QCOMPARE(openByMenu("mnuSetMenu", "frmLocPass"), lock);
        click(lock, "cmdCancel");
        QVERIFY(!form("frmLocPass"));
        QVERIFY(frame.panelShown());
        QCOMPARE(frame.hiddenItems(), "mnuCourse");
        QVERIFY(shell::gOpenSetMenus);
    }

    void editsRights() {
        OpenFrame frame;
        frame.office.execute("update Menus set Active = '0' where Menus = 'CASH BOOK'");
        frame.office.execute("delete from Menus where Menus = 'STUDENT FEE DETAIL'");
        openByMenu("mnuSetMenu", "frmLocPass");
        OpenFrame::unlock();
        QWidget *rights = form("frmSecMenus");
        for (int i = 1; i <= 19; ++i) {
            const auto *box = control<QCheckBox>(rights, "Check" + QString::number(i));
            QCOMPARE(box->isChecked(), i != 10 && i != 19);
            QVERIFY2(box->font().bold() == box->isChecked(), qPrintable(box->text()));
            QVERIFY2(box->width() >= box->sizeHint().width(), qPrintable(box->text()));
        }

        click(rights, "Check10");
        click(rights, "Check8");
        QVERIFY(control(rights, "Check10")->font().bold() && !control(rights, "Check8")->font().bold());
        press(Qt::Key_F9);
        const QStringList stored = frame.office.rows("select Menus, Active from Menus");
        QCOMPARE(stored.size(), 19);
        QCOMPARE((QStringList{stored[0], stored[7], stored[9], stored[18]}),
                 QStringList({"Application Form|1", "Course|0", "CASH BOOK|1", "STUDENT FEE DETAIL|0"}));
        QCOMPARE(frame.hiddenItems(), "");
        QVERIFY(form("frmSecMenus"));

        click(rights, "Command1");
        QVERIFY(!form("frmSecMenus"));
        QCOMPARE(frame.hiddenItems(), "mnuCourse");
        QVERIFY(frame.panelShown());

        // A hidden item's key opens nothing.
        openByMenu("mnuCourse", {});
        QVERIFY(frame.panelShown());
    }

    void clock() {
        for (const auto &[moment, shown] :
             {std::pair(QDateTime({2024, 3, 5}, {9, 4, 7}), "Tuesday, 05-March-2024  09:04:07 AM"),
              {QDateTime({2024, 12, 31}, {12, 0, 0}), "Tuesday, 31-December-2024  12:00:00 PM"},
              {QDateTime({2025, 2, 1}, {0, 30, 0}), "Saturday, 01-February-2025  12:30:00 AM"},
              {QDateTime({2025, 2, 1}, {23, 59, 59}), "Saturday, 01-February-2025  11:59:59 PM"}})
            QCOMPARE(shell::clockText(moment), shown);
    }
};

ZEL_TEST_MAIN(tst_menu, scenes)

#include "tst_menu.moc"
