#include "platform/controls/key_rule.h"

#include <array>

namespace zel::controls {

bool inSet(const QString &set, QChar character) {
    const auto members = QStringView(set).mid(1, set.size() - 2);
    for (qsizetype at = 0; at < members.size(); ++at) {
        const bool range = at + 2 < members.size() && members[at + 1] == QLatin1Char('-');
        const QChar last = range ? members[at + 2] : members[at];
        if (members[at] <= character && character <= last)
            return true;
        if (range)
            at += 2;
    }
    return false;
}

QString simpleUpper(const QString &text) {
    QString upper;
    upper.reserve(text.size());
    for (const char32_t point : text.toUcs4()) {
        const char32_t raised = QChar::toUpper(point);
        const bool sameLength = QChar::requiresSurrogates(raised) == QChar::requiresSurrogates(point);
        upper += QString::fromUcs4(sameLength ? &raised : &point, 1);
    }
    return upper;
}

QString KeyRule::filtered(const QString &typed, const QString &present) const {
    QString kept;
    for (const QChar character : upperCase ? simpleUpper(typed) : typed) {
        const auto repeats = [&](bool rule, char mark) {
            const QChar one = QLatin1Char(mark);
            return rule && character == one && (present.contains(one) || kept.contains(one));
        };
        const bool dropped = (dropBlank && character == QLatin1Char(' ')) ||
                             (!set.isEmpty() && !inSet(set, character)) || repeats(oneDot, '.') ||
                             repeats(oneMinus, '-');
        if (!dropped)
            kept += character;
    }
    return kept;
}

const KeyRule &keyRule(Keys keys) {
    static const std::array<KeyRule, 12> rules = {{
        {},
        {.enter = EnterKey::Stays},
        {.upperCase = true},
        {.upperCase = true, .enter = EnterKey::Stays},
        {.dropBlank = true, .upperCase = true},
        {.set = QStringLiteral("[0-9 .]"), .dropBlank = true, .oneDot = true},
        {.set = QStringLiteral("[0-9 ]"), .dropBlank = true},
        {.set = QStringLiteral("[0-9]"), .dropBlank = true, .enter = EnterKey::Stays},
        {.set = QStringLiteral("[0-9 . -]"), .dropBlank = true, .oneDot = true, .oneMinus = true},
        {.set = QStringLiteral("[0-9 ,]"), .dropBlank = true},
        {.set = QStringLiteral("[0-9 - ,]")},
        {.set = QStringLiteral("[0-9 -- ,]")},
    }};
    return rules.at(static_cast<std::size_t>(keys));
}

} // namespace zel::controls
