#include "shell/MDIForm1.h"
#include "ui_MDIForm1.h"
#include "ui_Picture1.h"

#include "platform/base/error.h"
#include "platform/controls/look.h"
#include "shell/frmLocPass.h"
#include "shell/frmLogin.h"
#include "shell/key_sheet.h"
#include "shell/logo.h"
#include "shell/menu_table.h"
#include "shell/module1.h"
#include "shell/screens.h"
#include "shell/status_words.h"

#include <QAction>
#include <QApplication>
#include <QEvent>
#include <QLocale>
#include <QMenu>
#include <QScrollBar>

#include <algorithm>
#include <vector>

namespace zel::shell {

QString clockText(const QDateTime &moment) {
    const QString time = QLocale::c().toString(moment.time(), " hh:mm:ss AP");
    return QLocale::c().toString(moment.date(), "dddd, dd-MMMM-yyyy") + " " + time;
}

MDIForm1::MDIForm1() : ui(std::make_unique<Ui::MDIForm1>()), m_panel(std::make_unique<Ui::Panel>()) {
    loadImages();
    ui->setupUi(this);
    setWindowIcon(controls::icon("logo"));
    // A prompt over a maximized screen keeps its size.
    ui->mdiArea->setOption(QMdiArea::DontMaximizeSubWindowOnActivation);
    Picture1 = new QWidget(ui->mdiArea->viewport());
    m_panel->setupUi(Picture1);
    ui->mdiArea->viewport()->installEventFilter(this);
    showStatusIn(*ui->statusBar, *ui->mdiArea);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget *, QWidget *now) { bringInSight(now); });
    Timer1.setObjectName("Timer1");
    Timer1.setInterval(500);
    connect(&Timer1, &QTimer::timeout, this, &MDIForm1::Timer1_Timer);
    buildMenu();
    offerKeySheet(*this);
}

MDIForm1::~MDIForm1() = default;

void MDIForm1::Form_Load() {
    controls::FormHost::setArea(ui->mdiArea);
    m_panel->lblTitle->setText("Login :   " + gUserName);
    m_panel->Label2->setText("ZEL " ZEL_VERSION " on " + gCon.Engine());
    nameCompany();
    Timer1.start();
    setWindowState(Qt::WindowMaximized);
}

void MDIForm1::Form_Unload() {
    Timer1.stop();
    controls::FormHost::setArea(nullptr);
}

bool MDIForm1::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() == QEvent::Resize && watched == ui->mdiArea->viewport())
        Picture1->setGeometry(ui->mdiArea->viewport()->rect());
    return MainForm::eventFilter(watched, event);
}

void MDIForm1::bringInSight(const QWidget *control) {
    const QWidget *sight = ui->mdiArea->viewport();
    if (!control || !sight->isAncestorOf(control))
        return;
    const QRect place(control->mapTo(sight, QPoint()), control->size());
    const auto step = [](int begin, int end, int room) {
        return begin < 0 ? begin : std::max(0, end - room);
    };
    QScrollBar *across = ui->mdiArea->horizontalScrollBar();
    QScrollBar *down = ui->mdiArea->verticalScrollBar();
    across->setValue(across->value() + step(place.left(), place.right() + 1, sight->width()));
    down->setValue(down->value() + step(place.top(), place.bottom() + 1, sight->height()));
}

void MDIForm1::buildMenu() {
    std::vector<QMenu *> parents;
    const std::span<const MenuRow> table = menuTable();
    for (std::size_t i = 0; i < table.size(); ++i) {
        const MenuRow &row = table[i];
        parents.resize(std::size_t(row.level));
        QAction *action = nullptr;
        if (i + 1 < table.size() && table[i + 1].level > row.level) {
            auto *menu = new QMenu(row.caption, this);
            menu->setObjectName(row.name);
            action = menu->menuAction();
            parents.push_back(menu);
        } else {
            action = new QAction(row.caption, this);
            action->setShortcut(QKeySequence(row.key));
            connect(action, &QAction::triggered, this, [this, action] { choose(*action); });
        }
        action->setObjectName(row.name);
        action->setProperty("Caption", row.caption);
        if (qstrcmp(row.caption, "-") == 0) {
            action->setText(QString());
            action->setSeparator(true);
        }
        if (row.level == 0)
            ui->menuBar->addAction(action);
        else
            parents[std::size_t(row.level - 1)]->addAction(action);
    }
}

void MDIForm1::choose(const QAction &item) {
    const QString name = item.objectName();
    if (name == "mnuExit")
        return mnuExit_Click();
    if (name == "mnuSetMenu")
        return openLocked(gOpenSetMenus);
    if (name == "mnuRemoveData")
        return openLocked(gOpenRemoveData);
    close_Menu();
    openScreen(name);
}

void MDIForm1::openLocked(bool &destination) {
    close_Menu();
    destination = true;
    frmLocPass::reference->Show();
}

void MDIForm1::close_Menu() {
    Picture1->hide();
    showTaggedItems(false);
}

void MDIForm1::nameCompany() {
    QString name;
    try {
        ado::Recordset active;
        active.Open("Select Company From Company Where comActive='Y'", gCon);
        if (active.RecordCount() > 0)
            name = active.Fields("Company").text();
    } catch (const Error &) {
        // A catalog without tables has no company, and its panel names none.
    }
    m_panel->lblCompany->setText(name);
    m_panel->lblCompany->setVisible(!name.isEmpty());
}

void MDIForm1::showPanel() {
    nameCompany();
    Picture1->show();
    showTaggedItems(true);
}

void MDIForm1::showTaggedItems(bool visible) {
    for (QAction *item : findChildren<QAction *>())
        if (item->property("Tag").toString() == "M")
            item->setVisible(visible);
}

void MDIForm1::setItemVisible(const QString &caption, bool visible) {
    for (QAction *item : findChildren<QAction *>())
        if (item->property("Caption").isValid() && item->property("Caption").toString() == caption)
            item->setVisible(visible);
}

void MDIForm1::mnuExit_Click() {
    Unload();
    frmLogin::reference->Show();
}

void MDIForm1::Timer1_Timer() {
    m_panel->lblDate->setText(clockText(QDateTime::currentDateTime()));
}

} // namespace zel::shell
