#pragma once

#include "platform/controls/key_rule.h"

#include <QComboBox>

namespace zel::controls {

/// A drop-down to pick from. Alt+Down, F4, Up, Down and Esc work; letters are swallowed unless `lettersPick`.
class ComboBox : public QComboBox {
    Q_OBJECT
    Q_PROPERTY(QString Tag READ Tag WRITE setTag)
    Q_PROPERTY(QString DataField READ DataField WRITE setDataField)
    Q_PROPERTY(bool lettersPick READ lettersPick WRITE setLettersPick)
    Q_PROPERTY(zel::controls::EnterKey enterKey READ enterKey WRITE setEnterKey)
public:
    explicit ComboBox(QWidget *parent = nullptr);

    [[nodiscard]] QString Text() const { return currentText(); }
    /// Picks the item of that text, none when there is none.
    void setText(const QString &text);

    void showPopup() override;

    [[nodiscard]] const QString &Tag() const { return m_tag; }
    void setTag(const QString &tag) { m_tag = tag; }
    [[nodiscard]] const QString &DataField() const { return m_dataField; }
    void setDataField(const QString &column) { m_dataField = column; }
    [[nodiscard]] bool lettersPick() const { return m_lettersPick; }
    void setLettersPick(bool pick) { m_lettersPick = pick; }
    [[nodiscard]] EnterKey enterKey() const { return m_enterKey; }
    void setEnterKey(EnterKey enterKey) { m_enterKey = enterKey; }

Q_SIGNALS:
    void changed(); ///< another item is picked, by whomever; once per change
    void clicked(); ///< the user picked an item, perhaps the same one
    void enterPressed();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    QString m_tag;
    QString m_dataField;
    bool m_lettersPick = false;
    EnterKey m_enterKey = EnterKey::Stays;
};

} // namespace zel::controls
