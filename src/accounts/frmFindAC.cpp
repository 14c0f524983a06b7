#include "accounts/frmFindAC.h"

#include "accounts/frmAccount.h"
#include "platform/controls/focus.h"
#include "platform/controls/look.h"
#include "shell/entry_screen.h"
#include "shell/frmLocPass.h"
#include "shell/module1.h"

#include "ui_frmFindAC.h"

#include <QTimer>

#include <map>

using namespace zel::shell;

namespace zel::accounts {

frmFindAC::frmFindAC() : Form(Kind::OwnSize), ui(std::make_unique<Ui::frmFindAC>()) {
    ui->setupUi(this);
    ui->cmdAccounts->setIcon(controls::icon("add"));
    ui->cmdExit->setIcon(controls::icon("exit"));
    // As on the screen that asks; else the key would be the menu's, which leaves them all.
    ui->cmdExit->setShortcut(controls::keys::Leave.key);
    ui->cmdExit->setToolTip("Exit (Alt+X)");
    connect(ui->txtFindAC, &controls::TextBox::changed, this, &frmFindAC::FillGrid);
    connect(ui->txtFindAC, &controls::TextBox::upOrDown, this, [this] { controls::SetFocus(ui->mshSearch); });
    connect(ui->chkAll, &controls::CheckBox::clicked, this, &frmFindAC::chkAll_Click);
    connect(ui->mshSearch, &controls::Grid::rowDoubleClicked, this, &frmFindAC::mshSearch_DblClick);
    connect(ui->mshSearch, &controls::Grid::enterPressed, this, &frmFindAC::mshSearch_DblClick);
    connect(ui->cmdAccounts, &controls::Button::clicked, this, &frmFindAC::cmdAccounts_Click);
    connect(ui->cmdExit, &controls::Button::clicked, this, &frmFindAC::cmdExit_Click);
}

frmFindAC::~frmFindAC() = default;

controls::CheckBox &frmFindAC::chkAll() {
    return *ui->chkAll;
}

void frmFindAC::Form_Load() {
    SavedFilter = gFindFilter;
    FillGrid();
    m_filledNow = true;
    QTimer::singleShot(0, this, [this] { m_filledNow = false; });
}

/// Whoever shows the finder activates it as he loads it; the names are not sorted twice for that.
void frmFindAC::Form_Activate() {
    if (!m_filledNow)
        FillGrid();
}

void frmFindAC::Form_Unload() {
    gAddAccount = false;
    gFinderOpen = false;
    ui->chkAll->setChecked(false);
}

void frmFindAC::FillGrid() {
    static const std::map<QString, Sql> filters{
        {"B",
         "Select RowID,AcNodes,AcName,OpenBal,Contact,Fax,Addr,Addr2 From Accounts Where acStatus='DD'  and "
         "BStatus='B' and AcName Like '%"_sql},
        {"S",
         "Select RowID,AcNodes,AcName,OpenBal,Contact,Fax,Addr,Addr2 From Accounts Where acStatus='DD'  and "
         "BStatus='S' and AcName Like '%"_sql},
        {"SUB",
         "Select RowID,AcNodes,AcName,OpenBal,Contact,Fax,Addr,Addr2 From Accounts Where acStatus='HD'  and "
         "AcName Like '%"_sql},
    };
    static const Sql plain = "Select RowID,AcNodes,AcName,OpenBal,Contact,Fax,Addr,Addr2 From Accounts Where "
                             "acStatus='DD'  and AcName "
                             "Like '%";
    const auto filter = filters.find(gFindFilter);
    const Sql accounts = filter == filters.end() ? plain : filter->second;
    fillGrid(*ui->mshSearch, accounts + ui->txtFindAC->text() + "%' order by AcName",
             {{"", 0},
              {"Code", 1200},
              {"Account Title", 5000},
              {"Opening Balance", 1500},
              {"Contact", 2000},
              {"", 0},
              {"", 0},
              {"", 0}},
             Headings::Stay);
}

void frmFindAC::chkAll_Click() {
    gFindFilter = ui->chkAll->isChecked() ? QString() : SavedFilter;
    FillGrid();
}

void frmFindAC::mshSearch_DblClick(int row) {
    const controls::Grid &list = *ui->mshSearch;
    if (row < 1 || list.TextMatrix(row, 0).isEmpty())
        return;
    gFoundRowID = list.TextMatrix(row, 0).toInt();
    gFoundName = list.TextMatrix(row, 2);
    gFoundContact = list.TextMatrix(row, 4);
    gFoundFax = list.TextMatrix(row, 5);
    gFoundAddr = list.TextMatrix(row, 6);
    gFoundAddr2 = list.TextMatrix(row, 7);
    Unload();
    frmAccount::reference.clear();
}

void frmFindAC::cmdAccounts_Click() {
    gAddAccount = true;
    gFinderOpen = true;
    frmLocPass::reference->Show();
}

void frmFindAC::cmdExit_Click() {
    Unload();
    reference.clear();
}

} // namespace zel::accounts
