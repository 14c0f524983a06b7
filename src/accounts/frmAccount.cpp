#include "accounts/frmAccount.h"

#include "accounts/account_code.h"
#include "accounts/account_list.h"
#include "platform/base/error.h"
#include "platform/controls/focus.h"
#include "platform/controls/look.h"
#include "platform/controls/msg_box.h"
#include "shell/entry_screen.h"
#include "shell/module1.h"

#include "ui_frmAccount.h"

#include <QAction>
#include <QCursor>
#include <QMenu>

#include <map>

using namespace zel::shell;

namespace zel::accounts {

frmAccount::frmAccount() : ui(std::make_unique<Ui::frmAccount>()), mnuPop(new QMenu(this))
{
    ui->setupUi(this);
    ui->lstTree->setImages({controls::icon("level-1"), controls::icon("level-2"), controls::icon("level-3")});
    mnuPop->setObjectName("mnuPop");
    QAction *mnuEdit = mnuPop->addAction(controls::icon("edit"), "Edit");
    mnuEdit->setObjectName("mnuEdit");
    connect(mnuEdit, &QAction::triggered, this, &frmAccount::mnuEdit_Click);
    for (QWidget *hidden : {static_cast<QWidget *>(ui->frmEntry), static_cast<QWidget *>(ui->lblSubControl),
                            static_cast<QWidget *>(ui->txtSubControl)}) {
        QSizePolicy policy = hidden->sizePolicy();
        policy.setRetainSizeWhenHidden(true);
        hidden->setSizePolicy(policy);
        hidden->hide();
    }
    connectEvents();
}

frmAccount::~frmAccount() = default;

void frmAccount::connectEvents()
{
    connect(ui->lstTree, &controls::TreeView::mouseDown, this,
            [this](Qt::MouseButton button) { RightDown = button == Qt::RightButton; });
    connect(ui->lstTree, &controls::TreeView::nodeClicked, this, &frmAccount::lstTree_NodeClick);
    connect(ui->lstTree, &controls::TreeView::nodeExpanded, this, &frmAccount::nodeOpenedOrClosed);
    connect(ui->lstTree, &controls::TreeView::nodeCollapsed, this, &frmAccount::nodeOpenedOrClosed);
    connect(ui->chkHead, &controls::CheckBox::clicked, this, [this](bool ticked) {
        if (!ticked)
            ui->txtAcDes->setEnabled(false);
    });
    connect(ui->chkBank, &controls::CheckBox::clicked, this, [this](bool ticked) {
        if (ticked)
            ui->chkSupplier->setChecked(false);
    });
    connect(ui->chkSupplier, &controls::CheckBox::clicked, this, [this](bool ticked) {
        if (ticked)
            ui->chkBank->setChecked(false);
    });
    connect(ui->txt_OpenBal, &controls::TextBox::gotFocus, ui->txt_OpenBal, &controls::TextBox::selectAll);
    connect(ui->txtFindAC, &controls::TextBox::changed, this, &frmAccount::FillGrid);
    connect(ui->mshSearch, &controls::Grid::rowDoubleClicked, this, &frmAccount::mshSearch_DblClick);
    connect(ui->cmdCreateAc, &controls::Button::clicked, this, &frmAccount::cmdCreateAc_Click);
    connect(ui->cmdCancel, &controls::Button::clicked, this, &frmAccount::cmdCancel_Click);
    connect(ui->Command3, &controls::Button::clicked, this, &frmAccount::Command3_Click);
    connect(ui->cmdPrint, &controls::Button::clicked, this, &frmAccount::cmdPrint_Click);
    connect(ui->cmdExit, &controls::Button::clicked, this, &frmAccount::cmdExit_Click);
}

void frmAccount::Form_Load()
{
    ui->SSTab->setCurrentIndex(0);
    ui->dtpOpening->setValue(QDate::currentDate());
    FillTreeData();
    SetMaxlength();
    FillGrid();
}

void frmAccount::Form_Unload()
{
    ApplyMenus();
}

void frmAccount::SetMaxlength()
{
    OpenRs("Select * from accounts where 0=1");
    for (controls::TextField *box : controls::textFields(this, "D")) {
        if (box != ui->txt_OpenBal)
            box->setMaxTyped(gRs.Fields(box->DataField()).DefinedSize());
    }
    for (controls::TextBox *title : {ui->txtAcDes, ui->txtSubControl, ui->txtSubsidiary})
        title->setMaxTyped(gRs.Fields("AcName").DefinedSize());
}

void frmAccount::FillTreeData()
{
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

void frmAccount::select(const QString &key)
{
    SelKey = key;
    ui->txtFindParent->setText(ui->lstTree->node(key)->Tag);
}

void frmAccount::lstTree_NodeClick(controls::TreeNode *node)
{
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

void frmAccount::nodeOpenedOrClosed(controls::TreeNode *node)
{
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

void frmAccount::FillData()
{
    ClearAll();
    if (ui->txtFindParent->text().isEmpty())
        return;
    OpenRs("Select * From Accounts Where RowId = "_sql + ui->txtFindParent->text());
    if (gRs.RecordCount() < 1)
        return;
    gRs.MoveFirst();
    SelStatus = gRs.Fields("AcStatus").text();

    struct Level {
        controls::TextBox *title;
        bool isControl, isSubsidiary;
        const char *caption;
    };
    const std::map<QString, Level> levels{{"HH", {ui->txtAcDes, true, false, "&New"}},
                                          {"HD", {ui->txtSubControl, false, false, "&New"}},
                                          {"DD", {ui->txtSubsidiary, false, true, "&Save"}}};
    const auto found = levels.find(SelStatus);
    if (found == levels.end())
        return;
    const Level &level = found->second;
    if (!level.isControl)
        ui->chkHead->setChecked(false);
    ui->chkHead->setEnabled(level.isControl);
    if (level.isControl)
        ui->txtOrder->setText(gRs.Fields("OrderStatus").text());
    ui->txtOrder->setEnabled(level.isControl);
    level.title->setText(gRs.Fields("AcName").text());
    OldTitle = level.title->text();
    ui->txtSubControl->setVisible(!level.isControl);
    ui->lblSubControl->setVisible(!level.isControl);
    ui->frmEntry->setVisible(level.isSubsidiary);
    offer(level.caption);
    IsNew = false;

    QString control = rightTrimmed(gRs.Fields("ParentID").text());
    if (level.isSubsidiary) {
        OpenRs2("select acname,ParentID from accounts where acnodes='"_sql + control + "'");
        if (gRs2.RecordCount() > 0) {
            gRs2.MoveFirst();
            ui->txtSubControl->setText(gRs2.Fields("acname").text());
            control = rightTrimmed(gRs2.Fields("ParentID").text());
        }
    }
    if (!level.isControl) {
        OpenRs2("select acname from accounts where acnodes='"_sql + control + "'");
        if (gRs2.RecordCount() > 0) {
            gRs2.MoveFirst();
            ui->txtAcDes->setText(gRs2.Fields("acname").text());
        }
    }
    if (level.isSubsidiary)
        FillDetail();
}

void frmAccount::FillDetail()
{
    loadTagged(*this, gRs, {}, "D");
    ui->dtpOpening->setValue(gRs.Fields("openDate").isNull() ? QDate::currentDate()
                                                              : gRs.Fields("openDate").value().date());
    if (!gRs.Fields("GST").isNull())
        ui->txt_Gstno->setText(gRs.Fields("GST").text());
    if (!gRs.Fields("NTN").isNull())
        ui->txt_Ntnno->setText(gRs.Fields("NTN").text());
    ui->chkBank->setChecked(gRs.Fields("BStatus").text() == "B");
    ui->chkSupplier->setChecked(gRs.Fields("BStatus").text() == "S");
}

void frmAccount::ClearAll()
{
    for (controls::TextBox *box : {ui->txtAcDes, ui->txtOrder, ui->txtSubControl, ui->txtSubsidiary})
        box->clear();
    shell::ClearAll(*this, "D");
    ui->txt_Gstno->reset();
    ui->txt_Ntnno->reset();
    ui->dtpOpening->setValue(QDate::currentDate());
}

void frmAccount::offer(const char *caption)
{
    ui->cmdCreateAc->setText(caption);
    ui->cmdCreateAc->setIcon(controls::icon(isSaveOffered() ? "save" : "new"));
}

bool frmAccount::isSaveOffered() const
{
    return ui->cmdCreateAc->text() == "&Save";
}

void frmAccount::mnuEdit_Click()
{
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

void frmAccount::cmdCancel_Click()
{
    ClearAll();
    ui->frmEntry->setVisible(false);
    ui->txtSubControl->setEnabled(false);
    ui->txtAcDes->setEnabled(false);
    offer("&New");
    ui->chkHead->setChecked(false);
    controls::SetFocus(ui->lstTree);
}

void frmAccount::Command3_Click()
{
    const QString account = ui->txtFindParent->text();
    if (account.isEmpty()) {
        controls::MsgBox("please select any one account", controls::vbInformation);
        return;
    }
    OpenRs("Select acnodes from accounts where rowid="_sql + account);
    const QString code = gRs.RecordCount() > 0 ? gRs.Fields("acnodes").text().trimmed() : QString();
    OpenRs("select count(dcode) as chkNod from accounts where acnodes like '"_sql + code + ".%'");
    if (gRs.Fields("chkNod").value().integer() > 0) {
        controls::MsgBox("this head not remove ", controls::vbInformation);
        return;
    }
    OpenRs("Select accode from detjv where accode = "_sql + account);
    if (gRs.RecordCount() > 0) {
        controls::MsgBox("this Account use in vouceher detail ", controls::vbInformation);
        return;
    }
    OpenRs("Select CusCode from tblMasApp where CusCode = "_sql + account);
    if (gRs.RecordCount() > 0) {
        controls::MsgBox("this Account use in Application detail ", controls::vbInformation);
        return;
    }
    if (controls::MsgBox("are you sure delete this account", controls::vbYesNo + controls::vbInformation) ==
        controls::vbYes) {
        gCon.Execute("Delete Accounts where rowid = "_sql + account);
        FillTreeData();
        ui->frmEntry->setVisible(false);
        ui->txtSubControl->setEnabled(false);
        controls::SetFocus(ui->lstTree);
        ClearAll();
        ui->txtFindParent->clear();
    }
    FillGrid();
}

void frmAccount::cmdPrint_Click()
{
    m_report.print("rptChartAC.rpt", {});
}

void frmAccount::cmdExit_Click()
{
    if (gFinderOpen) {
        Hide();
        return;
    }
    Unload();
    reference.clear();
    ApplyMenus();
}

void frmAccount::FillGrid()
{
    OpenRs("Select RowID,AcNodes,AcName,Location,Contact,Fax,Email,OpenBal,Addr,Addr2,ParentID,AcNodes From Accounts "
           "Where acStatus='DD' and AcName Like '%"_sql +
           ui->txtFindAC->text() + "%' order by AcName");
    fillAccountList(*ui->mshSearch, {{"RowNo", 0},
                                     {"Code", 1200},
                                     {"Account Title", 5000},
                                     {"Location", 2000},
                                     {"Contact", 2000},
                                     {"Fax", 2000},
                                     {"E-Mail", 2000},
                                     {"Opening Balance", 1800},
                                     {"Address 1", 3500},
                                     {"Address 2", 3500}});
}

void frmAccount::mshSearch_DblClick(int row)
{
    const QString account = ui->mshSearch->TextMatrix(row, 0);
    if (account.isEmpty())
        return;
    EditAC(account);
    ui->SSTab->setCurrentIndex(0);
}

void frmAccount::EditAC(const QString &RowID)
{
    const controls::TreeNode *shown = nullptr;
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
    ui->txtFindParent->setText(shown->Tag);
    FillData();
}

void frmAccount::FillTypes(int number)
{
    if (m_types.State() == ado::adStateOpen)
        m_types.Close();
    if (number == 1)
        m_types.Open("select rowid,AcName from accounts where acstatus='HH' ", gCon);
    else if (number == 2 || number == 3)
        m_types.Open("select rowid,AcName from accounts where acstatus='HD'", gCon);
}

} // namespace zel::accounts
