#include "vouchers/voucher.h"

#include "platform/base/error.h"
#include "platform/base/number_text.h"
#include "platform/controls/focus.h"
#include "platform/controls/msg_box.h"
#include "shell/entry_screen.h"
#include "shell/module1.h"
#include "ui_voucher.h"
#include "vouchers/voucher_store.h"

#include <QPointer>

#include <map>

namespace zel::vouchers {

using controls::MsgBox;
using controls::SetFocus;
using controls::vbInformation;
using shell::gRs;

namespace {

constexpr int InvalidUseOfNull = 94;

QString shownCell(const ReadColumn &column) {
    const ado::Field field = gRs.Fields(column.field);
    if (column.shown == Shown::TextOrBlank)
        return field.text();
    if (field.isNull())
        throw Error(InvalidUseOfNull, QString("Invalid use of Null"));
    return column.shown == Shown::Amount ? shownAmount(field.value().decimal()) : field.text();
}

} // namespace

Voucher::Voucher(const VoucherKind &kind) : m_kind(kind), ui(std::make_unique<Ui::Voucher>()) {
    ui->setupUi(this);
    setObjectName(kind.form);
    arrange();
    connectEntry();
    connectSearch();
}

Voucher::~Voucher() = default;

void Voucher::Form_Load() {
    setGrid();
    FixAccount();
    SetMaxlength();
    ui->DTPicker->setValue(QDate::currentDate());
    ui->DTPSearch->setValue(QDate::currentDate());
    ui->SSTab1->setCurrentIndex(0);
    ui->cboSearch->addItems({"Voucher #", "Date", "Paid To"});
    ui->cboSearch->setCurrentIndex(0);
    ui->lblSearch->setText(ui->cboSearch->Text());
    SearchGrd();
    NewNo();
}

void Voucher::Form_Activate() {
    if (shell::gFoundRowID > 0) {
        const Side side = m_callerSlot == "DR"   ? Side::Debit
                          : m_callerSlot == "CR" ? Side::Credit
                                                 : Side::None;
        if (side != Side::None) {
            account(side).box->setText(shell::gFoundName);
            account(side).box->setTag(QString::number(shell::gFoundRowID));
        }
        moveFocus(side == Side::Debit ? m_kind.afterFoundDebit : m_kind.afterFoundCredit);
        shell::gFoundName.clear();
        shell::gFoundRowID = 0;
    }
    if (m_kind.emptiesFinderFilter)
        shell::gFindFilter.clear();
}

void Voucher::Form_Unload() {
    shell::ApplyMenus();
}

void Voucher::setGrid() {
    QList<controls::Grid::Column> columns;
    for (const EntryColumn &column : m_kind.entry)
        columns.append({column.heading, column.width,
                        column.box == Box::Amount ? Qt::AlignRight | Qt::AlignVCenter : Qt::Alignment()});
    ui->MshEntry->setRows(1);
    ui->MshEntry->setCols(int(columns.size()));
    ui->MshEntry->setColumns(columns);
}

void Voucher::FixAccount() {
    openSetting(m_kind);
    if (gRs.RecordCount() == 0)
        return;
    gRs.MoveFirst();
    m_startVouNo = gRs.Fields("VouNo").value().integer();
    const QString status = gRs.Fields("AcStatus").text();
    if (status != "DR" && status != "CR")
        return;
    const Account fixed = account(status == "DR" ? Side::Debit : Side::Credit);
    fixed.box->setText(gRs.Fields("AcTitle").text());
    if (!gRs.Fields("AcTitle").isNull())
        fixed.box->setTag(gRs.Fields("AcCode").text());
    const bool free = gRs.Fields("Fix").text() != "Y";
    fixed.select->setEnabled(free);
    fixed.box->setEnabled(free);
}

void Voucher::SetMaxlength() {
    shell::OpenRs("Select * From MasJv Where 0=1");
    ui->txtVoucher->setMaxTyped(gRs.Fields("VouNo").DefinedSize());
    ui->txtPaidTo->setMaxTyped(gRs.Fields("PaidReceive").DefinedSize());
    shell::OpenRs("Select * From DetJv Where 0=1");
    ui->txtNaration->setMaxTyped(gRs.Fields("Naration").DefinedSize());
    ui->txtChecque->setMaxTyped(gRs.Fields("ChecqNo").DefinedSize());
}

void Voucher::NewNo() {
    ui->txtVoucher->setText(nextNumber(m_kind, m_startVouNo));
    m_newVoucher = true;
}

void Voucher::OpenVoucher() {
    if (ui->txtVoucher->text().isEmpty())
        return;
    openHeader(m_kind, ui->txtVoucher->text());
    if (gRs.RecordCount() == 0) {
        MsgBox("Voucher not found!", vbInformation);
        ClearAll();
        SetFocus(ui->DTPicker);
        return;
    }
    gRs.MoveFirst();
    ui->DTPicker->setValue(gRs.Fields("VouDate").value().date());
    if (m_kind.readsHeaderCheque)
        ui->txtChecque->setText(gRs.Fields("ChecqNo").text());
    ui->txtPaidTo->setText(gRs.Fields("PaidReceive").text());
    ui->txtPaidTo->home(false);
    openLines(m_kind, ui->txtVoucher->text());
    const bool found = gRs.RecordCount() > 0;
    if (found)
        showLines();
    ui->cmdDelete->setEnabled(found);
    totGrdAmount();
}

void Voucher::showLines() {
    gRs.MoveFirst();
    if (m_kind.firstRowBox != Side::None) {
        controls::TextBox *box = account(m_kind.firstRowBox).box;
        box->setText(gRs.Fields(m_kind.firstRowText).text());
        box->setTag(gRs.Fields(m_kind.firstRowTag).text());
    }
    setGrid();
    for (; !gRs.atEnd(); gRs.MoveNext()) {
        if (gRs.Fields(m_kind.keptWhenPositive).value().decimal() <= Decimal())
            continue;
        const int row = ui->MshEntry->Rows();
        ui->MshEntry->setRows(row + 1);
        for (int col = 0; col < int(m_kind.read.size()); ++col)
            ui->MshEntry->setTextMatrix(row, col, shownCell(m_kind.read[std::size_t(col)]));
    }
}

void Voucher::ClearAll() {
    ui->txtVoucher->clear();
    ui->txtChecque->clear();
    ui->txtPaidTo->clear();
    emptyAccounts(m_kind.emptiedByClearAll);
    ui->txtDRCR->clear();
    ui->txtNaration->clear();
    ui->txtBill->clear();
    ui->txtGrdRow->clear();
    setGrid();
    totGrdAmount();
    NewNo();
}

void Voucher::SearchGrd() {
    static const QList<controls::Grid::Column> columns = {
        {"Voucher # ", 2000}, {"Voucher Date", 2000}, {"Paid To", 5000}, {"Amount", 2000}, {"Multi", 1000}};
    const QString criterion = ui->cboSearch->Text();
    openSearch(m_kind,
               criterion == "Date"      ? Criterion::Date
               : criterion == "Paid To" ? Criterion::PaidTo
                                        : Criterion::Number,
               ui->txtSearch->text(), ui->DTPSearch->Value());
    shell::fillGrid(*ui->mshSearch, gRs, columns);
}

void Voucher::totGrdAmount() {
    ui->lblTotalAmount->setText("Total Amount : " + storedAmount(Decimal()));
    if (ui->MshEntry->Rows() <= 1)
        return;
    const int amount = columnOf(m_kind, Box::Amount);
    Decimal total;
    for (int row = 1; row < ui->MshEntry->Rows(); ++row) {
        if (!ui->MshEntry->TextMatrix(row, 0).isEmpty())
            total += leadingNumber(format(ui->MshEntry->TextMatrix(row, amount), "###0.00"));
    }
    ui->lblTotalAmount->setText("Total Amount : " + shownAmount(total));
    ui->txtTotAmount->setText(storedAmount(total));
}

Voucher::Account Voucher::account(Side side) const {
    return side == Side::Debit ? Account{ui->txtDrAc, ui->cmdSelectDr}
                               : Account{ui->txtCrAc, ui->cmdSelectCr};
}

void Voucher::emptyAccounts(Sides sides) {
    for (const Side side : {Side::Debit, Side::Credit}) {
        if (side == Side::Debit ? sides.debit : sides.credit) {
            account(side).box->clear();
            account(side).box->setTag({});
        }
    }
}

void Voucher::moveFocus(Focus focus) {
    switch (focus) {
    case Focus::Stays:
        return;
    case Focus::SelectDr:
        return SetFocus(ui->cmdSelectDr);
    case Focus::SelectCr:
        return SetFocus(ui->cmdSelectCr);
    case Focus::Amount:
        return SetFocus(ui->txtDRCR);
    }
}

void showVoucher(const VoucherKind &kind) {
    static std::map<const VoucherKind *, QPointer<Voucher>> references;
    QPointer<Voucher> &voucher = references[&kind];
    if (!voucher || voucher->isUnloaded())
        voucher = new Voucher(kind);
    voucher->Show();
}

shell::Screens voucherScreens() {
    shell::Screens screens;
    for (const VoucherKind &kind : voucherKinds())
        screens[kind.menu] = [&kind] { showVoucher(kind); };
    return screens;
}

} // namespace zel::vouchers
