// The screen and its selectors; the run buttons stand in frmRPTAccounts_run.cpp.

#include "reports/frmRPTAccounts.h"

#include "accounts/frmFindAC.h"
#include "platform/controls/focus.h"
#include "platform/controls/look.h"
#include "reports/report_items.h"
#include "shell/entry_screen.h"
#include "shell/menu_table.h"
#include "shell/module1.h"

#include <algorithm>

using namespace zel::shell;

namespace zel::reports {

using controls::Button;
using controls::DataCombo;
using controls::pixels;

namespace {

constexpr controls::Shortcut RunKey{Qt::Key_F9, "Shows the report"};

void see(Seen seen, std::initializer_list<QWidget *> group) {
    if (seen == Seen::Stays)
        return;
    for (QWidget *control : group)
        control->setVisible(seen == Seen::Shown);
}

struct Period {
    QDate from;
    QDate to;
};

Period monthOf(QDate day) {
    return {QDate(day.year(), day.month(), 1), QDate(day.year(), day.month(), day.daysInMonth())};
}

/// From the first entry to the last one, at least to today.
Period allEntries(QDate today) {
    OpenRs("Select min(VouDate) as FirstDate, max(VouDate) as LastDate From DetJV");
    if (gRs.Fields("FirstDate").isNull())
        return {today, today};
    return {gRs.Fields("FirstDate").value().date(), std::max(today, gRs.Fields("LastDate").value().date())};
}

} // namespace

frmRPTAccounts::frmRPTAccounts() : ui(std::make_unique<Ui::frmRPTAccounts>()) {
    ui->setupUi(this);
    connectButtons();
    connectKeys();
    connectPeriods();
    connect(ui->DtaCourse, &DataCombo::changed, this, &frmRPTAccounts::DtaCourse_Change);
    connect(ui->DtaCourse, &DataCombo::clicked, this, &frmRPTAccounts::DtaCourse_Change);
}

frmRPTAccounts::~frmRPTAccounts() = default;

/// The captions have no mnemonics, so these keys are told by the tooltips.
Shortcuts frmRPTAccounts::keys() {
    static constexpr controls::Shortcut Keys[] = {
        {Qt::ALT | Qt::Key_F, "To the first date", "DTPicker1"},
        {Qt::ALT | Qt::Key_T, "To the last date", "DTPicker2"},
        {Qt::ALT | Qt::Key_N, "To the session", "cboSession"},
        {Qt::ALT | Qt::Key_C, "To the course", "DtaCourse"},
        {Qt::ALT | Qt::Key_U, "To the subject", "DtaSubject"},
        {Qt::Key_F7, "Finds the account", "cmdFindAC"},
        RunKey,
        controls::keys::Close,
    };
    return Keys;
}

void frmRPTAccounts::connectKeys() {
    shell::connectKeys(*this, keys());
    for (const ReportItem &item : reportItems())
        tellKey(*((*ui).*item.run), RunKey);
    onKey(*this, RunKey, [this] { return m_run; });
    closeOn({controls::keys::Close});
    ui->LblMain->setToolTip("Close (" + controls::keys::Close.shown() + ")");
}

void frmRPTAccounts::Form_Load() {
    bindCombo(*ui->DtaCourse, "Select CourseId,CourseName From tblCourse Order By CourseName", "CourseName",
              "CourseId");
    bindCombo(*ui->cboSession, "Select SessionId,SessionName From tblSession Order By SessionID",
              "SessionName", "SessionId", Picked::Last);
    fixSizes();
    ui->DTPicker1->setValue(QDate::currentDate());
    ui->DTPicker2->setValue(QDate::currentDate());
    FixAccount();
}

/// As large as the selectors of the richest item ask for, which is also how the screen stands before any
/// item; all frames share the one place at (1080, 420).
void frmRPTAccounts::fixSizes() {
    ui->layoutPlace->setColumnMinimumWidth(0, pixels(7800));
    ui->layoutSelectors->setColumnMinimumWidth(0, ui->lblAC->sizeHint().width());
    // The session without its label keeps to the column of the other boxes.
    QSizePolicy keeps = ui->Label23->sizePolicy();
    keeps.setRetainSizeWhenHidden(true);
    ui->Label23->setSizePolicy(keeps);
    const int edge = ui->Frame1->frameWidth();
    ui->layoutFrame1->setContentsMargins(pixels(1080) - edge, pixels(420) - edge, pixels(1080) - edge,
                                         pixels(420) - edge);
    ui->Frame1->setFixedSize(ui->Frame1->sizeHint());
    setFixedSize(sizeHint());
}

void frmRPTAccounts::connectPeriods() {
    const auto offer = [this](Button *button, auto period) {
        connect(button, &Button::clicked, this, [this, period] {
            const Period chosen = period(QDate::currentDate());
            ui->DTPicker1->setValue(chosen.from);
            ui->DTPicker2->setValue(chosen.to);
        });
    };
    offer(ui->cmdThisMonth, monthOf);
    offer(ui->cmdLastMonth, [](QDate today) { return monthOf(today.addMonths(-1)); });
    offer(ui->cmdThisYear, [](QDate today) {
        return Period{QDate(today.year(), 1, 1), QDate(today.year(), 12, 31)};
    });
    offer(ui->cmdAllDates, allEntries);
}

void frmRPTAccounts::FixAccount() {
    OpenRs("Select ITaxAC,STaxAC,OthAcCode,VouStatus From VouSetting Where VouStatus ='TI'");
    if (gRs.RecordCount() == 0)
        return;
    gRs.MoveFirst();
    ITaxAC = gRs.Fields("ITaxAC").text();
    STaxAC = gRs.Fields("STaxAC").text();
    OthAcCode = gRs.Fields("OthACCode").text();
}

void frmRPTAccounts::choose(const ReportItem &item) {
    Show();
    setPlace({pixels(2500), pixels(1000)});
    bringToTop(item);
    see(item.account, {ui->lblAC, ui->txtAcName, ui->cmdFindAC});
    see(item.dates, {ui->DTPicker1, ui->DTPicker2, ui->LblFrom, ui->LblTo, ui->cmdThisMonth, ui->cmdLastMonth,
                     ui->cmdThisYear, ui->cmdAllDates});
    see(item.session, {ui->cboSession, (*ui).*item.sessionLabel});
    see(item.courseAndSubject, {ui->DtaCourse, ui->DtaSubject, ui->LblCourseName, ui->LblSubname});
    const QString caption = menuCaption(item.menu);
    ((*ui).*item.title)->setText(caption);
    ui->LblMain->setText(caption);
    focusFirst();
}

void frmRPTAccounts::focusFirst() {
    for (QWidget *control : std::initializer_list<QWidget *>{ui->cmdFindAC, ui->DTPicker1, ui->cboSession,
                                                             ui->DtaCourse, m_run}) {
        if (control->isVisible())
            return control->setFocus(Qt::OtherFocusReason);
    }
}

void frmRPTAccounts::bringToTop(const ReportItem &item) {
    for (const ReportItem &other : reportItems()) {
        Button *run = (*ui).*other.run;
        const bool top = &other == &item;
        run->setFocusPolicy(top ? Qt::StrongFocus : Qt::ClickFocus);
        run->setShortcut(top ? QKeySequence::mnemonic(run->text()) : QKeySequence());
    }
    QFrame *frame = (*ui).*item.frame;
    frame->show();
    frame->stackUnder(ui->lblAC); // the first of the selectors, which lie on the frame
    m_run = (*ui).*item.run;
}

void frmRPTAccounts::Form_Activate() {
    if (const auto found = takeFoundAccount()) {
        found->showIn(*ui->txtAcName);
        controls::SetFocus(ui->cmdFindAC);
    }
}

void frmRPTAccounts::Form_Unload() {
    ApplyMenus();
}

void frmRPTAccounts::cmdFindAC_Click() {
    accounts::frmFindAC::reference->Show();
}

void frmRPTAccounts::DtaCourse_Change() {
    if (!ui->DtaCourse->Text().isEmpty())
        FillSubjects();
    else
        ui->DtaSubject->setRowSource(nullptr);
}

void frmRPTAccounts::FillSubjects() {
    bindCombo(*ui->DtaSubject,
              "Select SubId,SubName From tblSubject Where CourseID = "_sql + ui->DtaCourse->BoundText() +
                  " Order By SubName",
              "SubName", "SubId");
}

Screens reportScreens() {
    Screens screens;
    for (const ReportItem &item : reportItems())
        screens[item.menu] = {[&item] { frmRPTAccounts::reference->choose(item); }, frmRPTAccounts::keys()};
    return screens;
}

} // namespace zel::reports
