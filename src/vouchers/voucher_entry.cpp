// The events of the voucher screen; its procedures stand in voucher_screen.cpp.

#include "accounts/frmFindAC.h"
#include "platform/base/number_text.h"
#include "platform/controls/button.h"
#include "platform/controls/date_box.h"
#include "platform/controls/focus.h"
#include "platform/controls/msg_box.h"
#include "platform/controls/text_box.h"
#include "shell/entry_screen.h"
#include "shell/module1.h"
#include "shell/status_words.h"
#include "vouchers/voucher_screen.h"
#include "vouchers/voucher_store.h"

#include <QShortcut>
#include <QTabWidget>

namespace zel::vouchers {

using controls::Button;
using controls::DateBox;
using controls::MsgBox;
using controls::SetFocus;
using controls::TextBox;
using controls::vbInformation;
using shell::named;

namespace {
constexpr controls::Shortcut PrintSaved{Qt::Key_F12, "Prints what was saved last"};
} // namespace

shell::Shortcuts VoucherScreen::keys() {
    static constexpr controls::Shortcut Keys[] = {
        {Qt::Key_F7, "Finds the credit account", "cmdSelectCr"},
        {Qt::Key_F8, "Finds the debit account", "cmdSelectDr"},
        shell::SaveKey,
        PrintSaved,
    };
    return Keys;
}

void VoucherScreen::connectEntry() {
    const auto on = [this](const char *button, auto procedure) {
        connect(&named<Button>(*this, button), &Button::clicked, this, procedure);
    };
    on("cmdSelectCr", [this] { cmdSelect_Click(Side::Credit); });
    on("cmdSelectDr", [this] { cmdSelect_Click(Side::Debit); });
    on("cmdAdd", &VoucherScreen::cmdAdd_Click);
    on("acmRemove", &VoucherScreen::acmRemove_Click);
    on("cmdSave", &VoucherScreen::cmdSave_Click);
    on("cmdDelete", &VoucherScreen::cmdDelete_Click);
    on("cmdCancel", &VoucherScreen::cmdCancel_Click);
    on("cmdPrint", &VoucherScreen::cmdPrint_Click);
    on("cmdExit", [this] { Unload(); });
    connect(txtVoucher, &TextBox::enterPressed, this, &VoucherScreen::OpenVoucher);
    if (m_kind.statusHandsFocusOn)
        connect(&named<TextBox>(*this, "txtVouStatus"), &TextBox::gotFocus, this,
                [this] { SetFocus(DTPicker); });
    shell::connectKeys(*this, keys());
    auto *slip = new QShortcut(QKeySequence(PrintSaved.key), this);
    slip->setContext(Qt::WidgetWithChildrenShortcut);
    connect(slip, &QShortcut::activated, this, &VoucherScreen::printSaved);
}

void VoucherScreen::connectSearch() {
    connect(DTPSearch, &DateBox::clicked, this, &VoucherScreen::SearchGrd);
    connect(DTPSearch, &DateBox::keyReleased, this, [this](int key) {
        if (key == Qt::Key_Backspace)
            SearchGrd();
    });
    connect(mshSearch, &controls::Grid::rowDoubleClicked, this, &VoucherScreen::mshSearch_DblClick);
}

std::optional<QString> VoucherScreen::finderFilter(Side side) const {
    return side == m_kind.bankSide ? std::optional<QString>("B") : std::nullopt;
}

void VoucherScreen::cmdSelect_Click(Side side) {
    m_callerSlot = side == Side::Debit ? "DR" : "CR";
    const std::optional<QString> filter = finderFilter(side);
    if (filter)
        shell::gFindFilter = *filter;
    accounts::frmFindAC::reference->Show();
    if (filter)
        accounts::frmFindAC::reference->chkAll().setVisible(true);
}

bool VoucherScreen::lineIsComplete() {
    const auto refuse = [&](const char *message, Focus focus) {
        MsgBox(message, vbInformation);
        moveFocus(focus);
        return false;
    };
    const auto known = [&](const Account &account) {
        return m_kind.accountKnownBy == shell::Part::Tag ? account.box->Tag() : account.box->text();
    };
    if (!lineMayBeAdded())
        return false;
    if (txtDRCR->text() == ".")
        txtDRCR->clear();
    if (known(m_debit).isEmpty())
        return refuse("Please Select Debit Account", m_kind.afterNoDebit);
    if (known(m_credit).isEmpty())
        return refuse("Please Select Credit Account", m_kind.afterNoCredit);
    if (known(m_debit) == known(m_credit))
        return refuse("same account title not allow, please change debit or cedit Account",
                      m_kind.afterSameAccount);
    if (leadingNumber(txtDRCR->text()) <= Decimal())
        return refuse("please enter Amount", Focus::Amount);
    return true;
}

void VoucherScreen::cmdAdd_Click() {
    if (!lineIsComplete())
        return;
    m_lines->add();
    lineAdded();
    totGrdAmount();
    if (m_debit.select->isEnabled())
        SetFocus(m_debit.select);
    else if (m_credit.select->isEnabled())
        SetFocus(m_credit.select);
}

void VoucherScreen::acmRemove_Click() {
    m_lines->remove();
    totGrdAmount();
}

void VoucherScreen::cmdSave_Click() {
    cmdDelete->setEnabled(false);
    if (m_lines->isEmpty()) {
        MsgBox("Please enter less than one entry in detail", vbInformation);
        return;
    }
    std::optional<ado::Transaction> whole;
    if (m_kind.savedWhole)
        whole.emplace(shell::gCon);
    if (m_newVoucher)
        NewNo();
    VoucherHeader header{txtVoucher->text(), DTPicker->Value(), {}, leadingNumber(txtTotAmount->text())};
    for (const HeaderColumn &column : m_kind.header)
        if (takesText(column))
            header.texts << headerText(column);
    writeHeader(m_kind, header, m_newVoucher);
    // Within a transaction the list would be read whole, and the save would wait for it.
    RowsPtr listed;
    if (whole)
        listed = listedVoucher(m_kind, header.number);
    else
        SearchGrd();
    replaceLines(m_kind, header, {m_lines->grid(), m_debit.box->Tag(), m_credit.box->Tag()});
    if (whole) {
        whole->commit();
        SearchGrdBeforeLines(header, listed);
    }
    m_saved = header.number;
    shell::say(shownName() + " saved, " + shownAmount(header.total) + " (" + PrintSaved.shown() +
               " prints it)");
    ClearAll();
    SetFocus(DTPicker);
    totGrdAmount();
}

void VoucherScreen::cmdDelete_Click() {
    if (!txtVoucher->text().isEmpty() &&
        MsgBox("are you sure Delete this Voucher ", controls::vbYesNo + vbInformation) == controls::vbYes) {
        deleteVoucher(m_kind, txtVoucher->text());
        if (m_saved == txtVoucher->text())
            m_saved.clear();
        shell::say(shownName() + " deleted");
        ClearAll();
        SetFocus(DTPicker);
        cmdDelete->setEnabled(false);
    }
    SearchGrd();
    totGrdAmount();
}

void VoucherScreen::cmdCancel_Click() {
    ClearAll();
    SetFocus(DTPicker);
    cmdDelete->setEnabled(false);
}

void VoucherScreen::cmdPrint_Click() {
    m_report.OpenReport(m_kind.report);
    if (txtVoucher->text().isEmpty()) {
        MsgBox("please enter voucher no.", vbInformation);
        SetFocus(DTPicker);
        return;
    }
    print(txtVoucher->text());
}

/// The screen has the next number already, which cmdPrint would print.
void VoucherScreen::printSaved() {
    if (m_saved.isEmpty())
        return shell::say("no voucher saved here yet");
    m_report.OpenReport(m_kind.report);
    print(m_saved);
}

void VoucherScreen::mshSearch_DblClick(int row) {
    if (row < 1 || mshSearch->TextMatrix(row, 0).isEmpty())
        return;
    const QString number = mshSearch->TextMatrix(row, 0);
    ClearAll();
    txtVoucher->setText(number);
    SSTab1->setCurrentIndex(0);
    const bool opened = OpenVoucher();
    m_newVoucher = false;
    if (opened)
        shell::setUnderWay(*this, "correcting " + shownName());
    SetFocus(DTPicker);
}

} // namespace zel::vouchers
