#pragma once

#include "platform/controls/form_life.h"
#include "platform/controls/shortcut.h"

#include <QMainWindow>
#include <QMdiSubWindow>
#include <QWidget>

class QMdiArea;

namespace zel::controls {

/// Where child screens stand: the area that the main window sets when it loads and takes back when it
/// unloads.
class FormHost {
public:
    [[nodiscard]] static QMdiArea *area();
    static void setArea(QMdiArea *area);
};

/// A screen. A child form stands in the host's area; a window form, or a child while there is no area, on its
/// own.
///
/// A child takes all the room that the area has from its place on, one of its own size no more than it asks
/// for and, without a place, the middle; both follow the area's size until somebody moves or resizes them. A
/// form of fixed size has a window that can't be resized or maximized. Where there is less room than a screen
/// asks for, what stands above its row of buttons ("layoutButtons") scrolls, and the buttons stay in sight.
///
/// In a .ui file the top widget's class is QWidget; the constructor calls setupUi(this). Form_Load fills the
/// controls. The window title is the form's.
class Form : public QWidget, public FormLife {
    Q_OBJECT
public:
    enum class Kind { Child, OwnSize, Window };
    explicit Form(Kind kind = Kind::Child, QWidget *parent = nullptr);
    ~Form() override;

    [[nodiscard]] QWidget *formWidget() override { return this; }
    /// The child window around the form, null for a window form or before it is first shown.
    [[nodiscard]] QMdiSubWindow *subWindow() const { return m_window; }
    /// Where the child window stands in the area, as far as it fits: from its first showing on, and from now
    /// on once it is shown. Without a place the area cascades.
    void setPlace(QPoint place);

protected:
    /// For a screen without an exit button: these keys do what the close box of its window does.
    void closeOn(std::initializer_list<Shortcut> keys);
    /// The form itself, not a control on it, had the focus and lost it.
    virtual void Form_LostFocus() {}

    [[nodiscard]] QWidget *shell() override;
    [[nodiscard]] bool isChild() const override { return m_kind != Kind::Window; }
    void bringForward(bool maximized) override;
    void yieldActivity() override;
    void closeEvent(QCloseEvent *event) override;
    void changeEvent(QEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    friend class ScreenWindow;
    void makeWindow(QMdiArea *area);
    /// Gives the window its place and size in the area as it is now.
    void fitWindow();
    void takeFocus(bool first);

    Kind m_kind;
    QPointer<QMdiSubWindow> m_window;
    QPoint m_place{-1, -1};
    QPoint m_cascade; ///< where a screen without a place begins
    QSize m_asked;    ///< of the window
    QRect m_given;    ///< what the window was given last
};

/// The main window. Unloading it unloads every screen of its area first.
class MainForm : public QMainWindow, public FormLife {
    Q_OBJECT
public:
    explicit MainForm(QWidget *parent = nullptr);
    ~MainForm() override;
    [[nodiscard]] QWidget *formWidget() override { return this; }

protected:
    [[nodiscard]] QWidget *shell() override { return this; }
    void unloadOthers() override;
    void bringForward(bool maximized) override;
    void closeEvent(QCloseEvent *event) override;
};

} // namespace zel::controls
