#include "menu_screens.h"

#include "accounts/frmAcSetting.h"
#include "accounts/frmAccount.h"
#include "institute/frmInsRec.h"
#include "institute/frmSession.h"
#include "reports/frmRPTAccounts.h"
#include "shell/frmSecMenus.h"
#include "vouchers/voucher.h"

namespace zel {

shell::Screens menuScreens() {
    using shell::shows;
    shell::Screens screens{
        {"mnuChartOfAC", shows(accounts::frmAccount::reference)},
        {"frmAccount", shell::showsMaximized(accounts::frmAccount::reference)},
        {"mnuVocSetting", shows(accounts::frmAcSetting::reference)},
        {"mnuSession", shows(institute::frmSession::reference)},
        {"mnuRecvVou", shows(institute::frmInsRec::reference)},
        {"frmSecMenus", shows(shell::frmSecMenus::reference)},
    };
    screens.merge(vouchers::voucherScreens());
    screens.merge(reports::reportScreens());
    return screens;
}

} // namespace zel
