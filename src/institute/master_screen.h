#pragma once

#include "platform/base/sql.h"
#include "platform/controls/form.h"
#include "platform/controls/grid.h"
#include "shell/entry_screen.h"

#include <vector>

class QAbstractButton;
class QTabWidget;

namespace zel::institute {

/// What a master-data screen (sessions, courses, subjects) has of its own.
struct MasterTable {
    struct Criterion {
        const char *caption = nullptr;
        Sql before; ///< the list's statement up to the search value
        Sql behind; ///< and behind it
    };
    struct Filled {
        const char *box;
        int column; ///< of the list
    };

    const char *keyColumn;
    const char *keyBox;
    const char *firstBox; ///< gets the focus when a row was chosen
    bool focusAfterSave;  ///< then, too
    Sql nextNumber;
    Sql none;
    Sql byKey;  ///< up to the number
    Sql remove; ///< up to the number; a blank follows it
    std::vector<Criterion> criteria;
    Sql all;
    QList<controls::Grid::Column> columns;
    const char *chosenHeading; ///< cell (0,0) from the choice of a row to the next filling
    std::vector<Filled> filled;
};

/// The shape of such a screen: an entry tab with tagged boxes, a search tab, five buttons. An empty key box
/// means that the next save inserts, a filled one that it updates. Its .ui file has the controls SSTab1,
/// cmdSave, cmdCancel, cmdDelete, cmdExit, cmb_s_cri, txt_s_value, Msh.
class MasterScreen : public controls::Form {
    Q_OBJECT
public:
    explicit MasterScreen(const MasterTable &table);

    /// Runs the search; a criterion other than those of the table lists everything.
    void FillGrid(const QString &criterion);

protected:
    /// To be called by the constructor after setupUi.
    void connectControls();

    void Form_Load() override;
    /// The entry begins in the first box.
    void Form_Activate() override;
    void Form_Unload() override;
    void Form_LostFocus() override;

    virtual void cmdSave_Click();
    virtual void cmdExit_Click();
    void cmdCancel_Click();
    void cmdDelete_Click();
    void Msh_DblClick();

    /// The lists of the screen's own combos, on load.
    virtual void fillCombos() {}
    /// Fields beside the tagged boxes, before the key is written.
    virtual void writeFields() {}
    /// Controls beside the table's boxes, from a row of the list.
    virtual void showRow([[maybe_unused]] int row) {}
    /// Clears the screen's form reference.
    virtual void clearReference() = 0;

    [[nodiscard]] controls::Grid &Msh() const { return *m_grid; }

private:
    void ClearAll();
    void SetMaxlength();
    /// The number in the key box, for a statement.
    [[nodiscard]] QString number() const;
    void unloadForGood();

    const MasterTable &m_table;
    bool m_shownBefore = false;
    QTabWidget *m_tabs = nullptr;
    controls::TextBox *m_key = nullptr;
    controls::TextBox *m_first = nullptr;
    controls::TextBox *m_value = nullptr;
    controls::ComboBox *m_criterion = nullptr;
    controls::Grid *m_grid = nullptr;
    QAbstractButton *m_save = nullptr;
};

} // namespace zel::institute
