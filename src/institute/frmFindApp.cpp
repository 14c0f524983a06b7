#include "institute/frmFindApp.h"

#include "institute/application_search.h"
#include "platform/controls/focus.h"
#include "shell/module1.h"
#include "ui_frmFindApp.h"

namespace zel::institute {

frmFindApp::frmFindApp() : Form(Kind::OwnSize), ui(std::make_unique<Ui::frmFindApp>()) {
    ui->setupUi(this);
    // Alt+X as in the other finders; else the key would be the menu's, which leaves all screens.
    closeOn({controls::keys::Close, controls::keys::Leave});
    shell::connectKeys(*this, keys());
    m_search = std::make_unique<shell::Search>(
        applicationFinderSearch(),
        shell::SearchControls{.criterion = ui->cboCriteria, .value = ui->txt_s_value, .list = ui->Msh});
    connect(ui->Msh, &controls::Grid::rowDoubleClicked, this, &frmFindApp::Msh_DblClick);
    connect(ui->Msh, &controls::Grid::enterPressed, this, &frmFindApp::Msh_DblClick);
}

frmFindApp::~frmFindApp() = default;

void frmFindApp::Form_Load() {
    m_search->load();
    m_search->run();
}

void frmFindApp::Form_Activate() {
    controls::SetFocus(ui->txt_s_value);
}

void frmFindApp::Msh_DblClick(int row) {
    if (row < 1 || ui->Msh->TextMatrix(row, 0).isEmpty())
        return;
    shell::gFoundAppID = ui->Msh->TextMatrix(row, 0).toInt();
    Unload();
    reference.clear();
}

} // namespace zel::institute
