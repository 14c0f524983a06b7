#include "tools/zeldb/check_shown.h"

#include "tools/zeldb/shown.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace zel::tool {

namespace {

constexpr qsizetype MostOfRule = 20; ///< findings that people are shown
constexpr qsizetype Width = 100;

/// A paragraph: its lines broken between words, each behind `indent` but the first, which `head` leads.
QString paragraph(const QString &head, const QString &text) {
    const QString indent(head.size(), u' ');
    QString result;
    QString line = head;
    for (const QString &word : text.split(u' ')) {
        if (line.size() > head.size() && line.size() + 1 + word.size() > Width) {
            result += line + u'\n';
            line = indent;
        }
        if (line.size() > head.size())
            line += u' ';
        line += word;
    }
    return result + line + u'\n';
}

QString count(qsizetype number, const char *what) {
    return QStringLiteral("%1 %2%3").arg(number).arg(QLatin1String(what),
                                                     QLatin1String(number == 1 ? "" : "s"));
}

QString ofRule(std::span<const Finding> found) {
    const Rule &rule = *found.front().rule;
    QString text =
        QStringLiteral("%1 (%2, %3)\n")
            .arg(rule.title, count(qsizetype(found.size()), severityName(rule.severity).toLatin1()),
                 rule.name);
    const qsizetype shown = std::min(qsizetype(found.size()), MostOfRule);
    for (const Finding &finding : found.first(std::size_t(shown)))
        text += QStringLiteral("    ") + finding.text + u'\n';
    if (shown < qsizetype(found.size()))
        text += QStringLiteral("    and %1 more, which --json lists\n").arg(qsizetype(found.size()) - shown);
    return text + paragraph(QStringLiteral("  Why:  "), rule.why) +
           paragraph(QStringLiteral("  Do:   "), rule.advice) + u'\n';
}

} // namespace

bool isSound(std::span<const Finding> found) {
    return std::ranges::all_of(
        found, [](const Finding &finding) { return finding.rule->severity == Severity::Note; });
}

QString asReport(std::span<const Finding> found) {
    QString text;
    qsizetype ruleCount = 0;
    for (std::size_t first = 0; first < found.size();) {
        std::size_t end = first;
        while (end < found.size() && found[end].rule == found[first].rule)
            ++end;
        text += ofRule(found.subspan(first, end - first));
        first = end;
        ++ruleCount;
    }
    if (found.empty())
        return QStringLiteral("The catalog is sound.\n");
    const qsizetype notes = std::ranges::count_if(
        found, [](const Finding &finding) { return finding.rule->severity == Severity::Note; });
    const QString sums = QStringLiteral("%1 and %2 by %3 of %4 rules.\n")
                             .arg(count(qsizetype(found.size()) - notes, "error"), count(notes, "note"))
                             .arg(ruleCount)
                             .arg(rules().size());
    return text +
           (isSound(found) ? QStringLiteral("The catalog is sound: ")
                           : QStringLiteral("The catalog is not sound: ")) +
           sums;
}

QByteArray asJson(const Finding &finding) {
    QJsonObject keys;
    for (const auto &[name, value] : finding.keys)
        keys.insert(name, asJson(value));
    return QJsonDocument(QJsonObject{{QStringLiteral("rule"), finding.rule->name},
                                     {QStringLiteral("severity"), severityName(finding.rule->severity)},
                                     {QStringLiteral("table"), finding.rule->table},
                                     {QStringLiteral("keys"), keys},
                                     {QStringLiteral("text"), finding.text}})
        .toJson(QJsonDocument::Compact);
}

QString nameOf(const Finding &finding) {
    QString name = finding.rule->name;
    for (const auto &[key, value] : finding.keys)
        name += u' ' + key + u'=' + shown(value);
    return name;
}

QString ruleList() {
    QString text;
    for (const Rule &rule : rules())
        text += QStringLiteral("%1  %2  %3\n")
                    .arg(rule.name, -26)
                    .arg(severityName(rule.severity), -5)
                    .arg(rule.title);
    return text;
}

} // namespace zel::tool
