#include "platform/controls/buttons_in_sight.h"

#include <QApplication>
#include <QScrollArea>
#include <QVBoxLayout>

namespace zel::controls {

namespace {

/// Asks for all the room that its content does, which a plain scroll area doesn't.
class Content : public QScrollArea {
public:
    explicit Content(QWidget *parent) : QScrollArea(parent) {
        setWidgetResizable(true);
        setFrameShape(QFrame::NoFrame);
        setFocusPolicy(Qt::NoFocus);
        setWidget(new QWidget(this));
        widget()->setAutoFillBackground(false);
        viewport()->setAutoFillBackground(false);
        connect(qApp, &QApplication::focusChanged, this, [this](QWidget *, QWidget *now) {
            if (now && widget()->isAncestorOf(now))
                ensureWidgetVisible(now, 0, 0);
        });
    }
    [[nodiscard]] QSize sizeHint() const override { return widget()->sizeHint(); }
};

} // namespace

void keepButtonsInSight(QWidget &screen) {
    auto *buttons = screen.findChild<QHBoxLayout *>(QStringLiteral("layoutButtons"));
    auto *column = buttons ? qobject_cast<QVBoxLayout *>(buttons->parent()) : nullptr;
    if (!column)
        return;
    auto *content = new Content(column->parentWidget());
    auto *above = new QVBoxLayout(content->widget());
    above->setContentsMargins(0, 0, 0, 0);
    above->setSpacing(column->spacing());
    while (column->itemAt(0)->layout() != buttons) {
        const int stretch = column->stretch(0);
        QLayoutItem *item = column->takeAt(0);
        if (QLayout *layout = item->layout()) {
            above->addLayout(layout, stretch);
        } else if (item->spacerItem()) {
            above->addItem(item);
        } else {
            above->addWidget(item->widget(), stretch);
            delete item;
        }
    }
    column->insertWidget(0, content, 1);
}

} // namespace zel::controls
