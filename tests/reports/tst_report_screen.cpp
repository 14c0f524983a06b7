#include "platform/controls/data_combo.h"
#include "platform/controls/text_box.h"
#include "reports/frmRPTAccounts.h"
#include "shell/module1.h"
#include "tests/reports/report_desk.h"
#include "tests/support/facts.h"
#include "tests/support/test_program.h"

#include <QLabel>
#include <QMdiSubWindow>
#include <QtTest>

using namespace zel;
using namespace zel::test;

namespace {

constexpr const char *Facts = "reports/screen.json";

const QStringList frames = {
    "frmCashBook",  "frmBankBook", "frmSimpleLedger", "frmDetailLedger", "frmSubTBSimple",
    "frmControlTB", "frmSubTBWOB", "frmFeeDetail",    "frmStuFeeDetail", "frmInActiveStuFeeDetail"};

/// The selectors that can be seen, by what they are for; a control that stands without its companions shows
/// under its own name.
QString selectors(QWidget *screen) {
    const std::pair<const char *, QStringList> groups[] = {
        {"account", {"lblAC", "txtAcName", "cmdFindAC"}},
        {"dates", {"LblFrom", "DTPicker1", "LblTo", "DTPicker2"}},
        {"session", {"Label23", "cboSession"}},
        {"course", {"LblCourseName", "DtaCourse", "LblSubname", "DtaSubject"}},
    };
    QStringList seen;
    for (const auto &[group, names] : groups) {
        QStringList shown;
        for (const QString &name : names)
            if (control(screen, name)->isVisible())
                shown << name;
        seen << (shown == names ? QStringList(group) : shown);
    }
    return seen.join(' ').simplified();
}

QString shownFrames(QWidget *screen) {
    QStringList shown;
    for (const QString &name : frames)
        if (control(screen, name)->isVisible())
            shown << name;
    return shown.join(' ');
}

/// The names that Tab goes through, beginning where the focus is.
QString tabRound() {
    QStringList names;
    do {
        names << focused();
        press(Qt::Key_Tab);
    } while (focused() != names.first() && names.size() < 30);
    return names.join(' ');
}

controls::DataCombo *combo(QWidget *screen, const QString &name) {
    return control<controls::DataCombo>(screen, name);
}

} // namespace

static const Scenes scenes = {
    {"bank book after cash book",
     [] {
         ReportDesk desk;
         desk.open("mnuCashBook");
         desk.open("mnuBankBook");
         const QStringList said = textsOf([&] { click(desk.screen, "cmdBankBook"); });
         qFatal("went on after %s", qPrintable(said.join('|')));
     }},
    {"account found for a hidden box",
     [] {
         ReportDesk desk;
         desk.open("mnuBankBook");
         press(Qt::Key_F7);
         settle();
         desk.open("mnuCashBook");
         control(form("frmFindAC"), "txtFindAC")->setFocus();
         typeInto(form("frmFindAC"), "txtFindAC", "city");
         press(Qt::Key_Down);
         press(Qt::Key_Return);
         settle();
     }},
    {"closed while no right is active",
     [] {
         ReportDesk desk("update Menus set Active = '0'");
         desk.open("mnuCashBook");
         desk.screen->parentWidget()->close();
         settle();
     }},
};

