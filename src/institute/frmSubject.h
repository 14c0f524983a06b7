#pragma once

#include "shell/master_screen.h"

#include <memory>

namespace zel::institute {

namespace Ui {
class frmSubject;
}

/// Subjects, each of one course and with its fee. While gAddSubject is set the subject finder has opened it.
class frmSubject : public shell::MasterScreen {
    Q_OBJECT
public:
    inline static controls::FormReference<frmSubject> reference;

    frmSubject();
    ~frmSubject() override;

protected:
    void Form_Unload() override;
    void fillCombos() override;
    [[nodiscard]] bool beginSave() override;
    void writeFields() override;
    void cmdExit_Click() override;
    void clearReference() override { reference.clear(); }

private:
    std::unique_ptr<Ui::frmSubject> ui;
};

} // namespace zel::institute
