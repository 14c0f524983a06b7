#pragma once

#include "platform/controls/form.h"

#include <memory>

namespace zel::shell {

class Display;
namespace Ui {
class frmLogin;
}

/// The first screen of a run, and the one that Exit returns to. Opens gCon with the typed login.
class frmLogin : public controls::Form {
    Q_OBJECT
public:
    inline static controls::FormReference<frmLogin> reference;

    frmLogin();
    ~frmLogin() override;

    /// Changes of the display mode, ready for a caller; nothing calls them. 1024 x 768 and back to the
    /// default.
    void SetResulation();
    void setDefautResulation();
    /// The layer that they go through; one that can do nothing unless another is given.
    void setDisplay(std::unique_ptr<Display> display);

protected:
    void Form_Load() override;

private:
    void cmdLogIn_Click();
    void cmdCancel_Click();

    std::unique_ptr<Ui::frmLogin> ui;
    std::unique_ptr<Display> m_display;
};

} // namespace zel::shell
