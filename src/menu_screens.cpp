#include "menu_screens.h"

#include "accounts/frmAcSetting.h"
#include "accounts/frmAccount.h"
#include "admin/Frm_User.h"
#include "admin/frmCompany.h"
#include "admin/frmRemoveData.h"
#include "admin/frm_Tele_Directory.h"
#include "institute/frmCarryForward.h"
#include "institute/frmCourse.h"
#include "institute/frmFindApp.h"
#include "institute/frmInsRec.h"
#include "institute/frmSession.h"
#include "institute/frmSubject.h"
#include "institute/frmZelApplication.h"
#include "reports/frmRPTAccounts.h"
#include "shell/frmSecMenus.h"
#include "shell/frmVeiwer.h"
#include "vouchers/voucher.h"

namespace zel {

shell::Screens menuScreens() {
    using shell::shows;
    shell::Screens screens{
        {"mnuApp", shows(institute::frmZelApplication::reference)},
        {"mnuCarryFor", shows(institute::frmCarryForward::reference)},
        {"mnuCompany", shows(admin::frmCompany::reference)},
        {"mnu_TelDir", shows(admin::frm_Tele_Directory::reference)},
        {"mnuChartOfAC", shows(accounts::frmAccount::reference)},
        {"frmAccount", shell::showsMaximized(accounts::frmAccount::reference)},
        {"mnuVocSetting", shows(accounts::frmAcSetting::reference)},
        {"mnuSubject", shows(institute::frmSubject::reference)},
        {"mnuCourse", shows(institute::frmCourse::reference)},
        {"mnuSession", shows(institute::frmSession::reference)},
        {"mnuRecvVou", shows(institute::frmInsRec::reference)},
        {"mnuAddUser", shows(admin::Frm_User::reference)},
        {"frmRemoveData", shows(admin::frmRemoveData::reference)},
        {"frmFindApp", shows(institute::frmFindApp::reference, "Application finder")},
        {"frmVeiwer", shows(shell::frmVeiwer::reference, "Report on the screen")},
        {"frmSecMenus", shows(shell::frmSecMenus::reference)},
    };
    screens.merge(vouchers::voucherScreens());
    screens.merge(reports::reportScreens());
    return screens;
}

} // namespace zel
