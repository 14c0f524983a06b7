#pragma once

#include "platform/controls/text_field.h"

#include <QLineEdit>

namespace zel::controls {

class TextBox : public QLineEdit, public TextField {
    Q_OBJECT
    Q_PROPERTY(QString Tag READ Tag WRITE setTag)
    Q_PROPERTY(QString DataField READ DataField WRITE setDataField)
    Q_PROPERTY(int maxTyped READ maxTyped WRITE setMaxTyped)
    Q_PROPERTY(zel::controls::Keys keys READ keys WRITE setKeys)
    Q_PROPERTY(bool Locked READ Locked WRITE setLocked)
    Q_PROPERTY(bool masked READ masked WRITE setMasked)
public:
    explicit TextBox(QWidget *parent = nullptr);

    /// A locked box takes the focus, shows and copies its text, and answers Enter.
    [[nodiscard]] bool Locked() const { return isReadOnly(); }
    void setLocked(bool locked) { setReadOnly(locked); }
    /// A masked box shows "*" for each character.
    [[nodiscard]] bool masked() const { return echoMode() == QLineEdit::Password; }
    void setMasked(bool masked);

    /// The line's own maxLength is the limit of typing, too, or the length of a longer text that was set.
    void setMaxTyped(int length) override;
    void setText(const QString &text);

    [[nodiscard]] QString shownText() const override { return text(); }
    void setShownText(const QString &text) override { setText(text); }
    [[nodiscard]] QWidget *widget() override { return this; }

Q_SIGNALS:
    void changed(); ///< the text is another one, whoever changed it
    void gotFocus();
    void lostFocus();
    void enterPressed(); ///< after the step to the next control, where the rule makes one
    void upOrDown();     ///< Up or Down was pressed
    void keyReleased(int key);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    void inputMethodEvent(QInputMethodEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    void type(const QString &text);
    void fitLimit(qsizetype shown);
};

} // namespace zel::controls
