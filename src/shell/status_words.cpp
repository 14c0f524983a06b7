#include "shell/status_words.h"

#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPointer>
#include <QStatusBar>

namespace zel::shell {

namespace {

constexpr int ShownFor = 10'000; // milliseconds
constexpr auto UnderWay = "underWay";

QPointer<QStatusBar> statusBar;
QPointer<QMdiArea> screens;
QPointer<QLabel> underWay;

void showUnderWay() {
    if (!screens || !underWay)
        return;
    const QMdiSubWindow *window = screens->activeSubWindow();
    underWay->setText(window && window->widget() ? window->widget()->property(UnderWay).toString()
                                                 : QString());
}

} // namespace

void say(const QString &happened) {
    if (statusBar)
        statusBar->showMessage(happened, ShownFor);
}

void setUnderWay(QWidget &screen, const QString &words) {
    screen.setProperty(UnderWay, words);
    showUnderWay();
}

void showStatusIn(QStatusBar &bar, QMdiArea &area) {
    statusBar = &bar;
    screens = &area;
    underWay = new QLabel(&bar);
    underWay->setObjectName("lblUnderWay");
    bar.addPermanentWidget(underWay);
    QObject::connect(&area, &QMdiArea::subWindowActivated, underWay, &showUnderWay);
}

} // namespace zel::shell
