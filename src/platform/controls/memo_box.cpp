#include "platform/controls/memo_box.h"

#include "platform/controls/focus.h"
#include "platform/controls/look_style.h"
#include "platform/controls/typing.h"

#include <QInputMethodEvent>
#include <QMimeData>

namespace zel::controls {

MemoBox::MemoBox(QWidget *parent) : QPlainTextEdit(parent) {
    setTabChangesFocus(true);
    connect(this, &QPlainTextEdit::textChanged, this, [this] {
        // The signal tells of changed formats, too.
        if (text() != m_last) {
            m_last = text();
            Q_EMIT changed();
        }
    });
}

void MemoBox::setLocked(bool locked) {
    setReadOnly(locked);
    QPalette own;
    if (locked)
        own.setColor(QPalette::Base, LookStyle::readOnlyBase());
    setPalette(own);
}

void MemoBox::keyPressEvent(QKeyEvent *event) {
    const QString typed = typedText(event);
    const bool newLine = isEnter(event) && event->modifiers().testFlag(Qt::ControlModifier);
    if (isEnter(event) && !newLine && rule().enter == EnterKey::GoesOn) {
        focusNext(this);
        Q_EMIT enterPressed();
    } else if (isEnter(event)) {
        if (!isReadOnly() && (maxTyped() <= 0 || text().size() < maxTyped()))
            insertPlainText(QStringLiteral("\n"));
        Q_EMIT enterPressed();
    } else if (!typed.isEmpty()) {
        if (!isReadOnly())
            insertPlainText(admitted(typed, textCursor().selectedText().size()));
        ensureCursorVisible();
    } else if (isStrayCommand(event)) {
        event->ignore();
    } else {
        QPlainTextEdit::keyPressEvent(event);
    }
}

void MemoBox::inputMethodEvent(QInputMethodEvent *event) {
    event->setCommitString(admitted(event->commitString(), textCursor().selectedText().size()),
                           event->replacementStart(), event->replacementLength());
    QPlainTextEdit::inputMethodEvent(event);
}

void MemoBox::insertFromMimeData(const QMimeData *source) {
    if (!isReadOnly())
        insertPlainText(admitted(source->text(), textCursor().selectedText().size()));
    ensureCursorVisible();
}

void MemoBox::focusInEvent(QFocusEvent *event) {
    QPlainTextEdit::focusInEvent(event);
    if (!isBorrowed(event))
        Q_EMIT gotFocus();
}

void MemoBox::focusOutEvent(QFocusEvent *event) {
    QPlainTextEdit::focusOutEvent(event);
    if (!isBorrowed(event))
        Q_EMIT lostFocus();
}

} // namespace zel::controls
