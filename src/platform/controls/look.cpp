#include "platform/controls/look.h"

#include "platform/controls/look_style.h"

#include <QApplication>
#include <QFile>
#include <QFont>
#include <QHash>
#include <QPalette>
#include <QScreen>

static void loadIcons() {
    Q_INIT_RESOURCE(icons);
    Q_INIT_RESOURCE(look);
}

namespace zel::controls {

namespace {

constexpr int PointSize = 10;

QPalette lightPalette() {
    const QColor text(0x1d, 0x27, 0x33);
    const QColor faint(0x8a, 0x94, 0xa0);
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(0xf2, 0xf4, 0xf7));
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::AlternateBase, QColor(0xf5, 0xf8, 0xfb));
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::PlaceholderText, faint);
    palette.setColor(QPalette::Button, QColor(0xf7, 0xf9, 0xfb));
    palette.setColor(QPalette::ButtonText, text);
    palette.setColor(QPalette::BrightText, Qt::white);
    palette.setColor(QPalette::Light, Qt::white);
    palette.setColor(QPalette::Midlight, QColor(0xe6, 0xea, 0xef));
    palette.setColor(QPalette::Mid, QColor(0xc3, 0xcb, 0xd4));
    palette.setColor(QPalette::Dark, QColor(0x9a, 0xa5, 0xb1));
    palette.setColor(QPalette::Shadow, QColor(0x6b, 0x77, 0x85));
    palette.setColor(QPalette::Highlight, LookStyle::accent());
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, LookStyle::accent());
    palette.setColor(QPalette::ToolTipBase, QColor(0xff, 0xfb, 0xe6));
    palette.setColor(QPalette::ToolTipText, text);
    for (const auto role : {QPalette::WindowText, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, faint);
    palette.setColor(QPalette::Disabled, QPalette::Text,
                     QColor(0x53, 0x5f, 0x6c)); // to be read, not to be edited
    palette.setColor(QPalette::Disabled, QPalette::Base, QColor(0xed, 0xf0, 0xf3));
    palette.setColor(QPalette::Inactive, QPalette::Highlight, QColor(0xc9, 0xdb, 0xee));
    palette.setColor(QPalette::Inactive, QPalette::HighlightedText, text);
    return palette;
}

} // namespace

void applyLook(QApplication &application) {
    loadIcons();
    application.setStyle(new LookStyle);
    application.setPalette(lightPalette());
    // Without its Arabic sister a font is found that lacks letters of Urdu.
    QFont font(QStringList{QStringLiteral("Noto Sans"), QStringLiteral("Noto Sans Arabic"),
                           QStringLiteral("Sans Serif")},
               PointSize);
    font.setHintingPreference(QFont::PreferVerticalHinting);
    application.setFont(font);
    application.setWindowIcon(icon(QStringLiteral("logo")));
}

QIcon icon(const QString &name) {
    // One icon for all that show it, since each caches its pixmaps for itself. Never destroyed: the plugin
    // that paints it may go first.
    static auto &known = *new QHash<QString, QIcon>;
    QIcon &found = known[name];
    if (found.isNull())
        found = QIcon(QStringLiteral(":/icons/%1.svg").arg(name));
    return found;
}

QString sheet(const QString &name) {
    static QHash<QString, QString> known;
    QString &found = known[name];
    QFile file(QStringLiteral(":/look/%1.qss").arg(name));
    if (found.isEmpty() && file.open(QIODevice::ReadOnly))
        found = QString::fromUtf8(file.readAll());
    return found;
}

int pixels(int twips) {
    const QScreen *screen = QGuiApplication::primaryScreen();
    const double dotsPerInch = screen ? screen->logicalDotsPerInchX() : 96;
    return qRound(twips * dotsPerInch / 1440);
}

} // namespace zel::controls
