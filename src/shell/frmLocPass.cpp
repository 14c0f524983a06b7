#include "shell/frmLocPass.h"
#include "ui_frmLocPass.h"

#include "platform/controls/focus.h"
#include "platform/controls/msg_box.h"
#include "shell/module1.h"
#include "shell/screens.h"

namespace zel::shell {

frmLocPass::frmLocPass() : ui(std::make_unique<Ui::frmLocPass>()) {
    ui->setupUi(this);
    connect(ui->txtPassword, &controls::TextBox::enterPressed, this, &frmLocPass::cmdOK_Click);
    connect(ui->cmdOK, &QAbstractButton::clicked, this, &frmLocPass::cmdOK_Click);
    connect(ui->cmdCancel, &QAbstractButton::clicked, this, &frmLocPass::cmdCancel_Click);
}

frmLocPass::~frmLocPass() = default;

/// The first whose flag is set.
QString frmLocPass::destination() {
    const struct {
        bool chosen;
        const char *name;
    } destinations[] = {
        {gAddAccount, "frmAccount"},
        {gLockSpare, ""},
        {gOpenSetMenus, "frmSecMenus"},
        {gOpenRemoveData, "frmRemoveData"},
    };
    for (const auto &destination : destinations) {
        if (destination.chosen)
            return destination.name;
    }
    return {};
}

void frmLocPass::Form_Load() {
    setFixedSize(sizeHint());
}

void frmLocPass::Form_Activate() {
    ui->txtPassword->clear();
    controls::SetFocus(ui->txtPassword);
}

void frmLocPass::cmdOK_Click() {
    if (ui->txtPassword->text().isEmpty()) {
        controls::MsgBox("please enter your password", controls::vbInformation);
        controls::SetFocus(ui->txtPassword);
        return;
    }
    OpenRs("Select * From LctPswd Where Pswd= '"_sql + secret(ui->txtPassword->text()) + "'");
    if (gRs.RecordCount() < 1) {
        controls::MsgBox("please check your password", controls::vbInformation);
        ui->txtPassword->clear();
        controls::SetFocus(ui->txtPassword);
        return;
    }
    Unload();
    reference.clear();
    if (const QString screen = destination(); !screen.isEmpty())
        openScreen(screen);
}

void frmLocPass::cmdCancel_Click() {
    if (gFinderOpen)
        return Hide();
    Unload();
    reference.clear();
    ApplyMenus();
}

} // namespace zel::shell
