#pragma once

#include "platform/controls/form.h"
#include "shell/report_launcher.h"
#include "shell/screen_keys.h"
#include "shell/search.h"
#include "vouchers/voucher_kind.h"

#include <memory>
#include <optional>

class QLabel;
class QTabWidget;

namespace zel::controls {
class Button;
class ComboBox;
class DateBox;
class TextBox;
} // namespace zel::controls

namespace zel::vouchers {

struct VoucherHeader;

/// The screen of a voucher kind: what tells the kinds apart is read from the kind, and its few own events are
/// the virtual procedures. The entry grid is the working copy of the voucher until it is saved. The screen's
/// .ui file has the controls that are found by name here, and the boxes of the kind's tables.
class VoucherScreen : public controls::Form {
    Q_OBJECT
public:
    /// The kind must outlive the screen.
    explicit VoucherScreen(const VoucherKind &kind);
    ~VoucherScreen() override;
    [[nodiscard]] static shell::Shortcuts keys();

protected:
    /// To be called by the constructor after setupUi. Error 730 names a control that is missing.
    void connectControls();

    void Form_Load() override;
    void Form_Activate() override;
    void Form_Unload() override;

    /// The lists of the screen's own combos, on load.
    virtual void fillCombos() {}
    /// What the finder lists for a side; none leaves it as it was and doesn't offer "All Accounts".
    [[nodiscard]] virtual std::optional<QString> finderFilter(Side side) const;
    /// The account has come into the side's box, and the focus has moved on.
    virtual void accountFound([[maybe_unused]] Side side) {}
    /// Before the checks that all kinds make; false after a message of its own.
    [[nodiscard]] virtual bool lineMayBeAdded() { return true; }
    /// Beside what the table empties.
    virtual void lineAdded() {}
    virtual void lineTakenBack([[maybe_unused]] int row) {}
    virtual void cleared() {}
    /// A text of the header row: its box's, but for the columns that a screen shows in another way.
    [[nodiscard]] virtual QString headerText(const HeaderColumn &column);
    virtual void showHeaderText(const HeaderShown &column, const QString &text);

    [[nodiscard]] const VoucherKind &kind() const { return m_kind; }
    /// The next save creates a voucher.
    [[nodiscard]] bool isNew() const { return m_newVoucher; }

private:
    /// An account box (title as text, RowID as Tag) with the button that chooses the account.
    struct Account {
        controls::TextBox *box;
        controls::Button *select;
    };

    void connectEntry();
    void connectSearch();

    void FixAccount();
    void SetMaxlength();
    void NewNo();
    /// Whether there is such a voucher.
    bool OpenVoucher();
    void showLines();
    void ClearAll();
    void SearchGrd();
    /// The list as it was when the voucher had its header and, by `listed`, not yet its lines.
    void SearchGrdBeforeLines(const VoucherHeader &saved, const RowsPtr &listed);
    void totGrdAmount();

    void cmdSelect_Click(Side side);
    void cmdAdd_Click();
    void acmRemove_Click();
    void cmdSave_Click();
    void cmdDelete_Click();
    void cmdCancel_Click();
    void cmdPrint_Click();
    void printSaved();
    void mshSearch_DblClick(int row);

    /// Whether a line may be added; otherwise the message has been shown and the focus set.
    bool lineIsComplete();
    [[nodiscard]] const Account &account(Side side) const;
    void moveFocus(Focus focus);
    /// "BP 112", as the clerk is told of the voucher shown.
    [[nodiscard]] QString shownName() const;
    /// The voucher of that number, by the definition opened last.
    void print(const QString &number);

    const VoucherKind &m_kind;
    shell::ReportLauncher m_report;
    bool m_newVoucher = true;
    QString m_saved; ///< the number of the voucher saved last; '' for none, or once it is deleted
    std::int64_t m_startVouNo = 0;
    QString m_callerSlot; ///< the side that the account finder fills: "DR" or "CR"

    Account m_debit{};
    Account m_credit{};
    controls::DateBox *DTPicker = nullptr;
    controls::TextBox *txtVoucher = nullptr;
    controls::TextBox *txtDRCR = nullptr;
    controls::TextBox *txtTotAmount = nullptr;
    QLabel *lblTotalAmount = nullptr;
    controls::Button *cmdSave = nullptr;
    controls::Button *cmdDelete = nullptr;
    QTabWidget *SSTab1 = nullptr;
    controls::Grid *mshSearch = nullptr;
    controls::DateBox *DTPSearch = nullptr;
    std::vector<shell::ScreenBox> m_emptiedByClearAll;
    std::unique_ptr<shell::LineGrid> m_lines;
    std::unique_ptr<shell::Search> m_search;
};

} // namespace zel::vouchers
