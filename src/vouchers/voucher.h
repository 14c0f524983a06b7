#pragma once

#include "platform/controls/form.h"
#include "shell/report_launcher.h"
#include "shell/screens.h"
#include "vouchers/voucher_kind.h"

#include <memory>

namespace zel::controls {
class Button;
class TextBox;
} // namespace zel::controls

namespace zel::vouchers {

namespace Ui {
class Voucher;
}

/// The screen of every hand-entered voucher: what tells the five apart is read from the kind. Its objectName
/// is the kind's form. The entry grid is the working copy of the voucher until it is saved.
class Voucher : public controls::Form {
    Q_OBJECT
public:
    /// The kind is one of voucherKinds().
    explicit Voucher(const VoucherKind &kind);
    ~Voucher() override;

protected:
    void Form_Load() override;
    void Form_Activate() override;
    void Form_Unload() override;

private:
    /// An account box (title as text, RowID as Tag) with the button that chooses the account.
    struct Account {
        controls::TextBox *box;
        controls::Button *select;
    };

    void arrange();
    void connectEntry();
    void connectSearch();

    void setGrid();
    void FixAccount();
    void SetMaxlength();
    void NewNo();
    void OpenVoucher();
    void showLines();
    void ClearAll();
    void SearchGrd();
    void totGrdAmount();

    void cmdSelect_Click(Side side);
    void cmdAdd_Click();
    void acmRemove_Click();
    void MshEntry_DblClick(int row);
    void cmdSave_Click();
    void cmdDelete_Click();
    void cmdCancel_Click();
    void cmdPrint_Click();
    void cboSearch_Change();
    void mshSearch_DblClick(int row);

    /// Whether a line may be added; otherwise the message has been shown and the focus set.
    bool lineIsComplete();
    [[nodiscard]] Account account(Side side) const;
    void emptyAccounts(Sides sides);
    [[nodiscard]] QString read(Box box) const;
    void write(Box box, const QString &cell);
    void moveFocus(Focus focus);

    const VoucherKind &m_kind;
    std::unique_ptr<Ui::Voucher> ui;
    shell::ReportLauncher m_report;
    bool m_newVoucher = true;
    std::int64_t m_startVouNo = 0;
    QString m_callerSlot; ///< the side that the account finder fills: "DR" or "CR"
};

/// Brings the kind's screen up: the one that is open, else a fresh one.
void showVoucher(const VoucherKind &kind);

/// The screens of all kinds by their menu items.
[[nodiscard]] shell::Screens voucherScreens();

} // namespace zel::vouchers
