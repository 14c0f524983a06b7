#include "shell/frmVeiwer.h"
#include "ui_frmVeiwer.h"

namespace zel::shell {

frmVeiwer::frmVeiwer() : ui(std::make_unique<Ui::frmVeiwer>()) {
    ui->setupUi(this);
    closeOn({Qt::CTRL | Qt::Key_W});
}

frmVeiwer::~frmVeiwer() = default;

viewer::CRViewer91 *frmVeiwer::CRViewer91() const {
    return ui->CRViewer91;
}

} // namespace zel::shell
