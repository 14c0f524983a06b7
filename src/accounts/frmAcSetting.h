#pragma once

#include "platform/controls/form.h"
#include "shell/screen_keys.h"

#include <QString>

#include <memory>

namespace zel::accounts {

namespace Ui {
class frmAcSetting;
}
struct SettingTables;

/// "Voucher Setup": the thirteen rows of VouSetting on one page, replaced whole at each save.
class frmAcSetting : public controls::Form {
    Q_OBJECT
public:
    inline static controls::FormReference<frmAcSetting> reference;
    [[nodiscard]] static shell::Shortcuts keys() { return shell::SaveAlone; }

    frmAcSetting();
    ~frmAcSetting() override;

protected:
    void Form_Load() override;
    void Form_Activate() override;
    void Form_Unload() override;

private:
    void FillVouSetting();
    void cmdSave_Click();
    void cmdClear_Click();
    void cmdExit_Click();

    std::unique_ptr<Ui::frmAcSetting> ui;
    std::unique_ptr<SettingTables> m_tables;
    QString CallerSlot; ///< which find button the finder's answer belongs to
};

} // namespace zel::accounts
