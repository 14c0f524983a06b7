// The run buttons; the screen and its selectors stand in frmRPTAccounts.cpp.

#include "platform/base/value.h"
#include "platform/controls/focus.h"
#include "platform/controls/msg_box.h"
#include "platform/report/report.h"
#include "reports/frmRPTAccounts.h"
#include "shell/module1.h"

#include "ui_frmRPTAccounts.h"

using namespace zel::shell;

namespace zel::reports {

using controls::Button;
using controls::MsgBox;
using controls::vbInformation;

namespace {

ReportSettings::Formula quoted(const char *name, const QString &text) {
    return {name, "\""_sql + text + "\""};
}

} // namespace

void frmRPTAccounts::connectButtons() {
    const std::pair<Button *, void (frmRPTAccounts::*)()> clicks[] = {
        {ui->cmdFindAC, &frmRPTAccounts::cmdFindAC_Click},
        {ui->cmdCashBook, &frmRPTAccounts::cmdCashBook_Click},
        {ui->cmdBankBook, &frmRPTAccounts::cmdBankBook_Click},
        {ui->cmdLedger, &frmRPTAccounts::cmdLedger_Click},
        {ui->cmdDetLedger, &frmRPTAccounts::cmdDetLedger_Click},
        {ui->cmdTrialBal, &frmRPTAccounts::cmdTrialBal_Click},
        {ui->cmdTrialControl, &frmRPTAccounts::cmdTrialControl_Click},
        {ui->cmdTrialOpening, &frmRPTAccounts::cmdTrialOpening_Click},
        {ui->cmdFeeDetail, &frmRPTAccounts::cmdFeeDetail_Click},
        {ui->cmdStuFeeDet, &frmRPTAccounts::cmdStuFeeDet_Click},
        {ui->cmdInActiveStuFeeDet, &frmRPTAccounts::cmdInActiveStuFeeDet_Click},
    };
    for (const auto &[button, click] : clicks)
        connect(button, &Button::clicked, this, click);
}

QString frmRPTAccounts::D1() const {
    return ui->DTPicker1->Value().toString("yyyy-MM-dd");
}

QString frmRPTAccounts::D2() const {
    return ui->DTPicker2->Value().toString("yyyy-MM-dd");
}

ReportSettings::Formula frmRPTAccounts::Dates(Literal to) const {
    return {"Dates", "\"From :  "_sql + Value(ui->DTPicker1->Value()).text() + to +
                         Value(ui->DTPicker2->Value()).text() + "\""};
}

bool frmRPTAccounts::accountIsChosen() {
    if (!ui->txtAcName->Tag().isEmpty())
        return true;
    MsgBox("please select Account", vbInformation);
    controls::SetFocus(ui->cmdFindAC);
    return false;
}

std::int64_t frmRPTAccounts::cashAccount() {
    OpenRs("Select AcCode From VouSetting Where VouStatus='CP'");
    if (gRs.RecordCount() > 0)
        gRs.MoveFirst();
    const std::int64_t code = gRs.atEnd() ? 0 : gRs.Fields("AcCode").value().integer();
    if (code == 0)
        MsgBox("Cash Book Account not found!", vbInformation);
    return code;
}

void frmRPTAccounts::cmdCashBook_Click() {
    if (const std::int64_t code = cashAccount())
        showBook(Sql() + code);
}

/// Asks for the account of cash payments too, and does nothing with it.
void frmRPTAccounts::cmdBankBook_Click() {
    if (accountIsChosen() && cashAccount() != 0)
        showBook(Sql() + ui->txtAcName->Tag());
}

void frmRPTAccounts::showBook(const Sql &account) {
    m_report.OpenReport("rptAcLedger3.rpt");
    ReportSettings settings;
    settings.selection = "{Company.comActive}='Y' and {DetJV.CrAc} = "_sql + account +
                         " and {DetJV.VouDate} in #" + D1() + "# to #" + D2() + "#";
    settings.formulas = {Dates("  To :  ")};
    settings.subReports = {
        {"rptSubAc", "{Accounts.RowID} = "_sql + account},
        {"rptSubOpening", "{DetJV.AcCode} = "_sql + account + " and {DetJV.VouDate} < #" + D1() + "#"},
        {"rptSubAcOpen", "{Accounts.RowID}  = "_sql + account}};
    m_report.prepare(settings);
    m_report.view();
}

void frmRPTAccounts::cmdLedger_Click() {
    if (accountIsChosen())
        showLedger("exec AcLedger "_sql + ui->txtAcName->Tag() + ",'" + D1() + "','" + D2() + "'");
}

void frmRPTAccounts::cmdDetLedger_Click() {
    if (!accountIsChosen())
        return;
    Sql exec = "exec DetailAcLedger "_sql + ui->txtAcName->Tag();
    for (const QDate date : {ui->DTPicker1->Value(), ui->DTPicker2->Value()})
        exec += ","_sql + date.day() + "," + date.month() + "," + date.year();
    showLedger(exec);
}

void frmRPTAccounts::showLedger(const Sql &exec) {
    m_report.OpenReport("rptAcLedger.rpt");
    fill(exec);
    ReportSettings settings;
    settings.formulas = {Dates("  To :  ")};
    settings.subReports = {{"rptSubAC", "{Accounts.RowID} = "_sql + ui->txtAcName->Tag()}};
    m_report.prepare(settings);
    m_report.view();
}

void frmRPTAccounts::fill(const Sql &exec) {
    gCon.Execute(exec);
    refill(exec);
}

void frmRPTAccounts::refill(const Sql &exec) {
    m_report.report().setRefill([exec] { gCon.Execute(exec); });
}

void frmRPTAccounts::cmdTrialBal_Click() {
    showTrialBalance("rptTrialBalance.rpt", "exec TrialBalance '");
}

void frmRPTAccounts::cmdTrialControl_Click() {
    showTrialBalance("rptTrialBalance2.rpt", "exec TrialBalance '");
}

void frmRPTAccounts::cmdTrialOpening_Click() {
    showTrialBalance("rptTrialBalance3.rpt", "exec TrialBalance3 '");
}

void frmRPTAccounts::showTrialBalance(const char *file, const Sql &procedure) {
    m_report.OpenReport(file);
    fill(procedure + D1() + "','" + D2() + "'");
    ReportSettings settings;
    settings.prompting = false;
    settings.selection = "{Company.comActive} = 'Y'"_sql;
    settings.formulas = {Dates("   To :  ")};
    m_report.prepare(settings);
    m_report.view();
}

std::vector<ReportSettings::Formula> frmRPTAccounts::batchAndUser() const {
    return {quoted("Batch", ui->cboSession->Text()), quoted("UserName", gUserName)};
}

void frmRPTAccounts::cmdFeeDetail_Click() {
    m_report.OpenReport("rptFeeDetail.rpt");
    ReportSettings settings;
    settings.parameters = {Value(ui->cboSession->BoundText()).integer()};
    settings.prompting = false;
    settings.formulas = batchAndUser();
    settings.formulas.insert(settings.formulas.begin(), Dates("  To :  "));
    m_report.prepare(settings);
    m_report.view();
}

/// The files by what is chosen, and which of the work table's rows they show.
struct frmRPTAccounts::StudentReport {
    const char *all;
    const char *ofCourse;
    const char *ofSubject;
    Sql selection;
};

void frmRPTAccounts::cmdStuFeeDet_Click() {
    showStudents({"rptActStudentWiseDetail.rpt", "rptActStudentWiseCourse.rpt",
                  "rptActStudentWiseSubject.rpt", "IsNull({rptStudentDetail.inactive})"});
}

void frmRPTAccounts::cmdInActiveStuFeeDet_Click() {
    showStudents({"rptStudentWiseDetail.rpt", "rptStudentWiseCourse.rpt", "rptStudentWiseSubject.rpt",
                  "{rptStudentDetail.inactive} = '1'"});
}

void frmRPTAccounts::showStudents(const StudentReport &report) {
    const bool course = !ui->DtaCourse->Text().isEmpty();
    const bool subject = course && !ui->DtaSubject->Text().isEmpty();
    Sql exec = "exec CreatStuWiseDet "_sql + ui->cboSession->BoundText();
    if (!course)
        exec += ",0,0 "_sql;
    else if (!subject)
        exec += ", "_sql + ui->DtaCourse->BoundText() + ", 0";
    else
        exec += ", "_sql + ui->DtaCourse->BoundText() + ", " + ui->DtaSubject->BoundText();
    gCon.Execute(exec);
    m_report.OpenReport(subject ? report.ofSubject : course ? report.ofCourse : report.all);
    refill(exec);
    ReportSettings settings;
    settings.selection = report.selection;
    if (course)
        settings.formulas.push_back(quoted("Course", ui->DtaCourse->Text()));
    if (subject)
        settings.formulas.push_back(quoted("Subject", ui->DtaSubject->Text()));
    for (ReportSettings::Formula &formula : batchAndUser())
        settings.formulas.push_back(std::move(formula));
    m_report.prepare(settings);
    m_report.view();
}

} // namespace zel::reports
