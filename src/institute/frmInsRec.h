#pragma once

#include "vouchers/voucher_screen.h"

namespace zel::institute {

namespace Ui {
class frmInsRec;
}

/// "Fee Receive Voucher": money received from students, each line against a subject. A student is known here
/// by the account alone, through which the application and its subjects are found.
class frmInsRec : public vouchers::VoucherScreen {
    Q_OBJECT
public:
    inline static controls::FormReference<frmInsRec> reference;

    frmInsRec();
    ~frmInsRec() override;

protected:
    void Form_Activate() override;

    void fillCombos() override;
    [[nodiscard]] std::optional<QString> finderFilter(vouchers::Side side) const override;
    void accountFound(vouchers::Side side) override;
    [[nodiscard]] bool lineMayBeAdded() override;
    void lineAdded() override;
    void lineTakenBack(int row) override;
    void cleared() override;
    [[nodiscard]] QString headerText(const vouchers::HeaderColumn &column) override;
    void showHeaderText(const vouchers::HeaderShown &column, const QString &text) override;

private:
    void fillAmount();
    void showSession();
    /// Lists the subjects of the applications for which "appid " and the condition behind it hold.
    void listSubjects(const Sql &condition);
    void listNoSubjects();
    void OptBank_Toggled(bool bank);

    std::unique_ptr<Ui::frmInsRec> ui;
    Sql m_subjects;              ///< what cboSubject lists; '' for nothing
    int m_stuAppID = 0;          ///< AppID of the student picked last
    bool m_amountFilled = false; ///< in the event under way
};

} // namespace zel::institute
