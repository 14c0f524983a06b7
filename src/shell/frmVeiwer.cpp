#include "shell/frmVeiwer.h"
#include "ui_frmVeiwer.h"

#include "platform/report/viewer/viewer_keys.h"

#include <iterator>
#include <vector>

namespace zel::shell {

frmVeiwer::frmVeiwer() : ui(std::make_unique<Ui::frmVeiwer>()) {
    ui->setupUi(this);
    closeOn({controls::keys::Close});
    connectKeys(*this, keys());
}

frmVeiwer::~frmVeiwer() = default;

Shortcuts frmVeiwer::keys() {
    static const auto both = [] {
        std::vector<controls::Shortcut> all(std::begin(viewer::keys::All), std::end(viewer::keys::All));
        all.push_back(controls::keys::Close);
        return all;
    }();
    return both;
}

viewer::CRViewer91 *frmVeiwer::CRViewer91() const {
    return ui->CRViewer91;
}

} // namespace zel::shell
