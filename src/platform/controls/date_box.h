#pragma once

#include "platform/controls/key_rule.h"

#include <QDateEdit>

namespace zel::controls {

/// A date with a calendar, shown as dd/MM/yyyy. Alt+Down and F4 open the calendar. A new one shows today.
/// Day, month and year are typed in this order with or without strokes between them; a day that the month
/// shown lacks stands as soon as the month and year typed after it have it. Over a whole text that is
/// selected a date is typed from its day on.
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
    void beginAnew();
    bool typeDigit(int digit);
    bool typeStroke();
    void showTyped(int month);
    void forgetTyped();

    struct Typed {
        Section section = NoSection;
        int number = 0; ///< of the section under way
        int digits = 0; ///< as many have been typed
        int day = 0;    ///< as typed; 0 when it was not
        QDate shown;
    };

    QString m_tag;
    QString m_dataField;
    EnterKey m_enterKey = EnterKey::GoesOn;
    Typed m_typed;
};

} // namespace zel::controls
