#include "import.h"

#include "platform/ado/statements.h"
#include "platform/tsql/text/text_rules.h"

namespace zel::tool {

namespace {

/// As the screens compare titles: without blanks, case ignored.
std::string key(QString title) {
    return tsql::comparisonKey(title.remove(u' ').toStdString());
}

} // namespace

std::shared_ptr<const ado::RowSet> ask(ado::Driver &driver, const Sql &statement) {
    std::shared_ptr<const ado::RowSet> rows;
    ado::runStatements(driver, statement, [&](const ado::Outcome &outcome) { rows = outcome.rows; });
    return rows;
}

Chart::Chart(ado::Driver &driver) {
    const auto rows = ask(
        driver, "select rtrim(AcNodes), rtrim(ParentID), isnull(Dcode, 0), AcName, AcStatus from Accounts");
    for (qsizetype row = 0; row < rows->rowCount(); ++row)
        added(rows->text(row, 0), rows->text(row, 1), int(rows->value(row, 2).integer()), rows->text(row, 3),
              rows->text(row, 4));
}

void Chart::added(const QString &code, const QString &parent, int number, const QString &title,
                  const QString &status) {
    m_status[code] = status;
    m_codes[key(title)].append(code);
    if (int &last = m_last[parent]; last < number)
        last = number;
    if (status == QLatin1String("HH"))
        m_lastControl = std::max(m_lastControl, parent.toInt());
}

Chart::Found Chart::account(const QString &codeOrTitle) const {
    if (const auto found = m_status.find(codeOrTitle); found != m_status.end())
        return {found->first, found->second};
    const auto found = m_codes.find(key(codeOrTitle));
    if (found == m_codes.end())
        throw RefusedRow{QStringLiteral("there is no account \"%1\"").arg(codeOrTitle)};
    if (found->second.size() > 1)
        throw RefusedRow{QStringLiteral("several accounts bear the title \"%1\"; give the code (%2)")
                             .arg(codeOrTitle, found->second.join(QStringLiteral(" or ")))};
    return {found->second.front(), m_status.at(found->second.front())};
}

bool Chart::hasTitle(const QString &title) const {
    return m_codes.contains(key(title));
}

int Chart::nextBelow(const QString &code) const {
    constexpr int Most = 32767;
    const auto last = m_last.find(code);
    const int number = last == m_last.end() ? 1 : last->second + 1;
    if (number > Most)
        throw RefusedRow{QStringLiteral("no number is left below the account %1").arg(code)};
    return number;
}

} // namespace zel::tool
