#pragma once

#include "platform/controls/application.h"

#include <QTest>
#include <QVBoxLayout>

/// Whether the window is shown and has the keyboard.
[[nodiscard]] inline bool activated(QWidget &window) {
    window.show();
    window.activateWindow();
    return QTest::qWaitForWindowActive(&window);
}

/// Puts the widgets one below the other, and in this order for the Tab key.
inline void stack(QWidget &screen, std::initializer_list<QWidget *> widgets) {
    auto *layout = new QVBoxLayout(&screen);
    for (QWidget *widget : widgets)
        layout->addWidget(widget);
}

/// The main function of a test class of controls: on the program's own application object.
#define ZEL_CONTROLS_MAIN(TestClass)                                                                         \
    int main(int argc, char **argv) {                                                                        \
        zel::controls::Application application(argc, argv);                                                  \
        TestClass test;                                                                                      \
        return QTest::qExec(&test, argc, argv);                                                              \
    }
