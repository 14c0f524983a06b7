#pragma once

#include "platform/controls/form.h"
#include "shell/line_grid.h"
#include "shell/screen_keys.h"
#include "shell/search.h"

#include <memory>

namespace zel::institute {

namespace Ui {
class frmCarryForward;
}

/// "Carry Forward": moves subjects of a student's application into a later session. Each line with an amount
/// is also a credit of kind CF on the student's account, alone and without a header; the form's number is its
/// VouNo.
///
/// The Tag of txtStuNm is "M" until an application has been shown; from then on it is the number of the
/// student's account. Clearing the form leaves it.
class frmCarryForward : public controls::Form {
    Q_OBJECT
public:
    inline static controls::FormReference<frmCarryForward> reference;
    [[nodiscard]] static shell::Shortcuts keys();

    frmCarryForward();
    ~frmCarryForward() override;

protected:
    void Form_Load() override;
    /// Takes what the finders have handed over. The application stays handed over until the screen unloads,
    /// since the subject finder goes by it: each return to this window shows it again.
    void Form_Activate() override;
    void Form_Unload() override;

private:
    void connectEntry();

    void FixAccount();
    void NewNo();
    void FillGrid();
    /// Shows the student of the application in txtStudent.
    void OpenData();
    void openFormData();
    void ClearAll();

    void cmdFindsubject_Click();
    /// Shows the message, then gives the focus to `next`; false.
    static bool refuse(const char *message, QWidget *next);
    /// Whether the line may be added; otherwise the message has been shown and the focus set.
    bool lineIsComplete();
    void cmd_ADD_1_Click();
    void cmdSave_Click();
    void writeHeader();
    void writeLines();
    void CreateCFJV();
    void cmdDelete_Click();
    void cmdExit_Click();
    void Msh_DblClick(int row);

    /// "Carry forward 12", as the clerk is told of the form shown.
    [[nodiscard]] QString shownName() const;

    std::unique_ptr<Ui::frmCarryForward> ui;
    std::unique_ptr<shell::LineGrid> m_lines;
    std::unique_ptr<shell::Search> m_search;
    bool m_shownBefore = false;
    bool IsNewForm = true;
    std::int64_t CashAc = 0; ///< the account that takes cash receipts, 0 when none is set up
};

} // namespace zel::institute
