#include "reports/report_items.h"

namespace zel::reports {

namespace {

using Screen = Ui::frmRPTAccounts;

constexpr Seen Stays = Seen::Stays;
constexpr Seen Shown = Seen::Shown;
constexpr Seen Hidden = Seen::Hidden;

// clang-format off
constexpr ReportItem items[] = {
    //                                                                                               account dates   session course and subject
    {"mnuCashBook", &Screen::frmCashBook, &Screen::LblCashBook, &Screen::cmdCashBook,                Hidden, Stays,  Hidden, Stays, &Screen::Label23},
    {"mnuBankBook", &Screen::frmBankBook, &Screen::LblBankBook, &Screen::cmdBankBook,                Stays,  Stays,  Hidden, Stays, &Screen::Label23},
    {"mnuSimpleLedger", &Screen::frmSimpleLedger, &Screen::LblSimpleLedger, &Screen::cmdLedger,      Stays,  Stays,  Hidden, Stays, &Screen::Label23},
    {"mnuDetLedger", &Screen::frmDetailLedger, &Screen::LblDetailLedger, &Screen::cmdDetLedger,      Stays,  Stays,  Hidden, Stays, &Screen::Label23},
    {"mnuSubTBSimple", &Screen::frmSubTBSimple, &Screen::LblSubTBSimple, &Screen::cmdTrialBal,       Hidden, Stays,  Hidden, Stays, &Screen::Label23},
    {"mnuControlTB", &Screen::frmControlTB, &Screen::LblControlTB, &Screen::cmdTrialControl,         Hidden, Stays,  Hidden, Stays, &Screen::Label23},
    {"mnuSubTBWOB", &Screen::frmSubTBWOB, &Screen::LblSubTBWOB, &Screen::cmdTrialOpening,            Hidden, Stays,  Hidden, Stays, &Screen::Label23},
    // Its session has no label of its own: the label it shows stands on another frame.
    {"mnuFee", &Screen::frmFeeDetail, &Screen::LblFeeDetail, &Screen::cmdFeeDetail,                  Hidden, Hidden, Shown,  Stays, &Screen::LblStuFeeDet},
    {"mnuStuFeeDet", &Screen::frmStuFeeDetail, &Screen::LblStuFeeDet, &Screen::cmdStuFeeDet,         Hidden, Hidden, Shown,  Shown, &Screen::Label23},
    {"mnuInctiveStuWiseRPT", &Screen::frmInActiveStuFeeDetail, &Screen::LblInActiveStuFeeDet, &Screen::cmdInActiveStuFeeDet,
                                                                                                     Hidden, Hidden, Shown,  Shown, &Screen::Label23},
};
// clang-format on

} // namespace

std::span<const ReportItem> reportItems() {
    return items;
}

} // namespace zel::reports
