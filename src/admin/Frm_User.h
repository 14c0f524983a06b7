#pragma once

#include "shell/master_screen.h"

#include <memory>

namespace zel::admin {

namespace Ui {
class Frm_User;
}

/// Who may use the system: a row of User_Information and, made by the same save, a login of the server,
/// always an administrator's. The password stands in the row as it is typed.
class Frm_User : public shell::MasterScreen {
    Q_OBJECT
public:
    inline static controls::FormReference<Frm_User> reference;

    Frm_User();
    ~Frm_User() override;

protected:
    void Form_Unload() override;
    void cmdExit_Click() override;
    void cmdPrint_Click() override;
    [[nodiscard]] bool beginSave() override;
    void rowOpened(bool isNew) override;
    void writeFields() override;
    void FillData() override;
    void showRow(int row) override;
    void clearReference() override { reference.clear(); }

private:
    void addLogin();
    void changePassword();

    std::unique_ptr<Ui::Frm_User> ui;
    bool IsNewUser = false; ///< what the last save was
    QString OldPass;        ///< of the row chosen last
};

} // namespace zel::admin
