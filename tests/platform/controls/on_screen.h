#pragma once

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
