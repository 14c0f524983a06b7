#include "shell/screen_keys.h"

#include "shell/screen_box.h"

#include <QAbstractButton>
#include <QShortcut>
#include <QVariant>

#include <utility>

Q_DECLARE_METATYPE(zel::shell::Shortcuts)

namespace zel::shell {

namespace {
constexpr auto KeysOfScreen = "keys";
} // namespace

void connectKeys(QWidget &screen, Shortcuts keys) {
    screen.setProperty(KeysOfScreen, QVariant::fromValue(keys));
    for (const controls::Shortcut &key : keys)
        if (key.control)
            onKey(screen, key, named<QWidget>(screen, key.control));
}

Shortcuts keysOf(const QWidget &screen) {
    return screen.property(KeysOfScreen).value<Shortcuts>();
}

void onKey(QWidget &screen, const controls::Shortcut &key, std::function<QWidget *()> target) {
    auto *shortcut = new QShortcut(QKeySequence(key.key), &screen);
    shortcut->setContext(Qt::WidgetWithChildrenShortcut);
    QObject::connect(shortcut, &QShortcut::activated, &screen, [target = std::move(target)] {
        QWidget *control = target();
        if (!control || !control->isEnabled() || !control->isVisible())
            return;
        // Like a button's own key: the box that is left takes what was typed into it.
        control->setFocus(Qt::ShortcutFocusReason);
        if (auto *button = qobject_cast<QAbstractButton *>(control))
            button->click();
    });
}

void tellKey(QWidget &control, const controls::Shortcut &key) {
    const auto *button = qobject_cast<QAbstractButton *>(&control);
    const QString name = button ? button->text().remove('&') : control.accessibleName();
    control.setToolTip(name + " (" + key.shown() + ")");
}

void onKey(QWidget &screen, const controls::Shortcut &key, QWidget &control) {
    onKey(screen, key, [&control] { return &control; });
    tellKey(control, key);
}

} // namespace zel::shell
