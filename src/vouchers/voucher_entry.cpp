// The events of the voucher screen; its procedures stand in voucher.cpp.

#include "vouchers/voucher.h"

#include "accounts/frmFindAC.h"
#include "platform/base/number_text.h"
#include "platform/controls/focus.h"
#include "platform/controls/msg_box.h"
#include "shell/module1.h"
#include "ui_voucher.h"
#include "vouchers/voucher_store.h"

#include <QShortcut>

namespace zel::vouchers {

using controls::Button;
using controls::ComboBox;
using controls::DateBox;
using controls::Grid;
using controls::MsgBox;
using controls::SetFocus;
using controls::TextBox;
using controls::vbInformation;

namespace {

/// Each of two items of a layout, or of layouts in it, takes the other's place.
void swapPlaces(QLayout &layout, QWidget *one, QWidget *other) {
    QWidget between;
    const std::unique_ptr<QLayoutItem> items[] = {
        std::unique_ptr<QLayoutItem>(layout.replaceWidget(one, &between)),
        std::unique_ptr<QLayoutItem>(layout.replaceWidget(other, one)),
        std::unique_ptr<QLayoutItem>(layout.replaceWidget(&between, other))};
}

} // namespace

void Voucher::arrange() {
    setWindowTitle(m_kind.caption);
    ui->lblTitle->setText(m_kind.caption);
    ui->lblPaidTo->setText(m_kind.paidToLabel);
    ui->txtPaidTo->setAccessibleName(ui->lblPaidTo->text().remove(':').trimmed());
    ui->txtVouStatus->setText(QString::fromUtf8(m_kind.code.text()));
    if (m_kind.fileBeforeBill) {
        swapPlaces(*ui->layoutFields, ui->lblBill, ui->lblFile);
        swapPlaces(*ui->layoutFields, ui->txtBill, ui->txtFile);
        setTabOrder(ui->txtChecque, ui->txtFile);
        setTabOrder(ui->txtFile, ui->txtBill);
        setTabOrder(ui->txtBill, ui->txtNaration);
    }
    const std::pair<Button *, Qt::Key> keys[] = {
        {ui->cmdSelectCr, Qt::Key_F7}, {ui->cmdSelectDr, Qt::Key_F8}, {ui->cmdSave, Qt::Key_F9}};
    for (const auto &[button, key] : keys) {
        auto *shortcut = new QShortcut(key, this);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        // Like a button's own key: the box that is left takes what was typed into it.
        connect(shortcut, &QShortcut::activated, button, [button = button] {
            if (!button->isEnabled() || !button->isVisible())
                return;
            SetFocus(button);
            button->click();
        });
        button->setToolTip(button->text().remove('&') + " (" + QKeySequence(key).toString() + ")");
    }
}

void Voucher::connectEntry() {
    connect(ui->txtVoucher, &TextBox::enterPressed, this, &Voucher::OpenVoucher);
    connect(ui->cmdSelectCr, &Button::clicked, this, [this] { cmdSelect_Click(Side::Credit); });
    connect(ui->cmdSelectDr, &Button::clicked, this, [this] { cmdSelect_Click(Side::Debit); });
    connect(ui->cmdAdd, &Button::clicked, this, &Voucher::cmdAdd_Click);
    connect(ui->acmRemove, &Button::clicked, this, &Voucher::acmRemove_Click);
    connect(ui->MshEntry, &Grid::rowDoubleClicked, this, &Voucher::MshEntry_DblClick);
    connect(ui->cmdSave, &Button::clicked, this, &Voucher::cmdSave_Click);
    connect(ui->cmdDelete, &Button::clicked, this, &Voucher::cmdDelete_Click);
    connect(ui->cmdCancel, &Button::clicked, this, &Voucher::cmdCancel_Click);
    connect(ui->cmdPrint, &Button::clicked, this, &Voucher::cmdPrint_Click);
    connect(ui->cmdExit, &Button::clicked, this, [this] { Unload(); });
    if (m_kind.statusHandsFocusOn)
        connect(ui->txtVouStatus, &TextBox::gotFocus, this, [this] { SetFocus(ui->DTPicker); });
    if (m_kind.amountTurnsYellow) {
        connect(ui->txtDRCR, &TextBox::gotFocus, this,
                [this] { ui->txtDRCR->setStyleSheet("background: #ffff66"); });
        connect(ui->txtDRCR, &TextBox::lostFocus, this,
                [this] { ui->txtDRCR->setStyleSheet("background: white"); });
    }
}

void Voucher::connectSearch() {
    connect(ui->cboSearch, &ComboBox::changed, this, &Voucher::cboSearch_Change);
    connect(ui->cboSearch, &ComboBox::clicked, this, &Voucher::cboSearch_Change);
    connect(ui->txtSearch, &TextBox::changed, this, &Voucher::SearchGrd);
    connect(ui->txtSearch, &TextBox::upOrDown, this, [this] { SetFocus(ui->mshSearch); });
    connect(ui->DTPSearch, &DateBox::changed, this, &Voucher::SearchGrd);
    connect(ui->DTPSearch, &DateBox::clicked, this, &Voucher::SearchGrd);
    connect(ui->DTPSearch, &DateBox::keyReleased, this, [this](int key) {
        if (key == Qt::Key_Backspace)
            SearchGrd();
    });
    connect(ui->mshSearch, &Grid::rowDoubleClicked, this, &Voucher::mshSearch_DblClick);
}

void Voucher::cmdSelect_Click(Side side) {
    m_callerSlot = side == Side::Debit ? "DR" : "CR";
    if (side == m_kind.bankSide)
        shell::gFindFilter = "B";
    accounts::frmFindAC::reference->Show();
    if (side == m_kind.bankSide)
        accounts::frmFindAC::reference->chkAll().setVisible(true);
}

bool Voucher::lineIsComplete() {
    const auto refuse = [&](const char *message, Focus focus) {
        MsgBox(message, vbInformation);
        moveFocus(focus);
        return false;
    };
    if (ui->txtDRCR->text() == ".")
        ui->txtDRCR->clear();
    if (ui->txtDrAc->Tag().isEmpty())
        return refuse("Please Select Debit Account", m_kind.afterNoDebit);
    if (ui->txtCrAc->Tag().isEmpty())
        return refuse("Please Select Credit Account", m_kind.afterNoCredit);
    if (ui->txtDrAc->Tag() == ui->txtCrAc->Tag())
        return refuse("same account title not allow, please change debit or cedit Account",
                      m_kind.afterSameAccount);
    if (leadingNumber(ui->txtDRCR->text()) <= Decimal())
        return refuse("please enter Amount", Focus::Amount);
    return true;
}

void Voucher::cmdAdd_Click() {
    if (!lineIsComplete())
        return;
    int row = ui->MshEntry->Rows();
    if (ui->txtGrdRow->text().isEmpty())
        ui->MshEntry->setRows(row + 1);
    else
        row = ui->txtGrdRow->text().toInt();
    for (int col = 0; col < int(m_kind.entry.size()); ++col)
        ui->MshEntry->setTextMatrix(row, col, read(m_kind.entry[std::size_t(col)].box));
    ui->txtGrdRow->clear();
    emptyAccounts(m_kind.emptiedByAdd);
    for (TextBox *box : {ui->txtDRCR, ui->txtChecque, ui->txtBill, ui->txtFile})
        box->clear();
    totGrdAmount();
    if (ui->cmdSelectDr->isEnabled())
        SetFocus(ui->cmdSelectDr);
    else if (ui->cmdSelectCr->isEnabled())
        SetFocus(ui->cmdSelectCr);
}

QString Voucher::read(Box box) const {
    switch (box) {
    case Box::DebitTag:
        return ui->txtDrAc->Tag();
    case Box::DebitText:
        return ui->txtDrAc->text();
    case Box::CreditTag:
        return ui->txtCrAc->Tag();
    case Box::CreditText:
        return ui->txtCrAc->text();
    case Box::Amount:
        return format(ui->txtDRCR->text(), "##,###0.00");
    case Box::Cheque:
        return ui->txtChecque->text();
    case Box::Naration:
        return ui->txtNaration->text();
    case Box::File:
        return ui->txtFile->text();
    case Box::Bill:
        return ui->txtBill->text();
    }
    Q_UNREACHABLE();
}

void Voucher::write(Box box, const QString &cell) {
    switch (box) {
    case Box::DebitTag:
        return ui->txtDrAc->setTag(cell);
    case Box::DebitText:
        return ui->txtDrAc->setText(cell);
    case Box::CreditTag:
        return ui->txtCrAc->setTag(cell);
    case Box::CreditText:
        return ui->txtCrAc->setText(cell);
    case Box::Amount:
        return ui->txtDRCR->setText(format(cell, "###0.00"));
    case Box::Cheque:
        return ui->txtChecque->setText(cell);
    case Box::Naration:
        return ui->txtNaration->setText(cell);
    case Box::File:
        return ui->txtFile->setText(cell);
    case Box::Bill:
        return ui->txtBill->setText(cell);
    }
}

void Voucher::MshEntry_DblClick(int row) {
    if (row < 1 || ui->MshEntry->TextMatrix(row, 0).isEmpty())
        return;
    ui->txtGrdRow->setText(QString::number(row));
    for (int col = 0; col < int(m_kind.entry.size()); ++col)
        write(m_kind.entry[std::size_t(col)].box, ui->MshEntry->TextMatrix(row, col));
}

void Voucher::acmRemove_Click() {
    if (ui->MshEntry->Rows() > 2)
        ui->MshEntry->RemoveItem(ui->MshEntry->Row());
    else
        setGrid();
    emptyAccounts(m_kind.emptiedByRemove);
    ui->txtDRCR->clear();
    ui->txtNaration->clear();
    ui->txtGrdRow->clear();
    totGrdAmount();
}

void Voucher::cmdSave_Click() {
    ui->cmdDelete->setEnabled(false);
    if (ui->MshEntry->Rows() <= 1) {
        MsgBox("Please enter less than one entry in detail", vbInformation);
        return;
    }
    ado::Transaction whole(shell::gCon);
    if (m_newVoucher)
        NewNo();
    const VoucherHeader header{ui->txtVoucher->text(), ui->DTPicker->Value(), ui->txtPaidTo->text(),
                               leadingNumber(ui->txtTotAmount->text())};
    writeHeader(m_kind, header, m_newVoucher);
    SearchGrd();
    replaceLines(m_kind, header, {*ui->MshEntry, ui->txtDrAc->Tag(), ui->txtCrAc->Tag()});
    whole.commit();
    ClearAll();
    SetFocus(ui->DTPicker);
    totGrdAmount();
}

void Voucher::cmdDelete_Click() {
    if (!ui->txtVoucher->text().isEmpty() &&
        MsgBox("are you sure Delete this Voucher ", controls::vbYesNo + vbInformation) == controls::vbYes) {
        deleteVoucher(m_kind, ui->txtVoucher->text());
        ClearAll();
        SetFocus(ui->DTPicker);
        ui->cmdDelete->setEnabled(false);
    }
    SearchGrd();
    totGrdAmount();
}

void Voucher::cmdCancel_Click() {
    ClearAll();
    SetFocus(ui->DTPicker);
    ui->cmdDelete->setEnabled(false);
}

void Voucher::cmdPrint_Click() {
    m_report.OpenReport(m_kind.report);
    const QString number = ui->txtVoucher->text();
    if (number.isEmpty()) {
        MsgBox("please enter voucher no.", vbInformation);
        SetFocus(ui->DTPicker);
        return;
    }
    shell::ReportSettings settings;
    settings.selection = "{MasJV.VouNo}= "_sql + number + " and {MasJV.VouStatus} = '" + m_kind.code +
                         "' and {Company.comActive} = 'Y'";
    m_report.prepare(settings);
    m_report.view();
}

void Voucher::cboSearch_Change() {
    ui->lblSearch->setText(ui->cboSearch->Text());
    ui->DTPSearch->setVisible(ui->cboSearch->Text() == "Date");
}

void Voucher::mshSearch_DblClick(int row) {
    if (row < 1 || ui->mshSearch->TextMatrix(row, 0).isEmpty())
        return;
    const QString number = ui->mshSearch->TextMatrix(row, 0);
    ClearAll();
    ui->txtVoucher->setText(number);
    ui->SSTab1->setCurrentIndex(0);
    OpenVoucher();
    m_newVoucher = false;
    SetFocus(ui->DTPicker);
}

} // namespace zel::vouchers
