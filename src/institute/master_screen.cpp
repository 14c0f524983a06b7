#include "institute/master_screen.h"

#include "platform/base/number_text.h"
#include "platform/controls/combo_box.h"
#include "platform/controls/focus.h"
#include "platform/controls/look.h"
#include "platform/controls/msg_box.h"
#include "platform/controls/text_box.h"
#include "shell/module1.h"

#include <QAbstractButton>
#include <QTabWidget>

#include <utility>

namespace zel::institute {

using namespace shell;

MasterScreen::MasterScreen(const MasterTable &table) : m_table(table) {}

void MasterScreen::connectControls() {
    m_tabs = findChild<QTabWidget *>("SSTab1");
    m_key = findChild<controls::TextBox *>(m_table.keyBox);
    m_first = findChild<controls::TextBox *>(m_table.firstBox);
    m_value = findChild<controls::TextBox *>("txt_s_value");
    m_criterion = findChild<controls::ComboBox *>("cmb_s_cri");
    m_grid = findChild<controls::Grid *>("Msh");
    m_save = findChild<QAbstractButton *>("cmdSave");

    const auto on = [this](const char *button, auto procedure) {
        connect(findChild<QAbstractButton *>(button), &QAbstractButton::clicked, this, procedure);
    };
    for (const char *button : {"save", "delete", "cancel", "print", "exit"}) {
        const QString name = QLatin1String(button);
        findChild<QAbstractButton *>("cmd" + name.left(1).toUpper() + name.mid(1))
            ->setIcon(controls::icon(name));
    }
    on("cmdSave", [this] { cmdSave_Click(); });
    on("cmdCancel", [this] { cmdCancel_Click(); });
    on("cmdDelete", [this] { cmdDelete_Click(); });
    on("cmdExit", [this] { cmdExit_Click(); });
    wireSearch(*m_value, *m_criterion, *m_grid, [this](const QString &criterion) { FillGrid(criterion); });
    wireChoice(*m_grid, [this] { Msh_DblClick(); });
}

void MasterScreen::Form_Load() {
    m_tabs->setCurrentIndex(0);
    for (const MasterTable::Criterion &criterion : m_table.criteria)
        m_criterion->addItem(criterion.caption);
    m_criterion->setCurrentIndex(0);
    fillCombos();
    FillGrid({});
    SetMaxlength();
}

void MasterScreen::Form_Activate() {
    if (!std::exchange(m_shownBefore, true))
        controls::SetFocus(m_first);
}

void MasterScreen::Form_Unload() {
    ApplyMenus();
}

void MasterScreen::Form_LostFocus() {
    unloadForGood();
}

void MasterScreen::FillGrid(const QString &criterion) {
    Sql statement = m_table.all;
    for (const MasterTable::Criterion &known : m_table.criteria)
        if (criterion == known.caption)
            statement = known.before + m_value->text() + known.behind;
    OpenRs(statement);
    fillGrid(*m_grid, gRs, m_table.columns);
}

void MasterScreen::ClearAll() {
    shell::ClearAll(*this);
}

/// These screens set no limit to what is typed: a text longer than its column is refused by the save.
void MasterScreen::SetMaxlength() {
    OpenRs(m_table.none);
}

QString MasterScreen::number() const {
    return QString::fromStdString(leadingNumber(m_key->text()).toString());
}

void MasterScreen::cmdSave_Click() {
    if (m_key->text().isEmpty()) {
        OpenRs(m_table.nextNumber);
        if (gRs.RecordCount() > 0) {
            gRs.MoveFirst();
            m_key->setText(gRs.Fields(m_table.keyColumn).text());
        }
        OpenRs(m_table.none);
        gRs.AddNew();
    } else {
        OpenRs(m_table.byKey + number());
        if (gRs.RecordCount() > 0)
            gRs.MoveFirst();
    }
    saveTagged(*this, gRs, m_table.keyBox);
    writeFields();
    gRs.Fields(m_table.keyColumn) = m_key->text();
    gRs.Update();
    if (m_table.focusAfterSave)
        controls::SetFocus(m_first);
    FillGrid({});
    ClearAll();
}

void MasterScreen::cmdCancel_Click() {
    ClearAll();
    m_key->setEnabled(true);
}

void MasterScreen::cmdDelete_Click() {
    if (m_key->text().isEmpty())
        return;
    const int style = controls::vbInformation + controls::vbYesNo;
    if (controls::MsgBox("Are you sure delete this information", style, "Confirm") != controls::vbYes)
        return;
    gCon.Execute(m_table.remove + number() + " ");
    ClearAll();
    FillGrid({});
}

void MasterScreen::cmdExit_Click() {
    unloadForGood();
}

void MasterScreen::Msh_DblClick() {
    const int row = m_grid->Row();
    if (row < 1 || m_grid->TextMatrix(row, 0).isEmpty())
        return;
    m_grid->setTextMatrix(0, 0, m_table.chosenHeading);
    for (const MasterTable::Filled &filled : m_table.filled)
        findChild<controls::TextBox *>(filled.box)->setText(m_grid->TextMatrix(row, filled.column));
    showRow(row);
    if (gFinderOpen)
        return unloadForGood();
    m_tabs->setCurrentIndex(0);
    m_save->setText("&Save");
    controls::SetFocus(m_first);
}

void MasterScreen::unloadForGood() {
    Unload();
    clearReference();
}

} // namespace zel::institute
