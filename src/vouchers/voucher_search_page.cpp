#include "vouchers/voucher_search_page.h"
#include "ui_voucher_search_page.h"

namespace zel::vouchers {

VoucherSearchPage::VoucherSearchPage(QWidget *parent)
    : QWidget(parent), ui(std::make_unique<Ui::VoucherSearchPage>()) {
    ui->setupUi(this);
}

VoucherSearchPage::~VoucherSearchPage() = default;

} // namespace zel::vouchers
