#pragma once

#include "platform/controls/form.h"
#include "shell/entry_screen.h"
#include "shell/report_launcher.h"
#include "shell/screen_box.h"
#include "shell/search.h"

#include <QStringList>

#include <memory>

class QAbstractButton;
class QTabWidget;

namespace zel::shell {

/// How a row of the list comes into the boxes: from the list's own cells, or read anew by its key.
enum class Choice { FromList, FromRecord };
/// What Enter on the list does: it chooses the row, closes the screen, or nothing.
enum class EnterInList { Chooses, Closes, Nothing };

/// What a master-data screen (sessions, courses, users ...) has of its own.
struct MasterTable {
    struct Filled {
        const char *box = nullptr;
        int column = 0; ///< of the list
        Part part = Part::Text;
    };

    struct Required {
        const char *box = nullptr;
        const char *message = nullptr; ///< shown where the box is empty
    };
    struct Report {
        const char *file = nullptr;
        Sql selection{}; ///< up to the number; of all records where none is shown
    };

    QString noun; ///< what a row is called in the status bar: "Session"
    const char *tag = "M";
    const char *keyColumn;
    const char *keyBox;
    const char *firstBox;        ///< gets the focus when a row was chosen
    bool focusAfterSave = false; ///< then, too
    QStringList notSaved{};      ///< tagged boxes that a save passes over
    std::vector<Required> required{};
    Sql nextNumber{}; ///< none: the key is the database's to give
    Sql none;
    Sql byKey;    ///< up to the number
    Sql remove{}; ///< up to the number; a blank follows it
    SearchTable search;
    bool criterionOnLoad = false; ///< the first list is the first criterion's, not everything
    Choice choice = Choice::FromList;
    EnterInList enter = EnterInList::Chooses;
    TypingLimit limit = TypingLimit::None; ///< none: a text longer than its column is refused by the save
    const char *chosenHeading = nullptr;   ///< cell (0,0) from the choice of a row to the next filling
    std::vector<Filled> filled{};          ///< where the choice is FromList
    bool unloadsOnLostFocus = false;       ///< when the form itself, not a control on it, loses the focus
    bool closesForFinder = true;           ///< while a finder is up, the choice of a row closes the screen
    Report report{};                       ///< what cmdPrint shows, read as "sa" with an empty password

    const char *tabs = "SSTab1";
    const char *saveButton = "cmdSave";
    const char *valueBox = "txt_s_value";
};

/// The shape of such a screen: an entry tab with tagged boxes, a search tab (SearchPage), a row of buttons.
/// An empty key box means that the next save inserts, a filled one that it updates. Its .ui file has the
/// table's controls, cmdCancel, cmdDelete, cmdExit, Msh, and cmb_s_cri where the table has criteria.
class MasterScreen : public controls::Form {
    Q_OBJECT
public:
    /// The table must outlive the screen.
    explicit MasterScreen(const MasterTable &table);
    [[nodiscard]] static Shortcuts keys();

    /// Runs the search; a criterion other than those of the table lists everything.
    void FillGrid(const QString &criterion);

protected:
    /// To be called by the constructor after setupUi. Error 730 names a control that is missing.
    void connectControls();

    void Form_Load() override;
    /// The entry begins in the first box.
    void Form_Activate() override;
    void Form_Unload() override;
    void Form_LostFocus() override;

    virtual void cmdSave_Click();
    virtual void cmdDelete_Click();
    virtual void cmdExit_Click();
    virtual void cmdCancel_Click();
    virtual void cmdPrint_Click();
    virtual void Msh_DblClick();

    /// The lists of the screen's own combos, on load.
    virtual void fillCombos() {}
    /// The steps of a save before its row is opened. False ends it: the message has been shown and the focus
    /// set.
    [[nodiscard]] virtual bool beginSave() { return true; }
    /// The steps between the opening of the row and the tagged boxes.
    virtual void rowOpened([[maybe_unused]] bool isNew) {}
    /// Fields beside the tagged boxes, before the key is written.
    virtual void writeFields() {}
    /// Controls beside the tagged boxes, from a row of the list.
    virtual void showRow([[maybe_unused]] int row) {}
    /// Clears the screen's form reference.
    virtual void clearReference() = 0;

    /// Empties the tagged boxes.
    virtual void ClearAll();
    /// Shows the record of the key in the tagged boxes.
    virtual void FillData();
    /// Opens the table's report and sets it up.
    void prepareReport();
    /// The number in the key box, for a statement.
    [[nodiscard]] QString number() const;
    void unloadForGood();
    [[nodiscard]] controls::Grid &Msh() const { return *m_grid; }

private:
    void SetMaxlength();
    void Msh_Enter();
    /// Opens the row to be written: a new one with the next number, or the one of the key.
    void openForSave();
    [[nodiscard]] bool isComplete();

    const MasterTable &m_table;
    bool m_shownBefore = false;
    QTabWidget *m_tabs = nullptr;
    controls::TextBox *m_key = nullptr;
    controls::TextBox *m_first = nullptr;
    controls::Grid *m_grid = nullptr;
    QAbstractButton *m_save = nullptr;
    std::vector<ScreenBox> m_filled; ///< one for each of the table
    std::unique_ptr<Search> m_search;
    ReportLauncher m_report;
};

} // namespace zel::shell
