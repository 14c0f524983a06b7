#include "shell/key_sheet.h"
#include "shell/module1.h"
#include "tests/support/driver.h"
#include "tools/tour/hands.h"
#include "tools/tour/stations.h"

#include <QApplication>
#include <QFile>
#include <QPrinter>
#include <QTemporaryDir>
#include <QTimer>

namespace zel::tour {

using namespace zel::test;

namespace {

/// From the search page of the screen, the first of its list.
void openFirst(QWidget *screen, const char *tabs) {
    turnTo(screen, tabs, 1);
    tabTo("Msh");
    key(Qt::Key_Home, Qt::ControlModifier);
    key(Qt::Key_Return);
}

void logInAgain(const QString &user, const QString &password) {
    key(Qt::Key_X, Qt::AltModifier);
    logIn(user, password);
}

void nameServer(const QString &folder) {
    QFile file(shell::applicationPath() + "/Server.txt");
    if (!file.open(QIODevice::WriteOnly) || file.write(folder.toUtf8()) < 0)
        qFatal("Server.txt can't be written");
}

} // namespace

void keepCompany() {
    key(Qt::Key_X, Qt::AltModifier); // the chart of accounts, which stood since it was built
    QWidget *screen = openByMenu("mnuCompany", "frmCompany");
    openFirst(screen, "SSTab");
    retype("City College of Accountancy");
    key(Qt::Key_Return);
    fill({{"txtTel", "042-5550100, 042-5550101"}, {"txtFax", "042 5550102"}});
    for (const auto &[box, typed] : {std::pair("txtAddr", "45 Mall Road, Lahore"),
                                     {"txtEmail", "office@citycollege.example"},
                                     {"txtWebSite", "www.citycollege.example"},
                                     {"mskTax", "1234567890123"},
                                     {"mskNTN", "12345678"}}) {
        tabTo(box);
        type(typed);
    }
    shot(frame(), "company");
    key(Qt::Key_F9);
    turnTo(screen, "SSTab", 1);
    shot(frame(), "companies-list");
    key(Qt::Key_X, Qt::AltModifier);
    mustShow(frame(), "lblCompany", "City College of Accountancy");
    shot(frame(), "main-window-company");
}

void keepDirectory() {
    QWidget *screen = openByMenu("mnu_TelDir", "frm_Tele_Directory");
    fill({{"txtCName", "imran malik"},
          {"txtComName", "punjab stationers"},
          {"txtConPerson", "sara malik"},
          {"txtTeleNo", "042-5550177"},
          {"txtMobNo", "0300-5550177"},
          {"txtFaxNo"},
          {"txtEmail", "orders@stationers.example"},
          {"txtWebsite", "www.stationers.example"}});
    tabTo("txtCity");
    fill({{"txtCity", "lahore"}});
    tabTo("txtAdd");
    type("7 urdu bazar");
    shot(frame(), "directory-entry");
    key(Qt::Key_F9);
    turnTo(screen, "SSTab1", 1);
    shot(frame(), "directory-list");
    tabTo("cmdPrint");
    key(Qt::Key_Return);
    mustPrint(exportPage("directory-printed"),
              {"City College", "IMRAN MALIK", "042-5550177", "7 URDU BAZAR, LAHORE"});
    key(Qt::Key_X, Qt::AltModifier);
}

void addUser() {
    QWidget *screen = openByMenu("mnuAddUser", "Frm_User");
    fill({{"txt_User_Nm", "farah"}, {"txt_Desig", "accounts clerk"}, {"txt_User_pass", "lilac7"}});
    tabTo("Opt_Admin");
    key(Qt::Key_Down);
    key(Qt::Key_Space);
    shot(frame(), "user");
    key(Qt::Key_F9);
    turnTo(screen, "SSTab1", 1);
    shot(frame(), "users-list");
    key(Qt::Key_X, Qt::AltModifier);
    logInAgain("FARAH", "LILAC7");
    mustShow(frame(), "lblTitle", "Login :   FARAH");
    shot(frame(), "main-window-user");
}

void removeFromCopy() {
    const QString books = shell::gCon.property("Data Source");
    const QTemporaryDir copy;
    for (const char *file : {"/ZEL.db", "/ZEL.db-wal"})
        if (!QFile::copy(books + file, copy.path() + file))
            qFatal("%s can't be copied", file);
    nameServer(copy.path());
    logInAgain("sa", {});
    openByMenu("mnuRemoveData", "frmLocPass");
    type("ZEL");
    key(Qt::Key_Return);
    fill({{"DTPicker1", "01012000"}, {"DTPicker2"}});
    tabTo("cmdJournalvoucher");
    shot(frame(), "remove-data");
    textsOf([] { key(Qt::Key_Return); }, {QMessageBox::Yes});
    shell::OpenRs("Select * From MasJV");
    if (shell::gRs.RecordCount() > 0)
        qFatal("vouchers are left");
    key(Qt::Key_W, Qt::ControlModifier);
    openByMenu("mnuBPVouc", "frmBP");
    turnTo(form("frmBP"), "SSTab1", 1);
    shot(frame(), "removed-vouchers");
    key(Qt::Key_X, Qt::AltModifier);
    nameServer(books);
    logInAgain("sa", {});
}

void showKeys() {
    openByMenu("mnuBPVouc", "frmBP");
    QTimer::singleShot(0, [] {
        auto *sheet = qobject_cast<shell::KeySheet *>(QApplication::activeModalWidget());
        if (!sheet)
            qFatal("F1 shows no keys");
        shot(sheet, "keys");
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFileName(pdfName("keys"));
        if (!sheet->print(printer))
            qFatal("the keys can't be printed");
        key(Qt::Key_Escape);
    });
    key(Qt::Key_F1);
    frame()->activateWindow();
    settle();
    key(Qt::Key_X, Qt::AltModifier);
}

} // namespace zel::tour
