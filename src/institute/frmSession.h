#pragma once

#include "shell/master_screen.h"

#include <memory>

namespace zel::institute {

namespace Ui {
class frmSession;
}

/// Teaching sessions.
class frmSession : public shell::MasterScreen {
    Q_OBJECT
public:
    inline static controls::FormReference<frmSession> reference;

    frmSession();
    ~frmSession() override;

protected:
    void clearReference() override { reference.clear(); }

private:
    std::unique_ptr<Ui::frmSession> ui;
};

} // namespace zel::institute
