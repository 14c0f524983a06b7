#include "accounts/frmAccount.h"

#include "accounts/account_code.h"
#include "platform/controls/focus.h"
#include "platform/controls/look.h"
#include "platform/controls/msg_box.h"
#include "shell/entry_screen.h"
#include "shell/module1.h"
#include "shell/status_words.h"

#include "ui_frmAccount.h"

#include <QAction>
#include <QMenu>

#include <algorithm>
#include <map>

using namespace zel::shell;

namespace zel::accounts {

frmAccount::frmAccount() : ui(std::make_unique<Ui::frmAccount>()), mnuPop(new QMenu(this)) {
    ui->setupUi(this);
    ui->lstTree->setImages({controls::icon("level-1"), controls::icon("level-2"), controls::icon("level-3")});
    ui->Command3->setIcon(controls::icon("delete"));
    ui->cmdCancel->setIcon(controls::icon("cancel"));
    ui->cmdPrint->setIcon(controls::icon("print"));
    ui->cmdExit->setIcon(controls::icon("exit"));
    // The boxes of the three levels stand in one column, though those of the third are in a frame of their
    // own.
    const int labels = std::max(ui->lblSubControl->sizeHint().width(), ui->lblSubsidiary->sizeHint().width());
    ui->lblSubControl->setMinimumWidth(labels);
    ui->lblSubsidiary->setMinimumWidth(labels);
    offer("&New");
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

Shortcuts frmAccount::keys() {
    static constexpr controls::Shortcut Keys[] = {{SaveKey.key, SaveKey.does}};
    return Keys;
}

void frmAccount::connectEvents() {
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
    connectKeys(*this, keys());
    onKey(*this, SaveKey, [this] { return isSaveOffered() ? ui->cmdCreateAc : nullptr; });
    connect(ui->cmdCancel, &controls::Button::clicked, this, &frmAccount::cmdCancel_Click);
    connect(ui->Command3, &controls::Button::clicked, this, &frmAccount::Command3_Click);
    connect(ui->cmdPrint, &controls::Button::clicked, this, &frmAccount::cmdPrint_Click);
    connect(ui->cmdExit, &controls::Button::clicked, this, &frmAccount::cmdExit_Click);
}

void frmAccount::Form_Load() {
    ui->SSTab->setCurrentIndex(0);
    ui->dtpOpening->setValue(QDate::currentDate());
    FillTreeData();
    SetMaxlength();
    FillGrid();
}

void frmAccount::Form_Unload() {
    ApplyMenus();
}

void frmAccount::SetMaxlength() {
    OpenRs("Select * from accounts where 0=1");
    for (controls::TextField *box : controls::textFields(this, "D")) {
        if (box != ui->txt_OpenBal)
            box->setMaxTyped(gRs.Fields(box->DataField()).DefinedSize());
    }
    for (controls::TextBox *title : {ui->txtAcDes, ui->txtSubControl, ui->txtSubsidiary})
        title->setMaxTyped(gRs.Fields("AcName").DefinedSize());
}

void frmAccount::FillData() {
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
    IsNew = false;
    offer(level.caption);

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

void frmAccount::FillDetail() {
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

void frmAccount::ClearAll() {
    for (controls::TextBox *box : {ui->txtAcDes, ui->txtOrder, ui->txtSubControl, ui->txtSubsidiary})
        box->clear();
    shell::ClearAll(*this, "D");
    ui->txt_Gstno->reset();
    ui->txt_Ntnno->reset();
    ui->dtpOpening->setValue(QDate::currentDate());
}

void frmAccount::offer(const char *caption) {
    ui->cmdCreateAc->setText(caption);
    ui->cmdCreateAc->setIcon(controls::icon(isSaveOffered() ? "save" : "new"));
    ui->cmdCreateAc->setToolTip(QString());
    if (isSaveOffered())
        tellKey(*ui->cmdCreateAc, SaveKey);
    const controls::TreeNode *node = ui->lstTree->find(SelKey);
    setUnderWay(*this, !isSaveOffered() ? QString()
                       : IsNew          ? QString("new account")
                       : node           ? "correcting " + node->text(0)
                                        : QString());
}

bool frmAccount::isSaveOffered() const {
    return ui->cmdCreateAc->text() == "&Save";
}

void frmAccount::cmdCancel_Click() {
    ClearAll();
    ui->frmEntry->setVisible(false);
    ui->txtSubControl->setEnabled(false);
    ui->txtAcDes->setEnabled(false);
    offer("&New");
    ui->chkHead->setChecked(false);
    controls::SetFocus(ui->lstTree);
}

void frmAccount::Command3_Click() {
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
        const controls::TreeNode *node = ui->lstTree->find(SelKey);
        const QString title = node ? node->text(0) : QString();
        gCon.Execute("Delete Accounts where rowid = "_sql + account);
        say(title + " deleted");
        FillTreeData();
        ui->frmEntry->setVisible(false);
        ui->txtSubControl->setEnabled(false);
        controls::SetFocus(ui->lstTree);
        ClearAll();
        ui->txtFindParent->clear();
    }
    FillGrid();
}

void frmAccount::cmdPrint_Click() {
    m_report.print("rptChartAC.rpt", {});
}

void frmAccount::cmdExit_Click() {
    if (gFinderOpen) {
        Hide();
        return;
    }
    Unload();
    reference.clear();
    ApplyMenus();
}

void frmAccount::FillGrid() {
    fillGrid(
        *ui->mshSearch,
        "Select RowID,AcNodes,AcName,Location,Contact,Fax,Email,OpenBal,Addr,Addr2,ParentID,AcNodes From "
        "Accounts "
        "Where acStatus='DD' and AcName Like '%"_sql +
            ui->txtFindAC->text() + "%' order by AcName",
        {{"RowNo", 0},
         {"Code", 1200},
         {"Account Title", 5000},
         {"Location", 2000},
         {"Contact", 2000},
         {"Fax", 2000},
         {"E-Mail", 2000},
         {"Opening Balance", 1800},
         {"Address 1", 3500},
         {"Address 2", 3500}},
        Headings::Stay);
}

void frmAccount::mshSearch_DblClick(int row) {
    const QString account = ui->mshSearch->TextMatrix(row, 0);
    if (account.isEmpty())
        return;
    EditAC(account);
    ui->SSTab->setCurrentIndex(0);
}

void frmAccount::FillTypes(int number) {
    if (m_types.State() == ado::adStateOpen)
        m_types.Close();
    if (number == 1)
        m_types.Open("select rowid,AcName from accounts where acstatus='HH' ", gCon);
    else if (number == 2 || number == 3)
        m_types.Open("select rowid,AcName from accounts where acstatus='HD'", gCon);
}

} // namespace zel::accounts
