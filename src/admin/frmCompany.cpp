#include "admin/frmCompany.h"

#include "platform/controls/focus.h"
#include "platform/controls/msg_box.h"
#include "shell/module1.h"
#include "ui_frmCompany.h"

using namespace zel::shell;

namespace zel::admin {

using controls::MaskedBox;

namespace {

const MasterTable &companies() {
    static const MasterTable table{
        .noun = "Company",
        .keyColumn = "CompCode",
        .keyBox = "txtCompCode",
        .firstBox = "txtCompany",
        .focusAfterSave = true,
        .required = {{"txtCompany", "please enter Company Name "}},
        .none = "Select * from Company where 0=1",
        .byKey = "Select * from Company where CompCode =",
        .search =
            {
                .criteria = {{"",
                              "Select CompCode,Company,comTel,comFax,comAddr,comActive,comTax,comNTN,"
                              "comEmail,comWebSite from Company where Company like '%",
                              "%' order by Company"}},
                .all = "Select CompCode,Company,comTel,comFax,comAddr,comActive,comTax,comNTN,comEmail,"
                       "comWebSite from Company  order by Company",
                .columns = {{"", 0},
                            {"Company", 3000},
                            {"Telephone", 3000},
                            {"Fax", 3000},
                            {"Address", 4000},
                            {"Active", 800},
                            {"Sale Tax #", 1500},
                            {"NTN #", 1300},
                            {"Email", 2000},
                            {"WebSite", 2000}},
                .allWithoutValue = true,
            },
        .limit = TypingLimit::DefinedSize,
        .filled = {{"txtCompCode", 0},
                   {"txtCompany", 1},
                   {"txtTel", 2},
                   {"txtFax", 3},
                   {"txtAddr", 4},
                   {"txtEmail", 8},
                   {"txtWebSite", 9}},
        .closesForFinder = false,
        .tabs = "SSTab",
        .saveButton = "cmdNew",
        .valueBox = "txtSearch",
    };
    return table;
}

/// A tax number counts only when it is whole.
void writeWhole(const char *column, const MaskedBox &box) {
    if (box.isFull())
        gRs.Fields(column) = box.text();
}

void showTax(MaskedBox &box, const QString &number) {
    if (number.isEmpty())
        box.reset();
    else
        box.setText(number);
}

} // namespace

frmCompany::frmCompany() : MasterScreen(companies()), ui(std::make_unique<Ui::frmCompany>()) {
    ui->setupUi(this);
    connectControls();
}

frmCompany::~frmCompany() = default;

void frmCompany::ClearAll() {
    MasterScreen::ClearAll();
    ui->mskTax->reset();
    ui->mskNTN->reset();
    ui->chkComActive->setChecked(false);
    ui->txtCompCode->clear();
}

void frmCompany::cmdSave_Click() {
    if (ui->cmdNew->text() != "&New")
        return MasterScreen::cmdSave_Click();
    ui->cmdNew->setText("&Save");
    ClearAll();
}

bool frmCompany::beginSave() {
    if (ui->chkComActive->isChecked())
        gCon.Execute("update Company Set comActive = null");
    return true;
}

void frmCompany::writeFields() {
    if (ui->chkComActive->isChecked())
        gRs.Fields("comActive") = "Y";
    writeWhole("comTax", *ui->mskTax);
    writeWhole("comNTN", *ui->mskNTN);
}

void frmCompany::showRow(int row) {
    ui->chkComActive->setChecked(Msh().TextMatrix(row, 5) == "Y");
    showTax(*ui->mskTax, Msh().TextMatrix(row, 6));
    showTax(*ui->mskNTN, Msh().TextMatrix(row, 7));
}

void frmCompany::Msh_DblClick() {
    const int row = Msh().Row();
    if (row > 0 && Msh().TextMatrix(row, 0).isEmpty())
        ui->txtCompCode->clear();
    MasterScreen::Msh_DblClick();
}

void frmCompany::cmdDelete_Click() {
    if (!ui->txtCompCode->text().isEmpty() &&
        controls::MsgBox("are you sure delete this Company", controls::vbYesNo + controls::vbInformation) ==
            controls::vbYes) {
        gCon.Execute("Delete From Company where CompCode="_sql + number());
        ClearAll();
        FillGrid({});
    }
    controls::SetFocus(ui->txtCompany);
}

void frmCompany::cmdCancel_Click() {
    ClearAll();
    controls::SetFocus(ui->txtCompany);
}

} // namespace zel::admin
