#pragma once

#include "platform/controls/form.h"

#include <QDateTime>
#include <QTimer>

#include <memory>

class QAction;

namespace zel::shell {

namespace Ui {
class MDIForm1;
class Panel;
} // namespace Ui

/// The frame of the program: its menu opens every screen, its area holds them, its panel lies behind them.
/// Menu items, menus and separators are actions with the names of the menu table; the property "Caption" is
/// the item's caption, "-" for a separator.
class MDIForm1 : public controls::MainForm {
    Q_OBJECT
public:
    inline static controls::FormReference<MDIForm1> reference;

    MDIForm1();
    ~MDIForm1() override;

    /// Run first by every menu item that opens a screen: hides the panel.
    void close_Menu();
    /// Shows the panel again.
    void showPanel();
    /// Shows or hides the items of that caption; without one that bears it nothing happens.
    void setItemVisible(const QString &caption, bool visible);

protected:
    void Form_Load() override;
    void Form_Unload() override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void buildMenu();
    /// The active company's name on the panel; nothing where there is none, or no such table.
    void nameCompany();
    /// Where the area is smaller than its screens: scrolls it to the control that got the focus.
    void bringInSight(const QWidget *control);
    void choose(const QAction &item);
    /// Through the lock prompt, which leads where the flags say: that may be to another screen than the
    /// item's.
    void openLocked(bool &destination);
    void mnuExit_Click();
    void Timer1_Timer();
    /// All menu items whose Tag is "M"; no item bears that tag.
    void showTaggedItems(bool visible);

    std::unique_ptr<Ui::MDIForm1> ui;
    std::unique_ptr<Ui::Panel> m_panel;
    QWidget *Picture1;
    QTimer Timer1{this};
};

/// The clock of the panel: weekday, date, two blanks, time of twelve hours.
[[nodiscard]] QString clockText(const QDateTime &moment);

} // namespace zel::shell
