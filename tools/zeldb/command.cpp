#include "command.h"

#include "console.h"

#include <algorithm>

namespace zel::tool {

namespace {

QString usage(const Command &command) {
    return QStringLiteral("zeldb %1 %2").arg(QLatin1String(command.name), QLatin1String(command.words));
}

QString shownName(const Option &option) {
    const QLatin1String name(option.name);
    const QString dashed = QLatin1String(name.size() == 1 ? "-" : "--") + name;
    return option.value ? dashed + u' ' + QLatin1String(option.value) : dashed;
}

/// Two columns, the second one in line.
QString inColumns(const std::vector<std::pair<QString, QString>> &rows) {
    qsizetype width = 0;
    for (const auto &[left, right] : rows)
        width = std::max(width, left.size());
    QString text;
    for (const auto &[left, right] : rows)
        text += QStringLiteral("  %1  %2\n").arg(left.leftJustified(width), right);
    return text;
}

} // namespace

Arguments::Arguments(const Command &command, const QStringList &typed) {
    for (const Option &option : command.options)
        m_line.addOption({QLatin1String(option.name), QLatin1String(option.help),
                          option.value ? QLatin1String(option.value) : QLatin1String()});
    const QString use = QStringLiteral("use: %1 (zeldb help %2 tells more).")
                            .arg(usage(command), QLatin1String(command.name));
    if (!m_line.parse(QStringList(QString()) + typed)) {
        QString reason = m_line.errorText();
        reason.chop(reason.endsWith(u'.') ? 1 : 0);
        refuse(reason + QStringLiteral(": ") + use);
    }
    m_words = m_line.positionalArguments();
    if (m_words.size() < command.least)
        refuse(QStringLiteral("Something is missing: ") + use);
    if (m_words.size() > command.most)
        refuse(QStringLiteral("\"%1\" is too much: %2").arg(m_words.at(command.most), use));
}

QString helpOf(const std::vector<const Command *> &commands) {
    std::vector<std::pair<QString, QString>> rows;
    for (const Command *command : commands)
        rows.emplace_back(QLatin1String(command->name), QLatin1String(command->summary));
    return QStringLiteral("zeldb makes, fills and looks after the catalogs of ZEL.\n\n%1\n"
                          "zeldb help COMMAND tells how to use a command, and its options.\n"
                          "A catalog is named by its folder; the file ZEL.db in it holds everything.\n")
        .arg(inColumns(rows));
}

QString helpOf(const Command &command) {
    QString text = QStringLiteral("%1\n\n%2\n").arg(usage(command), QString::fromUtf8(command.help));
    std::vector<std::pair<QString, QString>> rows;
    for (const Option &option : command.options)
        rows.emplace_back(shownName(option), QString::fromUtf8(option.help));
    return rows.empty() ? text : text + u'\n' + inColumns(rows);
}

} // namespace zel::tool
