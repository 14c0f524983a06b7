#include "tests/support/driver.h"

#include "platform/controls/focus.h"
#include "platform/controls/form.h"
#include "platform/controls/grid.h"

#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QStatusBar>
#include <QTabWidget>
#include <QTimer>
#include <QtTest>

namespace zel::test {

namespace {

QWidget *keyTarget() {
    // A window that has just been shown becomes active when the platform says so.
    if (!QTest::qWaitFor([] { return QApplication::activeWindow() != nullptr; }))
        qFatal("no window is active");
    if (QWidget *popup = QApplication::activePopupWidget())
        return popup;
    if (QWidget *focus = QApplication::focusWidget())
        return focus;
    return QApplication::activeWindow();
}

QAction *menuItem(const QString &name) {
    QWidget *frame = form("MDIForm1");
    QAction *item = frame ? frame->findChild<QAction *>(name) : nullptr;
    if (!item)
        qFatal("no menu item %s", qPrintable(name));
    return item;
}

/// The window behind a closed box becomes active again, which not every platform does by itself.
void reactivate() {
    if (QApplication::activeWindow() || controls::FormLife::loaded().isEmpty())
        return;
    QWidget *window = controls::FormLife::loaded().last()->formWidget()->window();
    window->activateWindow();
    if (!QTest::qWaitForWindowActive(window))
        qFatal("no window is active behind the box");
}

QString shown(QWidget *screen, const QString &fact) {
    if (fact == "focus")
        return focused();
    if (fact == "said" || fact == "underWay")
        return fact == "said" ? said() : underWay();
    const QString name = fact.section('.', 0, 0);
    const QWidget *widget = control(screen, name);
    if (const auto *grid = qobject_cast<const controls::Grid *>(widget); grid && fact == name)
        return QString::number(grid->Rows());
    if (fact == name)
        return text(screen, name);
    const QVariant value = widget->property(fact.section('.', 1).toLatin1().constData());
    if (!value.isValid())
        qFatal("no property %s", qPrintable(fact));
    return value.toString();
}

} // namespace

std::vector<Box> boxesOf(const std::function<void()> &action,
                         std::vector<QMessageBox::StandardButton> answers) {
    std::vector<Box> shown;
    QTimer watch;
    watch.setInterval(1);
    QObject::connect(&watch, &QTimer::timeout, &watch, [&shown, &answers] {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (!box || box->property("answered").isValid())
            return;
        box->setProperty("answered", true);
        const std::size_t turn = shown.size();
        shown.push_back({box->windowTitle(), box->text(), box->icon(), box->standardButtons()});
        QAbstractButton *button = turn < answers.size() ? box->button(answers[turn]) : nullptr;
        if (button)
            QTest::keyClick(button, Qt::Key_Space);
        else
            box->reject();
    });
    watch.start();
    action();
    settle();
    if (!shown.empty())
        reactivate();
    return shown;
}

QStringList textsOf(const std::function<void()> &action, std::vector<QMessageBox::StandardButton> answers) {
    QStringList texts;
    for (const Box &box : boxesOf(action, std::move(answers)))
        texts << box.text;
    return texts;
}

QWidget *form(const QString &name) {
    for (controls::FormLife *form : controls::FormLife::loaded())
        if (form->formWidget()->objectName() == name)
            return form->formWidget();
    return nullptr;
}

QString activeForm() {
    for (QWidget *widget = QApplication::focusWidget(); widget; widget = widget->parentWidget())
        if (dynamic_cast<controls::FormLife *>(widget))
            return widget->objectName();
    return {};
}

QString focused() {
    const QWidget *widget = QApplication::focusWidget();
    while (widget && (widget->objectName().isEmpty() || widget->objectName().startsWith("qt_")))
        widget = widget->parentWidget();
    return widget ? widget->objectName() : QString();
}

QWidget *control(QWidget *form, const QString &name) {
    QWidget *found = form ? form->findChild<QWidget *>(name) : nullptr;
    if (!found)
        qFatal("no control %s on %s", qPrintable(name), form ? qPrintable(form->objectName()) : "no screen");
    return found;
}

QString text(QWidget *form, const QString &name) {
    const QWidget *widget = control(form, name);
    if (const auto *combo = qobject_cast<const QComboBox *>(widget))
        return combo->currentText();
    if (const auto *memo = qobject_cast<const QPlainTextEdit *>(widget))
        return memo->toPlainText();
    return widget->property("text").toString();
}

void expect(QWidget *form, const QString &facts, const char *file, int line) {
    const QStringList expected = facts.split("; ");
    QStringList actual;
    for (const QString &fact : expected) {
        const QString name = fact.section('=', 0, 0);
        actual << name + '=' + shown(form, name);
    }
    QTest::qCompare(actual, expected, "shown", "expected", file, line);
}

QString said() {
    return control<QStatusBar>(form("MDIForm1"), "statusBar")->currentMessage();
}

QString underWay() {
    return text(form("MDIForm1"), "lblUnderWay");
}

QWidget *openByMenu(const QString &item, const QString &formName) {
    const QAction *action = menuItem(item);
    if (!action->shortcut().isEmpty()) {
        const QKeyCombination keys = action->shortcut()[0];
        QTest::keyClick(keyTarget(), keys.key(), keys.keyboardModifiers());
    } else {
        QMetaObject::invokeMethod(const_cast<QAction *>(action), &QAction::trigger, Qt::QueuedConnection);
    }
    settle();
    if (formName.isEmpty())
        return nullptr;
    QWidget *opened = form(formName);
    if (!opened)
        qFatal("%s did not open %s", qPrintable(item), qPrintable(formName));
    return opened;
}

void type(const QString &text) {
    for (const QChar letter : text) {
        if (letter.unicode() < 128)
            QTest::keyClick(keyTarget(), letter.toLatin1());
        else
            QTest::sendKeyEvent(QTest::Click, keyTarget(), Qt::Key_unknown, QString(letter), Qt::NoModifier);
    }
}

void press(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(keyTarget(), key, modifiers);
}

void typeInto(QWidget *form, const QString &name, const QString &text) {
    QWidget *box = control(form, name);
    controls::SetFocus(box);
    if (auto *combo = qobject_cast<QComboBox *>(box))
        box = combo->lineEdit();
    if (auto *line = qobject_cast<QLineEdit *>(box))
        line->selectAll();
    if (text.isEmpty())
        press(Qt::Key_Delete);
    type(text);
}

void pressOn(QWidget *form, const QString &name, Qt::Key key, Qt::KeyboardModifiers modifiers) {
    controls::SetFocus(control(form, name));
    press(key, modifiers);
}

void click(QWidget *form, const QString &name) {
    QWidget *button = control(form, name);
    controls::SetFocus(button);
    QTest::keyClick(button, Qt::Key_Space);
    settle();
}

void turnTo(QWidget *form, const QString &tabs, int page) {
    auto *book = control<QTabWidget>(form, tabs);
    controls::SetFocus(book);
    for (int i = 0; i < book->count() && book->currentIndex() != page; ++i)
        press(book->currentIndex() < page ? Qt::Key_Right : Qt::Key_Left);
    if (book->currentIndex() != page)
        qFatal("no page %d on %s", page, qPrintable(tabs));
}

void settle() {
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

QStringList cells(QWidget *form, const QString &grid) {
    const auto *found = control<controls::Grid>(form, grid);
    QStringList rows;
    for (int row = 0; row < found->Rows(); ++row) {
        QStringList texts;
        for (int col = 0; col < found->Cols(); ++col)
            texts << found->TextMatrix(row, col);
        rows << texts.join('|');
    }
    return rows;
}

QStringList columnOf(QWidget *form, const QString &grid, int column) {
    QStringList texts = cells(form, grid).mid(1);
    for (QString &text : texts)
        text = text.section('|', column, column);
    return texts;
}

void picture(QWidget *widget, const QString &name) {
    const QString folder = qEnvironmentVariable("ZEL_PICTURES");
    if (!folder.isEmpty() && !widget->grab().save(folder + "/" + name + ".png"))
        qFatal("the picture %s can't be written", qPrintable(name));
}

} // namespace zel::test
