#include "platform/controls/text_field.h"

#include <QWidget>

namespace zel::controls {

void TextField::setKeys(Keys keys) {
    m_keys = keys;
    m_rule = keyRule(keys);
}

QString TextField::admitted(const QString &typed, qsizetype selected) const {
    const QString present = shownText();
    const QString kept = m_rule.filtered(typed, present);
    if (m_maxTyped <= 0)
        return kept;
    QString fitting = kept.left(qMax(qsizetype(0), m_maxTyped - (present.size() - selected)));
    if (!fitting.isEmpty() && fitting.back().isHighSurrogate())
        fitting.chop(1);
    return fitting;
}

std::vector<TextField *> textFields(const QWidget *screen) {
    std::vector<TextField *> fields;
    for (QWidget *child : screen->findChildren<QWidget *>()) {
        if (auto *field = dynamic_cast<TextField *>(child))
            fields.push_back(field);
    }
    return fields;
}

std::vector<TextField *> textFields(const QWidget *screen, const QString &tag) {
    std::vector<TextField *> fields = textFields(screen);
    std::erase_if(fields, [&](const TextField *field) { return field->Tag() != tag; });
    return fields;
}

} // namespace zel::controls
