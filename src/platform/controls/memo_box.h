#pragma once

#include "platform/controls/text_field.h"

#include <QPlainTextEdit>

namespace zel::controls {

/// A text box of several lines. Tab leaves it; where Enter goes on, Ctrl+Enter begins a new line.
class MemoBox : public QPlainTextEdit, public TextField {
    Q_OBJECT
    Q_PROPERTY(QString Tag READ Tag WRITE setTag)
    Q_PROPERTY(QString DataField READ DataField WRITE setDataField)
    Q_PROPERTY(int maxTyped READ maxTyped WRITE setMaxTyped)
    Q_PROPERTY(zel::controls::Keys keys READ keys WRITE setKeys)
    Q_PROPERTY(bool Locked READ Locked WRITE setLocked)
public:
    explicit MemoBox(QWidget *parent = nullptr);

    [[nodiscard]] bool Locked() const { return isReadOnly(); }
    void setLocked(bool locked);
    [[nodiscard]] QString text() const { return toPlainText(); }
    void setText(const QString &text) { setPlainText(text); }

    [[nodiscard]] QString shownText() const override { return text(); }
    void setShownText(const QString &text) override { setText(text); }
    [[nodiscard]] QWidget *widget() override { return this; }

Q_SIGNALS:
    void changed();
    void gotFocus();
    void lostFocus();
    void enterPressed();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void inputMethodEvent(QInputMethodEvent *event) override;
    void insertFromMimeData(const QMimeData *source) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    QString m_last; ///< what changed() last told of
};

} // namespace zel::controls
