#include "platform/controls/application.h"

#include "platform/base/error.h"
#include "platform/controls/form_life.h"
#include "platform/controls/look.h"

#include <QFontDatabase>
#include <QLabel>
#include <QMessageBox>
#include <QWindow>

#include <cstdio>
#include <cstdlib>
#include <exception>

namespace zel::controls {

namespace {

/// The number shown for a failure that bears none of its own.
constexpr int InternalError = 51;

bool s_failing = false;
bool s_running = false;
const QObject *s_box = nullptr;

bool belongsToBox(const QObject *receiver) {
    const auto *box = qobject_cast<const QWidget *>(s_box);
    if (!box)
        return false;
    if (receiver == box->windowHandle())
        return true;
    for (; receiver; receiver = receiver->parent()) {
        if (receiver == s_box)
            return true;
    }
    return false;
}

/// Popups hold the mouse and the keyboard. Their events are not delivered any more, so they can't run code.
void closePopups() {
    while (QWidget *popup = QApplication::activePopupWidget()) {
        popup->hide();
        if (QApplication::activePopupWidget() == popup)
            break;
    }
    if (QWidget *grabber = QWidget::mouseGrabber())
        grabber->releaseMouse();
    if (QWidget *grabber = QWidget::keyboardGrabber())
        grabber->releaseKeyboard();
}

/// A failed statement ends with an excerpt and a caret below the place: letters of one width, and no line of
/// the two broken.
void keepCaretInPlace(QMessageBox &box) {
    const QStringList lines = box.text().split(QLatin1Char('\n'));
    auto *label = box.findChild<QLabel *>(QStringLiteral("qt_msgbox_label"));
    if (!label || lines.size() < 2 || lines.last().trimmed() != QLatin1String("^"))
        return;
    QFont even = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    even.setPointSize(label->font().pointSize());
    label->setStyleSheet(QStringLiteral("font-family: \"%1\"").arg(even.family()));
    label->setMinimumWidth(QFontMetrics(even).horizontalAdvance(lines[lines.size() - 2] + QLatin1Char(' ')));
}

} // namespace

Application::Application(int &argc, char **argv) : QApplication(argc, argv) {
    setApplicationName(QStringLiteral("ZEL"));
    setQuitOnLastWindowClosed(false);
    // A failure that meets a noexcept function on its way never comes to the event loop.
    std::set_terminate([] {
        if (std::current_exception())
            failWithCurrentException();
        std::abort();
    });
    applyLook(*this);
}

int Application::run(const std::function<void()> &start) {
    try {
        start();
    } catch (...) {
        failWithCurrentException();
    }
    s_running = true;
    const int status = exec();
    s_running = false;
    return status;
}

void Application::endWithoutForms() {
    if (!s_running || !FormLife::loaded().isEmpty())
        return;
    QMetaObject::invokeMethod(
        qApp,
        [] {
            if (FormLife::loaded().isEmpty())
                QCoreApplication::exit(0);
        },
        Qt::QueuedConnection);
}

bool Application::notify(QObject *receiver, QEvent *event) {
    if (s_failing && !belongsToBox(receiver))
        return false;
    if (event->type() == QEvent::ShortcutOverride && menuTakes(receiver, event)) {
        event->ignore();
        return false;
    }
    if (event->type() == QEvent::KeyPress && typesLetterWithAlt(receiver, event)) {
        event->ignore();
        return false;
    }
    try {
        if (event->type() == QEvent::Shortcut && mnemonicGoesToScreen(receiver, event))
            return true;
        return QApplication::notify(receiver, event);
    } catch (...) {
        failWithCurrentException();
    }
}

bool Application::failing() {
    return s_failing;
}

void Application::failWithCurrentException() {
    try {
        throw;
    } catch (const Error &error) {
        fail(error.number(), error.description());
    } catch (const std::exception &error) {
        fail(InternalError, QString::fromLocal8Bit(error.what()));
    } catch (...) {
        fail(InternalError, QStringLiteral("Internal error"));
    }
}

void Application::fail(int number, const QString &description) {
    std::fflush(stdout);
    std::fprintf(stderr, "ZEL: error %d: %s\n", number, description.toUtf8().constData());
    std::fflush(stderr);
    if (!s_failing && qApp) {
        s_failing = true;
        qApp->blockSignals(true); // nobody hears of the focus that goes to the box
        closePopups();
        QMessageBox box(QMessageBox::Critical, QStringLiteral("ZEL"),
                        QStringLiteral("Error %1:\n\n%2").arg(number).arg(description), QMessageBox::Ok);
        box.setObjectName(QStringLiteral("Failure"));
        box.setTextFormat(Qt::PlainText);
        keepCaretInPlace(box);
        box.setWindowModality(Qt::ApplicationModal);
        s_box = &box;
        box.exec();
    }
    // No destructor and no exit handler of the program may run now.
    std::fflush(nullptr);
    std::_Exit(EXIT_FAILURE);
}

} // namespace zel::controls
