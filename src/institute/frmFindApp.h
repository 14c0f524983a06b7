#pragma once

#include "platform/controls/form.h"
#include "shell/screen_keys.h"
#include "shell/search.h"

#include <memory>

namespace zel::institute {

namespace Ui {
class frmFindApp;
}

/// "Find Application". Whoever wants an application shows it without waiting and reads gFoundAppID when it
/// next becomes active.
class frmFindApp : public controls::Form {
    Q_OBJECT
public:
    inline static controls::FormReference<frmFindApp> reference;
    [[nodiscard]] static shell::Shortcuts keys() { return shell::CloseAlone; }

    frmFindApp();
    ~frmFindApp() override;

protected:
    void Form_Load() override;
    void Form_Activate() override;

private:
    void Msh_DblClick(int row);

    std::unique_ptr<Ui::frmFindApp> ui;
    std::unique_ptr<shell::Search> m_search;
};

} // namespace zel::institute
