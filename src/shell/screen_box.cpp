#include "shell/screen_box.h"

#include "platform/base/error.h"
#include "platform/controls/data_combo.h"
#include "platform/controls/text_field.h"

#include <QAbstractButton>

namespace zel::shell {

using controls::ComboBox;
using controls::DataCombo;
using controls::TextField;

void detail::refuseControl(const QWidget &screen, const QString &name) {
    throw Error(errors::ControlNotFound, "Control '" + name + "' not found on " + screen.objectName());
}

ScreenBox::ScreenBox(QWidget &screen, const Box &box)
    : m_control(&named<QWidget>(screen, box.control)), m_part(box.part) {
    const auto is = [&](auto *control) { return control != nullptr; };
    const bool fits = m_part == Part::Tag      ? is(dynamic_cast<TextField *>(m_control))
                      : m_part == Part::Bound  ? is(qobject_cast<DataCombo *>(m_control))
                      : m_part == Part::Ticked ? is(qobject_cast<QAbstractButton *>(m_control))
                                               : is(dynamic_cast<TextField *>(m_control)) ||
                                                     is(qobject_cast<ComboBox *>(m_control));
    if (!fits)
        detail::refuseControl(screen, box.control);
}

QString ScreenBox::read() const {
    switch (m_part) {
    case Part::Tag:
        return dynamic_cast<TextField &>(*m_control).Tag();
    case Part::Bound:
        return qobject_cast<DataCombo *>(m_control)->BoundText();
    case Part::Ticked:
        return qobject_cast<QAbstractButton *>(m_control)->isChecked() ? "1" : "0";
    case Part::Text:
        if (const auto *field = dynamic_cast<TextField *>(m_control))
            return field->shownText();
        return qobject_cast<ComboBox *>(m_control)->Text();
    }
    Q_UNREACHABLE();
}

void ScreenBox::write(const QString &value) const {
    switch (m_part) {
    case Part::Tag:
        return dynamic_cast<TextField &>(*m_control).setTag(value);
    case Part::Bound:
        return qobject_cast<DataCombo *>(m_control)->setBoundText(value);
    case Part::Ticked:
        return qobject_cast<QAbstractButton *>(m_control)->setChecked(!value.isEmpty() && value != "0");
    case Part::Text:
        if (auto *field = dynamic_cast<TextField *>(m_control))
            return field->setShownText(value);
        return qobject_cast<ComboBox *>(m_control)->setText(value);
    }
}

std::vector<ScreenBox> screenBoxes(QWidget &screen, std::span<const Box> boxes) {
    std::vector<ScreenBox> found;
    for (const Box &box : boxes)
        found.emplace_back(screen, box);
    return found;
}

void empty(const std::vector<ScreenBox> &boxes) {
    for (const ScreenBox &box : boxes)
        box.write({});
}

} // namespace zel::shell
