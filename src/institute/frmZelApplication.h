#pragma once

#include "platform/base/decimal.h"
#include "platform/controls/form.h"
#include "shell/line_grid.h"
#include "shell/report_launcher.h"
#include "shell/screen_keys.h"
#include "shell/search.h"

#include <memory>

namespace zel::institute {

namespace Ui {
class frmZelApplication;
}

/// The application form: registers a student for a session, with the subjects taken, and keeps the student's
/// account in the chart. An empty txtAppId means that the next save creates an application, a filled one that
/// it changes that one.
///
/// The Tag of txtStuNm is "M" until an application is opened; from then on it is the number of the student's
/// account, which the account's statements read there. Clearing the form leaves it.
class frmZelApplication : public controls::Form {
    Q_OBJECT
public:
    inline static controls::FormReference<frmZelApplication> reference;
    [[nodiscard]] static shell::Shortcuts keys() { return shell::SaveAlone; }

    frmZelApplication();
    ~frmZelApplication() override;

protected:
    void Form_Load() override;
    /// Takes the subject that the finder has handed over.
    void Form_Activate() override;
    void Form_Unload() override;

private:
    void connectEntry();
    void connectLine();
    void connectSearch();

    void setGrid();
    void SetMaxLenght();
    void FillGrid();
    void OpenData();
    void showLines();
    void ClearAll();
    void totAmount();

    void txtDiscount_KeyUp();
    void txtRecAmt_KeyUp();
    void txtReceive_KeyUp();
    void showNetAmount();
    void cmd_ADD_1_Click();
    void cmd_Delete_2_Click();
    void cmdPrint_Click();
    void cmdPrintStuRecord_Click();
    void cmdExit_Click();
    void Msh_DblClick(int row);

    void cmdSave_Click();
    /// Whether the save may begin; otherwise the message has been shown and the focus set.
    bool mayBeSaved();
    /// Whether no other student below the head account has the name, blanks aside.
    [[nodiscard]] bool nameIsFree() const;
    void writeHeader();
    void writeLines();

    void FixAccount();
    void CreateSubsidiaryAccount();
    void writeAccount();
    /// The RowID of the first account of the student's name, 0 for none.
    [[nodiscard]] QString accountOfName() const;
    /// The money taken: debit cash, credit the student.
    void writeReceipt(const QString &student);
    void cmdDelete_Click();
    /// Whether nothing but its own receipt stands on the student's account; else the message has been shown.
    bool accountIsUnused();

    /// The student's name as accounts are compared by it.
    [[nodiscard]] QString nameWithoutBlanks() const;

    std::unique_ptr<Ui::frmZelApplication> ui;
    std::unique_ptr<shell::LineGrid> m_lines;
    std::unique_ptr<shell::Search> m_search;
    std::vector<shell::ScreenBox> m_lineBoxes;
    shell::ReportLauncher m_report;
    QString ParentNodes;     ///< code of the students' head account, '' when none is set up
    std::int64_t CashAc = 0; ///< the account that takes the cash, 0 when none is set up
    QString OldStuName;      ///< the name as loaded
    bool IsNewApp = false;   ///< the save under way creates the application
};

} // namespace zel::institute
