// The main job of the program, done by the keyboard alone on a fresh catalog, with a numbered picture of each
// station and the printed pages as PDF: zel_tour FOLDER.
#include "menu_screens.h"

#include "accounts/frmAccount.h"
#include "platform/controls/application.h"
#include "platform/report/paint.h"
#include "platform/report/viewer/cr_viewer.h"
#include "shell/module1.h"
#include "shell/screens.h"
#include "tests/support/driver.h"
#include "tests/support/office.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTreeWidget>

#include <cstdio>

using namespace zel;
using namespace zel::test;

namespace {

QString folder;
int station = 0;

QString numbered(const QString &name, const char *ending) {
    return QStringLiteral("%1/%2-%3.%4")
        .arg(folder)
        .arg(station, 2, 10, QChar(u'0'))
        .arg(name, QString(ending));
}

void shot(QWidget *widget, const QString &name) {
    settle();
    ++station;
    const QString file = numbered(name, "png");
    if (!widget->grab().save(file))
        qFatal("%s can't be written", qPrintable(file));
    std::printf("%s\n", qPrintable(QFileInfo(file).fileName()));
}

QWidget *frame() {
    return form("MDIForm1");
}

/// Tab, as a clerk presses it, until the control has the focus.
void tabTo(const QString &name) {
    for (int i = 0; i < 120; ++i) {
        if (focused() == name)
            return;
        press(Qt::Key_Tab);
        settle();
    }
    qFatal("Tab does not reach %s; it stands on %s", qPrintable(name), qPrintable(focused()));
}

void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    press(key, modifiers);
    settle();
}

/// The account finder: the title's beginning, Down into the list, Enter.
void find(const QString &title) {
    if (activeForm() != "frmFindAC")
        qFatal("the finder did not come up; %s is active", qPrintable(activeForm()));
    tabTo("txtFindAC");
    type(title);
    key(Qt::Key_Down);
    key(Qt::Key_Return);
}

/// Over what stands in the box that has the focus; a box of several lines wants Ctrl for the whole of it.
void retype(const QString &text, Qt::KeyboardModifiers whole = Qt::NoModifier) {
    key(Qt::Key_Home, whole);
    key(Qt::Key_End, whole | Qt::ShiftModifier);
    type(text);
}

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

void child(QWidget *chart, const char *box, const QString &title, bool bank = false) {
    key(Qt::Key_N, Qt::AltModifier);
    account(box, title);
    if (bank != control(chart, "chkBank")->property("checked").toBool() &&
        QByteArray(box) == "txtSubsidiary") {
        tabTo("chkBank");
        key(Qt::Key_Space);
    }
    key(Qt::Key_S, Qt::AltModifier);
}

void buildChart() {
    QWidget *chart = openByMenu("mnuChartOfAC", "frmAccount");
    controlAccount(chart, "ASSETS");
    pick("ASSETS");
    child(chart, "txtSubControl", "CASH AND BANK");
    pick("CASH AND BANK");
    child(chart, "txtSubsidiary", "CASH IN HAND");
    pick("CASH AND BANK");
    child(chart, "txtSubsidiary", "CITY BANK", true);
    pick("ASSETS");
    controlAccount(chart, "EXPENSES");
    pick("EXPENSES");
    child(chart, "txtSubControl", "OFFICE");
    pick("OFFICE");
    child(chart, "txtSubsidiary", "RENT");
    pick("OFFICE");
    child(chart, "txtSubsidiary", "LIGHT BILL");
    shot(frame(), "chart-of-accounts");
    key(Qt::Key_P, Qt::AltModifier);
}

void exportPage(const QString &name) {
    QWidget *screen = form("frmVeiwer");
    if (!screen)
        qFatal("no viewer");
    auto *viewer = control<viewer::CRViewer91>(screen, "CRViewer91");
    if (viewer->property("pageCount").toInt() < 1)
        qFatal("the viewer has no page");
    shot(frame(), name);
    report::exportPdf(*viewer->ReportSource()->document(), numbered(name, "pdf"));
    std::printf("%s\n%s\n", qPrintable(QFileInfo(numbered(name, "pdf")).fileName()),
                qPrintable(viewer->property("plainText").toString()));
    screen->close();
    settle();
}

