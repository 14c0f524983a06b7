#pragma once

#include "platform/controls/key_rule.h"

#include <QLineEdit>

namespace zel::controls {

/// A box with a mask such as "#####-#######-#": "#" takes a digit and shows "_" until it has one, all else is
/// a literal that typing steps over. Its text is what is shown, literals and "_" included.
class MaskedBox : public QLineEdit {
    Q_OBJECT
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY changed)
    Q_PROPERTY(QString Mask READ Mask WRITE setMask)
    Q_PROPERTY(QString Tag READ Tag WRITE setTag)
    Q_PROPERTY(QString DataField READ DataField WRITE setDataField)
    Q_PROPERTY(zel::controls::EnterKey enterKey READ enterKey WRITE setEnterKey)
public:
    explicit MaskedBox(QWidget *parent = nullptr);

    [[nodiscard]] const QString &Mask() const { return m_mask; }
    /// Sets a mask and empties the box; '' makes it a plain box.
    void setMask(const QString &mask);
    /// Mask off, text emptied, mask on again.
    void reset();

    [[nodiscard]] QString text() const { return displayText(); }
    /// A text of the mask's own shape; characters that don't fit leave their place empty.
    void setText(const QString &text);
    /// No place of the mask is left to fill.
    [[nodiscard]] bool isFull() const { return !text().contains(QLatin1Char('_')); }

    [[nodiscard]] const QString &Tag() const { return m_tag; }
    void setTag(const QString &tag) { m_tag = tag; }
    [[nodiscard]] const QString &DataField() const { return m_dataField; }
    void setDataField(const QString &column) { m_dataField = column; }
    [[nodiscard]] EnterKey enterKey() const { return m_enterKey; }
    void setEnterKey(EnterKey enterKey) { m_enterKey = enterKey; }

Q_SIGNALS:
    void changed();
    void enterPressed();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;

private:
    QString m_mask;
    QString m_tag;
    QString m_dataField;
    EnterKey m_enterKey = EnterKey::GoesOn;
};

} // namespace zel::controls
