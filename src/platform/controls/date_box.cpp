#include "platform/controls/date_box.h"

#include "platform/controls/focus.h"
#include "platform/controls/look.h"
#include "platform/controls/shortcut.h"
#include "platform/controls/typing.h"

#include <QCalendarWidget>
#include <QLineEdit>
#include <QStyleOptionComboBox>
#include <QTextCharFormat>
#include <QWheelEvent>

#include <algorithm>

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
    // NOLINTNEXTLINE(bugprone-parent-virtual-call): past the sections
    return QAbstractSpinBox::focusNextPrevChild(next);
}

void DateBox::forgetTyped() {
    m_typed = {};
}

/// The day typed, or the last that the month has.
void DateBox::showTyped(int month) {
    const int day = m_typed.day > 0 ? m_typed.day : date().day();
    const Section section = currentSection();
    setDate(QDate(date().year(), month, std::min(day, QDate(date().year(), month, 1).daysInMonth())));
    setSelectedSection(section);
    m_typed.shown = date();
}

/// Takes a digit of the day or of the month. Qt's own parser counts a second digit to the next section when
/// the month that is shown lacks such a day, so that 31 12 2025 typed in February would be another date.
bool DateBox::typeDigit(int digit) {
    const Section section = currentSection();
    if (section != DaySection && section != MonthSection)
        return false;
    if (m_typed.shown != date())
        forgetTyped();
    if (m_typed.section != section || m_typed.digits > 1) {
        m_typed.section = section;
        m_typed.number = 0;
        m_typed.digits = 0;
    }
    const int most = section == DaySection ? 31 : 12;
    const int number = m_typed.number * 10 + digit;
    if (number > most || (number == 0 && m_typed.digits > 0))
        return true;
    m_typed.number = number;
    ++m_typed.digits;
    m_typed.shown = date();
    if (number == 0)
        return true;
    if (section == DaySection)
        m_typed.day = number;
    showTyped(section == DaySection ? date().month() : number);
    if (m_typed.digits == 2 || number * 10 > most)
        setSelectedSection(section == DaySection ? MonthSection : YearSection);
    return true;
}

/// Goes to the next section, unless its digits have led there already.
bool DateBox::typeStroke() {
    const Section section = currentSection();
    const bool begun = m_typed.section == section && m_typed.digits > 0;
    const bool arrived = m_typed.shown == date() && m_typed.digits > 0 && !begun;
    if (!arrived && section != YearSection)
        setSelectedSection(section == DaySection ? MonthSection : YearSection);
    return true;
}

/// Over a whole text that is selected, or where no text is left, a date is typed from its day on.
void DateBox::beginAnew() {
    interpretText();
    setSelectedSection(DaySection);
    forgetTyped();
}

void DateBox::keyPressEvent(QKeyEvent *event) {
    const QString typed = isReadOnly() ? QString() : typedText(event);
    const QChar letter = typed.size() == 1 ? typed.front() : QChar();
    const bool isDigit = letter >= u'0' && letter <= u'9';
    const bool erases = event->key() == Qt::Key_Delete || event->key() == Qt::Key_Backspace;
    const bool all = lineEdit()->selectionLength() == lineEdit()->text().size();
    if (all && !isReadOnly() && (isDigit || erases)) {
        beginAnew();
        if (erases)
            return;
    }
    if ((isDigit && typeDigit(letter.digitValue())) ||
        ((letter == u'/' || letter == u'.' || letter == u'-') && typeStroke()))
        return;
    const bool opens = keys::OpenList.is(event) || keys::OpenListToo.is(event);
    if (isEnter(event)) {
        interpretText();
        if (m_enterKey == EnterKey::GoesOn)
            focusNext(this);
        Q_EMIT enterPressed();
    } else if (opens) {
        openCalendar();
    } else {
        const bool goesOn = isDigit && m_typed.shown == date();
        QDateEdit::keyPressEvent(event);
        if (!goesOn)
            forgetTyped();
        else if (date().year() != m_typed.shown.year())
            showTyped(date().month());
    }
}

void DateBox::keyReleaseEvent(QKeyEvent *event) {
    QDateEdit::keyReleaseEvent(event);
    if (!event->isAutoRepeat())
        Q_EMIT keyReleased(event->key());
}

void DateBox::mousePressEvent(QMouseEvent *event) {
    watchCalendar();
    forgetTyped();
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
    forgetTyped();
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
    if (calendarWidget()->styleSheet().isEmpty())
        calendarWidget()->setStyleSheet(sheet(QStringLiteral("calendar")));
    // Which days are free is each house's own.
    for (const Qt::DayOfWeek day : {Qt::Saturday, Qt::Sunday})
        calendarWidget()->setWeekdayTextFormat(day, {});
    // Its own least height leaves the sixth week half hidden.
    calendarWidget()->setMinimumHeight(9 * (fontMetrics().height() + 5));
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
