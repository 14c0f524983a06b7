#include "tools/tour/stations.h"

#include "tests/support/driver.h"
#include "tools/tour/hands.h"

#include <QTreeWidget>

#include <cstdio>

namespace zel::tour {

using namespace zel::test;

namespace {

void account(const char *box, const QString &title) {
    if (focused() != box)
        qFatal("%s should have the focus for %s, %s has it", box, qPrintable(title), qPrintable(focused()));
    retype(title);
}

/// In the tree: from the top down, opening what is closed, until the account is reached; Enter picks it, as a
/// click does.
void pick(const QString &title) {
    tabTo("lstTree");
    auto *tree = control<QTreeWidget>(form("frmAccount"), "lstTree");
    key(Qt::Key_Home);
    for (int i = 0; i < 100 && tree->currentItem()->text(0) != title; ++i) {
        key(Qt::Key_Right);
        if (tree->currentItem()->text(0) != title)
            key(Qt::Key_Down);
    }
    if (tree->currentItem()->text(0) != title)
        qFatal("%s is not in the tree", qPrintable(title));
    key(Qt::Key_Return);
}

void controlAccount(QWidget *chart, const QString &title) {
    tabTo("chkHead");
    if (!control(chart, "chkHead")->property("checked").toBool())
        key(Qt::Key_Space);
    key(Qt::Key_N, Qt::AltModifier);
    account("txtAcDes", title);
    key(Qt::Key_S, Qt::AltModifier);
}

void child(QWidget *chart, const char *box, const QString &title, bool bank = false,
           const QString &opening = {}) {
    key(Qt::Key_N, Qt::AltModifier);
    account(box, title);
    if (bank != control(chart, "chkBank")->property("checked").toBool() &&
        QByteArray(box) == "txtSubsidiary") {
        tabTo("chkBank");
        key(Qt::Key_Space);
    }
    if (!opening.isEmpty()) {
        tabTo("txt_OpenBal");
        retype(opening);
    }
    key(Qt::Key_S, Qt::AltModifier);
}

} // namespace

void buildChart() {
    QWidget *chart = openByMenu("mnuChartOfAC", "frmAccount");
    controlAccount(chart, "ASSETS");
    pick("ASSETS");
    child(chart, "txtSubControl", "CASH AND BANK");
    pick("CASH AND BANK");
    child(chart, "txtSubsidiary", "CASH IN HAND", false, "50000");
    pick("CASH AND BANK");
    child(chart, "txtSubsidiary", "CITY BANK", true);
    pick("ASSETS");
    child(chart, "txtSubControl", "STUDENTS");
    pick("ASSETS");
    controlAccount(chart, "EXPENSES");
    pick("EXPENSES");
    child(chart, "txtSubControl", "OFFICE");
    pick("OFFICE");
    child(chart, "txtSubsidiary", "RENT");
    pick("OFFICE");
    child(chart, "txtSubsidiary", "LIGHT BILL");
    pick("EXPENSES");
    controlAccount(chart, "INCOME");
    pick("INCOME");
    child(chart, "txtSubControl", "FEES");
    pick("FEES");
    child(chart, "txtSubsidiary", "ADMISSION FEES");
    pick("FEES");
    child(chart, "txtSubsidiary", "HALL HIRE");
    shot(frame(), "chart-of-accounts");
    key(Qt::Key_P, Qt::AltModifier);
    exportPage("chart-printed");
}

void setUpVouchers() {
    openByMenu("mnuVocSetting", "frmAcSetting");
    for (const auto &[button, title] : {std::pair("cmdCPFindAC", "CASH"), std::pair("cmdCRFindAC", "CASH"),
                                        std::pair("cmdBPFindAC", "CITY"), std::pair("cmdBRFindAC", "CITY"),
                                        std::pair("cmdAppSub", "STUDENTS")}) {
        tabTo(button);
        key(Qt::Key_Return);
        find(title);
    }
    shot(frame(), "voucher-setup");
    const auto boxes = textsOf([] { key(Qt::Key_S, Qt::AltModifier); }, {QMessageBox::Ok});
    std::printf("    %s\n", qPrintable(boxes.join(" | ")));
    key(Qt::Key_X, Qt::AltModifier);
}

} // namespace zel::tour
