#pragma once

#include "platform/controls/form.h"
#include "shell/screen_keys.h"

#include <memory>

namespace zel::viewer {
class CRViewer91;
}

namespace zel::shell {

namespace Ui {
class frmVeiwer;
}

/// The one screen that shows reports; its reference is kept when it closes, which Ctrl+W does too.
class frmVeiwer : public controls::Form {
    Q_OBJECT
public:
    inline static controls::FormReference<frmVeiwer> reference;
    [[nodiscard]] static Shortcuts keys();

    frmVeiwer();
    ~frmVeiwer() override;

    [[nodiscard]] viewer::CRViewer91 *CRViewer91() const;

private:
    std::unique_ptr<Ui::frmVeiwer> ui;
};

} // namespace zel::shell
