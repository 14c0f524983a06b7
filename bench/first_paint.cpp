#include "first_paint.h"

#include <QCoreApplication>
#include <QEvent>

#include <cstdlib>

namespace {

class FirstPaint : public QObject {
public:
    explicit FirstPaint(const QString &window) : m_window(window) {}
    bool eventFilter(QObject *receiver, QEvent *event) override {
        // What is queued comes after the whole window, with all in it, has been brought to the screen.
        if (event->type() == QEvent::Paint && receiver->objectName() == m_window)
            QMetaObject::invokeMethod(
                qApp, [] { std::_Exit(0); }, Qt::QueuedConnection);
        return false;
    }

private:
    QString m_window;
};

} // namespace

void endAtFirstPaint(const QString &window) {
    qApp->installEventFilter(new FirstPaint(window));
}
