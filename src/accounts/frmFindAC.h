#pragma once

#include "platform/controls/form.h"

#include <QString>

#include <memory>

namespace zel::controls {
class CheckBox;
}

namespace zel::accounts {

namespace Ui {
class frmFindAC;
}

/// "Search Account": the one place where a screen asks for an account. Whoever wants one sets gFindFilter,
/// shows the finder without waiting, and reads gFoundRowID and its companions when it next becomes active; it
/// empties gFoundName and gFoundRowID then.
class frmFindAC : public controls::Form {
    Q_OBJECT
public:
    inline static controls::FormReference<frmFindAC> reference;

    frmFindAC();
    ~frmFindAC() override;

    /// "All Accounts", which widens the list. It is hidden until a caller shows it; one that holds the user
    /// to its filter disables it.
    [[nodiscard]] controls::CheckBox &chkAll();

protected:
    void Form_Load() override;
    void Form_Activate() override;
    void Form_Unload() override;

private:
    void FillGrid();
    void chkAll_Click();
    void mshSearch_DblClick(int row);
    void cmdAccounts_Click();
    void cmdExit_Click();

    std::unique_ptr<Ui::frmFindAC> ui;
    QString SavedFilter;      ///< gFindFilter as the caller set it
    bool m_filledNow = false; ///< in the event that is under way
};

} // namespace zel::accounts
