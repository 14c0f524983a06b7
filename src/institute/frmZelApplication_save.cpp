// What a save writes of the application itself; the student's account stands in
// frmZelApplication_posting.cpp.

#include "institute/frmZelApplication.h"

#include "platform/base/number_text.h"
#include "platform/controls/focus.h"
#include "platform/controls/msg_box.h"
#include "shell/entry_screen.h"
#include "shell/module1.h"
#include "shell/status_words.h"

#include "ui_frmZelApplication.h"

using namespace zel::shell;

namespace zel::institute {

using controls::SetFocus;

namespace {

/// What a blank cell of a line is written as.
enum class Blank { Stays, Zero, Null };

struct LineField {
    const char *column;
    int cell;
    Blank blank;
};
constexpr LineField LineFields[] = {
    {"SubID", 0, Blank::Stays},    {"SubAmt", 3, Blank::Null},    {"Discount", 4, Blank::Zero},
    {"Nerration", 5, Blank::Null}, {"NetAmount", 6, Blank::Null}, {"RecAmount", 7, Blank::Null},
};
constexpr int InActive = 8;

Value written(const QString &cell, Blank blank) {
    if (!cell.isEmpty() || blank == Blank::Stays)
        return cell;
    return blank == Blank::Zero ? Value(0) : Value(Null());
}

} // namespace

bool frmZelApplication::mayBeSaved() {
    const auto refuse = [](const char *message, QWidget *box = nullptr) {
        controls::MsgBox(message, controls::vbInformation);
        if (box)
            SetFocus(box);
        return false;
    };
    if (ParentNodes.isEmpty())
        return refuse("please set SubControl Account in Voucher Setup ");
    if (ui->txtStuNm->text().isEmpty())
        return refuse("Please enter Student Name", ui->txtStuNm);
    if (ui->txtCellNo->text().isEmpty())
        return refuse("Please enter Cell No", ui->txtCellNo);
    if (CashAc == 0 && leadingNumber(ui->txtReceive->text()) > Decimal())
        return refuse("please select Account In Vouchere Setup");
    if (!nameIsFree())
        return refuse("this Student is already exitis!", ui->txtStuNm);
    if (m_lines->isEmpty())
        return refuse("Please enter subject in detail", ui->cmdFindsubject);
    return true;
}

bool frmZelApplication::nameIsFree() const {
    const QString name = nameWithoutBlanks();
    if (!ui->txtAppId->text().isEmpty() && name == QString(OldStuName).remove(' '))
        return true;
    OpenRsForOne("select AcName from Accounts Where replace(acname ,' ', '') = '"_sql + name +
                 "' and ParentID = '" + ParentNodes.trimmed() + "'");
    return gRs.RecordCount() < 1;
}

QString frmZelApplication::nameWithoutBlanks() const {
    return ui->txtStuNm->text().remove(' ');
}

void frmZelApplication::cmdSave_Click() {
    if (!mayBeSaved())
        return;
    writeHeader();
    writeLines();
    CreateSubsidiaryAccount();
    say("Application " + ui->txtAppId->text() + " saved, " +
        shownAmount(leadingNumber(ui->txtTotAmount->text())));
    FillGrid();
    SetFocus(ui->txtStuNm);
}

void frmZelApplication::writeHeader() {
    IsNewApp = ui->txtAppId->text().isEmpty();
    if (IsNewApp) {
        OpenRs("Select isnull(max(AppID),0) +1 as AppID From tblMasApp");
        ui->txtAppId->setText(gRs.Fields("AppID").text());
        OpenRs("Select  *  From tblMasApp Where 0=1 ");
        gRs.AddNew();
        gRs.Fields("User_Name") = gUserName;
    } else {
        OpenRs("Select  *  From tblMasApp Where AppID =  "_sql + ui->txtAppId->text());
        if (gRs.RecordCount() > 0)
            gRs.MoveFirst();
    }
    saveTagged(*this, gRs);
    gRs.Fields("SessionID") = ui->cboSession->BoundText();
    gRs.Fields("StuName") = ui->txtStuNm->text();
    gRs.Fields("AppDate") = ui->dtpDate->Value();
    gRs.Fields("FixDate") = ui->DtpFix->Value();
    gRs.Fields("NIC") = ui->mskNIC->text();
    gRs.Fields("CashReceive") = leadingNumber(ui->txtReceive->text()); // txtBalance names it, too
    gRs.Fields("SectionAtoZ") = ui->cmbAtoZ->Text();
    gRs.Update();
}

void frmZelApplication::writeLines() {
    const QString number = ui->txtAppId->text();
    gCon.Execute("Delete From tblDetApp where AppID = "_sql + number);
    OpenRs("select * from tblDetApp where 0=1");
    const controls::Grid &grid = m_lines->grid();
    for (int row = 1; row < grid.Rows(); ++row) {
        gRs.AddNew();
        gRs.Fields("AppID") = number;
        for (const LineField &field : LineFields)
            gRs.Fields(field.column) = written(grid.TextMatrix(row, field.cell), field.blank);
        const QString inactive = grid.TextMatrix(row, InActive);
        gRs.Fields("InActive") = inactive.isEmpty() || inactive == "0" ? Value(Null()) : Value(inactive);
        gRs.Update();
    }
}

} // namespace zel::institute
