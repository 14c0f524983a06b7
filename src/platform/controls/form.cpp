#include "platform/controls/form.h"

#include "platform/controls/buttons_in_sight.h"
#include "platform/controls/focus.h"
#include "platform/controls/typing.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QMdiArea>
#include <QMenu>
#include <QShortcut>
#include <QTabBar>

#include <algorithm>

namespace zel::controls {

namespace {

QPointer<QMdiArea> &hostArea() {
    static QPointer<QMdiArea> area;
    return area;
}

} // namespace

QMdiArea *FormHost::area() {
    return hostArea();
}

void FormHost::setArea(QMdiArea *area) {
    hostArea() = area;
}

/// The child window around a screen. Its system menu has no shortcuts: Ctrl+F4 is the menu bar's.
class ScreenWindow : public QMdiSubWindow {
public:
    explicit ScreenWindow(Form *form) : m_form(form) {
        setWidget(form);
        setWindowIcon(form->windowIcon());
        setAttribute(Qt::WA_DeleteOnClose, false);
        for (QAction *action : systemMenu()->actions())
            action->setShortcuts(QList<QKeySequence>());
        connect(this, &QMdiSubWindow::windowStateChanged, this, [this](auto before, auto now) {
            if (m_form && now.testFlag(Qt::WindowActive) && !before.testFlag(Qt::WindowActive))
                m_form->becameActive();
        });
    }

protected:
    void closeEvent(QCloseEvent *event) override {
        event->ignore();
        if (m_form)
            m_form->Unload();
    }

private:
    QPointer<Form> m_form;
};

Form::Form(Kind kind, QWidget *parent) : QWidget(parent), m_kind(kind) {}

Form::~Form() = default;

QWidget *Form::shell() {
    return m_window ? static_cast<QWidget *>(m_window) : this;
}

void Form::makeWindow(QMdiArea *area) {
    const bool fixedSize = minimumSize() == maximumSize();
    if (!fixedSize)
        keepButtonsInSight(*this);
    // A screen whose design has a size keeps it, any other is as large as it asks for.
    const QSize inner = (testAttribute(Qt::WA_Resized) ? size() : sizeHint()).expandedTo(minimumSizeHint());
    m_window = new ScreenWindow(this);
    if (fixedSize)
        m_window->setWindowFlags(Qt::SubWindow | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                                 Qt::WindowSystemMenuHint | Qt::WindowMinimizeButtonHint |
                                 Qt::WindowCloseButtonHint);
    area->addSubWindow(m_window);
    const QSize frame = m_window->sizeHint() - sizeHint();
    m_asked = inner + frame;
    if (fixedSize)
        m_window->setFixedSize(m_asked);
    else
        m_window->setMinimumSize(minimumSizeHint() + frame);
    const int step = 26 * int((area->subWindowList().size() - 1) % 8);
    m_cascade = QPoint(step, step);
    area->viewport()->installEventFilter(this);
    fitWindow();
}

/// No window reaches out of the area where it would fit.
void Form::fitWindow() {
    const QSize room = FormHost::area()->viewport()->size();
    const bool takesAll = m_kind == Kind::Child && m_window->minimumSize() != m_window->maximumSize();
    QSize size = m_asked.boundedTo(room).expandedTo(m_window->minimumSize());
    const QSize left = (room - size).expandedTo(QSize(0, 0));
    const bool hasPlace = m_place.x() >= 0;
    const QPoint wanted = hasPlace ? m_place : takesAll ? m_cascade : QPoint(left.width(), left.height()) / 2;
    const QPoint place(std::min(wanted.x(), left.width()), std::min(wanted.y(), left.height()));
    if (takesAll)
        size = size.expandedTo(room - QSize(place.x(), place.y()));
    m_window->setGeometry({place, size});
    m_given = m_window->geometry();
}

bool Form::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() == QEvent::Resize && m_window && m_window->geometry() == m_given)
        fitWindow();
    return QWidget::eventFilter(watched, event);
}

void Form::closeOn(std::initializer_list<Shortcut> keys) {
    QList<QKeySequence> sequences;
    for (const Shortcut &closing : keys)
        sequences << closing.key;
    auto *shortcut = new QShortcut(this);
    shortcut->setKeys(sequences);
    shortcut->setContext(Qt::WidgetWithChildrenShortcut);
    connect(shortcut, &QShortcut::activated, this, [this] { Unload(); });
}

void Form::setPlace(QPoint place) {
    m_place = place;
    if (!m_window || !FormHost::area())
        return;
    if (m_window->isMaximized())
        m_window->showNormal();
    fitWindow();
}

void Form::bringForward(bool maximized) {
    QMdiArea *area = FormHost::area();
    const bool first = !m_window;
    if (isChild() && first && area)
        makeWindow(area);
    QWidget *window = shell();
    if (maximized)
        window->showMaximized();
    else if (window->isMinimized())
        window->showNormal();
    else
        window->show();
    window->raise();
    if (!m_window) {
        window->activateWindow();
        takeFocus(first);
        return;
    }
    area->setActiveSubWindow(m_window);
    takeFocus(first);
    // A hidden child window may have kept its active state, and then tells of no edge.
    if (m_window->windowState().testFlag(Qt::WindowActive))
        becameActive();
}

/// Gives the focus back to the control that had it last, at first to the first in tab order behind a tab bar;
/// the form itself takes it when no control can.
void Form::takeFocus(bool first) {
    const QWidget *now = QApplication::focusWidget();
    if (!now || (now != this && !isAncestorOf(now))) {
        QWidget *last = focusWidget();
        if (last && last != this && last->isEnabled() && last->isVisible())
            last->setFocus(Qt::OtherFocusReason);
        else if (!focusNextPrevChild(true))
            setFocus(Qt::OtherFocusReason);
    }
    // The child window may have given it to the tab bar when it became active.
    if (first && qobject_cast<QTabBar *>(focusWidget()))
        focusNextPrevChild(true);
}

void Form::yieldActivity() {
    QMdiArea *area = FormHost::area();
    if (!m_window || !area)
        return;
    const QList<QMdiSubWindow *> windows = area->subWindowList(QMdiArea::ActivationHistoryOrder);
    for (auto next = windows.rbegin(); next != windows.rend(); ++next) {
        if (*next != m_window && (*next)->isVisible()) {
            area->setActiveSubWindow(*next);
            return;
        }
    }
}

void Form::closeEvent(QCloseEvent *event) {
    event->accept();
    Unload();
}

void Form::changeEvent(QEvent *event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isWindow() && isActiveWindow())
        becameActive();
}

void Form::focusOutEvent(QFocusEvent *event) {
    QWidget::focusOutEvent(event);
    if (!isBorrowed(event) && isLoaded())
        Form_LostFocus();
}

MainForm::MainForm(QWidget *parent) : QMainWindow(parent) {}

MainForm::~MainForm() = default;

void MainForm::unloadOthers() {
    unloadScreens();
    FormHost::setArea(nullptr);
}

void MainForm::bringForward(bool maximized) {
    if (maximized)
        showMaximized();
    else
        show();
    raise();
    activateWindow();
}

void MainForm::closeEvent(QCloseEvent *event) {
    event->accept();
    Unload();
}

} // namespace zel::controls
