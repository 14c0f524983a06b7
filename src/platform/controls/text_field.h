#pragma once

#include "platform/controls/key_rule.h"

#include <QString>

#include <vector>

class QWidget;

namespace zel::controls {

/// What text boxes of one line and of several have in common, for the loops over a screen's tagged boxes.
class TextField {
public:
    virtual ~TextField() = default;

    [[nodiscard]] const QString &Tag() const { return m_tag; }
    void setTag(const QString &tag) { m_tag = tag; }
    /// The name of the column that the box shows; a name only, nothing is bound.
    [[nodiscard]] const QString &DataField() const { return m_dataField; }
    void setDataField(const QString &column) { m_dataField = column; }
    /// The length that typing and pasting may reach, 0 for any. What the program sets is never cut.
    [[nodiscard]] int maxTyped() const { return m_maxTyped; }
    virtual void setMaxTyped(int length) { m_maxTyped = length; }

    [[nodiscard]] Keys keys() const { return m_keys; }
    void setKeys(Keys keys);
    [[nodiscard]] const KeyRule &rule() const { return m_rule; }
    void setRule(const KeyRule &rule) { m_rule = rule; }

    [[nodiscard]] virtual QString shownText() const = 0;
    virtual void setShownText(const QString &text) = 0;
    [[nodiscard]] virtual QWidget *widget() = 0;

protected:
    /// What typed or pasted text becomes under the rule and the limit; `selected` characters will be
    /// replaced.
    [[nodiscard]] QString admitted(const QString &typed, qsizetype selected) const;

private:
    QString m_tag;
    QString m_dataField;
    int m_maxTyped = 0;
    Keys m_keys = Keys::Free;
    KeyRule m_rule;
};

/// All text fields on a screen, in the order of its design.
[[nodiscard]] std::vector<TextField *> textFields(const QWidget *screen);

/// Those whose Tag is `tag`.
[[nodiscard]] std::vector<TextField *> textFields(const QWidget *screen, const QString &tag);

} // namespace zel::controls
