#include "shell/MDIForm1.h"
#include "shell/frmLocPass.h"
#include "shell/frmSecMenus.h"
#include "shell/menu_table.h"
#include "shell/module1.h"
#include "shell/screens.h"
#include "tests/support/driver.h"
#include "tests/support/office.h"
#include "tests/support/rows.h"
#include "tests/support/test_program.h"

#include <QAction>
#include <QCheckBox>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QStatusBar>
#include <QTabWidget>
#include <QTimer>
#include <QtTest>

using namespace zel;
using namespace zel::test;

namespace {

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

    [[nodiscard]] QStringList hiddenItems() const {
        QStringList names;
        for (const QAction *action : frame->findChildren<QAction *>())
            if (action->property("Caption").isValid() && !action->isVisible())
                names << action->objectName();
        names.sort();
        return names;
    }
    [[nodiscard]] bool panelShown() const { return !control(frame, "Picture1")->isHidden(); }

    Office office;
    QWidget *frame = nullptr;
    QStringList opened;
};

} // namespace

static const Scenes scenes = {
    {"no row",
     [] {
         OpenFrame frame;
         frame.office.execute("delete from Menus");
         openByMenu("mnuCompany", "other")->parentWidget()->close();
     }},
    {"all off",
     [] {
         OpenFrame frame;
         frame.office.execute("update Menus set Active = '0'");
         openByMenu("mnuCompany", "other")->parentWidget()->close();
     }},
    {"cancel",
     [] {
         OpenFrame frame;
         frame.office.execute("update Menus set Active = '0'");
         click(openByMenu("mnuSetMenu", "frmLocPass"), "cmdCancel");
     }},
    {"quote",
     [] {
         OpenFrame frame;
         openByMenu("mnuSetMenu", "frmLocPass");
         type("S'ECRET");
         press(Qt::Key_Return);
     }},
    {"exit",
     [] {
         OpenFrame frame;
         openByMenu("mnuCompany", "other");
         frame.office.execute("update Menus set Active = '0'");
         openByMenu("mnuExit", {});
     }},
};

