#pragma once

#include <QWidget>

#include <memory>

namespace zel::vouchers {

namespace Ui {
class VoucherSearchPage;
}

/// The search tab of all vouchers' screens: cboSearch, lblSearch, txtSearch, DTPSearch and the list
/// mshSearch.
class VoucherSearchPage : public QWidget {
    Q_OBJECT
public:
    explicit VoucherSearchPage(QWidget *parent = nullptr);
    ~VoucherSearchPage() override;

private:
    std::unique_ptr<Ui::VoucherSearchPage> ui;
};

} // namespace zel::vouchers
