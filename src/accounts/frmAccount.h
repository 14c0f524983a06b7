#pragma once

#include "platform/ado/recordset.h"
#include "platform/controls/form.h"
#include "shell/report_launcher.h"
#include "shell/screen_keys.h"

#include <QString>

#include <memory>

class QMenu;

namespace zel::controls {
class TreeNode;
}

namespace zel::accounts {

namespace Ui {
class frmAccount;
}

/// "Chart Of Accounts": the tree of control (HH), sub-control (HD) and subsidiary accounts (DD), the boxes of
/// the one that is shown, and a search over the subsidiaries. txtFindParent, which is hidden, holds the RowID
/// of the current account; the caption of cmdCreateAc, "&New" or "&Save", is what its click does.
class frmAccount : public controls::Form {
    Q_OBJECT
public:
    inline static controls::FormReference<frmAccount> reference;
    [[nodiscard]] static shell::Shortcuts keys();

    frmAccount();
    ~frmAccount() override;

    /// Shows the account in the tree and in the boxes.
    void EditAC(const QString &RowID);
    /// Opens the form's own recordset on the accounts of level 1 (`number` 1) or 2 (2 or 3).
    void FillTypes(int number);

protected:
    void Form_Load() override;
    void Form_Unload() override;

private:
    void connectEvents();
    void FillTreeData();
    void FillData();
    void FillDetail();
    void ClearAll();
    void SetMaxlength();
    void FillGrid();

    void lstTree_NodeClick(controls::TreeNode *node);
    void nodeOpenedOrClosed(controls::TreeNode *node);
    void mnuEdit_Click();
    void cmdCreateAc_Click();
    void cmdCancel_Click();
    void Command3_Click();
    void cmdPrint_Click();
    void cmdExit_Click();
    void mshSearch_DblClick(int row);

    /// "&New".
    void prepareEntry();
    void prepareSubControl(const QString &parentTitle);
    void prepareSubsidiary(const QString &parentTitle, const QString &parentID);

    /// What a save wrote: the account's code, '' for none, and whether it is a new one.
    struct Saved {
        QString code{};
        bool created = false;
    };
    /// "&Save". False: nothing was written, and the user has been told why.
    bool save();
    /// False: the title is taken, and the user has been told.
    bool titleIsFree();
    Saved saveControlAccount();
    Saved saveBelowSelection();
    Saved saveSubControl(const QString &parentID);
    Saved saveSubsidiary(const QString &parentCode);
    /// Into the row of gRs under edit.
    void saveDetail();
    /// Opens the rebuilt tree down to the saved account.
    void reopenPath(const Saved &saved);
    QString nextDcode(const QString &parentID);
    /// Adds a row to gRs with its place in the tree.
    void addAccount(const QString &parentID, const QString &number, const char *status);

    void select(const QString &key);
    [[nodiscard]] bool isSaveOffered() const;
    void offer(const char *caption);

    std::unique_ptr<Ui::frmAccount> ui;
    shell::ReportLauncher m_report;
    ado::Recordset m_types;
    QMenu *mnuPop;
    bool IsNew = false;     ///< the next save creates an account
    QString OldTitle;       ///< the title as loaded
    QString SelStatus;      ///< AcStatus of the account loaded last
    QString SelKey;         ///< key of the node clicked last
    bool RightDown = false; ///< the last mouse button pressed on the tree was the right one
};

} // namespace zel::accounts
