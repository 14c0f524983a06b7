#pragma once

#include "platform/controls/form.h"

#include <memory>

namespace zel::institute {

namespace Ui {
class frmSearchSub;
}

/// The subject finder: all subjects of a course, or, while gFoundAppID names an application, those of its
/// lines that are inactive. Whoever wants a subject shows it without waiting and reads gSubID and its
/// companions when it next becomes active; it empties them then.
class frmSearchSub : public controls::Form {
    Q_OBJECT
public:
    inline static controls::FormReference<frmSearchSub> reference;

    frmSearchSub();
    ~frmSearchSub() override;

protected:
    void Form_Load() override;
    void Form_Activate() override;
    void Form_Unload() override;
    void Form_LostFocus() override;

private:
    void FillGrid();
    void setGrid();
    void Msh_DblClick(int row);
    void cmdSubject_Click();
    void txtExit_Click();

    std::unique_ptr<Ui::frmSearchSub> ui;
};

} // namespace zel::institute
