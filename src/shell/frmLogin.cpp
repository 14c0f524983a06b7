#include "shell/frmLogin.h"
#include "ui_frmLogin.h"

#include "platform/base/error.h"
#include "platform/controls/focus.h"
#include "platform/controls/look.h"
#include "platform/controls/msg_box.h"
#include "shell/MDIForm1.h"
#include "shell/display.h"
#include "shell/key_sheet.h"
#include "shell/module1.h"
#include "shell/server_file.h"

#include <QKeyEvent>
#include <QLineEdit>

#include <cstdlib>

namespace zel::shell {

namespace {

bool askRestart(const QString &text, const QString &title) {
    return controls::MsgBox(text, controls::vbYesNo, title) == controls::vbYes;
}

} // namespace

frmLogin::frmLogin()
    : Form(Kind::Window), ui(std::make_unique<Ui::frmLogin>()), m_display(std::make_unique<Display>()) {
    ui->setupUi(this);
    setWindowIcon(controls::icon("logo"));
    offerKeySheet(*this);
    ui->cboUsers->setCompleter(nullptr); // a name that is the beginning of another stays as it is typed
    connect(ui->cboUsers->lineEdit(), &QLineEdit::returnPressed, this,
            [this] { controls::SetFocus(ui->txtPassword); });
    connect(ui->txtPassword, &controls::TextBox::enterPressed, this, &frmLogin::cmdLogIn_Click);
    connect(ui->cmdLogIn, &QAbstractButton::clicked, this, &frmLogin::cmdLogIn_Click);
    connect(ui->cmdCancel, &QAbstractButton::clicked, this, &frmLogin::cmdCancel_Click);
}

frmLogin::~frmLogin() = default;

void frmLogin::Form_Load() {
    ui->cboUsers->addItem("sa");
    ui->cboUsers->setCurrentText("sa");
    ui->txtServer->setText(firstItem(applicationPath() + "/Server.txt"));
    ui->txtServer->setToolTip(ui->txtServer->text()); // a long one
}

void frmLogin::cmdLogIn_Click() {
    try {
        if (gCon.State() == ado::adStateOpen)
            gCon.Close();
        gCon.Provider = "SQLOLEDB.1";
        gCon.setProperty("User ID", ui->cboUsers->currentText());
        gCon.setProperty("Password", ui->txtPassword->text());
        gCon.setProperty("Data Source", ui->txtServer->text());
        gCon.setProperty("Initial Catalog", "ZEL");
        gCon.Open();
        gUserName = ui->cboUsers->currentText();
        gPassword = ui->txtPassword->text();
        MDIForm1::reference->Show();
        Unload();
        reference.clear();
    } catch (const Error &error) {
        controls::MsgBox(error.description(), controls::vbCritical, "Login Error");
        controls::SetFocus(ui->txtPassword);
        ui->txtPassword->selectAll();
    }
}

void frmLogin::cmdCancel_Click() {
    std::exit(EXIT_SUCCESS);
}

void frmLogin::setDisplay(std::unique_ptr<Display> display) {
    m_display = std::move(display);
}

void frmLogin::SetResulation() {
    changeResolution(*m_display, 1024, 768, askRestart);
}

void frmLogin::setDefautResulation() {
    changeResolution(*m_display, 0, 0, askRestart);
}

} // namespace zel::shell
