#include "shell/key_sheet.h"

#include "platform/controls/button.h"
#include "platform/controls/msg_box.h"
#include "shell/menu_table.h"
#include "shell/screen_keys.h"
#include "shell/screens.h"

#include <QHBoxLayout>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QScreen>
#include <QShortcut>
#include <QTextBrowser>
#include <QTextCursor>
#include <QTextDocument>
#include <QVBoxLayout>

#include <algorithm>
#include <map>
#include <memory>

namespace zel::shell {

namespace {

constexpr double PrintedSize = 8; ///< points, at which all keys stand on one page
constexpr double HeadingSize = 12;
constexpr controls::Shortcut PrintSheet{Qt::CTRL | Qt::Key_P, "Prints the sheet"};

KeySection sectionOf(const QString &title, Shortcuts keys) {
    KeySection section{title, {}};
    for (const controls::Shortcut &key : keys) {
        if (!section.keys.empty() && section.keys.back().second == QLatin1String(key.does))
            section.keys.back().first += ", " + key.shown();
        else
            section.keys.emplace_back(key.shown(), key.does);
    }
    return section;
}

KeySection everywhere() {
    KeySection section = sectionOf("On every screen", controls::keys::Everywhere);
    section.keys.emplace_back("Alt+letter", "The button or box whose letter is underlined");
    section.keys.emplace_back(SheetKey.shown(), SheetKey.does);
    return section;
}

KeySection menu() {
    KeySection section{"Menu", {{"Alt", "To the menu bar; the arrows and Enter choose"}}};
    for (const MenuRow &row : menuTable())
        if (*row.key)
            section.keys.emplace_back(row.key, row.caption);
    return section;
}

/// What a menu item opens, the lock's two screens included.
const Screen *screenOf(const QString &item) {
    static const std::map<QString, QString> locked = {{"mnuSetMenu", "frmSecMenus"},
                                                      {"mnuRemoveData", "frmRemoveData"}};
    const auto behindLock = locked.find(item);
    const auto found = screens().find(behindLock == locked.end() ? item : behindLock->second);
    return found == screens().end() ? nullptr : &found->second;
}

/// Screens that share their keys.
struct Group {
    Shortcuts keys;
    QStringList titles; ///< the captions of their menu items
};

bool sameKeys(Shortcuts one, Shortcuts other) {
    return std::ranges::equal(one, other, [](const controls::Shortcut &a, const controls::Shortcut &b) {
        return a.key == b.key && qstrcmp(a.does, b.does) == 0;
    });
}

std::vector<Group> groups() {
    std::vector<Group> found;
    const auto add = [&found](Shortcuts keys, const QString &title) {
        if (keys.empty())
            return;
        auto same =
            std::ranges::find_if(found, [&](const Group &group) { return sameKeys(group.keys, keys); });
        if (same == found.end())
            same = found.insert(same, {keys, {}});
        same->titles << title;
    };
    for (const MenuRow &row : menuTable())
        if (const Screen *screen = screenOf(row.name))
            add(screen->keys, row.caption);
    for (const auto &[name, screen] : screens())
        if (*screen.title)
            add(screen.keys, screen.title);
    return found;
}

/// The captions of what the menu in that row opens.
QStringList itemsOf(std::size_t menu) {
    const std::span<const MenuRow> table = menuTable();
    QStringList items;
    for (std::size_t i = menu + 1; i < table.size() && table[i].level > table[menu].level; ++i)
        if (screenOf(table[i].name))
            items << table[i].caption;
    return items;
}

/// Where the titles are all that a menu opens, the menu's own stands for them.
QString joined(QStringList titles) {
    for (std::size_t menu = menuTable().size(); menu-- > 0;) {
        const QStringList items = itemsOf(menu);
        const bool all = !items.isEmpty() && std::ranges::all_of(items, [&](const QString &item) {
            return titles.contains(item);
        });
        if (!all)
            continue;
        titles[titles.indexOf(items.first())] = menuTable()[menu].caption;
        for (const QString &item : items)
            titles.removeAll(item);
    }
    return titles.join(", ");
}

QString html(const KeySection &section) {
    QString rows;
    for (const auto &[key, does] : section.keys)
        rows += QString("<tr><td width='30%' style='padding: 1px 6px'><b>%1</b></td><td style='padding: "
                        "1px'>%2</td></tr>")
                    .arg(key.toHtmlEscaped(), does.toHtmlEscaped());
    return QString("<p style='margin: 10px 6px 2px; color: #24507d'><b>%1</b></p>"
                   "<table width='100%' cellspacing='0'>%2</table>")
        .arg(section.title.toHtmlEscaped(), rows);
}

/// Two columns of about the same height.
QString html(const std::vector<KeySection> &sections) {
    const auto height = [](const KeySection &section) {
        qsizetype lines = 2 + section.title.size() / 40;
        for (const auto &[key, does] : section.keys)
            lines += 1 + does.size() / 34;
        return lines;
    };
    qsizetype all = 0;
    for (const KeySection &section : sections)
        all += height(section);
    QString columns[2];
    qsizetype above = 0;
    for (const KeySection &section : sections) {
        columns[above + height(section) / 2 < all / 2 ? 0 : 1] += html(section);
        above += height(section);
    }
    return QString("<table width='100%'><tr><td width='50%'>%1</td><td width='50%'>%2</td></tr></table>")
        .arg(columns[0], columns[1]);
}

/// The screen that has the keys of that window.
const QWidget *activeScreen(const QWidget &window) {
    const auto *area = window.findChild<QMdiArea *>();
    const QMdiSubWindow *active = area ? area->activeSubWindow() : nullptr;
    return active ? active->widget() : nullptr;
}

} // namespace

std::vector<KeySection> keySections(const QWidget *screen) {
    std::vector<KeySection> sections{everywhere(), menu()};
    const Shortcuts own = screen ? keysOf(*screen) : Shortcuts();
    for (const Group &group : groups()) {
        const bool first = !own.empty() && sameKeys(group.keys, own);
        sections.insert(first ? sections.begin() : sections.end(),
                        sectionOf(joined(group.titles), group.keys));
    }
    sections.push_back(sectionOf("This sheet", {&PrintSheet, 1}));
    return sections;
}

KeySheet::KeySheet(QWidget *window, const QWidget *screen) : QDialog(window), m_text(new QTextBrowser(this)) {
    setObjectName("KeySheet");
    setWindowTitle("Keys");
    m_text->setObjectName("keys");
    m_text->setAccessibleName("Keys");
    m_text->setHtml(html(keySections(screen)));
    auto *print = new controls::Button(this);
    print->setObjectName("cmdPrint");
    print->setText("&PRINT");
    print->setIconName("print");
    tellKey(*print, PrintSheet);
    auto *close = new controls::Button(this);
    close->setObjectName("cmdExit");
    close->setText("E&XIT");
    close->setIconName("exit");
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(print);
    buttons->addWidget(close);
    auto *all = new QVBoxLayout(this);
    all->addWidget(m_text);
    all->addLayout(buttons);
    connect(print, &QAbstractButton::clicked, this, &KeySheet::askAndPrint);
    connect(close, &QAbstractButton::clicked, this, &QDialog::accept);
    connect(new QShortcut(QKeySequence(PrintSheet.key), this), &QShortcut::activated, this,
            &KeySheet::askAndPrint);
    resize(QSize(940, 700).boundedTo(window->screen()->availableSize() - QSize(40, 60)));
}

bool KeySheet::print(QPrinter &printer) const {
    printer.setDocName("Keys of ZEL");
    const std::unique_ptr<QTextDocument> page(m_text->document()->clone());
    QFont small = page->defaultFont();
    small.setPointSizeF(PrintedSize);
    page->setDefaultFont(small);
    QTextCharFormat heading;
    heading.setFontPointSize(HeadingSize);
    heading.setFontWeight(QFont::Bold);
    QTextCursor(page.get()).insertText("Keys of ZEL", heading);
    page->print(&printer);
    return printer.printerState() != QPrinter::Error;
}

void KeySheet::askAndPrint() {
    QPrinter printer(QPrinter::HighResolution);
    QPrintDialog dialog(&printer, this);
    if (dialog.exec() == QDialog::Accepted && !print(printer))
        controls::MsgBox("The keys could not be printed: the printer can't be used.", controls::vbCritical,
                         {}, this);
}

void offerKeySheet(QWidget &window) {
    QObject::connect(new QShortcut(QKeySequence(SheetKey.key), &window), &QShortcut::activated, &window,
                     [&window] { KeySheet(&window, activeScreen(window)).exec(); });
}

} // namespace zel::shell
