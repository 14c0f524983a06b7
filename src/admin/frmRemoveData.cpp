#include "admin/frmRemoveData.h"

#include "platform/base/number_text.h"
#include "platform/controls/msg_box.h"
#include "shell/module1.h"
#include "ui_frmRemoveData.h"

#include <QLabel>

namespace zel::admin {

/// One button: the label beside it and what a Yes runs, each by itself.
struct Removal {
    const char *button;
    const char *label;
    std::vector<Sql> statements{}; ///< none: the vouchers of the dates
};

namespace {

const std::vector<Removal> Vouchers = {
    {"cmdFeeRecVou", "Fee Receive Voucher"},           {"cmdCashPaymentVoucher", "Cash Payment Voucher"},
    {"cmdCashReceiveVoucher", "Cash Receive Voucher"}, {"cmdBankPaymentVoucher", "Bank Payment Voucher"},
    {"cmdBankReceiveVoucher", "Bank Receive Voucher"}, {"cmdJournalvoucher", "Journal Voucher"},
};

const std::vector<Removal> Masters = {
    {"CmdSession", "Session", {"Delete From tblSession"}},
    {"Cmdcourse", "Course", {"Delete From tblCourse"}},
    {"cmdSubject", "Subjects", {"Delete From tblSubject"}},
    {"cmdApplication", "Application Form", {"Delete From tblMasApp", "Delete From tblDetApp"}},
    {"cmdCompany", "Company", {"Delete From Company"}},
    {"cmdTeledir", "Telephone Directory", {"Delete From tbl_Tele_Directory"}},
    {"cmdChartAC", "Chart Of Accounts", {"Delete From Accounts"}},
    {"cmdVoucher", "Voucher Setup", {"Delete From VouSetting"}},
    {"cmdCarryForwardEntry",
     "Carry Forward Entry",
     {"Delete From tblMasCarryForw", "Delete From tblDetCarryForw"}},
};

std::vector<Sql> ofDates(const QString &from, const QString &to) {
    return {"Delete From MasJV Where VouDate Between '"_sql + from + "' And '" + to + "'",
            "Delete From DetJV Where VouDate Between '"_sql + from + "' And '" + to + "'"};
}

} // namespace

frmRemoveData::frmRemoveData() : Form(Kind::OwnSize), ui(std::make_unique<Ui::frmRemoveData>()) {
    ui->setupUi(this);
    for (const Removal &removal : Vouchers)
        addRow(*ui->layoutVouchers, removal);
    for (const Removal &removal : Masters)
        addRow(*ui->layoutMasters, removal);
    closeOn({controls::keys::Close, controls::keys::Leave});
    shell::connectKeys(*this, keys());
}

frmRemoveData::~frmRemoveData() = default;

void frmRemoveData::addRow(QGridLayout &rows, const Removal &removal) {
    auto *label = new QLabel(removal.label);
    auto *button = new controls::Button;
    button->setObjectName(removal.button);
    button->setText("Remove");
    button->setIconName("delete");
    button->setAccessibleName("Remove: " + label->text());
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    label->setBuddy(button);
    const int row = rows.rowCount();
    rows.addWidget(label, row, 0);
    rows.addWidget(button, row, 1);
    connect(button, &controls::Button::clicked, this, [this, &removal] { remove(removal); });
}

void frmRemoveData::Form_Load() {
    setFixedSize(sizeHint());
}

void frmRemoveData::Form_Unload() {
    shell::ApplyMenus();
    shell::gOpenRemoveData = false;
}

void frmRemoveData::remove(const Removal &removal) {
    const QString from = sqlDate(ui->DTPicker1->Value());
    const QString to = sqlDate(ui->DTPicker2->Value());
    if (controls::MsgBox("are you sure delete ", controls::vbYesNo) != controls::vbYes)
        return;
    const bool byDates = removal.statements.empty();
    for (const Sql &statement : byDates ? ofDates(from, to) : removal.statements)
        shell::gCon.Execute(statement);
}

} // namespace zel::admin
