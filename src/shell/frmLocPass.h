#pragma once

#include "platform/controls/form.h"

#include <QString>

#include <memory>

namespace zel::shell {

namespace Ui {
class frmLocPass;
}

/// The lock in front of the administrator's screens. Whoever opens it sets one of gAddAccount, gOpenSetMenus
/// and gOpenRemoveData first.
class frmLocPass : public controls::Form {
    Q_OBJECT
public:
    inline static controls::FormReference<frmLocPass> reference;

    frmLocPass();
    ~frmLocPass() override;

    /// The screen that the right password opens as the flags stand; '' when none is set.
    [[nodiscard]] static QString destination();

protected:
    void Form_Load() override;
    void Form_Activate() override;

private:
    void cmdOK_Click();
    void cmdCancel_Click();

    std::unique_ptr<Ui::frmLocPass> ui;
};

} // namespace zel::shell
