#include "accounts/frmAccount.h"

#include "accounts/account_code.h"
#include "platform/base/error.h"
#include "platform/controls/focus.h"
#include "platform/controls/msg_box.h"
#include "shell/entry_screen.h"
#include "shell/module1.h"
#include "shell/status_words.h"

#include "ui_frmAccount.h"

using namespace zel::shell;

namespace zel::accounts {

void frmAccount::cmdCreateAc_Click() {
    if (ui->cmdCreateAc->text() == "&New")
        prepareEntry();
    else if (isSaveOffered() && !save())
        return;
    FillGrid();
}

void frmAccount::prepareEntry() {
    IsNew = true;
    offer("&Save");
    ClearAll();
    if (ui->chkHead->isChecked() || ui->lstTree->nodes().isEmpty()) {
        ui->txtAcDes->setEnabled(true);
        ui->txtOrder->setEnabled(true);
        controls::SetFocus(ui->txtAcDes);
    }
    if (ui->txtFindParent->text().isEmpty())
        return;
    OpenRs("Select acstatus,acname,parentid from accounts where rowid="_sql + ui->txtFindParent->text());
    if (gRs.RecordCount() < 1)
        return;
    gRs.MoveFirst();
    const QString status = gRs.Fields("acstatus").text();
    const QString title = gRs.Fields("acname").text();
    if (status == "HH" && ui->chkHead->isChecked()) {
        ui->txtAcDes->setEnabled(true);
        controls::SetFocus(ui->txtAcDes);
        ui->frmEntry->setVisible(false);
        ui->txtSubControl->setVisible(false);
        ui->lblSubControl->setVisible(false);
    } else if (status == "HH") {
        prepareSubControl(title);
    } else if (status == "HD") {
        prepareSubsidiary(title, gRs.Fields("parentid").text());
    }
}

void frmAccount::prepareSubControl(const QString &parentTitle) {
    ui->txtAcDes->setEnabled(false);
    ui->txtAcDes->setText(parentTitle);
    ui->txtSubControl->setVisible(true);
    ui->txtSubControl->setEnabled(true);
    controls::SetFocus(ui->txtSubControl);
    ui->txtSubControl->setText(parentTitle);
    ui->lblSubControl->setVisible(true);
    ui->chkHead->setChecked(false);
    ui->chkHead->setEnabled(false);
}

void frmAccount::prepareSubsidiary(const QString &parentTitle, const QString &parentID) {
    ui->frmEntry->setVisible(true);
    ui->txtSubControl->setVisible(true);
    ui->txtSubControl->setEnabled(false);
    ui->txtSubControl->setText(parentTitle);
    ui->lblSubControl->setVisible(true);
    controls::SetFocus(ui->txtSubsidiary);
    OpenRs("select acname from accounts where acnodes='"_sql + rightTrimmed(parentID) + "'");
    if (gRs.RecordCount() > 0) {
        gRs.MoveFirst();
        ui->txtAcDes->setText(gRs.Fields("acname").text());
    }
}

bool frmAccount::save() {
    if (ui->txtAcDes->text().isEmpty()) {
        controls::MsgBox("please enter Account Title", controls::vbInformation);
        return false;
    }
    if (!ui->frmEntry->isHidden() && ui->txt_OpenBal->text() == ".")
        ui->txt_OpenBal->clear();
    if (!titleIsFree())
        return false;

    Saved saved;
    if (ui->chkHead->isChecked()) {
        saved = saveControlAccount();
    } else if (ui->txtFindParent->text().isEmpty()) {
        controls::MsgBox("please select any one type or create a control account ", controls::vbInformation);
        return false;
    } else {
        saved = saveBelowSelection();
    }

    offer("&New");
    ui->txtSubControl->setEnabled(false);
    FillTreeData();
    if (const controls::TreeNode *node = ui->lstTree->find(nodeKey(saved.code)))
        say(node->text(0) + " saved");
    reopenPath(saved);
    if (controls::TreeNode *node = ui->lstTree->find(SelKey))
        ui->lstTree->highlight(node);
    ui->chkHead->setChecked(false);
    return true;
}

bool frmAccount::titleIsFree() {
    controls::TextBox *box = nullptr;
    if (ui->txtAcDes->isEnabled())
        box = ui->txtAcDes;
    else if (!ui->txtSubControl->isEnabled() && !ui->frmEntry->isHidden())
        box = ui->txtSubsidiary;
    if (!box || (!IsNew && box->text() == OldTitle))
        return true;
    OpenRs("Select AcName From Accounts where replace(acname,' ', '') = '"_sql + box->text().remove(' ') +
           "'");
    if (gRs.RecordCount() < 1)
        return true;
    controls::MsgBox("Account Titel is already exitis, please change Account Title", controls::vbInformation);
    controls::SetFocus(box);
    return false;
}

frmAccount::Saved frmAccount::saveControlAccount() {
    OpenRs("select isnull(max(cast(parentid as bigint)),0) +1 as ParentId from accounts where acstatus='HH'");
    const QString number = gRs.Fields("ParentId").text();
    const QString order = ui->txtOrder->text();
    OpenRs("select * from Accounts where 0=1 ");
    gRs.AddNew();
    gRs.Fields("ParentID") = number;
    gRs.Fields("Dcode") = 0;
    gRs.Fields("AcNodes") = number;
    gRs.Fields("AcName") = ui->txtAcDes->text();
    gRs.Fields("AcStatus") = "HH";
    gRs.Fields("OrderStatus") = order.isEmpty() ? Value(Null()) : Value(order);
    gRs.Update();
    ui->txtAcDes->clear();
    return {number, true};
}

frmAccount::Saved frmAccount::saveBelowSelection() {
    const QString account = ui->txtFindParent->text();
    OpenRs("select * from accounts where rowid = "_sql + account);
    if (gRs.RecordCount() < 1)
        return {};
    gRs.MoveFirst();
    const QString status = gRs.Fields("AcStatus").text();
    const QString code = gRs.Fields("AcNodes").text().trimmed();
    if (status == "HH" && IsNew)
        return saveSubControl(gRs.Fields("ParentID").text().trimmed());
    if (status == "HD" && IsNew)
        return saveSubsidiary(code);

    if (status == "HH" && !ui->txtOrder->text().isEmpty()) {
        gCon.Execute("Update Accounts set AcName = '"_sql + ui->txtAcDes->text() +
                     "', OrderStatus = " + ui->txtOrder->text() + " where rowid = " + account);
    } else if (status == "HH") {
        gCon.Execute("Update Accounts set AcName = '"_sql + ui->txtAcDes->text() +
                     "', OrderStatus =null where rowid = " + account);
    } else if (status == "HD") {
        gCon.Execute("Update Accounts set AcName = '"_sql + ui->txtSubControl->text() +
                     "' where rowid=" + account);
    } else if (status == "DD") {
        OpenRs("select * from accounts where rowid = "_sql + account);
        gRs.MoveFirst();
        saveDetail();
        gRs.Update();
    }
    return {code, false};
}

frmAccount::Saved frmAccount::saveSubControl(const QString &parentID) {
    const QString number = nextDcode(parentID);
    // The number of children is asked for and sets no limit.
    OpenRs("select count(dcode) as chkLvl from accounts where  parentid='"_sql + parentID + "' and dcode<>0");
    addAccount(parentID, number, "HD");
    gRs.Fields("AcName") = ui->txtSubControl->text();
    gRs.Update();
    ui->txtAcDes->clear();
    ui->txtSubControl->clear();
    return {parentID + "." + number, true};
}

frmAccount::Saved frmAccount::saveSubsidiary(const QString &parentCode) {
    const QString number = nextDcode(parentCode);
    addAccount(parentCode, number, "DD");
    saveDetail();
    gRs.Update();
    return {parentCode + "." + number, true};
}

QString frmAccount::nextDcode(const QString &parentID) {
    OpenRs("Select isnull(max(dcode),0)+1 as Dcode from  accounts where rtrim(parentid)='"_sql + parentID +
           "'");
    return gRs.Fields("Dcode").text();
}

void frmAccount::addAccount(const QString &parentID, const QString &number, const char *status) {
    OpenRs("Select * from accounts where 0=1");
    gRs.AddNew();
    gRs.Fields("ParentID") = parentID;
    gRs.Fields("Dcode") = number;
    gRs.Fields("AcNodes") = parentID + "." + number;
    gRs.Fields("AcStatus") = status;
}

void frmAccount::saveDetail() {
    gRs.Fields("openDate") = ui->dtpOpening->Value();
    gRs.Fields("AcName") = ui->txtSubsidiary->text();
    saveTagged(*this, gRs, {}, "D");
    if (ui->txt_Gstno->isFull())
        gRs.Fields("GST") = ui->txt_Gstno->text();
    if (ui->txt_Ntnno->isFull())
        gRs.Fields("NTN") = ui->txt_Ntnno->text();
    gRs.Fields("BStatus") = ui->chkBank->isChecked()       ? Value("B")
                            : ui->chkSupplier->isChecked() ? Value("S")
                                                           : Value(Null());
}

void frmAccount::reopenPath(const Saved &saved) {
    const auto open = [this](const QString &code) {
        try {
            ui->lstTree->node(nodeKey(code))->setExpanded(true);
        } catch (const Error &) {
            // Somebody else may have removed the account meanwhile.
        }
    };
    const auto openAncestors = [&] {
        for (auto dot = saved.code.indexOf('.'); dot != -1; dot = saved.code.indexOf('.', dot + 1))
            open(saved.code.left(dot));
    };
    if (saved.created) {
        open(saved.code);
        openAncestors();
        return;
    }
    controls::SetFocus(ui->lstTree);
    openAncestors();
    open(saved.code);
    if (controls::TreeNode *node = ui->lstTree->find(nodeKey(saved.code)))
        ui->lstTree->select(node);
    OpenRs("Select AcStatus from accounts where rowid = "_sql + ui->txtFindParent->text());
    if (gRs.RecordCount() > 0)
        offer(gRs.Fields("AcStatus").text() == "DD" ? "&Save" : "&New");
}

} // namespace zel::accounts
