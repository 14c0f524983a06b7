#pragma once

#include <QList>
#include <QPointer>
#include <QString>
#include <QWidget>

class QMdiArea;

namespace zel::controls {

/// The life of a screen: created, loaded, shown and hidden any number of times, unloaded once. Load, activate
/// and unload are told to it by the three virtual procedures. When no form is loaded any more the program
/// ends.
class FormLife {
public:
    FormLife(const FormLife &) = delete;
    FormLife &operator=(const FormLife &) = delete;
    virtual ~FormLife();

    /// Runs Form_Load unless it ran already.
    void Load();
    /// Loads if need be, shows, and brings to the front.
    void Show();
    void ShowMaximized();
    /// Out of sight; still loaded.
    void Hide();
    /// Runs Form_Unload once, hides the form and deletes it when the event under way is done. Safe from the
    /// form's own events.
    void Unload();

    [[nodiscard]] bool isLoaded() const { return m_state == State::Loaded; }
    [[nodiscard]] bool isUnloaded() const { return m_state == State::Unloaded; }
    [[nodiscard]] bool isShown() const;

    /// All loaded forms, oldest first.
    [[nodiscard]] static const QList<FormLife *> &loaded();
    /// Unloads every screen inside the main window's area, hidden ones too; meanwhile none becomes active.
    static void unloadScreens();

    [[nodiscard]] virtual QWidget *formWidget() = 0;

protected:
    FormLife();
    virtual void Form_Load() {}
    virtual void Form_Activate() {}
    virtual void Form_Unload() {}

    /// The window that is shown: the form's own, or the child window around it.
    [[nodiscard]] virtual QWidget *shell() = 0;
    [[nodiscard]] virtual bool isChild() const { return false; }
    /// What must go before Form_Unload runs.
    virtual void unloadOthers() {}
    /// The form that lies next in sight becomes active.
    virtual void yieldActivity() {}
    /// Shows the shell and brings it to the front.
    virtual void bringForward(bool maximized) = 0;
    /// To be called when the window becomes active; tells the form once per change of the active form.
    void becameActive();

private:
    enum class State { Created, Loaded, Unloading, Unloaded };
    void discard();
    void goOutOfSight();

    State m_state = State::Created;
    static FormLife *s_active;
    static bool s_closing;
};

/// Names a screen. Does not own it: a loaded form lives until it unloads.
template <class T>
class FormReference {
public:
    /// The form, created (not loaded) when there is none or the last one has unloaded.
    T *operator->() { return get(); }
    T &operator*() { return *get(); }
    T *get() {
        if (!*this)
            m_form = new T;
        return m_form;
    }
    /// Names a form that has not unloaded.
    explicit operator bool() const { return m_form && !m_form->isUnloaded(); }
    /// The next use makes a fresh form; the present one, if loaded, lives on.
    void clear() {
        if (*this && !m_form->isLoaded())
            m_form->formWidget()->deleteLater();
        m_form = nullptr;
    }

private:
    QPointer<T> m_form;
};

} // namespace zel::controls
