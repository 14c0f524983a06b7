#include "tools/tour/stations.h"

#include "tests/support/driver.h"
#include "tools/tour/hands.h"

#include <QWidget>

namespace zel::tour {

using namespace zel::test;

namespace {

constexpr Finder Subjects = {"frmSearchSub", "txtFind", "Msh", 2};
constexpr Finder Applications = {"frmFindApp", "txt_s_value", "Msh", 4};
constexpr const char *Student = "AYESHA SIDDIQUI";

void enterMasters(const char *menu, const char *form, const std::vector<std::vector<Typed>> &records,
                  const char *name) {
    QWidget *screen = openByMenu(menu, form);
    for (const auto &record : records) {
        if (&record != &records.front()) // where a screen opens
            tabTo(record.front().box);
        fill(record);
        if (&record == &records.back())
            shot(frame(), name);
        key(Qt::Key_F9);
    }
    turnTo(screen, "SSTab1", 1);
    shot(frame(), QString(name) + "-list");
    key(Qt::Key_X, Qt::AltModifier);
}

} // namespace

void enterMasterData() {
    enterMasters("mnuSession", "frmSession",
                 {{{"txtSessionName", "autumn 2026"}}, {{"txtSessionName", "spring 2027"}}}, "sessions");
    enterMasters("mnuCourse", "frmCourse",
                 {{{"txtCourseName", "diploma in accountancy"}, {"txtCourseDurr", "18"}}}, "courses");
    enterMasters("mnuSubject", "frmSubject",
                 {{{"txtSubName", "AUDITING"}, {"txtTotAmt", "45000"}},
                  {{"txtSubName", "TAXATION"}, {"txtTotAmt", "38500.50"}}},
                 "subjects");
}

void registerStudent() {
    QWidget *screen = openByMenu("mnuApp", "frmZelApplication");
    fill({{"dtpDate"},
          {"cmbAtoZ"},
          {"cboSession", "a"},
          {"txtICAPReg", "2026-0417"},
          {"txtStuNm", "ayesha siddiqui"},
          {"txtfathNm", "kamran siddiqui"},
          {"mskNIC", "3520212345671"},
          {"txtCellNo", "0300-5550123"},
          {"txtConRes", "042-5550188"},
          {"txtoff"},
          {"txtMailAdd", "12 garden road, lahore"},
          {"txtEmail"},
          {"txtLastEduQua", "b.com"},
          {"txtAuditFirm"},
          {"txtExamAtt", "first"},
          {"txtModules", "part 1"},
          {"txtRegfee", "2500"},
          {"cmdFindsubject"}});
    find("AUDIT", Subjects, "subject-finder");
    fill({{"txtDiscount", "5000"},
          {"txtNarration", "merit"},
          {"txtRecAmt", "15000"},
          {"cmd_ADD_1"},
          {"cmdFindsubject"}});
    find("TAX", Subjects);
    fill({{"txtDiscount"}, {"txtNarration"}, {"txtRecAmt"}});
    shot(frame(), "application-line");
    fill({{"cmd_ADD_1"}});
    mustShow(screen, "txtBalance", "63500.5");
    key(Qt::Key_F9);
    mustShow(screen, "txtAppId", "1");
    shot(frame(), "application");
    key(Qt::Key_P, Qt::AltModifier);
    mustPrint(exportPage("application-printed"), {Student, "AUDITING", "40,000.00", "63,500.50"});
    key(Qt::Key_X, Qt::AltModifier);
}

void receiveFee() {
    QWidget *screen = openByMenu("mnuRecvVou", "frmInsRec");
    key(Qt::Key_F7);
    find("AYESHA");
    mustShow(screen, "txtReceived", "15000");
    mustShow(screen, "txtRemaingAmt", "25000");
    fill({{"txtDRCR", "10000"}, {"txtNaration", "second instalment"}});
    shot(frame(), "fee-line");
    key(Qt::Key_A, Qt::AltModifier);
    shot(frame(), "fee-receipt");
    key(Qt::Key_F9);
    key(Qt::Key_F12);
    mustPrint(exportPage("slip-printed"), {Student, "AUDITING", "10,000.00"});
    turnTo(screen, "SSTab1", 1);
    shot(frame(), "fee-receipts-list");
    key(Qt::Key_X, Qt::AltModifier);
}

void carryForward() {
    QWidget *application = openByMenu("mnuApp", "frmZelApplication");
    turnTo(application, "SSTab1", 1);
    tabTo("txt_s_value");
    type("siddiqui");
    shot(frame(), "applications-list");
    key(Qt::Key_Down);
    key(Qt::Key_Return);
    mustShow(application, "txtStuNm", Student);
    tabTo("MshSubject");
    key(Qt::Key_Home, Qt::ControlModifier);
    key(Qt::Key_Down);
    key(Qt::Key_F2);
    tabTo("ChkInactive");
    key(Qt::Key_Space);
    key(Qt::Key_A, Qt::AltModifier);
    key(Qt::Key_F9);
    shot(frame(), "application-inactive");
    key(Qt::Key_X, Qt::AltModifier);

    QWidget *screen = openByMenu("mnuCarryFor", "frmCarryForward");
    fill({{"cmdFindApplication"}});
    key(Qt::Key_X, Qt::AltModifier); // leaves the finder alone
    fill({{"cmdFindApplication"}});
    find("AYESHA", Applications, "application-finder");
    mustShow(screen, "txtStuNm", Student);
    key(Qt::Key_F8);
    find("TAX", Subjects);
    fill({{"txtNarration", "ill in november"}, {"cboSession", "s"}, {"txtForAmt", "38500.50"}});
    textsOf([] { fill({{"cmd_ADD_1"}}); }, {QMessageBox::No}); // "Add more subject in detail"
    shot(frame(), "carry-forward");
    key(Qt::Key_F9);
    turnTo(screen, "SSTab1", 1);
    shot(frame(), "carry-forwards-list");
    key(Qt::Key_X, Qt::AltModifier);
}

} // namespace zel::tour
