#include "platform/controls/combo_box.h"

#include "platform/controls/focus.h"
#include "platform/controls/typing.h"

#include <QAbstractItemView>
#include <QWheelEvent>

namespace zel::controls {

ComboBox::ComboBox(QWidget *parent) : QComboBox(parent) {
    setFocusPolicy(Qt::StrongFocus);
    connect(this, &QComboBox::currentIndexChanged, this, &ComboBox::changed);
    connect(this, &QComboBox::activated, this, &ComboBox::clicked);
}

void ComboBox::setText(const QString &text) {
    setCurrentIndex(findText(text));
}

void ComboBox::showPopup() {
    view()->installEventFilter(this);
    QComboBox::showPopup();
}

/// The open list must not pick by letters either.
bool ComboBox::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() == QEvent::KeyPress && !m_lettersPick && watched == view())
        return !typedText(static_cast<QKeyEvent *>(event)).isEmpty();
    return QComboBox::eventFilter(watched, event);
}

void ComboBox::keyPressEvent(QKeyEvent *event) {
    if (isEnter(event)) {
        if (m_enterKey == EnterKey::GoesOn)
            focusNext(this);
        Q_EMIT enterPressed();
    } else if (isEditable() || m_lettersPick || typedText(event).isEmpty()) {
        QComboBox::keyPressEvent(event);
    }
}

void ComboBox::wheelEvent(QWheelEvent *event) {
    if (hasFocus())
        QComboBox::wheelEvent(event);
    else
        event->ignore();
}

} // namespace zel::controls
