#include "vouchers/voucher.h"

#include "ui_voucher.h"

#include <QPointer>

#include <map>

namespace zel::vouchers {

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

Voucher::Voucher(const VoucherKind &kind) : VoucherScreen(kind), ui(std::make_unique<Ui::Voucher>()) {
    ui->setupUi(this);
    arrange();
    connectControls();
}

Voucher::~Voucher() = default;

void Voucher::arrange() {
    setWindowTitle(kind().caption);
    ui->lblTitle->setText(kind().caption);
    ui->lblPaidTo->setText(kind().paidToLabel);
    ui->txtPaidTo->setAccessibleName(ui->lblPaidTo->text().remove(':').trimmed());
    ui->txtVouStatus->setText(QString::fromUtf8(kind().code.text()));
    if (kind().fileBeforeBill) {
        swapPlaces(*ui->layoutFields, ui->lblBill, ui->lblFile);
        swapPlaces(*ui->layoutFields, ui->txtBill, ui->txtFile);
        setTabOrder(ui->txtChecque, ui->txtFile);
        setTabOrder(ui->txtFile, ui->txtBill);
        setTabOrder(ui->txtBill, ui->txtNaration);
    }
    if (kind().amountTurnsYellow) {
        connect(ui->txtDRCR, &controls::TextBox::gotFocus, this,
                [this] { ui->txtDRCR->setStyleSheet("background: #ffff66"); });
        connect(ui->txtDRCR, &controls::TextBox::lostFocus, this,
                [this] { ui->txtDRCR->setStyleSheet("background: white"); });
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
        screens[kind.menu] = {[&kind] { showVoucher(kind); }, VoucherScreen::keys()};
    return screens;
}

} // namespace zel::vouchers
