#pragma once

#include "platform/controls/form.h"

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

protected:
    void Form_Activate() override;

private:
    void cmdOK_Click();
    void cmdCancel_Click();

    std::unique_ptr<Ui::frmLocPass> ui;
};

} // namespace zel::shell