class tst_report_screen : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void items_data() { rowsFrom<QString, QString, QString, QString, QString>(Facts); }

    void items() {
        const auto [caption, frame, title, seen, tabs] =
            fetched<QString, QString, QString, QString, QString>();
        ReportDesk desk;
        QWidget *screen = desk.open(QTest::currentDataTag());
        QCOMPARE(screen->windowTitle(), "Accounts Report");
        QVERIFY(control(form("MDIForm1"), "Picture1")->isHidden());
        QCOMPARE(shownFrames(screen), frame);
        QCOMPARE(selectors(screen), seen);
        QCOMPARE(text(screen, "LblMain"), caption);
        QCOMPARE(text(screen, title), caption);
        QVERIFY(control(screen, frame)->isAncestorOf(control(screen, title)));
        picture(screen->parentWidget(), QTest::currentDataTag());
        QCOMPARE(tabRound(), tabs);

        // What is not shown takes no key either; what is shown lies inside the panel.
        for (const Qt::Key key : {Qt::Key_F, Qt::Key_T, Qt::Key_N, Qt::Key_C, Qt::Key_U}) {
            press(key, Qt::AltModifier);
            QVERIFY2(QApplication::focusWidget()->isVisible(), qPrintable(focused()));
        }
        const QWidget *panel = control(screen, "Frame1");
        for (const QWidget *inner : panel->findChildren<QWidget *>())
            if (inner->isVisible())
                QVERIFY2(panel->rect().contains(QRect(inner->mapTo(panel, QPoint()), inner->size())),
                         qPrintable(inner->objectName()));
    }

    void leftovers_data() { rowsFrom<QStringList, QString, QString>(Facts); }

    void leftovers() {
        const auto [items, shown, seen] = fetched<QStringList, QString, QString>();
        ReportDesk desk;
        QWidget *screen = desk.open(items.first());
        const QString first = shownFrames(screen);
        for (const QString &item : items.mid(1))
            QCOMPARE(desk.open(item), screen);
        QCOMPARE(shownFrames(screen), shown);
        QCOMPARE(selectors(screen), seen);
        picture(form("MDIForm1"), "left-" + items.join('-'));

        QPoint place;
        for (const QString &name : shown.split(' ')) {
            if (!place.isNull())
                QCOMPARE(control(screen, name)->pos(), place);
            place = control(screen, name)->pos();
        }
        // The last item's frame lies on top: the heading is its caption too.
        QWidget *top = screen->childAt(control(screen, first)->mapTo(screen, QPoint(20, 20)));
        while (top->property("Tag") != "R")
            top = top->parentWidget();
        QCOMPARE(top->findChild<QLabel *>()->text(), text(screen, "LblMain"));
    }

    void coveredButtonIsOutOfTheWay() {
        ReportDesk desk;
        desk.open("mnuBankBook");
        desk.choose("CITY");
        QWidget *screen = desk.open("mnuCashBook");
        pressOn(screen, "DTPicker1", Qt::Key_Tab);
        QCOMPARE(tabRound(), "DTPicker2 cmdCashBook DTPicker1");
        press(Qt::Key_S, Qt::AltModifier);
        settle();
        QVERIFY(form("frmVeiwer")->parentWidget()->isMaximized());
        press(Qt::Key_W, Qt::ControlModifier);
        settle();
        QVERIFY(!form("frmVeiwer"));
        QCOMPARE(activeForm(), "frmRPTAccounts");
        press(Qt::Key_F9);
        settle();
        QVERIFY(form("frmVeiwer"));
        // The one behind still answers whoever reaches it.
        form("frmVeiwer")->parentWidget()->close();
        settle();
        click(screen, "cmdBankBook");
        QVERIFY(form("frmVeiwer"));
    }

    void quickPeriods_data() {
        columns<Qt::Key, QDate, QDate>("key", "from", "to");
        const QDate today = QDate::currentDate();
        const QDate first(today.year(), today.month(), 1);
        row("this month", Qt::Key_M, first, first.addMonths(1).addDays(-1));
        row("last month", Qt::Key_L, first.addMonths(-1), first.addDays(-1));
        row("this year", Qt::Key_Y, QDate(today.year(), 1, 1), QDate(today.year(), 12, 31));
        row("all", Qt::Key_A, QDate(2024, 2, 29), today);
    }

    void quickPeriods() {
        const auto [key, from, to] = fetched<Qt::Key, QDate, QDate>();
        ReportDesk desk("delete from DetJV insert into DetJV (VouNo,VouStatus,AcCode,VouDate) "
                        "values (1,'JV',4,'2024-02-29') insert into DetJV (VouNo,VouStatus,AcCode,VouDate) "
                        "values (2,'JV',4,'2025-03-01')");
        QWidget *screen = desk.open("mnuCashBook");
        press(key, Qt::AltModifier);
        QCOMPARE(control<controls::DateBox>(screen, "DTPicker1")->Value(), from);
        QCOMPARE(control<controls::DateBox>(screen, "DTPicker2")->Value(), to);
        QWidget *button = control(screen, "cmdCashBook");
        QVERIFY(button->mapTo(screen, QPoint()).y() >
                control(screen, "cmdAllDates")->mapTo(screen, QPoint()).y());
        desk.open("mnuFee");
        QVERIFY(!control(screen, "cmdAllDates")->isVisible());
    }

    void closingForgets() {
        ReportDesk desk;
        desk.open("mnuBankBook");
        desk.choose("CITY");
        desk.period(QDate(2026, 3, 1), QDate(2026, 3, 31));
        desk.open("mnuStuFeeDet");
        press(Qt::Key_W, Qt::ControlModifier);
        settle();
        QVERIFY(!form("frmRPTAccounts"));
        QVERIFY(!control(form("MDIForm1"), "Picture1")->isHidden());

        QWidget *screen = desk.open("mnuBankBook");
        QCOMPARE(shownFrames(screen), "frmBankBook");
        QCOMPARE(selectors(screen), "account dates");
        QCOMPARE(text(screen, "txtAcName"), "");
        QCOMPARE(control<controls::DateBox>(screen, "DTPicker1")->Value(), QDate::currentDate());
        QCOMPARE(control<controls::DateBox>(screen, "DTPicker2")->Value(), QDate::currentDate());
    }

    void standsInItsPlace() {
        ReportDesk desk;
        form("MDIForm1")->showNormal();
        form("MDIForm1")->resize(1280, 800);
        QWidget *screen = desk.open("mnuFee");
        QWidget *window = screen->parentWidget();
        QCOMPARE(window->pos(), QPoint(167, 67)); // 2500 and 1000 twips
        QCOMPARE(control(screen, "frmFeeDetail")->pos(), QPoint(72, 28));
        QCOMPARE(control(screen, "frmFeeDetail")->parentWidget(), control(screen, "Frame1"));
        const QSize size = window->size();
        const QSize panel = control(screen, "Frame1")->size();

        // Wherever it was put, also behind a report that fills the window, the next item brings it back.
        window->move(0, 0);
        desk.open("mnuCashBook");
        QCOMPARE(window->pos(), QPoint(167, 67));
        click(screen, "cmdCashBook");
        QVERIFY(form("frmVeiwer")->parentWidget()->isMaximized());
        desk.open("mnuBankBook");
        QCOMPARE(activeForm(), "frmRPTAccounts");
        QVERIFY(!window->isMaximized());
        QCOMPARE(QRect(window->pos(), window->size()), QRect(QPoint(167, 67), size));
        QCOMPARE(control(screen, "Frame1")->size(), panel);
        picture(form("MDIForm1"), "over-the-viewer");
    }

    void sessions_data() {
        columns<QString, QString, QString>("change", "preset", "id");
        row("newest by id", "", "AUTUMN 2026", "10");
        row("two of one name", "update tblSession set SessionName = 'SAME'", "SAME", "10");
        row("none", "delete from tblSession", "", "");
    }

    void sessions() {
        const auto [change, preset, id] = fetched<QString, QString, QString>();
        ReportDesk desk(Sql::trusted(change.toStdString()));
        QWidget *screen = desk.open("mnuFee");
        QCOMPARE(focused(), "cboSession");
        QCOMPARE(text(screen, "cboSession"), preset);
        QCOMPARE(combo(screen, "cboSession")->BoundText(), id);
        if (!id.isEmpty()) {
            press(Qt::Key_Up);
            QCOMPARE(combo(screen, "cboSession")->BoundText(), "2");
        }
    }

    void subjectsFollowCourse() {
        ReportDesk desk;
        QWidget *screen = desk.open("mnuStuFeeDet");
        controls::DataCombo *subject = combo(screen, "DtaSubject");
        QCOMPARE(text(screen, "DtaCourse"), "");
        QCOMPARE(subject->count(), 0);

        press(Qt::Key_C, Qt::AltModifier);
        QCOMPARE(focused(), "DtaCourse");
        type("P");
        QCOMPARE(text(screen, "DtaCourse"), "PHYSICS");
        QCOMPARE(combo(screen, "DtaCourse")->BoundText(), "7");
        QCOMPARE(subject->count(), 2);
        QCOMPARE(text(screen, "DtaSubject"), "");
        press(Qt::Key_U, Qt::AltModifier);
        press(Qt::Key_Down);
        QCOMPARE(text(screen, "DtaSubject"), "MECHANICS");
        QCOMPARE(subject->BoundText(), "4");
        press(Qt::Key_Return);
        QCOMPARE(focused(), "DtaSubject");

        press(Qt::Key_C, Qt::AltModifier);
        press(Qt::Key_Up);
        QCOMPARE(text(screen, "DtaCourse"), "CHEMISTRY");
        QCOMPARE(text(screen, "DtaSubject"), "");
        QCOMPARE(subject->count(), 1);
        press(Qt::Key_U, Qt::AltModifier);
        type("A");
        QCOMPARE(subject->BoundText(), "6");
        picture(form("MDIForm1"), "course-and-subject");

        // The course without a name counts as none, as an emptied one does.
        press(Qt::Key_C, Qt::AltModifier);
        press(Qt::Key_Home);
        QCOMPARE(combo(screen, "DtaCourse")->BoundText(), "9");
        QCOMPARE(subject->count(), 0);
        press(Qt::Key_End);
        QCOMPARE(subject->count(), 2);
        press(Qt::Key_Delete);
        QCOMPARE(text(screen, "DtaCourse"), "");
        QCOMPARE(text(screen, "DtaSubject"), "");
        QCOMPARE(subject->count(), 0);
    }

    void takesAccount() {
        ReportDesk desk;
        QWidget *screen = desk.open("mnuSimpleLedger");
        auto *account = control<controls::TextBox>(screen, "txtAcName");
        QCOMPARE(focused(), "cmdFindAC");
        press(Qt::Key_Return);
        settle();
        QCOMPARE(activeForm(), "frmFindAC");
        QVERIFY(control(form("frmFindAC"), "chkAll")->isEnabled());
        typeInto(form("frmFindAC"), "txtFindAC", "city");
        press(Qt::Key_Down);
        press(Qt::Key_Return);
        settle();
        QCOMPARE(account->text(), "CITY BANK");
        QCOMPARE(account->Tag(), "4");
        QCOMPARE(focused(), "cmdFindAC");
        QCOMPARE(shell::gFoundRowID, 0);
        QCOMPARE(shell::gFoundName, "");

        // Left without a choice the account stays; typing changes nothing.
        pressOn(screen, "DTPicker1", Qt::Key_F7);
        settle();
        click(form("frmFindAC"), "cmdExit");
        QCOMPARE(activeForm(), "frmRPTAccounts");
        QCOMPARE(focused(), "cmdFindAC");
        typeInto(screen, "txtAcName", "x");
        press(Qt::Key_Return);
        QCOMPARE(focused(), "txtAcName");
        QCOMPARE(account->text(), "CITY BANK");
        QCOMPARE(account->Tag(), "4");
        pressOn(screen, "DTPicker1", Qt::Key_Return);
        QCOMPARE(focused(), "DTPicker1");
    }

    void endsProgram() {
        expectEnd("bank book after cash book", "Error 5:\n\nInvalid procedure call or argument");
        expectEnd("account found for a hidden box", "Error 5:\n\nInvalid procedure call or argument");
        expectEnd("closed while no right is active", "Error 91:");
    }
};

ZEL_TEST_MAIN(tst_report_screen, scenes)

#include "tst_report_screen.moc"
