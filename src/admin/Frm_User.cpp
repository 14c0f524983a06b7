#include "admin/Frm_User.h"

#include "platform/base/error.h"
#include "platform/controls/focus.h"
#include "platform/controls/msg_box.h"
#include "shell/module1.h"
#include "ui_Frm_User.h"

using namespace zel::shell;

namespace zel::admin {

namespace {

const Sql Users = "select Row_No,User_Code,User_Name,Designation,PassWard,Status from User_Information";

const MasterTable &users() {
    static const MasterTable table{
        .noun = "User",
        .tag = "D",
        .keyColumn = "Row_No",
        .keyBox = "txt_Row_No",
        .firstBox = "txt_User_Nm",
        .notSaved = {"txt_User_Code", "txt_User_Nm"},
        .required = {{"txt_User_Nm", "Please enter User Name"}},
        .nextNumber = "select isnull(max(Row_No),0)+1 as Row_no from User_Information",
        .none = "select * from User_Information where 0 = 1",
        .byKey = "select * from User_Information where Row_No =",
        .remove = "Delete From User_Information Where Row_No = ",
        .search =
            {
                .criteria = {{"User Name", Users + " where User_Name like '%", "%' order by User_Code desc"},
                             {"Designation", Users + " where Designation like '%",
                              "%' order by User_Code desc"}},
                .all = Users + " order by User_Code desc",
                .columns = {{"Code", 900},
                            {"User No", 1200},
                            {"User Name", 3000},
                            {"Designation", 3000},
                            {"PassWard", 2000},
                            {"Status", 900}},
                .criterionSearches = true,
            },
        .choice = Choice::FromRecord,
        .limit = TypingLimit::Precision,
        .closesForFinder = false,
        .report = {"Wrd_Report/rpt_User_Name.rpt", "{User_Information.Row_No} = "},
    };
    return table;
}

} // namespace

Frm_User::Frm_User() : MasterScreen(users()), ui(std::make_unique<Ui::Frm_User>()) {
    ui->setupUi(this);
    connectControls();
}

Frm_User::~Frm_User() = default;

/// Leaves the menu and the main window's panel as they are.
void Frm_User::Form_Unload() {
    gFinderOpen = false;
}

void Frm_User::cmdExit_Click() {
    if (gFinderOpen)
        Hide();
    else
        MasterScreen::cmdExit_Click();
}

void Frm_User::FillData() {
    MasterScreen::FillData();
    if (gRs.RecordCount() < 1)
        return;
    const QString status = gRs.Fields("Status").text();
    if (status == "U")
        ui->Opt_User->setChecked(true);
    else if (status == "A")
        ui->Opt_Admin->setChecked(true);
}

void Frm_User::showRow(int row) {
    OldPass = Msh().TextMatrix(row, 4);
}

/// A name that is taken is asked for only after a save that made a user; else the server refuses it.
bool Frm_User::beginSave() {
    OpenRsForOne("Select User_Name From User_Information Where Replace(User_Name,' ' ,'') = '"_sql +
                 ui->txt_User_Nm->text().remove(' ') + "'");
    if (gRs.RecordCount() < 1 || !IsNewUser)
        return true;
    controls::MsgBox("User Name Is already exitis! ", controls::vbInformation);
    controls::SetFocus(ui->txt_User_Nm);
    return false;
}

void Frm_User::rowOpened(bool isNew) {
    IsNewUser = isNew;
    if (isNew)
        addLogin();
    else if (ui->txt_User_pass->text() != OldPass)
        changePassword();
}

/// Three statements that stand by themselves: what ran stays.
void Frm_User::addLogin() {
    const QString name = ui->txt_User_Nm->text();
    gCon.Execute("sp_addlogin '"_sql + name + "','" + secret(ui->txt_User_pass->text()) + "','Ward_System'");
    gCon.Execute("sp_adduser '"_sql + name + "'");
    gCon.Execute("Sp_AddSrvroleMember '"_sql + name + "','sysadmin'");
    gRs.Fields("User_Code") = "UC-" + ui->txt_Row_No->text();
    gRs.Fields("User_Name") = name;
}

void Frm_User::changePassword() {
    gCon.Execute("sp_password "_sql + secret(OldPass) + ",'" + secret(ui->txt_User_pass->text()) + "','" +
                 ui->txt_User_Nm->text() + "'");
}

void Frm_User::writeFields() {
    if (ui->Opt_User->isChecked())
        gRs.Fields("Status") = "U";
    else if (ui->Opt_Admin->isChecked())
        gRs.Fields("Status") = "A";
}

/// The report is made ready for a viewer that this screen has not: the print ends the program.
void Frm_User::cmdPrint_Click() {
    prepareReport();
    throw Error(errors::ObjectNotSet, QString("Object variable or With block variable not set"));
}

} // namespace zel::admin
