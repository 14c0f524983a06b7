#pragma once

#include "platform/controls/form_life.h"

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
/// A form of fixed size has a window that can't be resized or maximized.
///
/// In a .ui file the top widget's class is QWidget; the constructor calls setupUi(this). Form_Load fills the
/// controls. The window title is the form's.
class Form : public QWidget, public FormLife {
    Q_OBJECT
public:
    enum class Kind { Child, Window };
    explicit Form(Kind kind = Kind::Child, QWidget *parent = nullptr);
    ~Form() override;

    [[nodiscard]] QWidget *formWidget() override { return this; }
    /// The child window around the form, null for a window form or before it is first shown.
    [[nodiscard]] QMdiSubWindow *subWindow() const { return m_window; }
    /// Where the child window stands in the area, as far as it fits: from its first showing on, and from now
    /// on once it is shown. Without a place the area cascades.
    void setPlace(QPoint place);

protected:
    /// For a screen without an exit button: Ctrl+W does what the close box of its window does.
    void closeOnCtrlW();
    /// The form itself, not a control on it, had the focus and lost it.
    virtual void Form_LostFocus() {}

    [[nodiscard]] QWidget *shell() override;
    [[nodiscard]] bool isChild() const override { return m_kind == Kind::Child; }
    void bringForward(bool maximized) override;
    void yieldActivity() override;
    void closeEvent(QCloseEvent *event) override;
    void changeEvent(QEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    friend class ScreenWindow;
    void makeWindow(QMdiArea *area);
    void moveWindow(QPoint place);
    void takeFocus(bool first);

    Kind m_kind;
    QPointer<QMdiSubWindow> m_window;
    QPoint m_place{-1, -1};
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
