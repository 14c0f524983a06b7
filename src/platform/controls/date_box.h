#pragma once

#include "platform/controls/key_rule.h"

#include <QDateEdit>

namespace zel::controls {

/// A date with a calendar, shown as dd/MM/yyyy. Alt+Down and F4 open the calendar. A new one shows today.
class DateBox : public QDateEdit {
    Q_OBJECT
    Q_PROPERTY(QString Tag READ Tag WRITE setTag)
    Q_PROPERTY(QString DataField READ DataField WRITE setDataField)
    Q_PROPERTY(zel::controls::EnterKey enterKey READ enterKey WRITE setEnterKey)
public:
    explicit DateBox(QWidget *parent = nullptr);

    [[nodiscard]] QDate Value() const { return date(); }
    void setValue(QDate value) { setDate(value); }

    [[nodiscard]] const QString &Tag() const { return m_tag; }
    void setTag(const QString &tag) { m_tag = tag; }
    [[nodiscard]] const QString &DataField() const { return m_dataField; }
    void setDataField(const QString &column) { m_dataField = column; }
    [[nodiscard]] EnterKey enterKey() const { return m_enterKey; }
    void setEnterKey(EnterKey enterKey) { m_enterKey = enterKey; }

Q_SIGNALS:
    void changed(); ///< the date is another one, whoever changed it
    void clicked();
    void calendarClosed();
    void gotFocus();
    void enterPressed();
    void keyReleased(int key);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    bool focusNextPrevChild(bool next) override;
    void mousePressEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;

private:
    void openCalendar();
    void watchCalendar();

    QString m_tag;
    QString m_dataField;
    EnterKey m_enterKey = EnterKey::GoesOn;
};

} // namespace zel::controls
