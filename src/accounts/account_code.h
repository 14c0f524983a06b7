#pragma once

#include <QString>

namespace zel::accounts {

/// A stored code or parent without the blanks at its end.
[[nodiscard]] inline QString rightTrimmed(QString text) {
    while (text.endsWith(' '))
        text.chop(1);
    return text;
}

/// The tree's key of an account's code; the quotes belong to it.
[[nodiscard]] inline QString nodeKey(const QString &code) {
    return "'" + code.trimmed() + "'";
}

} // namespace zel::accounts
