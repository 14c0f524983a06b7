#pragma once

#include "shell/master_screen.h"

#include <memory>

namespace zel::institute {

namespace Ui {
class frmCourse;
}

/// Courses and how long they last.
class frmCourse : public shell::MasterScreen {
    Q_OBJECT
public:
    inline static controls::FormReference<frmCourse> reference;

    frmCourse();
    ~frmCourse() override;

protected:
    void fillCombos() override;
    void writeFields() override;
    void clearReference() override { reference.clear(); }

private:
    std::unique_ptr<Ui::frmCourse> ui;
};

} // namespace zel::institute
