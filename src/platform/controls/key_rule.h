#pragma once

#include <QObject>
#include <QString>

namespace zel::controls {

Q_NAMESPACE

/// What Enter does in a control: nothing, or a step to the next control in tab order.
enum class EnterKey { Stays, GoesOn };
Q_ENUM_NS(EnterKey)

/// What a box takes from the keyboard and the clipboard; what the program sets passes untouched.
struct KeyRule {
    /// A character set such as "[0-9 .]": a-b is a range wherever it stands, a hyphen at either end is
    /// itself; empty takes everything.
    QString set{};
    bool dropBlank = false;
    bool oneDot = false;   ///< a "." is dropped while the text holds one, wherever the caret stands
    bool oneMinus = false; ///< likewise "-"
    bool upperCase = false;
    EnterKey enter = EnterKey::GoesOn;

    /// What remains of `typed` when it goes into a box that shows `present`.
    [[nodiscard]] QString filtered(const QString &typed, const QString &present) const;
};

/// The rules of the program's boxes by name, so that a .ui file can name one.
enum class Keys {
    Free,       ///< any text, Enter goes on
    FreeStays,  ///< any text
    Upper,      ///< upper case, Enter goes on
    UpperStays, ///< upper case
    UpperTight, ///< upper case without blanks, Enter goes on
    Amount,     ///< "[0-9 .]" without blanks, one ".", Enter goes on
    Number,     ///< "[0-9 ]" without blanks, Enter goes on
    Order,      ///< "[0-9]" without blanks
    Balance,    ///< "[0-9 . -]" without blanks, one ".", one "-", Enter goes on
    Phone,      ///< "[0-9 ,]" without blanks, Enter goes on
    Fax,        ///< "[0-9 - ,]", Enter goes on
    Telephone,  ///< "[0-9 -- ,]", Enter goes on
};
Q_ENUM_NS(Keys)

[[nodiscard]] const KeyRule &keyRule(Keys keys);

/// Whether a character lies in a set such as "[0-9 .]".
[[nodiscard]] bool inSet(const QString &set, QChar character);

/// Upper case one code point at a time, so that a text keeps its length (a sharp s stays).
[[nodiscard]] QString simpleUpper(const QString &text);

} // namespace zel::controls
