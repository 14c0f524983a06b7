#pragma once

#include <QString>
#include <QWidget>

#include <span>
#include <vector>

/// The controls of a screen by the names that its .ui file gives them, for tables that speak of them.
namespace zel::shell {

namespace detail {
[[noreturn]] void refuseControl(const QWidget &screen, const QString &name);
}

/// The control of that name and class on a screen. Error 730 names the one that is missing.
template <class T>
[[nodiscard]] T &named(QWidget &screen, const QString &name) {
    T *found = dynamic_cast<T *>(screen.findChild<QWidget *>(name));
    if (!found)
        detail::refuseControl(screen, name);
    return *found;
}

/// What of a control holds a value: the text that it shows, its Tag, a bound combo's BoundText, or whether it
/// is ticked, as "1" or "0".
enum class Part { Text, Tag, Bound, Ticked };

struct Box {
    const char *control = nullptr;
    Part part = Part::Text;
};

/// A box on its screen. Error 730 when the screen has no such control, or none with such a part.
class ScreenBox {
public:
    ScreenBox(QWidget &screen, const Box &box);

    [[nodiscard]] QString read() const;
    /// "" and "0" untick; a bound combo stays bound to what none of its rows has.
    void write(const QString &value) const;

private:
    QWidget *m_control;
    Part m_part;
};

[[nodiscard]] std::vector<ScreenBox> screenBoxes(QWidget &screen, std::span<const Box> boxes);
void empty(const std::vector<ScreenBox> &boxes);

} // namespace zel::shell
