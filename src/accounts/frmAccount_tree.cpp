#include "accounts/frmAccount.h"

#include "accounts/account_code.h"
#include "platform/base/error.h"
#include "platform/controls/focus.h"
#include "shell/module1.h"

#include "ui_frmAccount.h"

#include <QCursor>
#include <QMenu>

using namespace zel::shell;

namespace zel::accounts {

void frmAccount::FillTreeData() {
    // A parent's code is the beginning of its children's: in text order it comes before them.
    OpenRs("Select * from accounts order by acnodes");
    ui->lstTree->clearNodes();
    if (gRs.RecordCount() > 0)
        gRs.MoveFirst();
    for (; !gRs.atEnd(); gRs.MoveNext()) {
        const QString status = gRs.Fields("AcStatus").text();
        const QString parent = nodeKey(gRs.Fields("ParentID").text());
        const QString key = status == "HH" ? parent : nodeKey(gRs.Fields("AcNodes").text());
        const QString title = gRs.Fields("AcName").text();
        if (status == "HH")
            ui->lstTree->addNode({}, key, title, 1);
        else if (status == "HD")
            ui->lstTree->addNode(parent, key, title, 2);
        else if (status == "DD")
            ui->lstTree->addNode(parent, key, title, 3);
        else
            continue;
        ui->lstTree->node(key)->Tag = gRs.Fields("rowId").text();
    }
}

void frmAccount::select(const QString &key) {
    SelKey = key;
    controls::TreeNode *node = ui->lstTree->node(key);
    ui->txtFindParent->setText(node->Tag);
    ui->lstTree->highlight(node);
}

void frmAccount::lstTree_NodeClick(controls::TreeNode *node) {
    select(node->Key());
    FillData();
    ui->chkHead->setChecked(false);
    ui->txtAcDes->setEnabled(false);
    ui->txtOrder->setEnabled(false);
    ui->txtSubControl->setEnabled(false);
    if (RightDown && (SelStatus == "HH" || SelStatus == "HD")) {
        // Under the mouse, or beside the node that the keyboard's menu key was pressed on.
        const QWidget *tree = ui->lstTree->viewport();
        const QRect line = ui->lstTree->visualItemRect(node);
        const QPoint mouse = tree->mapFromGlobal(QCursor::pos());
        mnuPop->exec(tree->mapToGlobal(line.contains(mouse) ? mouse : line.bottomLeft()));
    }
    RightDown = false;
    SelStatus.clear();
}

void frmAccount::nodeOpenedOrClosed(controls::TreeNode *node) {
    try {
        ClearAll();
        select(node->Key());
        FillData();
    } catch (const Error &) {
        // What can't be shown is left empty: the tree itself goes on opening and closing.
    }
    offer("&New");
    ui->txtAcDes->setEnabled(false);
    ui->txtOrder->setEnabled(false);
    ui->txtSubControl->setEnabled(false);
    ui->chkHead->setChecked(false);
    ui->frmEntry->setVisible(false);
}

void frmAccount::mnuEdit_Click() {
    offer("&Save");
    ui->chkHead->setChecked(false);
    ui->chkHead->setEnabled(false);
    const bool isControl = SelStatus == "HH";
    if (!isControl && SelStatus != "HD")
        return;
    ui->txtAcDes->setEnabled(isControl);
    ui->txtOrder->setEnabled(isControl);
    ui->txtSubControl->setEnabled(!isControl);
    ui->txtSubControl->setVisible(!isControl);
    ui->lblSubControl->setVisible(!isControl);
    controls::SetFocus(isControl ? ui->txtAcDes : ui->txtSubControl);
}

void frmAccount::EditAC(const QString &RowID) {
    controls::TreeNode *shown = nullptr;
    for (controls::TreeNode *node : ui->lstTree->nodes()) {
        if (node->Tag != RowID) {
            node->setExpanded(false);
            continue;
        }
        controls::SetFocus(ui->lstTree);
        node->setExpanded(true);
        ui->lstTree->select(node);
        shown = node;
    }
    if (!shown)
        return;
    // The closing of a later node shows that one, so the boxes are filled when all have moved.
    select(shown->Key());
    ui->lstTree->select(shown);
    FillData();
}

} // namespace zel::accounts
