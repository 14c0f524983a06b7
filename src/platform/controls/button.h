#pragma once

#include "platform/controls/key_rule.h"

#include <QCheckBox>
#include <QPushButton>
#include <QRadioButton>

namespace zel::controls {

/// A command button: Enter clicks it (or goes on), its mnemonic focuses and clicks it.
class Button : public QPushButton {
    Q_OBJECT
    Q_PROPERTY(bool enterGoesOn READ enterGoesOn WRITE setEnterGoesOn)
    Q_PROPERTY(QString iconName READ iconName WRITE setIconName)
public:
    explicit Button(QWidget *parent = nullptr);
    /// One of the program's icons, which all buttons share.
    [[nodiscard]] QString iconName() const { return m_iconName; }
    void setIconName(const QString &name);
    [[nodiscard]] bool enterGoesOn() const { return m_enterGoesOn; }
    void setEnterGoesOn(bool goesOn) { m_enterGoesOn = goesOn; }

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    QString m_iconName;
    bool m_enterGoesOn = false;
};

/// `clicked` comes from the user alone, `toggled` from the program, too.
class CheckBox : public QCheckBox {
    Q_OBJECT
    Q_PROPERTY(zel::controls::EnterKey enterKey READ enterKey WRITE setEnterKey)
public:
    explicit CheckBox(QWidget *parent = nullptr) : QCheckBox(parent) {}
    [[nodiscard]] EnterKey enterKey() const { return m_enterKey; }
    void setEnterKey(EnterKey enterKey) { m_enterKey = enterKey; }

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    EnterKey m_enterKey = EnterKey::Stays;
};

class OptionButton : public QRadioButton {
    Q_OBJECT
    Q_PROPERTY(zel::controls::EnterKey enterKey READ enterKey WRITE setEnterKey)
public:
    explicit OptionButton(QWidget *parent = nullptr) : QRadioButton(parent) {}
    [[nodiscard]] EnterKey enterKey() const { return m_enterKey; }
    void setEnterKey(EnterKey enterKey) { m_enterKey = enterKey; }

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    EnterKey m_enterKey = EnterKey::Stays;
};

} // namespace zel::controls
