#include "tests/accounts/account_screen.h"

#include "accounts/frmAcSetting.h"
#include "accounts/frmAccount.h"
#include "platform/controls/focus.h"
#include "shell/screens.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QTimer>
#include <QtTest>

namespace zel::test {

void setAccountScreens() {
    shell::setScreens({{"mnuChartOfAC", shell::shows(accounts::frmAccount::reference)},
                       {"mnuVocSetting", shell::shows(accounts::frmAcSetting::reference)},
                       {"frmAccount", shell::showsMaximized(accounts::frmAccount::reference)}});
}

const Sql &smallChart() {
    static const Sql chart =
        "insert into Accounts (ParentID,Dcode,AcNodes,AcName,AcStatus,OrderStatus) "
        "values ('1',0,'1','ASSETS','HH',5)\n"
        "insert into Accounts (ParentID,Dcode,AcNodes,AcName,AcStatus) values ('1',1,'1.1','BANKS','HD')\n"
        "insert into Accounts "
        "(ParentID,Dcode,AcNodes,AcName,AcStatus,OpenBal,openDate,BStatus,GST,NTN,ContactPer,"
        "Addr,Addr2,Contact,Fax,Email,WebSite,Location) values ('1.1',1,'1.1.1','CITY BANK','DD',-1250.5,"
        "'2024-07-01','B','12-34-5678-901-23','1234567-8','MR A','4 Mall Road','2nd floor','042-1','042-2',"
        "'a@b.pk','b.pk','LAHORE')\n"
        "insert into Accounts (ParentID,Dcode,AcNodes,AcName,AcStatus,openDate) "
        "values ('1.1',2,'1.1.2','HILL BANK','DD','2024-07-01')\n"
        "insert into Accounts (ParentID,Dcode,AcNodes,AcName,AcStatus) values ('2',0,'2','INCOME','HH')\n";
    return chart;
}

controls::TreeView *tree(QWidget *screen) {
    return control<controls::TreeView>(screen, "lstTree");
}

controls::TreeNode *node(QWidget *screen, const QString &code) {
    return tree(screen)->node("'" + code + "'");
}

QString currentKey(QWidget *screen) {
    const auto *current = dynamic_cast<controls::TreeNode *>(tree(screen)->currentItem());
    return current ? current->Key() : QString();
}

bool isShown(QWidget *screen, const QString &name) {
    return !control(screen, name)->isHidden();
}

void clickNode(QWidget *screen, const QString &code) {
    tree(screen)->select(node(screen, code));
    pressOn(screen, "lstTree", Qt::Key_Return);
    settle();
}

bool editByPopup(QWidget *screen, const QString &code) {
    controls::SetFocus(tree(screen));
    tree(screen)->select(node(screen, code));
    bool came = false;
    QTimer choice;
    QObject::connect(&choice, &QTimer::timeout, &choice, [&] {
        if (!QApplication::activePopupWidget())
            return;
        came = true;
        choice.stop();
        press(Qt::Key_Down);
        press(Qt::Key_Return);
    });
    choice.start(1);
    const QPoint place = tree(screen)->visualItemRect(node(screen, code)).center();
    QContextMenuEvent menuKey(QContextMenuEvent::Keyboard, place,
                              tree(screen)->viewport()->mapToGlobal(place));
    QCoreApplication::sendEvent(tree(screen)->viewport(), &menuKey);
    settle();
    // A platform of tests leaves a closed menu's window active.
    const auto isBack = [screen] {
        screen->window()->activateWindow();
        return QApplication::activeWindow() == screen->window();
    };
    if (came && !QTest::qWaitFor(isBack))
        qFatal("the window does not become active again");
    return came;
}

} // namespace zel::test