void setUpVouchers() {
    openByMenu("mnuVocSetting", "frmAcSetting");
    tabTo("cmdBPFindAC");
    key(Qt::Key_Return);
    find("CITY");
    tabTo("cmdCPFindAC");
    key(Qt::Key_Return);
    find("CASH");
    shot(frame(), "voucher-setup");
    const auto boxes = textsOf([] { key(Qt::Key_S, Qt::AltModifier); }, {QMessageBox::Ok});
    std::printf("    %s\n", qPrintable(boxes.join(" | ")));
    key(Qt::Key_X, Qt::AltModifier);
}

void line(const QString &account, const QString &amount, const QString &naration) {
    key(Qt::Key_F8);
    find(account);
    if (focused() != "txtDRCR")
        qFatal("the amount should have the focus, %s has it", qPrintable(focused()));
    type(amount);
    tabTo("txtNaration");
    retype(naration, Qt::ControlModifier);
    key(Qt::Key_A, Qt::AltModifier);
}

void bankPayment() {
    QWidget *voucher = openByMenu("mnuBPVouc", "frmBP");
    tabTo("txtPaidTo");
    type("CITY ESTATES LTD");
    line("RENT", "25000", "RENT OF NOVEMBER");
    line("LIGHT", "3480.50", "ELECTRICITY");
    shot(frame(), "bank-payment");
    key(Qt::Key_F9);
    std::printf("    saved; the next number is %s\n", qPrintable(text(voucher, "txtVoucher")));

    turnTo(voucher, "SSTab1", 1);
    tabTo("txtSearch");
    type("1");
    shot(frame(), "search");
    key(Qt::Key_Down);
    key(Qt::Key_F2);
    if (text(voucher, "txtPaidTo") != "CITY ESTATES LTD")
        qFatal("the voucher did not open");

    // The second line was not 3480.50 but 3840.50.
    tabTo("MshEntry");
    key(Qt::Key_Home, Qt::ControlModifier);
    key(Qt::Key_Down);
    key(Qt::Key_F2);
    tabTo("txtDRCR");
    retype("3840.50");
    key(Qt::Key_A, Qt::AltModifier);
    shot(frame(), "corrected");
    key(Qt::Key_F9);

    turnTo(voucher, "SSTab1", 1);
    tabTo("mshSearch");
    key(Qt::Key_F2);
    key(Qt::Key_P, Qt::AltModifier);
    exportPage("voucher-printed");
    key(Qt::Key_X, Qt::AltModifier);
}

void session() {
    QWidget *screen = openByMenu("mnuSession", "frmSession");
    tabTo("txtSessionName");
    type("autumn 2026");
    key(Qt::Key_S, Qt::AltModifier);
    turnTo(screen, "SSTab1", 1);
    shot(frame(), "sessions");
}

} // namespace

int main(int argc, char *argv[]) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: zel_tour FOLDER\n");
        return 2;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    controls::Application application(argc, argv);
    folder = QDir(argv[1]).absolutePath();
    if (!QDir().mkpath(folder))
        qFatal("%s can't be made", qPrintable(folder));
    for (const QString &old : QDir(folder).entryList({"*.png", "*.pdf"}, QDir::Files))
        QFile::remove(folder + "/" + old);

    return application.run([] {
        shell::setScreens(menuScreens());
        Office office;
        for (const QString &report : QDir(QCoreApplication::applicationDirPath()).entryList({"*.rpt"}))
            QFile::copy(QCoreApplication::applicationDirPath() + "/" + report,
                        office.folder() + "/" + report);
        shell::Main();
        settle();
        shot(form("frmLogin"), "login");
        key(Qt::Key_Return);
        key(Qt::Key_Return);
        frame()->showNormal();
        frame()->resize(1280, 800);
        shot(frame(), "main-window");
        buildChart();
        exportPage("chart-printed");
        setUpVouchers();
        bankPayment();
        session();
        std::printf(
            "%s\n",
            qPrintable(
                office.rows("select VouNo,VouStatus,VouDate,PaidReceive,TotalAmount from MasJV").join('\n')));
        std::printf(
            "%s\n",
            qPrintable(office.rows("select EntryNo,AcCode,CrAc,DrAmt,CrAmt,Naration from DetJV").join('\n')));
        std::fflush(stdout);
        std::_Exit(0);
    });
}
