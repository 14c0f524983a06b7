#include "platform/controls/text_box.h"

#include "platform/controls/focus.h"
#include "platform/controls/typing.h"

#include <QAction>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QMenu>
#include <QMimeData>
#include <QRegularExpression>

#include <algorithm>
#include <limits>

namespace zel::controls {

TextBox::TextBox(QWidget *parent) : QLineEdit(parent) {
    setMaxLength(std::numeric_limits<int>::max());
    connect(this, &QLineEdit::textChanged, this, [this] {
        // What can't be scrolled into by typing shows its beginning.
        if (isReadOnly())
            home(false);
        Q_EMIT changed();
    });
}

void TextBox::setMaxTyped(int length) {
    TextField::setMaxTyped(length);
    fitLimit(text().size());
}

void TextBox::setText(const QString &text) {
    if (text.size() > maxLength())
        fitLimit(text.size());
    QLineEdit::setText(text);
    fitLimit(text.size());
}

/// Setting the line's limit would cut the text that it shows.
void TextBox::fitLimit(qsizetype shown) {
    const int limit = maxTyped() > 0 ? std::max(maxTyped(), int(shown)) : std::numeric_limits<int>::max();
    if (maxLength() == limit)
        return;
    setMaxLength(limit);
    if (isReadOnly())
        home(false);
}

void TextBox::setMasked(bool masked) {
    setEchoMode(masked ? QLineEdit::Password : QLineEdit::Normal);
}

void TextBox::type(const QString &text) {
    if (isReadOnly())
        return;
    static const QRegularExpression lineEnd(QStringLiteral("\\r\\n|[\\r\\n]"));
    const QString line = QString(text).replace(lineEnd, QStringLiteral(" "));
    const QString admittedText = admitted(line, selectedText().size());
    if (!admittedText.isEmpty())
        insert(admittedText);
}

void TextBox::keyPressEvent(QKeyEvent *event) {
    const QString typed = typedText(event);
    if (isEnter(event)) {
        if (rule().enter == EnterKey::GoesOn)
            focusNext(this);
        Q_EMIT enterPressed();
    } else if (event->key() == Qt::Key_Up || event->key() == Qt::Key_Down) {
        Q_EMIT upOrDown();
    } else if (event->matches(QKeySequence::Paste)) {
        type(QGuiApplication::clipboard()->text());
    } else if (!typed.isEmpty()) {
        type(typed);
    } else if (isStrayCommand(event)) {
        event->ignore();
    } else {
        QLineEdit::keyPressEvent(event);
    }
}

/// A key that is held down repeats its presses and is released once.
void TextBox::keyReleaseEvent(QKeyEvent *event) {
    QLineEdit::keyReleaseEvent(event);
    if (!event->isAutoRepeat())
        Q_EMIT keyReleased(event->key());
}

void TextBox::inputMethodEvent(QInputMethodEvent *event) {
    event->setCommitString(admitted(event->commitString(), selectedText().size()), event->replacementStart(),
                           event->replacementLength());
    QLineEdit::inputMethodEvent(event);
}

void TextBox::contextMenuEvent(QContextMenuEvent *event) {
    QMenu *menu = createStandardContextMenu();
    menu->setAttribute(Qt::WA_DeleteOnClose);
    if (auto *paste = menu->findChild<QAction *>(QStringLiteral("edit-paste"))) {
        paste->disconnect(this);
        connect(paste, &QAction::triggered, this, [this] { type(QGuiApplication::clipboard()->text()); });
    }
    menu->popup(event->globalPos());
}

void TextBox::dropEvent(QDropEvent *event) {
    if (isReadOnly() || !event->mimeData()->hasText())
        return;
    deselect();
    setCursorPosition(cursorPositionAt(event->position().toPoint()));
    type(event->mimeData()->text());
    event->setDropAction(Qt::CopyAction);
    event->accept();
}

void TextBox::mouseReleaseEvent(QMouseEvent *event) {
    QClipboard *clipboard = QGuiApplication::clipboard();
    if (event->button() == Qt::MiddleButton && clipboard->supportsSelection()) {
        deselect();
        setCursorPosition(cursorPositionAt(event->position().toPoint()));
        type(clipboard->text(QClipboard::Selection));
        event->accept();
        return;
    }
    QLineEdit::mouseReleaseEvent(event);
}

void TextBox::focusInEvent(QFocusEvent *event) {
    QLineEdit::focusInEvent(event);
    if (!isBorrowed(event))
        Q_EMIT gotFocus();
}

void TextBox::focusOutEvent(QFocusEvent *event) {
    QLineEdit::focusOutEvent(event);
    if (!isBorrowed(event))
        Q_EMIT lostFocus();
}

} // namespace zel::controls
