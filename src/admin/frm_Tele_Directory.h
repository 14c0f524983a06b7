#pragma once

#include "shell/master_screen.h"

#include <memory>

namespace zel::admin {

namespace Ui {
class frm_Tele_Directory;
}

/// The telephone directory, an address book apart from the accounts.
class frm_Tele_Directory : public shell::MasterScreen {
    Q_OBJECT
public:
    inline static controls::FormReference<frm_Tele_Directory> reference;

    frm_Tele_Directory();
    ~frm_Tele_Directory() override;

protected:
    void writeFields() override;
    void clearReference() override { reference.clear(); }

private:
    std::unique_ptr<Ui::frm_Tele_Directory> ui;
};

} // namespace zel::admin