class tst_menu : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void appliesRights_data() {
        columns<QString, QStringList>("statement", "hidden");
        row("all active", "", QStringList{});
        row("some off", "update Menus set Active = '0' where Menus in ('Course', 'CASH BOOK')",
            QStringList{"mnuCashBook", "mnuCourse"});
        row("caption of no item", "update Menus set Active = '0' where Menus = 'STOCK SUMMARY REPORT'",
            QStringList{});
        row("item without a row", "delete from Menus where Menus = 'Course'", QStringList{});
        row("case counts", "update Menus set Menus = 'COURSE', Active = '0' where Menus = 'Course'",
            QStringList{});
        row("a whole menu", "insert into Menus (Menus, Active) values ('TRANSACTION', '0')",
            QStringList{"mnuMainTrans"});
        row("other than 1 is off", "update Menus set Active = '2' where Menus = 'Session'",
            QStringList{"mnuSession"});
    }

    void appliesRights() {
        QFETCH(QString, statement);
        QFETCH(QStringList, hidden);
        OpenFrame frame;
        if (!statement.isEmpty())
            frame.office.execute(Sql::trusted(statement.toStdString()));
        QCOMPARE(frame.hiddenItems(), QStringList{});
        QVERIFY(frame.panelShown());
        QWidget *other = openByMenu("mnuCompany", "other");
        QCOMPARE(frame.hiddenItems(), QStringList{});
        QVERIFY(!frame.panelShown());
        QCOMPARE(openByMenu("mnuCompany", "other"), other);
        other->parentWidget()->close();
        QVERIFY(frame.panelShown());
        QCOMPARE(frame.hiddenItems(), hidden);
    }

    void endsProgram_data() {
        columns<QString, QString>("scene", "box");
        const QString withoutRights = "Error 91:\n\nObject variable or With block variable not set";
        row("no row", "no row", withoutRights);
        row("all off", "all off", withoutRights);
        row("by the lock's Cancel", "cancel", withoutRights);
        row("by Exit with a screen open", "exit", withoutRights);
        row("a quote at the lock, told without what was typed", "quote",
            "Error 105:\n\nUnclosed quotation mark after the character string '***'.\nLine 1, column 39:\n"
            "Select * From LctPswd Where Pswd= '***'\n                                      ^");
    }

    void endsProgram() {
        QFETCH(QString, scene);
        QFETCH(QString, box);
        const Ended ended = play(scene);
        QVERIFY2(ended.status == 1, qPrintable(ended.errorStream));
        QCOMPARE(ended.box, box);
        QVERIFY2(!ended.errorStream.contains("ECRET"), qPrintable(ended.errorStream));
    }

    void partsAreNamed() {
        OpenFrame frame;
        for (const char *menu : {"mnu_Reg_Form", "mnuMainTrans", "mnuMainVouc", "mnuMainRpt", "mnuAdmin"})
            QVERIFY2(frame.frame->findChild<QMenu *>(menu), menu);
        QCOMPARE(frame.frame->findChild<QTimer *>("Timer1")->interval(), 500);
        QStringList names;
        for (const QAction *action : frame.frame->findChildren<QAction *>())
            if (action->isSeparator() && action->property("Caption").isValid())
                names << action->objectName();
        names.sort();
        QCOMPARE(names.join(' '),
                 "gp0 gp01 gp1 gp2 gp3 gp4 gp5 gpFD gpS gpS1 gpt mnuBVouc13 mnuBVouc2 mnuBVouc3 "
                 "mnuRBlank mnuRBlank1 mnuRBlank2 mnuRBlank3 mnuRBlank4 mnuRBlank5");
    }

    void companyIsNamed_data() {
        columns<QString, QString>("statement", "name");
        row("active", "update Company set Company = 'CITY <b>COLLEGE'", "CITY <b>COLLEGE");
        row("none active", "update Company set comActive = 'N'", "");
        row("without a name", "update Company set Company = null", "");
        row("no table", "drop table Company", "");
    }

    /// At the login, and anew when a screen closes.
    void companyIsNamed() {
        QFETCH(QString, statement);
        QFETCH(QString, name);
        OpenFrame frame;
        QCOMPARE(text(frame.frame, "lblCompany"), "ZEL INSTITUTE");
        frame.office.execute(Sql::trusted(statement.toStdString()));
        openByMenu("mnuCompany", "other")->parentWidget()->close();
        QCOMPARE(text(frame.frame, "lblCompany"), name);
        QCOMPARE(control(frame.frame, "lblCompany")->isVisible(), !name.isEmpty());
    }

    void missingScreenLeavesAllAlone() {
        OpenFrame frame;
        openByMenu("mnuCPVou", {});
        QVERIFY(frame.panelShown());
        QVERIFY(frame.frame->findChild<QStatusBar *>()->currentMessage().contains("Cash Payment Voucher"));
        shell::setScreens({});
        openByMenu("mnuRemoveData", {});
        QVERIFY(frame.panelShown());
        QVERIFY(!shell::gOpenRemoveData);
        QVERIFY(!form("frmLocPass"));

        // The lock leads elsewhere once "Set Menus" has been chosen.
        shell::setScreens({{"frmSecMenus", shell::shows(shell::frmSecMenus::reference)}});
        shell::gOpenSetMenus = true;
        openByMenu("mnuRemoveData", "frmLocPass");
        type("ZEL");
        press(Qt::Key_Return);
        settle();
        QVERIFY(form("frmSecMenus"));
        QVERIFY(shell::gOpenRemoveData);
    }

    void lockLeadsTo_data() {
        QTest::addColumn<QStringList>("flags"); // set before the item is chosen
        columns<QString, QString>("item", "destination");
        row("remove data", QStringList{}, "mnuRemoveData", "frmRemoveData");
        row("set menus", QStringList{}, "mnuSetMenu", "frmSecMenus");
        row("remove data after set menus", QStringList{"menus"}, "mnuRemoveData", "frmSecMenus");
        row("set menus after remove data", QStringList{"remove"}, "mnuSetMenu", "frmSecMenus");
        row("account before set menus", QStringList{"account"}, "mnuSetMenu", "frmAccount");
        row("account before all", QStringList{"account", "menus"}, "mnuRemoveData", "frmAccount");
        row("the spare has no screen", QStringList{"spare"}, "mnuRemoveData", "");
    }

    void lockLeadsTo() {
        QFETCH(QStringList, flags);
        QFETCH(QString, item);
        QFETCH(QString, destination);
        OpenFrame frame;
        shell::gAddAccount = flags.contains("account");
        shell::gLockSpare = flags.contains("spare");
        shell::gOpenSetMenus = flags.contains("menus");
        shell::gOpenRemoveData = flags.contains("remove");

        QWidget *lock = openByMenu(item, "frmLocPass");
        QVERIFY(!frame.panelShown());
        QCOMPARE(focused(), "txtPassword");
        picture(lock, "lock");
        type("ZEL");
        press(Qt::Key_Return);
        settle();
        QVERIFY(!form("frmLocPass"));
        QVERIFY(!shell::frmLocPass::reference);
        QCOMPARE(frame.opened + QStringList(form("frmSecMenus") ? 1 : 0, "frmSecMenus"),
                 QStringList(destination.isEmpty() ? 0 : 1, destination));
        QCOMPARE(shell::gOpenRemoveData, flags.contains("remove") || item == "mnuRemoveData");
        QCOMPARE(shell::gOpenSetMenus, flags.contains("menus") || item == "mnuSetMenu");
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
        picture(frame.frame, "lock-over-maximized");
        click(lock, "cmdCancel");
        QCOMPARE(frame.frame->findChild<QMdiArea *>()->activeSubWindow(), other);
        QVERIFY(other->isMaximized());
    }

    void lockRefuses() {
        OpenFrame frame;
        QWidget *lock = openByMenu("mnuSetMenu", "frmLocPass");
        std::vector<Box> boxes = boxesOf([] { press(Qt::Key_Return); });
        QCOMPARE(boxes.size(), 1U);
        QCOMPARE(boxes[0].text, "please enter your password");
        QCOMPARE(boxes[0].icon, QMessageBox::Information);
        QCOMPARE(focused(), "txtPassword");

        type("wrong");
        boxes = boxesOf([&] { click(lock, "cmdOK"); });
        QCOMPARE(boxes.size(), 1U);
        QCOMPARE(boxes[0].text, "please check your password");
        QCOMPARE(boxes[0].icon, QMessageBox::Information);
        QCOMPARE(text(lock, "txtPassword"), "");
        QCOMPARE(focused(), "txtPassword");
        QVERIFY(!form("frmSecMenus"));

        // Typed text is kept over a refusal only; the next activation empties the box.
        type("half");
        QWidget *other = openByMenu("mnuCompany", "other");
        QVERIFY(other);
        QCOMPARE(openByMenu("mnuRemoveData", "frmLocPass"), lock);
        QCOMPARE(text(lock, "txtPassword"), "");
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
        QCOMPARE(frame.hiddenItems(), QStringList{"mnuCourse"});
        QVERIFY(shell::gOpenSetMenus);
    }

    void editsRights() {
        OpenFrame frame;
        frame.office.execute("update Menus set Active = '0' where Menus = 'CASH BOOK'");
        frame.office.execute("delete from Menus where Menus = 'STUDENT FEE DETAIL'");
        openByMenu("mnuSetMenu", "frmLocPass");
        type("ZEL");
        press(Qt::Key_Return);
        settle();
        QWidget *rights = form("frmSecMenus");
        for (int i = 1; i <= 19; ++i) {
            const auto *box = control<QCheckBox>(rights, "Check" + QString::number(i));
            QCOMPARE(box->isChecked(), i != 10 && i != 19);
            QVERIFY2(box->font().bold() == box->isChecked(), qPrintable(box->text()));
            QVERIFY2(box->width() >= box->sizeHint().width(), qPrintable(box->text()));
        }
        picture(rights, "menus");

        click(rights, "Check10");
        click(rights, "Check8");
        QVERIFY(control(rights, "Check10")->font().bold());
        QVERIFY(!control(rights, "Check8")->font().bold());
        press(Qt::Key_F9);
        const QStringList stored = frame.office.rows("select Menus, Active from Menus");
        QCOMPARE(stored.size(), 19);
        QCOMPARE(stored.first(), "Application Form|1");
        QCOMPARE(stored.at(7), "Course|0");
        QCOMPARE(stored.at(9), "CASH BOOK|1");
        QCOMPARE(stored.last(), "STUDENT FEE DETAIL|0");
        QCOMPARE(frame.hiddenItems(), QStringList{});
        QVERIFY(form("frmSecMenus"));

        click(rights, "Command1");
        QVERIFY(!form("frmSecMenus"));
        QCOMPARE(frame.hiddenItems(), QStringList{"mnuCourse"});
        QVERIFY(frame.panelShown());

        // A hidden item's key opens nothing.
        openByMenu("mnuCourse", {});
        QVERIFY(frame.panelShown());
    }

    void clock_data() {
        columns<QDateTime, QString>("moment", "shown");
        row("morning", QDateTime({2024, 3, 5}, {9, 4, 7}), "Tuesday, 05-March-2024  09:04:07 AM");
        row("noon", QDateTime({2024, 12, 31}, {12, 0, 0}), "Tuesday, 31-December-2024  12:00:00 PM");
        row("midnight", QDateTime({2025, 2, 1}, {0, 30, 0}), "Saturday, 01-February-2025  12:30:00 AM");
        row("evening", QDateTime({2025, 2, 1}, {23, 59, 59}), "Saturday, 01-February-2025  11:59:59 PM");
    }

    void clock() {
        QFETCH(QDateTime, moment);
        QFETCH(QString, shown);
        QCOMPARE(shell::clockText(moment), shown);
        if (QTest::currentDataTag() != QByteArray("morning"))
            return;
        OpenFrame frame;
        QTRY_VERIFY(text(frame.frame, "lblDate").endsWith("M"));
        picture(frame.frame, "main");
    }
};

int main(int argc, char *argv[]) {
    tst_menu tests;
    return run(argc, argv, tests, scenes);
}

#include "tst_menu.moc"
