#pragma once

#include <QDialog>
#include <QString>

#include <utility>
#include <vector>

class QPrinter;
class QTextBrowser;

namespace zel::shell {

/// Some keys of the program under one title, as they are written and what they do.
struct KeySection {
    QString title;
    std::vector<std::pair<QString, QString>> keys;
};

/// All keys: what holds everywhere, the menu's, then each screen's in the order of the menu, screens of the same
/// keys together. What `screen` has comes first.
[[nodiscard]] std::vector<KeySection> keySections(const QWidget *screen = nullptr);

/// The sheet of all keys. Ctrl+P prints it, Esc closes it.
class KeySheet : public QDialog {
    Q_OBJECT
public:
    explicit KeySheet(QWidget *window, const QWidget *screen = nullptr);

    /// Fills the printer's pages; false when it can't be used.
    [[nodiscard]] bool print(QPrinter &printer) const;

private:
    void askAndPrint();

    QTextBrowser *m_text;
};

/// SheetKey shows the sheet over that window.
void offerKeySheet(QWidget &window);

} // namespace zel::shell
