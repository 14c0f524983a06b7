#pragma once

#include "institute/frmInsRec.h"
#include "platform/controls/button.h"
#include "platform/controls/combo_box.h"
#include "platform/controls/data_combo.h"
#include "platform/controls/masked_box.h"
#include "schema/demo/records.h"
#include "shell/module1.h"
#include "tests/reports/voucher_clerk.h"

/// Records of the demonstration, entered on their screens. No key is pressed: what is under test is what the
/// screens write.
namespace zel::test {

/// Accounts.RowID by the place of the account.
using RowIds = std::vector<int>;

/// A clerk at a screen. The process ends when the screen says anything but what it should.
class Clerk {
public:
    Clerk(const QString &menu, const QString &name) : m_screen(openByMenu(menu, name)) {}
    template <class T>
    [[nodiscard]] T &the(const char *name) const {
        return *control<T>(m_screen, name);
    }
    void put(const char *box, const QString &text) const { the<controls::TextBox>(box).setText(text); }
    void put(const char *box, demo::Cents amount) const { put(box, amount ? amountText(amount) : QString()); }
    void put(const char *date, QDate day) const { the<controls::DateBox>(date).setValue(day); }
    void pick(const char *combo, int bound) const {
        the<controls::DataCombo>(combo).setBoundText(QString::number(bound));
    }
    void push(const char *button, const QStringList &says = {}) const {
        const QStringList said = textsOf([&] { the<QAbstractButton>(button).click(); }, {QMessageBox::No});
        if (said != says)
            qFatal("%s says: %s", qPrintable(m_screen->objectName()), qPrintable(said.join('\n')));
    }
    /// Opens a finder, which goes when it has found.
    void find(const char *button, const char *finder, const std::function<void()> &found) const {
        push(button);
        found();
        qobject_cast<controls::Form *>(form(finder))->Unload();
        settle();
    }

private:
    QWidget *m_screen;
};

inline void enterVoucher(const demo::Voucher &voucher, const RowIds &ids) {
    BookVoucher typed;
    typed.kind = Kind(int(voucher.kind));
    typed.number = voucher.number;
    typed.date = voucher.date;
    typed.paidTo = voucher.paidTo.toStdString();
    for (const demo::Line &line : voucher.lines)
        typed.entries.push_back({ids[std::size_t(line.debit)], ids[std::size_t(line.credit)], line.amount,
                                 line.cheque.toStdString(), line.narration.toStdString(),
                                 line.file.toStdString(), line.bill.toStdString()});
    saveOnScreen(typed);
}

/// The finder gives the student, with whom come the session and the subjects.
inline void enterReceipt(const demo::Voucher &voucher, const RowIds &ids) {
    const Clerk clerk("mnuRecvVou", "frmInsRec");
    clerk.put("DTPicker", voucher.date);
    clerk.put("txtSlipNo", voucher.slip);
    clerk.push(voucher.byBank ? "OptBank" : "OptCash");
    for (const demo::Line &line : voucher.lines) {
        for (const auto &[button, account] :
             {std::pair("cmdSelectDr", line.debit), {"cmdSelectCr", line.credit}})
            clerk.find(button, "frmFindAC", [&] {
                shell::gFoundRowID = ids[std::size_t(account)];
                shell::gFoundName = QString::number(account);
            });
        clerk.pick("cboSubject", line.subject);
        clerk.put("txtDRCR", line.amount);
        clerk.put("txtChecque", line.cheque);
        clerk.put("txtNaration", line.narration);
        clerk.push("cmdAdd");
    }
    clerk.push("cmdSave");
}

inline void enterApplication(const demo::Application &application) {
    const Clerk clerk("mnuApp", "frmZelApplication");
    clerk.push("cmdCancel");
    clerk.put("dtpDate", application.date);
    clerk.put("DtpFix", application.date);
    clerk.pick("cboSession", application.session);
    clerk.the<controls::ComboBox>("cmbAtoZ").setText(application.section);
    clerk.the<controls::MaskedBox>("mskNIC").setText(application.nic);
    for (const auto &[box, text] : {std::pair("txtICAPReg", application.regNo),
                                    {"txtStuNm", application.name},
                                    {"txtfathNm", application.father},
                                    {"txtCellNo", application.cell},
                                    {"txtConRes", application.residence},
                                    {"txtMailAdd", application.address},
                                    {"txtEmail", application.email},
                                    {"txtLastEduQua", application.education},
                                    {"txtAuditFirm", application.firm},
                                    {"txtExamAtt", application.attempt},
                                    {"txtModules", application.part}})
        clerk.put(box, text);
    clerk.put("txtRegfee", application.registrationFee);
    for (const demo::SubjectLine &line : application.lines) {
        clerk.put("txtSubId", QString::number(line.subject));
        clerk.put("txtSubName", QStringLiteral("A SUBJECT"));
        clerk.put("txt_rate", line.amount);
        clerk.put("txtDiscount", line.discount);
        clerk.put("txtNarration", line.narration);
        clerk.put("txtNetAmt", line.net());
        clerk.put("txtRecAmt", line.received);
        clerk.the<QAbstractButton>("ChkInactive").setChecked(line.inactive);
        clerk.push("cmd_ADD_1");
    }
    clerk.push("cmdSave");
}

inline void enterForm(const demo::CarryForward &carried) {
    const Clerk clerk("mnuCarryFor", "frmCarryForward");
    clerk.push("cmdCancel");
    clerk.find("cmdFindApplication", "frmFindApp", [&] { shell::gFoundAppID = carried.application; });
    clerk.put("dtpForm", carried.date);
    for (const demo::CarriedLine &line : carried.lines) {
        clerk.put("txtSubId", QString::number(line.subject));
        clerk.put("txtNarration", line.narration);
        clerk.pick("cboSession", line.session);
        clerk.put("txtForAmt", line.amount);
        clerk.push("cmd_ADD_1", {"Add more subject in detail"});
    }
    clerk.push("cmdSave");
}

} // namespace zel::test
