// What an application is to the ledger: the student's account, whose opening balance is the debt, and the
// receipt of the money taken, a journal of two lines of kind AR with the account's number and no header.
// Each statement stands by itself, in the order that the ledger's content depends on.

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

void frmZelApplication::FixAccount() {
    OpenRs("Select VouNo,AcCode,AcParentID=(Select AcNodes From Accounts Where AcStatus='HD' and "
           "RowId=AcCode) From VouSetting Where VouStatus ='IR'");
    if (gRs.RecordCount() > 0)
        ParentNodes = gRs.Fields("AcParentID").text();
    OpenRs("Select VouNo,AcCode From VouSetting Where VouStatus ='CR'");
    if (gRs.RecordCount() > 0)
        CashAc = gRs.Fields("AcCode").value().integer();
}

void frmZelApplication::CreateSubsidiaryAccount() {
    const QString opened = ui->txtStuNm->Tag();
    writeAccount();
    QString created = "0";
    if (IsNewApp) {
        created = accountOfName();
        if (created != "0") {
            OpenRs1("Select CusCode From tblMasApp Where AppID = "_sql + ui->txtAppId->text());
            if (gRs1.RecordCount() > 0) {
                gRs1.Fields("CusCode") = created;
                gRs1.Update();
            }
        }
    }
    // The account opened last, though the application be a new one: its receipt goes, the new one's comes.
    gCon.Execute("Delete From Detjv Where Vouno = "_sql + (opened == "M" ? created : opened));
    if (leadingNumber(ui->txtReceive->text()) > Decimal())
        writeReceipt(IsNewApp ? created : opened);
}

void frmZelApplication::writeAccount() {
    const Decimal total = leadingNumber(ui->txtTotAmount->text());
    if (IsNewApp) {
        const QString parent = ParentNodes.trimmed();
        OpenRs("Select isnull(max(dcode),0)+1 as Dcode from  accounts where rtrim(parentid)='"_sql + parent +
               "'");
        const QString number = gRs.Fields("Dcode").text();
        OpenRs("Select * From Accounts Where 0=1");
        gRs.AddNew();
        gRs.Fields("ParentID") = parent;
        gRs.Fields("Dcode") = number;
        gRs.Fields("AcNodes") = parent + "." + number;
        gRs.Fields("AcStatus") = "DD";
    } else {
        OpenRs("Select * From Accounts Where RowID = "_sql + ui->txtStuNm->Tag());
        if (gRs.RecordCount() > 0)
            gRs.MoveFirst();
    }
    gRs.Fields("AcName") = ui->txtStuNm->text();
    gRs.Fields("Addr") = ui->txtMailAdd->text();
    gRs.Fields("Contact") = ui->txtConRes->text();
    gRs.Fields("OpenBal") = total;
    gRs.Update();
}

QString frmZelApplication::accountOfName() const {
    OpenRsForOne("Select RowID From Accounts where replace(acname,' ' , '') = '"_sql + nameWithoutBlanks() +
                 "'");
    return gRs.RecordCount() > 0 ? gRs.Fields("RowID").text() : QString("0");
}

void frmZelApplication::writeReceipt(const QString &student) {
    struct Line {
        int number;
        Value account;
        Value contra;
        Decimal debit;
        Decimal credit;
        QString narration;
    };
    const Decimal taken = leadingNumber(ui->txtReceive->text());
    const Line lines[] = {
        {1, CashAc, student, taken, {}, "App. Rec Amount (" + ui->txtStuNm->text() + ")"},
        {2, student, CashAc, {}, taken, "App. Rec Amount "},
    };
    OpenRs2ForAdding("Select * from detjv");
    for (const Line &line : lines) {
        gRs2.AddNew();
        gRs2.Fields("VouNo") = student;
        gRs2.Fields("VouStatus") = "AR";
        gRs2.Fields("VouDate") = ui->DtpFix->Value();
        gRs2.Fields("EntryNo") = line.number;
        gRs2.Fields("AcCode") = line.account;
        gRs2.Fields("DRAmt") = line.debit;
        gRs2.Fields("CRAmt") = line.credit;
        gRs2.Fields("Naration") = line.narration;
        gRs2.Fields("CrAc") = line.contra;
        gRs2.Update();
    }
}

void frmZelApplication::cmdDelete_Click() {
    const QString number = ui->txtAppId->text();
    if (!number.isEmpty() && !accountIsUnused())
        return;
    if (!number.isEmpty() &&
        controls::MsgBox("Are you sure Delete this Application",
                         controls::vbYesNo + controls::vbInformation) == controls::vbYes) {
        gCon.Execute("Delete From tblDetApp where AppId="_sql + number);
        gCon.Execute("Delete From tblMasApp where AppId="_sql + number);
        gCon.Execute("Delete From Accounts Where RowId = "_sql + ui->txtStuNm->Tag());
        say("Application " + number + " deleted");
        ClearAll();
        controls::SetFocus(ui->txtStuNm);
    }
    FillGrid();
}

bool frmZelApplication::accountIsUnused() {
    OpenRsForOne("select AcCode From detjv where AcCode = "_sql + ui->txtStuNm->Tag() +
                 " And VouStatus <> 'AR'");
    if (gRs.RecordCount() < 1)
        return true;
    controls::MsgBox("this Account use in vouceher detail", controls::vbInformation);
    return false;
}

} // namespace zel::institute
