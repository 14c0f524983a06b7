// The procedures of the voucher screen; its events stand in voucher_entry.cpp.

#include "vouchers/voucher_screen.h"

#include "platform/base/number_text.h"
#include "platform/controls/button.h"
#include "platform/controls/combo_box.h"
#include "platform/controls/date_box.h"
#include "platform/controls/focus.h"
#include "platform/controls/msg_box.h"
#include "platform/controls/text_box.h"
#include "shell/entry_screen.h"
#include "shell/module1.h"
#include "shell/status_words.h"
#include "vouchers/held_cell.h"
#include "vouchers/voucher_store.h"

#include <QLabel>
#include <QTabWidget>

namespace zel::vouchers {

using controls::Button;
using controls::DateBox;
using controls::SetFocus;
using controls::TextBox;
using shell::gRs;
using shell::named;

VoucherScreen::VoucherScreen(const VoucherKind &kind) : m_kind(kind) {}

VoucherScreen::~VoucherScreen() = default;

void VoucherScreen::connectControls() {
    setObjectName(m_kind.form);
    m_debit = {&named<TextBox>(*this, "txtDrAc"), &named<Button>(*this, "cmdSelectDr")};
    m_credit = {&named<TextBox>(*this, "txtCrAc"), &named<Button>(*this, "cmdSelectCr")};
    DTPicker = &named<DateBox>(*this, "DTPicker");
    txtVoucher = &named<TextBox>(*this, "txtVoucher");
    txtDRCR = &named<TextBox>(*this, "txtDRCR");
    txtTotAmount = &named<TextBox>(*this, "txtTotAmount");
    lblTotalAmount = &named<QLabel>(*this, "lblTotalAmount");
    cmdSave = &named<Button>(*this, "cmdSave");
    cmdDelete = &named<Button>(*this, "cmdDelete");
    SSTab1 = &named<QTabWidget>(*this, "SSTab1");
    mshSearch = &named<controls::Grid>(*this, "mshSearch");
    DTPSearch = &named<DateBox>(*this, "DTPSearch");
    m_emptiedByClearAll = shell::screenBoxes(*this, m_kind.emptiedByClearAll);
    m_lines = std::make_unique<shell::LineGrid>(*this, m_kind.entry, [this](int row) { lineTakenBack(row); });
    m_search = std::make_unique<shell::Search>(
        searchOf(m_kind), shell::SearchControls{&named<controls::ComboBox>(*this, "cboSearch"),
                                                &named<TextBox>(*this, "txtSearch"), mshSearch, DTPSearch,
                                                &named<QLabel>(*this, "lblSearch")});
    connectEntry();
    connectSearch();
}

void VoucherScreen::Form_Load() {
    fillCombos();
    m_lines->reset();
    FixAccount();
    SetMaxlength();
    DTPicker->setValue(QDate::currentDate());
    DTPSearch->setValue(QDate::currentDate());
    SSTab1->setCurrentIndex(0);
    m_search->load();
    SearchGrd();
    NewNo();
}

void VoucherScreen::Form_Activate() {
    if (const auto found = shell::takeFoundAccount()) {
        const Side side = m_callerSlot == "DR"   ? Side::Debit
                          : m_callerSlot == "CR" ? Side::Credit
                                                 : Side::None;
        if (side != Side::None)
            found->showIn(*account(side).box);
        moveFocus(side == Side::Debit ? m_kind.afterFoundDebit : m_kind.afterFoundCredit);
        accountFound(side);
    }
    if (m_kind.emptiesFinderFilter)
        shell::gFindFilter.clear();
}

void VoucherScreen::Form_Unload() {
    shell::ApplyMenus();
}

void VoucherScreen::FixAccount() {
    openSetting(m_kind);
    if (gRs.RecordCount() == 0)
        return;
    gRs.MoveFirst();
    m_startVouNo = gRs.Fields("VouNo").value().integer();
    const QString status = gRs.Fields("AcStatus").text();
    if (status != "DR" && status != "CR")
        return;
    const Account &fixed = account(status == "DR" ? Side::Debit : Side::Credit);
    fixed.box->setText(gRs.Fields("AcTitle").text());
    if (!gRs.Fields("AcTitle").isNull())
        fixed.box->setTag(gRs.Fields("AcCode").text());
    const bool free = gRs.Fields("Fix").text() != "Y";
    fixed.select->setEnabled(free);
    fixed.box->setEnabled(free);
}

void VoucherScreen::SetMaxlength() {
    const auto limit = [this](const char *box, const char *column) {
        named<controls::TextField>(*this, box).setMaxTyped(gRs.Fields(column).DefinedSize());
    };
    shell::OpenRs("Select * From MasJv Where 0=1");
    limit("txtVoucher", "VouNo");
    limit("txtPaidTo", "PaidReceive");
    shell::OpenRs("Select * From DetJv Where 0=1");
    limit("txtNaration", "Naration");
    limit("txtChecque", "ChecqNo");
}

void VoucherScreen::NewNo() {
    txtVoucher->setText(nextNumber(m_kind, m_startVouNo));
    m_newVoucher = true;
}

bool VoucherScreen::OpenVoucher() {
    if (txtVoucher->text().isEmpty())
        return false;
    openHeader(m_kind, txtVoucher->text());
    if (gRs.RecordCount() == 0) {
        controls::MsgBox("Voucher not found!", controls::vbInformation);
        ClearAll();
        SetFocus(DTPicker);
        return false;
    }
    gRs.MoveFirst();
    DTPicker->setValue(gRs.Fields("VouDate").value().date());
    for (const HeaderShown &column : m_kind.headerShown)
        showHeaderText(column, gRs.Fields(column.column).text());
    openLines(m_kind, txtVoucher->text());
    const bool found = gRs.RecordCount() > 0;
    if (found)
        showLines();
    cmdDelete->setEnabled(found);
    totGrdAmount();
    return true;
}

QString VoucherScreen::headerText(const HeaderColumn &column) {
    return named<controls::TextField>(*this, column.box).shownText();
}

void VoucherScreen::showHeaderText(const HeaderShown &column, const QString &text) {
    TextBox &box = named<TextBox>(*this, column.box);
    box.setText(text);
    box.home(false);
}

void VoucherScreen::showLines() {
    gRs.MoveFirst();
    if (m_kind.firstRowBox != Side::None) {
        TextBox *box = account(m_kind.firstRowBox).box;
        box->setText(gRs.Fields(m_kind.firstRowText).text());
        box->setTag(gRs.Fields(m_kind.firstRowTag).text());
    }
    m_lines->reset();
    for (; !gRs.atEnd(); gRs.MoveNext())
        if (gRs.Fields(m_kind.keptWhenPositive).value().decimal() > Decimal())
            m_lines->append(gRs, m_kind.read);
}

void VoucherScreen::ClearAll() {
    shell::setUnderWay(*this, {});
    shell::empty(m_emptiedByClearAll);
    cleared();
    m_lines->reset();
    totGrdAmount();
    NewNo();
}

void VoucherScreen::SearchGrd() {
    m_search->run();
}

void VoucherScreen::SearchGrdBeforeLines(const VoucherHeader &saved, const RowsPtr &listed) {
    SearchGrd();
    if (gRs.atEnd())
        return;
    const int multi = listed->columnIndex("Multi");
    mshSearch->setDataSource(
        std::make_shared<HeldCell>(gRs.rows(), saved.number, multi, listed->value(0, multi)));
    mshSearch->setColumns(searchOf(m_kind).columns);
}

void VoucherScreen::totGrdAmount() {
    lblTotalAmount->setText("Total Amount : " + storedAmount(Decimal()));
    if (m_lines->isEmpty() && !m_kind.plainTotal)
        return;
    const Decimal total = m_lines->total(amountColumn(m_kind));
    lblTotalAmount->setText("Total Amount : " + shownAmount(total));
    txtTotAmount->setText(m_kind.plainTotal ? QString::fromStdString(total.toString()) : storedAmount(total));
}

const VoucherScreen::Account &VoucherScreen::account(Side side) const {
    return side == Side::Debit ? m_debit : m_credit;
}

void VoucherScreen::moveFocus(Focus focus) {
    switch (focus) {
    case Focus::Stays:
        return;
    case Focus::SelectDr:
        return SetFocus(m_debit.select);
    case Focus::SelectCr:
        return SetFocus(m_credit.select);
    case Focus::Amount:
        return SetFocus(txtDRCR);
    }
}

QString VoucherScreen::shownName() const {
    return QString::fromUtf8(m_kind.code.text()) + " " + txtVoucher->text();
}

void VoucherScreen::print(const QString &number) {
    shell::ReportSettings settings;
    settings.selection =
        "{MasJV.VouNo}= "_sql + number + " and {MasJV.VouStatus} = '" + m_kind.code + m_kind.printed;
    m_report.prepare(settings);
    m_report.view();
}

} // namespace zel::vouchers
