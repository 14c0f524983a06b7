// What a carry forward writes: its header, its lines, and a credit for each line with an amount. Each
// statement stands by itself.

#include "institute/frmCarryForward.h"

#include "platform/base/number_text.h"
#include "platform/controls/msg_box.h"
#include "shell/module1.h"
#include "shell/status_words.h"

#include "ui_frmCarryForward.h"

using namespace zel::shell;

namespace zel::institute {

namespace {

/// The columns of the grid that are stored.
enum Column { SubjectID = 0, Narration = 3, ForwardAmount = 5, SessionID = 6 };

} // namespace

void frmCarryForward::cmdSave_Click() {
    if (ui->txtStudent->text().isEmpty()) {
        refuse("please select Student", ui->cmdFindApplication);
        return;
    }
    if (m_lines->isEmpty()) {
        refuse("please enter at least one subject in detail", ui->cmdFindsubject);
        return;
    }
    writeHeader();
    writeLines();
    CreateCFJV();
    FillGrid();
    IsNewForm = false;
    say(shownName() + " saved");
    setUnderWay(*this, "correcting " + shownName().toLower());
}

void frmCarryForward::writeHeader() {
    if (IsNewForm) {
        NewNo();
        OpenRs("select * from tblMasCarryForw Where 0=1");
        gRs.AddNew();
    } else {
        OpenRs("select * from tblMasCarryForw Where FormID = "_sql + ui->txtFormID->text());
        gRs.MoveFirst();
    }
    gRs.Fields("FormID") = ui->txtFormID->text();
    gRs.Fields("FormDate") = ui->dtpForm->Value();
    gRs.Fields("AppID") = ui->txtStudent->text();
    gRs.Update();
}

void frmCarryForward::writeLines() {
    gCon.Execute("Delete From tblDetCarryForw Where FormID = "_sql + ui->txtFormID->text());
    OpenRs("select * from tblDetCarryForw where 0=1");
    for (int row = 1; row < m_lines->grid().Rows(); ++row) {
        const auto cell = [&](Column column) { return m_lines->grid().TextMatrix(row, column); };
        if (cell(SubjectID).isEmpty())
            continue;
        const Decimal amount = leadingNumber(cell(ForwardAmount));
        gRs.AddNew();
        gRs.Fields("FormID") = ui->txtFormID->text();
        gRs.Fields("FormDate") = ui->dtpForm->Value();
        gRs.Fields("AppID") = ui->txtStudent->text();
        gRs.Fields("SubjectID") = cell(SubjectID);
        gRs.Fields("SessionID") = cell(SessionID);
        gRs.Fields("PreSessionID") = ui->cboMasSession->BoundText();
        gRs.Fields("ForAmt") = amount == Decimal() ? Value(Null()) : Value(amount);
        gRs.Fields("Naration") = cell(Narration).isEmpty() ? Value(Null()) : Value(cell(Narration));
        gRs.Update();
    }
}

void frmCarryForward::CreateCFJV() {
    gCon.Execute("Delete From DetJV Where VouNo = "_sql + ui->txtFormID->text() + " And VouStatus = 'CF'");
    OpenRs("Select * from DetJv Where 0=1");
    for (int row = 1; row < m_lines->grid().Rows(); ++row) {
        const auto cell = [&](Column column) { return m_lines->grid().TextMatrix(row, column); };
        const Decimal amount = leadingNumber(cell(ForwardAmount));
        if (amount <= Decimal())
            continue;
        gRs.AddNew();
        gRs.Fields("VouNo") = ui->txtFormID->text();
        gRs.Fields("VouStatus") = "CF";
        gRs.Fields("VouDate") = ui->dtpForm->Value();
        gRs.Fields("SubID") = cell(SubjectID);
        gRs.Fields("SessionID") = cell(SessionID);
        gRs.Fields("AcCode") = ui->txtStuNm->Tag();
        gRs.Fields("CrAc") = CashAc;
        gRs.Fields("EntryNo") = row;
        gRs.Fields("DRAmt") = 0;
        gRs.Fields("CRAmt") = amount;
        // Its number alone, 0 for a text that begins with none.
        gRs.Fields("Naration") = leadingDouble(cell(Narration));
        gRs.Update();
    }
}

void frmCarryForward::cmdDelete_Click() {
    if (ui->txtStudent->text().isEmpty() ||
        controls::MsgBox("are you sure delete", controls::vbYesNo + controls::vbInformation) !=
            controls::vbYes)
        return;
    const QString number = ui->txtFormID->text();
    gCon.Execute("Delete From DetJV Where VouNo = "_sql + number + " And VouStatus = 'CF'");
    gCon.Execute("Delete From tblDetCarryForw Where FormID = "_sql + number);
    gCon.Execute("Delete From tblMasCarryForw Where FormID = "_sql + number);
    say(shownName() + " deleted");
    ClearAll();
    FillGrid();
}

} // namespace zel::institute
