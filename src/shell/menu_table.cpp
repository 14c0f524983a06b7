#include "shell/menu_table.h"

namespace zel::shell {

namespace {
constexpr MenuRow rows[] = {
    {0, "mnu_Reg_Form", "REGISTRATIONS"},
    {1, "mnuApp", "Application Form", "Ctrl+A"},
    {1, "gp0", "-"},
    {1, "mnuCarryFor", "Carry Forward Entry", "Ctrl+C"},
    {1, "gp01", "-"},
    {1, "mnuCompany", "Company"},
    {1, "gpt", "-"},
    {1, "mnu_TelDir", "Telephone Directory", "Ctrl+T"},
    {1, "gp1", "-"},
    {1, "mnuChartOfAC", "Chart Of Accounts", "Ctrl+O"},
    {1, "gp2", "-"},
    {1, "mnuVocSetting", "Voucher Setup"},
    {1, "gp3", "-"},
    {1, "mnuSubject", "Subjects", "Ctrl+S"},
    {1, "gp4", "-"},
    {1, "mnuCourse", "Course", "Ctrl+U"},
    {1, "gp5", "-"},
    {1, "mnuSession", "Session", "Ctrl+I"},

    {0, "mnuMainTrans", "TRANSACTION"},
    {1, "mnuMainVouc", "Vouchers"},
    {2, "mnuCPVou", "Cash Payment Voucher", "Ctrl+F1"},
    {2, "mnuCRVou", "Cash Receive Voucher", "Ctrl+F2"},
    {2, "mnuBVouc3", "-"},
    {2, "mnuBPVouc", "Bank Payment Voucher", "Ctrl+F3"},
    {2, "mnuBRVouc", "Bank Receive Voucher", "Ctrl+F4"},
    {2, "mnuBVouc2", "-"},
    {2, "mnuJVVouc", "Journal Voucher", "Ctrl+F5"},
    {2, "mnuBVouc13", "-"},
    {2, "mnuRecvVou", "Fee Receive Voucher", "Ctrl+F6"},

    {0, "mnuMainRpt", "Reports"},
    {1, "mnuCashBook", "CASH BOOK"},
    {1, "mnuRBlank", "-"},
    {1, "mnuBankBook", "BANK BOOK"},
    {1, "mnuRBlank1", "-"},
    {1, "mnuSimpleLedger", "SIMPLE LEDGER"},
    {1, "mnuRBlank2", "-"},
    {1, "mnuDetLedger", "DETAIL LEDGER"},
    {1, "mnuRBlank3", "-"},
    {1, "mnuSubTBSimple", "SUBSIDIARY TRIAL BALANCE SIMPLE"},
    {1, "mnuRBlank4", "-"},
    {1, "mnuControlTB", "CONTROL TRIAL BALANCE"},
    {1, "mnuRBlank5", "-"},
    {1, "mnuSubTBWOB", "SUBSIDIARY TRIAL BALANCE (WITH OPENING)"},
    {1, "gpFD", "-"},
    {1, "mnuFee", "SESSION WISE OUTSTANDING"},
    {1, "gpS", "-"},
    {1, "mnuStuFeeDet", "ACTIVE STUDENT WISE DETAIL"},
    {1, "gpS1", "-"},
    {1, "mnuInctiveStuWiseRPT", "INACTIVE STUDENT WISE DETAIL"},

    {0, "mnuAdmin", "Administartor"},
    {1, "mnuAddUser", "Add Users"},
    {1, "mnuSetMenu", "Set Menus"},
    {1, "mnuRemoveData", "Remove Data"},

    {0, "mnuExit", "E&xit"},
};
} // namespace

std::span<const MenuRow> menuTable() {
    return rows;
}

QString menuCaption(const QString &name) {
    for (const MenuRow &row : rows) {
        if (name == QLatin1String(row.name))
            return row.caption;
    }
    return {};
}

} // namespace zel::shell
