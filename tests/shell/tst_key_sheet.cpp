#include "menu_screens.h"
#include "platform/controls/shortcut.h"
#include "shell/key_sheet.h"
#include "shell/module1.h"
#include "shell/screens.h"
#include "tests/support/driver.h"
#include "tests/support/office.h"
#include "tests/support/test_program.h"

#include <QAction>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPrinter>
#include <QShortcut>
#include <QTextBrowser>
#include <QTimer>
#include <QtTest>

using namespace zel;
using namespace zel::test;

class tst_key_sheet : public QObject {
    Q_OBJECT

    /// F1, then what the sheet shows; Esc.
    static QString sheetShown() {
        QString shown;
        QTimer::singleShot(0, [&shown] {
            QWidget *sheet = QApplication::activeModalWidget();
            QVERIFY(sheet && sheet->objectName() == "KeySheet");
            shown = sheet->findChild<QTextBrowser *>()->toPlainText();
            picture(sheet, "keys-" + shown.section('\n', 1, 1));
            QTest::keyClick(sheet, Qt::Key_Escape);
        });
        QWidget *window = QApplication::activeWindow();
        press(Qt::Key_F1);
        window->activateWindow(); // which not every platform does by itself
        (void)QTest::qWaitForWindowActive(window);
        return QApplication::activeModalWidget() ? QString() : shown;
    }

private Q_SLOTS:
    /// What a screen tells is answered on it, and what it answers is told.
    void everyKeyIsTold() {
        Office office;
        shell::setScreens(menuScreens());
        office.logIn();
        for (const auto &[name, screen] : shell::screens()) {
            screen.open();
            const QWidget *shown = form("MDIForm1")->findChild<QMdiArea *>()->activeSubWindow()->widget();
            QStringList answered;
            for (const QShortcut *shortcut : shown->findChildren<QShortcut *>())
                for (const QKeySequence &key : shortcut->keys())
                    answered << key.toString();
            QStringList told = {controls::keys::Leave.shown()};
            for (const controls::Shortcut &key : screen.keys)
                told << key.shown();
            for (const QString &key : answered)
                QVERIFY2(told.contains(key), qPrintable(name + " answers " + key));
            for (const QAction *action : shown->findChildren<QAction *>())
                for (const QKeySequence &key : action->shortcuts())
                    answered << key.toString();
            answered << QStringList{"Home", "End", "PgUp", "PgDown",
                                    told.first()}; // the viewer's pages, Exit
            for (const QString &key : told)
                QVERIFY2(answered.contains(key), qPrintable(name + " tells " + key));
        }
    }

    void opensAnywhere() {
        Office office;
        shell::setScreens(menuScreens());
        shell::Main();
        QVERIFY(QTest::qWaitForWindowActive(form("frmLogin")));
        QVERIFY(sheetShown().contains("Ctrl+F3"));
        office.logIn();
        QVERIFY(sheetShown().trimmed().startsWith("On every screen"));
        for (const auto &[item, name, title] : {std::tuple("mnuBPVouc", "frmBP", "Vouchers"),
                                                {"mnuSimpleLedger", "frmRPTAccounts", "Reports"},
                                                {"mnuCarryFor", "frmCarryForward", "Carry Forward Entry"}}) {
            QWidget *screen = openByMenu(item, name);
            const QString focus = focused();
            const QString text = sheetShown().trimmed();
            QVERIFY2(text.startsWith(title), qPrintable(text));
            QCOMPARE(text.count("Ctrl+F3"), 1);
            expect(screen, "focus=" + focus);
        }
    }

    void prints() {
        Office office;
        shell::setScreens(menuScreens());
        QWidget window;
        const shell::KeySheet sheet(&window);
        for (const auto &[file, printed] : {std::pair("/keys.pdf", true), {"/none/keys.pdf", false}}) {
            QPrinter printer(QPrinter::HighResolution);
            printer.setOutputFileName(office.folder() + file);
            QCOMPARE(sheet.print(printer), printed);
            QCOMPARE(QFileInfo(printer.outputFileName()).size() > 5000, printed);
        }
        if (qEnvironmentVariableIsSet("ZEL_PICTURES"))
            QFile::copy(office.folder() + "/keys.pdf", qEnvironmentVariable("ZEL_PICTURES") + "/keys.pdf");
    }
};

ZEL_TEST_MAIN(tst_key_sheet)

#include "tst_key_sheet.moc"
