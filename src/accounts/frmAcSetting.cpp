#include "accounts/frmAcSetting.h"

#include "accounts/frmFindAC.h"
#include "accounts/setting_tables.h"
#include "platform/controls/focus.h"
#include "platform/controls/look.h"
#include "platform/controls/msg_box.h"
#include "shell/entry_screen.h"
#include "shell/module1.h"
#include "shell/status_words.h"

#include "ui_frmAcSetting.h"

using namespace zel::shell;

namespace zel::accounts {

namespace {

void setOption(controls::OptionButton &option, bool chosen) {
    option.setAutoExclusive(chosen); // an option that excludes others can't be cleared
    option.setChecked(chosen);
    option.setAutoExclusive(true);
}

void setAccount(controls::TextBox &box, const QString &title, const QString &rowID) {
    box.setText(title);
    box.setTag(rowID);
}

void showSide(const Side &side, const QString &acStatus, const QString &fix) {
    setOption(*side.debit, acStatus == "DR");
    setOption(*side.credit, acStatus == "CR");
    side.fix->setChecked(fix == "Y");
}

void clearSide(const Side &side) {
    showSide(side, {}, {});
}

void saveSide(const Side &side) {
    gRs.Fields("AcStatus") = side.debit->isChecked()    ? Value("DR")
                             : side.credit->isChecked() ? Value("CR")
                                                        : Value(Null());
    gRs.Fields("Fix") = side.fix->isChecked() ? "Y" : "N";
}

} // namespace

frmAcSetting::frmAcSetting() : ui(std::make_unique<Ui::frmAcSetting>()) {
    ui->setupUi(this);
    ui->cmdSave->setIcon(controls::icon("save"));
    ui->cmdClear->setIcon(controls::icon("remove"));
    ui->cmdExit->setIcon(controls::icon("exit"));
    m_tables = std::make_unique<SettingTables>(*ui);
    for (const Finding &finding : m_tables->findings) {
        connect(finding.button, &controls::Button::clicked, this, [this, finding] {
            CallerSlot = finding.slot;
            if (finding.filter)
                gFindFilter = finding.filter;
            frmFindAC::reference->Show();
            if (finding.keepsFilter)
                frmFindAC::reference->chkAll().setEnabled(false);
        });
    }
    for (const Clearing &clearing : m_tables->clearings) {
        connect(clearing.button, &controls::Button::clicked, this, [clearing] {
            for (controls::TextBox *box : clearing.boxes)
                setAccount(*box, {}, {});
            if (clearing.side)
                clearSide(*clearing.side);
        });
    }
    connectKeys(*this, keys());
    connect(ui->cmdSave, &controls::Button::clicked, this, &frmAcSetting::cmdSave_Click);
    connect(ui->cmdClear, &controls::Button::clicked, this, &frmAcSetting::cmdClear_Click);
    connect(ui->cmdExit, &controls::Button::clicked, this, &frmAcSetting::cmdExit_Click);
}

frmAcSetting::~frmAcSetting() = default;

void frmAcSetting::Form_Load() {
    FillVouSetting();
}

void frmAcSetting::Form_Activate() {
    const auto found = takeFoundAccount();
    if (!found)
        return;
    for (const Finding &finding : m_tables->findings) {
        if (finding.slot != CallerSlot)
            continue;
        found->showIn(*finding.box);
        controls::SetFocus(finding.button);
    }
}

void frmAcSetting::Form_Unload() {
    ApplyMenus();
}

void frmAcSetting::FillVouSetting() {
    OpenRs("Select vouNo,AcTitle=(Select AcName From Accounts Where AcStatus <> 'HH' and rowid=AcCode),"
           "OthAC=(Select AcName From Accounts Where AcStatus='DD' and rowid=OthAcCode),"
           "IncomeAC=(Select AcName From Accounts Where AcStatus='DD' and rowid=ITaxAc),"
           "SalTaxAC=(Select AcName From Accounts Where AcStatus='DD' and rowid=STaxAC),"
           "AcStatus,AcCode,Fix,VouStatus,OthAcCode,ITaxAC,STaxAC From VouSetting");
    if (gRs.RecordCount() > 0)
        gRs.MoveFirst();
    for (; !gRs.atEnd(); gRs.MoveNext()) {
        const SettingRow *row = m_tables->row(gRs.Fields("VouStatus").text());
        if (!row)
            continue;
        if (row->number)
            row->number->setText(gRs.Fields("VouNo").text());
        if (row->side)
            showSide(*row->side, gRs.Fields("AcStatus").text(), gRs.Fields("Fix").text());
        if (row->account)
            setAccount(*row->account, gRs.Fields("AcTitle").text(), gRs.Fields("AcCode").text());
        for (const FurtherAccount &further : row->further)
            setAccount(*further.box, gRs.Fields(further.title).text(), gRs.Fields(further.column).text());
    }
}

void frmAcSetting::cmdSave_Click() {
    gCon.Execute("Delete From VouSetting");
    OpenRs("Select * From VouSetting");
    for (const SettingRow &row : m_tables->rows) {
        gRs.AddNew();
        gRs.Fields("VouNo") = row.number ? Value(row.number->text()) : Value(0);
        gRs.Fields("VouStatus") = row.status;
        if (row.account)
            gRs.Fields("AcCode") = row.account->Tag();
        if (row.side)
            saveSide(*row.side);
        for (const FurtherAccount &further : row.further)
            gRs.Fields(further.column) = further.box->Tag();
        if (row.follows) {
            saveSide(*row.follows->side);
            gRs.Fields("AcCode") = row.follows->account->Tag();
        }
        gRs.Update();
    }
    say("Voucher setup saved");
    controls::MsgBox("Sucessfully  save you Voucher Setting", controls::vbInformation);
}

void frmAcSetting::cmdClear_Click() {
    for (controls::TextBox *box : findChildren<controls::TextBox *>())
        setAccount(*box, {}, {});
    for (controls::OptionButton *option : findChildren<controls::OptionButton *>())
        setOption(*option, false);
    for (controls::CheckBox *check : findChildren<controls::CheckBox *>())
        check->setChecked(false);
}

void frmAcSetting::cmdExit_Click() {
    Unload();
    reference.clear();
}

} // namespace zel::accounts
