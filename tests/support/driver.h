#pragma once

#include <QMessageBox>
#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

class QWidget;

namespace zel::controls {
class Grid;
}

/// Real keys into real screens. A missing control is a fault of the test and ends it.
namespace zel::test {

/// A message box as it was shown.
struct Box {
    QString title;
    QString text;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    QMessageBox::StandardButtons buttons;
};

/// Runs `action` and answers the message boxes that it brings up, in turn; boxes beyond the answers are
/// closed with Esc. Gives what was shown.
std::vector<Box> boxesOf(const std::function<void()> &action,
                         std::vector<QMessageBox::StandardButton> answers = {});
/// The texts alone.
QStringList textsOf(const std::function<void()> &action,
                    std::vector<QMessageBox::StandardButton> answers = {});

/// The loaded screen of that objectName; nullptr when there is none.
[[nodiscard]] QWidget *form(const QString &name);
/// The screen that has the focus; '' when none has.
[[nodiscard]] QString activeForm();
/// objectName of the control that has the focus; of a combo box its own, not its inner editor's.
[[nodiscard]] QString focused();

/// The control of that objectName on a screen.
[[nodiscard]] QWidget *control(QWidget *form, const QString &name);
template <class T>
[[nodiscard]] T *control(QWidget *form, const QString &name) {
    T *found = qobject_cast<T *>(control(form, name));
    if (!found)
        qFatal("%s is of another class", qPrintable(name));
    return found;
}

/// The text of a box, a button, a label or a combo.
[[nodiscard]] QString text(QWidget *form, const QString &name);

/// Holds that a screen shows what is told of it: "txtDrAc=RENT; txtDrAc.Tag=4; MshEntry=3;
/// cmdDelete.enabled=false; focus=cmdAdd". A control's name stands for its text, a grid's for its rows with
/// the heading, NAME.PROPERTY for any property; "focus" is the control that has it, "said" and "underWay"
/// stand in the status bar.
void expect(QWidget *form, const QString &facts, const char *file = __builtin_FILE(),
            int line = __builtin_LINE());

/// What the main window's status bar says has happened, and is under way on the active screen.
[[nodiscard]] QString said();
[[nodiscard]] QString underWay();

/// Chooses a menu item: by its key when it has one, else in the opened menu. Gives the screen of that name;
/// the name may be '' when none opens.
QWidget *openByMenu(const QString &item, const QString &formName);

/// Keys to whatever has the focus. Text goes letter by letter.
void type(const QString &text);
void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
/// Focus to a control, its text selected, then the keys.
void typeInto(QWidget *form, const QString &name, const QString &text);
/// Focus to a control, then one key.
void pressOn(QWidget *form, const QString &name, Qt::Key key,
             Qt::KeyboardModifiers modifiers = Qt::NoModifier);
/// The space bar on a button or a check box.
void click(QWidget *form, const QString &name);
/// Focus to the tabs, then as many arrow keys as it takes to bring a page to the front.
void turnTo(QWidget *form, const QString &tabs, int page);
/// Delivers what is queued.
void settle();

/// The visible and hidden cells of a grid, one text a row with "|" between cells; the first is the heading.
[[nodiscard]] QStringList cells(QWidget *form, const QString &grid);

/// One column of a grid below the heading.
[[nodiscard]] QStringList columnOf(QWidget *form, const QString &grid, int column);

/// A picture of a widget into the folder that ZEL_PICTURES names; nothing without it.
void picture(QWidget *widget, const QString &name);

} // namespace zel::test
