#include "shell/master_screen.h"

#include "platform/base/number_text.h"
#include "platform/controls/combo_box.h"
#include "platform/controls/focus.h"
#include "platform/controls/look.h"
#include "platform/controls/msg_box.h"
#include "platform/controls/text_box.h"
#include "shell/module1.h"
#include "shell/status_words.h"

#include <QAbstractButton>
#include <QTabWidget>

#include <utility>

namespace zel::shell {

MasterScreen::MasterScreen(const MasterTable &table) : m_table(table) {}

Shortcuts MasterScreen::keys() {
    static constexpr controls::Shortcut Keys[] = {{SaveKey.key, SaveKey.does}};
    return Keys;
}

void MasterScreen::connectControls() {
    m_tabs = &named<QTabWidget>(*this, m_table.tabs);
    m_key = &named<controls::TextBox>(*this, m_table.keyBox);
    m_first = &named<controls::TextBox>(*this, m_table.firstBox);
    m_grid = &named<controls::Grid>(*this, "Msh");
    m_save = &named<QAbstractButton>(*this, m_table.saveButton);
    for (const MasterTable::Filled &filled : m_table.filled)
        m_filled.emplace_back(*this, Box{filled.box, filled.part});

    SearchControls search;
    search.value = &named<controls::TextBox>(*this, m_table.valueBox);
    search.list = m_grid;
    if (!m_table.search.criteria.empty())
        search.criterion = &named<controls::ComboBox>(*this, "cmb_s_cri");
    m_search = std::make_unique<Search>(m_table.search, search);

    const auto on = [this](QAbstractButton &button, const char *icon, auto procedure) {
        button.setIcon(controls::icon(icon));
        connect(&button, &QAbstractButton::clicked, this, procedure);
    };
    on(*m_save, "save", [this] { cmdSave_Click(); });
    on(named<QAbstractButton>(*this, "cmdCancel"), "cancel", [this] { cmdCancel_Click(); });
    on(named<QAbstractButton>(*this, "cmdDelete"), "delete", [this] { cmdDelete_Click(); });
    on(named<QAbstractButton>(*this, "cmdExit"), "exit", [this] { cmdExit_Click(); });
    if (auto *print = findChild<QAbstractButton *>("cmdPrint"))
        on(*print, "print", [this] { cmdPrint_Click(); });
    connectKeys(*this, keys());
    onKey(*this, SaveKey, *m_save);
    connect(m_key, &controls::TextBox::changed, this, [this] {
        setUnderWay(*this, m_key->text().isEmpty() ? QString()
                                                   : "correcting " + m_table.noun.toLower() + " " + number());
    });
    connect(m_grid, &controls::Grid::rowDoubleClicked, this, [this] { Msh_DblClick(); });
    connect(m_grid, &controls::Grid::enterPressed, this, &MasterScreen::Msh_Enter);
}

void MasterScreen::Form_Load() {
    m_tabs->setCurrentIndex(0);
    m_search->load();
    fillCombos();
    if (m_table.criterionOnLoad)
        m_search->run();
    else
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
    if (m_table.unloadsOnLostFocus)
        unloadForGood();
}

void MasterScreen::FillGrid(const QString &criterion) {
    m_search->run(criterion);
}

void MasterScreen::ClearAll() {
    shell::ClearAll(*this, m_table.tag);
}

void MasterScreen::FillData() {
    OpenRs(m_table.byKey + number());
    if (gRs.RecordCount() < 1)
        return;
    gRs.MoveFirst();
    loadTagged(*this, gRs, {}, m_table.tag);
}

void MasterScreen::SetMaxlength() {
    OpenRs(m_table.none);
    limitTagged(*this, gRs, m_table.limit, m_table.tag);
}

QString MasterScreen::number() const {
    return QString::fromStdString(leadingNumber(m_key->text()).toString());
}

void MasterScreen::openForSave() {
    if (!m_key->text().isEmpty()) {
        OpenRs(m_table.byKey + number());
        if (gRs.RecordCount() > 0)
            gRs.MoveFirst();
        return;
    }
    if (!m_table.nextNumber.text().empty()) {
        OpenRs(m_table.nextNumber);
        if (gRs.RecordCount() > 0) {
            gRs.MoveFirst();
            m_key->setText(gRs.Fields(m_table.keyColumn).text());
        }
    }
    OpenRs(m_table.none);
    gRs.AddNew();
}

bool MasterScreen::isComplete() {
    for (const MasterTable::Required &required : m_table.required) {
        auto &box = named<controls::TextBox>(*this, required.box);
        if (!box.text().isEmpty())
            continue;
        controls::MsgBox(required.message, controls::vbInformation);
        controls::SetFocus(&box);
        return false;
    }
    return true;
}

void MasterScreen::cmdSave_Click() {
    if (!isComplete() || !beginSave())
        return;
    const bool isNew = m_key->text().isEmpty();
    openForSave();
    rowOpened(isNew);
    saveTagged(*this, gRs, m_table.notSaved, m_table.tag);
    writeFields();
    if (!m_table.nextNumber.text().empty())
        gRs.Fields(m_table.keyColumn) = m_key->text();
    gRs.Update();
    say(m_table.noun + " " + gRs.Fields(m_table.keyColumn).text() + " saved");
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
    say(m_table.noun + " " + number() + " deleted");
    ClearAll();
    FillGrid({});
}

void MasterScreen::cmdExit_Click() {
    unloadForGood();
}

void MasterScreen::prepareReport() {
    ReportSettings settings;
    settings.logon = Logon::Fixed;
    if (!m_key->text().isEmpty())
        settings.selection = m_table.report.selection + number();
    m_report.OpenReport(m_table.report.file);
    m_report.prepare(settings);
}

void MasterScreen::cmdPrint_Click() {
    if (!m_table.report.file)
        return;
    prepareReport();
    m_report.view();
}

void MasterScreen::Msh_DblClick() {
    const int row = m_grid->Row();
    if (row < 1 || m_grid->TextMatrix(row, 0).isEmpty())
        return;
    if (m_table.chosenHeading)
        m_grid->setTextMatrix(0, 0, m_table.chosenHeading);
    if (m_table.choice == Choice::FromRecord) {
        ClearAll();
        m_key->setText(m_grid->TextMatrix(row, 0));
        FillData();
    }
    for (std::size_t i = 0; i < m_filled.size(); ++i)
        m_filled[i].write(m_grid->TextMatrix(row, m_table.filled[i].column));
    showRow(row);
    if (m_table.closesForFinder && gFinderOpen)
        return unloadForGood();
    m_tabs->setCurrentIndex(0);
    m_save->setText("&Save");
    controls::SetFocus(m_first);
}

void MasterScreen::Msh_Enter() {
    if (m_table.enter == EnterInList::Chooses)
        return Msh_DblClick();
    const int row = m_grid->Row();
    if (m_table.enter == EnterInList::Closes && row > 0 && !m_grid->TextMatrix(row, 0).isEmpty())
        unloadForGood();
}

void MasterScreen::unloadForGood() {
    Unload();
    clearReference();
}

} // namespace zel::shell
