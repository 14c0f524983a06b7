#include "accounts/frmAcSetting.h"
#include "accounts/frmAccount.h"
#include "institute/frmSession.h"
#include "platform/controls/application.h"
#include "shell/frmSecMenus.h"
#include "shell/module1.h"
#include "shell/screens.h"
#include "vouchers/voucher.h"

namespace {

/// The screens behind the menu; an item without a row here says that its screen is not part of this version.
zel::shell::Screens screens() {
    using namespace zel;
    using shell::shows;
    shell::Screens screens{
        {"mnuChartOfAC", shows(accounts::frmAccount::reference)},
        {"frmAccount", shell::showsMaximized(accounts::frmAccount::reference)},
        {"mnuVocSetting", shows(accounts::frmAcSetting::reference)},
        {"mnuSession", shows(institute::frmSession::reference)},
        {"frmSecMenus", shows(shell::frmSecMenus::reference)},
    };
    screens.merge(vouchers::voucherScreens());
    return screens;
}

} // namespace

int main(int argc, char *argv[]) {
    zel::controls::Application application(argc, argv);
    zel::shell::setScreens(screens());
    return application.run(zel::shell::Main);
}
