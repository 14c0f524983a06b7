#pragma once

#include "shell/master_screen.h"

#include <memory>

namespace zel::admin {

namespace Ui {
class frmCompany;
}

/// The companies, of which reports print the active one. Only another one's mark takes it from a company.
class frmCompany : public shell::MasterScreen {
    Q_OBJECT
public:
    inline static controls::FormReference<frmCompany> reference;

    frmCompany();
    ~frmCompany() override;

protected:
    void cmdSave_Click() override;
    void cmdDelete_Click() override;
    void cmdCancel_Click() override;
    void Msh_DblClick() override;
    [[nodiscard]] bool beginSave() override;
    void writeFields() override;
    void showRow(int row) override;
    void ClearAll() override;
    void clearReference() override { reference.clear(); }

private:
    std::unique_ptr<Ui::frmCompany> ui;
};

} // namespace zel::admin
