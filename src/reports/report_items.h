#pragma once

#include "ui_frmRPTAccounts.h"

#include <span>

namespace zel::reports {

/// What a menu item does to a group of selectors; what it leaves alone stays as the item before it left it.
enum class Seen { Stays, Shown, Hidden };

/// One item of the menu "Reports": its frame on frmRPTAccounts and the selectors that it shows and hides.
struct ReportItem {
    const char *menu;
    QFrame *Ui::frmRPTAccounts::*frame;
    QLabel *Ui::frmRPTAccounts::*title;
    controls::Button *Ui::frmRPTAccounts::*run;
    Seen account;
    Seen dates;
    Seen session;
    Seen courseAndSubject;
    /// What is shown and hidden with the session.
    QLabel *Ui::frmRPTAccounts::*sessionLabel;
};

/// In the menu's order.
[[nodiscard]] std::span<const ReportItem> reportItems();

} // namespace zel::reports
