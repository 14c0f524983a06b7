#include "tools/zeldb/check_rules.h"

#include "platform/base/error.h"
#include "tools/zeldb/rule_texts.h"

#include <QMap>

#include <algorithm>
#include <span>

namespace zel::tool {

namespace {

constexpr QLatin1String Comment("-- ");
constexpr QLatin1String Continued("--     ");

/// Names and values of the head's lines.
QMap<QString, QString> headOf(const QStringList &lines) {
    QMap<QString, QString> head;
    QString name;
    for (const QString &line : lines) {
        if (!line.startsWith(Comment))
            break;
        if (line.startsWith(Continued)) {
            head[name] += u' ' + line.mid(Continued.size());
            continue;
        }
        const auto colon = line.indexOf(u':');
        name = line.mid(Comment.size(), colon - Comment.size());
        head[name] = line.mid(colon + 1).trimmed();
    }
    return head;
}

Rule ruleOf(const EmbeddedText &embedded) {
    const QString text = QString::fromUtf8(embedded.text.data(), qsizetype(embedded.text.size()));
    const QStringList lines = text.split(u'\n');
    const QMap<QString, QString> head = headOf(lines);
    const auto word = [&](const char *name) {
        const auto found = head.find(QLatin1String(name));
        if (found == head.end())
            throw Error(errors::InvalidCall,
                        QStringLiteral("The rule %1 does not say its \"%2\".")
                            .arg(QLatin1String(embedded.name.data(), qsizetype(embedded.name.size())),
                                 QLatin1String(name)));
        return *found;
    };
    Rule rule;
    rule.name = QString::fromUtf8(embedded.name.data(), qsizetype(embedded.name.size()));
    rule.title = word("title");
    rule.why = word("why");
    rule.advice = word("do");
    rule.finding = word("finding");
    rule.table = word("table");
    rule.keys = word("keys").split(u' ', Qt::SkipEmptyParts);
    rule.severity = word("severity") == QLatin1String("note") ? Severity::Note : Severity::Error;
    const bool hasQuery = std::ranges::any_of(
        lines, [](const QString &line) { return !line.isEmpty() && !line.startsWith(QLatin1String("--")); });
    if (hasQuery)
        rule.statement = Sql::trusted(embedded.text);
    return rule;
}

} // namespace

const std::vector<Rule> &rules() {
    static const std::vector<Rule> all = [] {
        std::vector<Rule> read;
        for (const EmbeddedText &text : std::span(ruleTexts, ruleTextsCount))
            read.push_back(ruleOf(text));
        return read;
    }();
    return all;
}

QString severityName(Severity severity) {
    return severity == Severity::Note ? QStringLiteral("note") : QStringLiteral("error");
}

} // namespace zel::tool
