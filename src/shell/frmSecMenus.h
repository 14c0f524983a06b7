#pragma once

#include "platform/controls/form.h"
#include "shell/screen_keys.h"

#include <array>
#include <memory>

class QCheckBox;

namespace zel::shell {

namespace Ui {
class frmSecMenus;
}

/// The rights of the whole installation: which menu items are shown. The check box's caption is the right's
/// key.
class frmSecMenus : public controls::Form {
    Q_OBJECT
public:
    inline static controls::FormReference<frmSecMenus> reference;
    [[nodiscard]] static Shortcuts keys() { return SaveAlone; }

    frmSecMenus();
    ~frmSecMenus() override;

protected:
    void Form_Load() override;
    void Form_Unload() override;

private:
    void OpenMenus();
    void cmdSave_Click();
    void Command1_Click();

    std::unique_ptr<Ui::frmSecMenus> ui;
    std::array<QCheckBox *, 19> m_boxes{}; ///< Check1 to Check19
};

} // namespace zel::shell
