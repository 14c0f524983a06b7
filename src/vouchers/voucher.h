#pragma once

#include "shell/screens.h"
#include "vouchers/voucher_screen.h"

namespace zel::vouchers {

namespace Ui {
class Voucher;
}

/// The screen of the five hand-entered kinds.
class Voucher : public VoucherScreen {
    Q_OBJECT
public:
    /// The kind is one of voucherKinds().
    explicit Voucher(const VoucherKind &kind);
    ~Voucher() override;

private:
    void arrange();

    std::unique_ptr<Ui::Voucher> ui;
};

/// Brings the kind's screen up: the one that is open, else a fresh one.
void showVoucher(const VoucherKind &kind);

/// The screens of all kinds by their menu items.
[[nodiscard]] shell::Screens voucherScreens();

} // namespace zel::vouchers
