#include "platform/controls/masked_box.h"

#include "platform/controls/focus.h"
#include "platform/controls/typing.h"

namespace zel::controls {

MaskedBox::MaskedBox(QWidget *parent) : QLineEdit(parent) {
    QFont spaced = font();
    spaced.setLetterSpacing(QFont::AbsoluteSpacing, 1); // so that the "_" can be counted
    setFont(spaced);
    connect(this, &QLineEdit::textChanged, this, &MaskedBox::changed);
}

void MaskedBox::setMask(const QString &mask) {
    m_mask = mask;
    setInputMask(QString());
    QLineEdit::clear();
    if (mask.isEmpty())
        return;
    QString pattern;
    for (const QChar character : mask) {
        if (character != QLatin1Char('#'))
            pattern += QLatin1Char('\\');
        pattern += character == QLatin1Char('#') ? QLatin1Char('0') : character;
    }
    setInputMask(pattern + QStringLiteral(";_"));
    setCursorPosition(0);
}

void MaskedBox::reset() {
    const QString mask = m_mask;
    setMask(QString());
    setMask(mask);
}

void MaskedBox::setText(const QString &text) {
    QLineEdit::setText(text);
    setCursorPosition(0);
}

void MaskedBox::keyPressEvent(QKeyEvent *event) {
    if (isStrayCommand(event))
        return event->ignore();
    if (!isEnter(event))
        return QLineEdit::keyPressEvent(event);
    if (m_enterKey == EnterKey::GoesOn)
        focusNext(this);
    Q_EMIT enterPressed();
}

void MaskedBox::focusInEvent(QFocusEvent *event) {
    QLineEdit::focusInEvent(event);
    if (m_mask.isEmpty() || isBorrowed(event) || event->reason() == Qt::ActiveWindowFocusReason)
        return;
    const auto firstEmpty = text().indexOf(QLatin1Char('_'));
    deselect();
    setCursorPosition(firstEmpty < 0 ? 0 : int(firstEmpty));
}

} // namespace zel::controls
