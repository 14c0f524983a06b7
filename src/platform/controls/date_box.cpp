#include "platform/controls/date_box.h"

#include "platform/controls/focus.h"
#include "platform/controls/typing.h"

#include <QCalendarWidget>
#include <QLineEdit>
#include <QStyleOptionComboBox>
#include <QWheelEvent>

namespace zel::controls {

DateBox::DateBox(QWidget *parent) : QDateEdit(QDate::currentDate(), parent) {
    setDisplayFormat(QStringLiteral("dd/MM/yyyy"));
    setDateRange(QDate(1753, 1, 1), QDate(9999, 12, 31));
    setCalendarPopup(true);
    setFocusPolicy(Qt::StrongFocus);
    lineEdit()->installEventFilter(this);
    connect(this, &QDateEdit::dateChanged, this, &DateBox::changed);
}

/// Tab leaves the box; day, month and year are reached by the arrow keys.
bool DateBox::focusNextPrevChild(bool next) {
    return QAbstractSpinBox::focusNextPrevChild(next); // NOLINT(bugprone-parent-virtual-call): past the sections
}

void DateBox::keyPressEvent(QKeyEvent *event) {
    const bool opens =
        event->key() == Qt::Key_F4 || (event->key() == Qt::Key_Down && event->modifiers() == Qt::AltModifier);
    if (isEnter(event)) {
        interpretText();
        if (m_enterKey == EnterKey::GoesOn)
            focusNext(this);
        Q_EMIT enterPressed();
    } else if (opens) {
        openCalendar();
    } else {
        QDateEdit::keyPressEvent(event);
    }
}

void DateBox::keyReleaseEvent(QKeyEvent *event) {
    QDateEdit::keyReleaseEvent(event);
    if (!event->isAutoRepeat())
        Q_EMIT keyReleased(event->key());
}

void DateBox::mousePressEvent(QMouseEvent *event) {
    watchCalendar();
    QDateEdit::mousePressEvent(event);
    Q_EMIT clicked();
}

void DateBox::wheelEvent(QWheelEvent *event) {
    if (hasFocus())
        QDateEdit::wheelEvent(event);
    else
        event->ignore();
}

void DateBox::focusInEvent(QFocusEvent *event) {
    QDateEdit::focusInEvent(event);
    if (!isBorrowed(event))
        Q_EMIT gotFocus();
}

/// The calendar opens on a press of the arrow alone, so F4 presses it.
void DateBox::openCalendar() {
    watchCalendar();
    QStyleOptionComboBox option;
    option.initFrom(this);
    option.editable = true;
    const QPointF arrow =
        style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxArrow, this).center();
    QMouseEvent press(QEvent::MouseButtonPress, arrow, mapToGlobal(arrow), Qt::LeftButton, Qt::LeftButton,
                      Qt::NoModifier);
    QDateEdit::mousePressEvent(&press);
}

void DateBox::watchCalendar() {
    calendarWidget()->window()->installEventFilter(this);
}

bool DateBox::eventFilter(QObject *watched, QEvent *event) {
    if (watched == lineEdit() && event->type() == QEvent::MouseButtonRelease)
        Q_EMIT clicked();
    else if (watched != lineEdit() && event->type() == QEvent::Hide)
        Q_EMIT calendarClosed();
    return QDateEdit::eventFilter(watched, event);
}

} // namespace zel::controls
