#pragma once

#include "platform/ado/connection.h"

#include <QMessageBox>
#include <QString>
#include <QTemporaryDir>

#include <functional>
#include <vector>

class QAction;
class QWidget;

namespace zel::controls {
class Grid;
}

/// The real screens in the test's own process, on a fresh catalog, driven by keys.
namespace zel::test {

/// A fresh catalog as `zeldb create` makes it, in a folder of its own with Server.txt, which is the
/// application path while the object lives. The program's shared state is put back to what it is at start.
class Office {
public:
    Office();
    ~Office();

    [[nodiscard]] QString folder() const { return m_folder.path(); }

    /// Shows the login and logs in by keys; the main window stands when it returns.
    void logIn(const QString &user = "sa", const QString &password = {});
    /// Unloads every screen and the main window.
    void logOut();

    /// Statements of the test's own, past the program's connection: rows to start from, and what is there
    /// now.
    void execute(const char *statements);
    /// All cells of the first result, rows from 0, as texts, Null as "NULL".
    [[nodiscard]] std::vector<std::vector<QString>> select(const char *statement);

private:
    QTemporaryDir m_folder;
    ado::Connection m_own;
};

/// A message box as it was shown.
struct Box {
    QString title;
    QString text;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    QMessageBox::StandardButtons buttons;
};

/// Runs `action` and answers the message boxes that it brings up, in turn; further boxes than answers get the
/// box's own escape. Gives what was shown.
std::vector<Box> boxesOf(const std::function<void()> &action,
                         std::vector<QMessageBox::StandardButton> answers = {QMessageBox::Ok});

/// The open screen of that objectName; nullptr when it is not open.
[[nodiscard]] QWidget *form(const QString &name);
/// The control of that objectName on a screen; fails the test when there is none.
[[nodiscard]] QWidget *control(QWidget *form, const QString &name);
template <class T>
[[nodiscard]] T *control(QWidget *form, const QString &name) {
    return qobject_cast<T *>(control(form, name));
}

/// Opens a screen by its menu item ("mnuSession") and gives it, active and painted.
QWidget *openByMenu(const QString &item, const QString &formName);

/// Types into the control that has the focus. Text is typed letter by letter.
void type(const QString &text);
void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
/// Focus to a control first, then the keys.
void typeInto(QWidget *form, const QString &name, const QString &text);
void click(QWidget *form, const QString &name);

/// The texts of a grid, row 0 being the headings.
[[nodiscard]] std::vector<std::vector<QString>> cells(const controls::Grid &grid);

} // namespace zel::test
