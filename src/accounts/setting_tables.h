#pragma once

#include "platform/controls/button.h"
#include "platform/controls/text_box.h"

#include <QString>

#include <array>
#include <vector>

namespace zel::accounts {

namespace Ui {
class frmAcSetting;
}

/// On which side of a voucher its account stands, and whether it is fixed.
struct Side {
    controls::OptionButton *debit;
    controls::OptionButton *credit;
    controls::CheckBox *fix;
};

/// A further account of a row: its column, and the query's column with its title.
struct FurtherAccount {
    const char *column;
    const char *title;
    controls::TextBox *box;
};

/// One row of VouSetting and the controls that show it; a column without a control is left Null, but for
/// VouNo, which is 0.
struct SettingRow {
    const char *status;
    controls::TextBox *number = nullptr;
    controls::TextBox *account = nullptr;
    const Side *side = nullptr;
    std::vector<FurtherAccount> further{};
    /// When saved, the row takes that row's account and side over its own.
    const SettingRow *follows = nullptr;
};

/// A find button: whose box its answer fills, and what the finder is to list (null: as it was).
struct Finding {
    controls::Button *button;
    QString slot;
    controls::TextBox *box;
    const char *filter = nullptr;
    bool keepsFilter = false; ///< the user can't widen the finder's list
};

/// A frame's Clear.
struct Clearing {
    controls::Button *button;
    std::vector<controls::TextBox *> boxes;
    const Side *side = nullptr;
};

/// How the screen's controls and the table's rows belong together.
struct SettingTables {
    explicit SettingTables(const Ui::frmAcSetting &ui);
    SettingTables(const SettingTables &) = delete;
    SettingTables &operator=(const SettingTables &) = delete;

    /// Null for a status that the screen doesn't know.
    [[nodiscard]] const SettingRow *row(const QString &status) const;

    Side CP, CR, BP, BR, JV, SI;
    std::array<SettingRow, 13> rows; ///< in the order in which they are written
    std::vector<Finding> findings;
    std::vector<Clearing> clearings;
};

} // namespace zel::accounts
