// Fails in the way that its argument names. Prints the text of the box that then shows, lets it stand while
// timers and queued calls come due, and answers it by the keyboard. Prints "ran on: ..." whenever code of the
// program runs after the failure.

#include "platform/base/error.h"
#include "platform/controls/application.h"
#include "platform/controls/button.h"
#include "platform/controls/form.h"
#include "platform/controls/msg_box.h"
#include "platform/controls/text_box.h"

#include <QElapsedTimer>
#include <QMdiArea>
#include <QMenu>
#include <QMessageBox>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>

#include <cstdio>

using namespace zel;
using namespace zel::controls;

namespace {

bool s_failed = false;

void say(const QString &what) {
    std::printf("%s%s\n", s_failed ? "ran on: " : "", qPrintable(what));
    std::fflush(stdout);
}

void sayIfFailed(const char *what) {
    if (s_failed)
        say(what);
}

struct AtExit {
    ~AtExit() { sayIfFailed("exit handler"); }
};
const AtExit s_atExit;

[[noreturn]] void fail() {
    QMetaObject::invokeMethod(
        qApp, [] { say("queued call"); }, Qt::QueuedConnection);
    QTimer::singleShot(0, [] { say("single shot"); });
    s_failed = true;
    throw Error(105, "Unclosed quotation mark after the character string 'x'.");
}

/// Answers the box once it has stood for a while. The program's own ticking timer keeps events coming.
class Program : public Application {
public:
    using Application::Application;

    bool notify(QObject *receiver, QEvent *event) override {
        auto *box = qobject_cast<QMessageBox *>(receiver);
        if (box && event->type() == QEvent::Show && box->objectName() == "Failure") {
            std::printf("box: %s: %s\n", qPrintable(box->windowTitle()),
                        qPrintable(box->text().replace('\n', '/')));
            if (box->icon() != QMessageBox::Critical)
                say("not a critical box");
            m_box = box;
            m_shown.start();
        }
        if (m_box && m_shown.elapsed() > 250) {
            QTest::keyClick(std::exchange(m_box, nullptr), Qt::Key_Return);
            return true;
        }
        return Application::notify(receiver, event);
    }

private:
    QMessageBox *m_box = nullptr;
    QElapsedTimer m_shown;
};

/// Tells of every event that reaches it after the failure.
class Watcher : public QWidget {
public:
    using QWidget::QWidget;

protected:
    bool event(QEvent *event) override {
        if (s_failed)
            say(QString("event %1").arg(int(event->type())));
        return QWidget::event(event);
    }
};

class Screen : public Form {
public:
    Screen() : box(new TextBox), button(new Button) {
        auto *layout = new QVBoxLayout(this);
        for (QWidget *widget : QList<QWidget *>{box, button, new Watcher})
            layout->addWidget(widget);
        connect(box, &TextBox::lostFocus, this, [] { sayIfFailed("lost focus"); });
    }
    TextBox *box;
    Button *button;
    QString failsOn{};

protected:
    void Form_Load() override { reached("load"); }
    void Form_Activate() override { reached("activate"); }
    void Form_Unload() override { reached("unload"); }
    void Form_LostFocus() override { sayIfFailed("form lost focus"); }

private:
    void reached(const QString &what) {
        sayIfFailed("screen");
        if (failsOn == what)
            fail();
    }
};

class Main : public MainForm {
public:
    Main() {
        auto *area = new QMdiArea;
        setCentralWidget(area);
        FormHost::setArea(area);
        resize(800, 600);
    }

protected:
    void Form_Unload() override { sayIfFailed("main unloads"); }
};

FormReference<Main> s_main;
FormReference<Screen> s_screen;
FormReference<Screen> s_other;

void act(const QString &way) {
    const auto later = [](auto what) { QTimer::singleShot(0, qApp, what); };
    if (way == "click") {
        QObject::connect(s_screen->button, &Button::clicked, [] { fail(); });
        QTest::mouseClick(s_screen->button, Qt::LeftButton);
    } else if (way == "key") {
        QObject::connect(s_screen->box, &TextBox::changed, [] { fail(); });
        QTest::keyClick(s_screen->box, Qt::Key_A);
    } else if (way == "enter") {
        QObject::connect(s_screen->box, &TextBox::enterPressed, [] { fail(); });
        QTest::keyClick(s_screen->box, Qt::Key_Return);
    } else if (way == "timer") {
        later([] { fail(); });
    } else if (way == "queued call") {
        QMetaObject::invokeMethod(
            qApp, [] { fail(); }, Qt::QueuedConnection);
    } else if (way == "load") {
        s_other->failsOn = "load";
        s_other->Show();
    } else if (way == "activation") {
        s_other->Show();
        s_screen->failsOn = "activate";
        s_other->Unload();
    } else if (way == "unload") {
        s_screen->failsOn = "unload";
        s_screen->subWindow()->close();
    } else if (way == "main window closes") {
        s_other->Show();
        s_screen->failsOn = "unload";
        s_main->close();
    } else if (way == "nested box") {
        later([] { fail(); });
        MsgBox("please enter Amount", vbInformation);
        sayIfFailed("after the first box");
    } else if (way == "after a box") {
        later([] { QTest::keyClick(qApp->activeModalWidget(), Qt::Key_Return); });
        MsgBox("please enter Amount", vbInformation);
        fail();
    } else if (way == "open menu") {
        QMenu menu;
        menu.addAction("Edit");
        later([] { fail(); });
        menu.exec(s_screen->mapToGlobal(QPoint(5, 5)));
        sayIfFailed("after the menu");
    } else if (way == "nested loop") {
        later([] { fail(); });
        QTest::qWait(1000);
        sayIfFailed("after the loop");
    } else if (way == "through a noexcept call") {
        [&]() noexcept { fail(); }();
    } else if (way == "standard exception") {
        s_failed = true;
        throw std::runtime_error("out of paper");
    }
}

} // namespace

int main(int argc, char **argv) {
    Program program(argc, argv);
    const QString way = program.arguments().value(1);
    QTimer ticks;
    QObject::connect(&ticks, &QTimer::timeout, [] { sayIfFailed("tick"); });
    ticks.start(10);
    QObject::connect(&program, &QApplication::focusChanged, [] { sayIfFailed("focus changed"); });
    QObject::connect(&program, &QApplication::aboutToQuit, [] { sayIfFailed("about to quit"); });
    const int status = program.run([&way] {
        if (way == "before the first screen")
            fail();
        s_main->Show();
        s_screen->Show();
        s_screen->box->setFocus();
        QTimer::singleShot(100, qApp, [way] { act(way); });
        QTimer::singleShot(10000, qApp, [] { say("nothing failed"); });
    });
    sayIfFailed("after the loop of main");
    return status;
}
