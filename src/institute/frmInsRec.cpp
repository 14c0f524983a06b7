#include "institute/frmInsRec.h"

#include "institute/fee_receipt.h"
#include "institute/subject_balance.h"
#include "platform/controls/focus.h"
#include "platform/controls/msg_box.h"
#include "shell/entry_screen.h"
#include "shell/module1.h"

#include "ui_frmInsRec.h"

#include <utility>

namespace zel::institute {

using controls::DataCombo;
using controls::SetFocus;
using controls::TextBox;
using shell::gRs;
using shell::OpenRs;
using vouchers::Side;

namespace {
constexpr Literal Sessions = "Select SessionId,SessionName From tblSession Order By SessionName";
} // namespace

frmInsRec::frmInsRec() : VoucherScreen(feeReceipt()), ui(std::make_unique<Ui::frmInsRec>()) {
    ui->setupUi(this);
    connectControls();
    OptBank_Toggled(false);
    connect(ui->OptBank, &controls::OptionButton::toggled, this, &frmInsRec::OptBank_Toggled);
    for (TextBox *shown : {ui->txtReceived, ui->txtRemaingAmt})
        connect(shown, &TextBox::gotFocus, this, [this] { SetFocus(ui->txtDRCR); });
    // A click that changes the subject is told as both, in one event.
    connect(ui->cboSubject, &DataCombo::changed, this, [this] {
        fillAmount();
        m_amountFilled = true;
        QMetaObject::invokeMethod(
            this, [this] { m_amountFilled = false; }, Qt::QueuedConnection);
    });
    connect(ui->cboSubject, &DataCombo::clicked, this, [this] {
        if (!m_amountFilled)
            fillAmount();
    });
}

frmInsRec::~frmInsRec() = default;

void frmInsRec::fillCombos() {
    shell::bindCombo(*ui->cboSession, Sessions, "SessionName", "SessionId", shell::Picked::Last);
}

void frmInsRec::Form_Activate() {
    shell::refillCombo(*ui->cboSession, Sessions);
    if (!m_subjects.text().empty())
        shell::refillCombo(*ui->cboSubject, m_subjects);
    VoucherScreen::Form_Activate();
}

std::optional<QString> frmInsRec::finderFilter(Side side) const {
    if (side == Side::Debit)
        return ui->OptBank->isChecked() ? QString("B") : QString("");
    return VoucherScreen::finderFilter(side);
}

void frmInsRec::accountFound(Side side) {
    if (side != Side::Credit)
        return;
    showSession();
    listSubjects("in (select appid from tblmasapp where cuscode = "_sql + ui->txtCrAc->Tag() + "))");
}

/// The application's, or the one that the student was carried forward to last.
void frmInsRec::showSession() {
    OpenRs("select SessionID,AppID from tblMasApp Where CusCode = "_sql + ui->txtCrAc->Tag());
    if (gRs.RecordCount() > 0) {
        gRs.MoveFirst();
        m_stuAppID = int(gRs.Fields("AppID").value().integer());
        ui->cboSession->setBoundText(gRs.Fields("SessionID").text());
    }
    OpenRs("Select SessionID From tblDetCarryForw Where AppID = "_sql + m_stuAppID);
    if (const qsizetype carried = gRs.RecordCount(); carried > 0)
        ui->cboSession->setBoundText(gRs.rows()->text(carried - 1, 0));
}

void frmInsRec::listSubjects(const Sql &condition) {
    m_subjects = "select subid,subname from tblsubject"_sql +
                 " where subid in (select subid from tbldetapp where appid " + condition;
    shell::bindCombo(*ui->cboSubject, m_subjects, "SubName", "SubID", shell::Picked::First);
}

void frmInsRec::listNoSubjects() {
    m_subjects = {};
    ui->cboSubject->setRowSource(nullptr);
    ui->cboSubject->setBoundText({});
}

void frmInsRec::fillAmount() {
    const QString subject = ui->cboSubject->BoundText();
    if (!isNew() || subject.isEmpty())
        return;
    OpenRs(subjectBalance(ui->txtCrAc->Tag(), subject, m_stuAppID));
    if (gRs.RecordCount() == 0)
        return;
    gRs.MoveFirst();
    ui->txtReceived->setText(gRs.Fields("Received").text());
    ui->txtRemaingAmt->setText(gRs.Fields("RemainingAmt").text());
}

bool frmInsRec::lineMayBeAdded() {
    if (!ui->cboSubject->Text().isEmpty() && !ui->cboSubject->BoundText().isEmpty())
        return true;
    controls::MsgBox("please select subject ", controls::vbInformation);
    SetFocus(ui->cboSubject);
    return false;
}

void frmInsRec::lineAdded() {
    listNoSubjects();
}

void frmInsRec::lineTakenBack(int row) {
    listSubjects("= (select appid from tblmasapp where cuscode = "_sql + ui->txtCrAc->Tag() + "))");
    const QString subject = ui->MshEntry->TextMatrix(row, SubjectColumn);
    if (!subject.isEmpty())
        ui->cboSubject->setBoundText(subject);
}

void frmInsRec::cleared() {
    ui->OptCash->setChecked(true);
    listNoSubjects();
}

QString frmInsRec::headerText(const vouchers::HeaderColumn &column) {
    if (column.box)
        return VoucherScreen::headerText(column);
    return ui->OptBank->isChecked() ? "BANK" : "CASH";
}

void frmInsRec::showHeaderText(const vouchers::HeaderShown &column, const QString &text) {
    if (column.box)
        return VoucherScreen::showHeaderText(column, text);
    (text == "CASH" ? ui->OptCash : ui->OptBank)->setChecked(true);
}

void frmInsRec::OptBank_Toggled(bool bank) {
    ui->lblChq->setVisible(bank);
    ui->txtChecque->setVisible(bank);
}

} // namespace zel::institute
