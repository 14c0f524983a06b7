#include "accounts/setting_tables.h"

#include "ui_frmAcSetting.h"

namespace zel::accounts {

SettingTables::SettingTables(const Ui::frmAcSetting &ui)
    : CP{ui.optCPDr, ui.optCPCr, ui.chkCPYN}, CR{ui.optCRDr, ui.optCRCr, ui.chkCRYN},
      BP{ui.optBPDr, ui.optBPCr, ui.chkBPYN}, BR{ui.optBRDr, ui.optBRCr, ui.chkBRYN},
      JV{ui.optJVDr, ui.optJVCr, ui.chkJVYN}, SI{ui.optSalInvDr, ui.optSalInvCr, ui.chkSalInvYN},
      rows{{
          {"CP", ui.txtCP, ui.txtCPAcc, &CP},
          {"CR", ui.txtCR, ui.txtCRAcc, &CR},
          {"BP", ui.txtBP, ui.txtBPAcc, &BP},
          {"BR", ui.txtBR, ui.txtBRAcc, &BR},
          {"JV", ui.txtJV, ui.txtJVAcc, &JV},
          {"SI", ui.txtSalInv, ui.txtSalInvACC, &SI},
          {"PO", ui.txtPurOrder},
          {"QT", ui.txtQuot},
          {"DC", ui.txtDC},
          {"TI",
           ui.txtTaxInv,
           ui.txtSTaxACC,
           nullptr,
           {{"OthAcCode", "OthAC", ui.txtShortFLLAC},
            {"ITaxAc", "IncomeAC", ui.txtIncTaxACRpt},
            {"STaxAc", "SalTaxAC", ui.txtSalTaxAcRpt}}},
          {"GI", ui.txtGstInv, ui.txtGstACC},
          {"IR", nullptr, ui.txtAppSubACC},
          {"RI", ui.txtInsRec, ui.txtInsRecACC, nullptr, {}, &rows[1]},
      }},
      findings{
          {ui.cmdCPFindAC, "CP", ui.txtCPAcc},
          {ui.cmdCRFindAC, "CR", ui.txtCRAcc},
          {ui.cmdBPFindAC, "BP", ui.txtBPAcc},
          {ui.cmdBRFindAC, "BR", ui.txtBRAcc},
          {ui.cmdJVFindAC, "JV", ui.txtJVAcc},
          {ui.cmdSalInvFindAC, "SI", ui.txtSalInvACC},
          {ui.cmdFindSTaxAC, "TI", ui.txtSTaxACC},
          {ui.cmdShrtFLLAc, "FTI", ui.txtShortFLLAC},
          {ui.cmdIncTaxAC, "ITI", ui.txtIncTaxACRpt},
          {ui.cmdSTaxACRpt, "STI", ui.txtSalTaxAcRpt},
          {ui.cmdFindGst, "GI", ui.txtGstACC},
          {ui.cmdInsRecFindAC, "RI", ui.txtInsRecACC, nullptr, true},
          {ui.cmdAppSub, "IR", ui.txtAppSubACC, "SUB", true},
      },
      clearings{
          {ui.cmdClearCP, {ui.txtCP, ui.txtCPAcc}, &CP},
          {ui.cmdClearCR, {ui.txtCR, ui.txtCRAcc}, &CR},
          {ui.cmdClearBP, {ui.txtBP, ui.txtBPAcc}, &BP},
          {ui.cmdClearBR, {ui.txtBR, ui.txtBRAcc}, &BR},
          {ui.cmdClearJV, {ui.txtJV, ui.txtJVAcc}, &JV},
          {ui.cmdClearSalInv, {ui.txtSalInv, ui.txtSalInvACC}, &SI},
          {ui.cmdClearGst, {ui.txtGstInv, ui.txtGstACC}},
          {ui.cmdClearInsRec, {ui.txtInsRec, ui.txtInsRecACC}},
          {ui.cmdClearAppSub, {ui.txtAppSubACC}},
          {ui.cmdClearSTax, {ui.txtTaxInv, ui.txtSTaxACC, ui.txtShortFLLAC}},
      } {}

const SettingRow *SettingTables::row(const QString &status) const {
    for (const SettingRow &candidate : rows) {
        if (status == QLatin1String(candidate.status))
            return &candidate;
    }
    return nullptr;
}

} // namespace zel::accounts
