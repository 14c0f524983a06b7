#pragma once

#include "platform/controls/form.h"
#include "shell/report_launcher.h"
#include "shell/screens.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace zel::controls {
class Button;
}

namespace zel::reports {

namespace Ui {
class frmRPTAccounts;
}
struct ReportItem;

/// "Accounts Report", the one screen behind the menu "Reports". Every item shows a frame with the run button
/// of its report on the same spot and shows or hides the selectors that all reports share; nothing is ever
/// put back but by closing the screen, by its close box or Ctrl+W.
class frmRPTAccounts : public controls::Form {
    Q_OBJECT
public:
    inline static controls::FormReference<frmRPTAccounts> reference;
    [[nodiscard]] static shell::Shortcuts keys();

    frmRPTAccounts();
    ~frmRPTAccounts() override;

    /// Shows the screen as a menu item wants it.
    void choose(const ReportItem &item);

protected:
    void Form_Load() override;
    void Form_Activate() override;
    void Form_Unload() override;

private:
    void connectButtons();
    void connectKeys();
    /// The buttons that fill in both dates.
    void connectPeriods();
    void fixSizes();
    /// The frame lies over those that are shown already, which lose Tab and their mnemonic.
    void bringToTop(const ReportItem &item);
    /// To what a clerk begins with.
    void focusFirst();

    void FixAccount();
    void FillSubjects();
    void DtaCourse_Change();
    void cmdFindAC_Click();

    void cmdCashBook_Click();
    void cmdBankBook_Click();
    void cmdLedger_Click();
    void cmdDetLedger_Click();
    void cmdTrialBal_Click();
    void cmdTrialControl_Click();
    void cmdTrialOpening_Click();
    void cmdFeeDetail_Click();
    void cmdStuFeeDet_Click();
    void cmdInActiveStuFeeDet_Click();

    /// Whether an account is chosen; otherwise the message has been shown and the focus set.
    [[nodiscard]] bool accountIsChosen();
    /// The account of cash payments; 0 when there is none, and then the message has been shown.
    [[nodiscard]] std::int64_t cashAccount();
    void showBook(const Sql &account);
    /// `exec` fills what the report reads.
    void showLedger(const Sql &exec);
    /// Runs it for the report opened last, now and whenever the viewer reads the report again: the work
    /// table may have been filled for another report by then.
    void fill(const Sql &exec);
    /// The latter alone.
    void refill(const Sql &exec);
    void showTrialBalance(const char *file, const Sql &procedure);
    struct StudentReport;
    /// One of the three forms of the report: of the session, of a course, of a subject.
    void showStudents(const StudentReport &report);

    /// The dates as statements and formulas take them, yyyy-mm-dd.
    [[nodiscard]] QString D1() const;
    [[nodiscard]] QString D2() const;
    /// The report's formula field that tells the period; `to` stands between the dates.
    [[nodiscard]] shell::ReportSettings::Formula Dates(Literal to) const;
    /// What the fee reports say of the session and of who asks for them.
    [[nodiscard]] std::vector<shell::ReportSettings::Formula> batchAndUser() const;

    std::unique_ptr<Ui::frmRPTAccounts> ui;
    shell::ReportLauncher m_report;
    controls::Button *m_run = nullptr; ///< of the frame on top
    /// The accounts of taxes and of shortage, as the setup of tax invoices has them; no report reads them.
    QString ITaxAC;
    QString STaxAC;
    QString OthAcCode;
};

/// The ten items of the menu.
[[nodiscard]] shell::Screens reportScreens();

} // namespace zel::reports
