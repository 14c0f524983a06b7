#include "check.h"

#include "platform/ado/statements.h"

namespace zel::tool {

namespace {

/// A rule of the books: `statement` lists what breaks it, and `finding` tells one of its rows, %1 and on
/// being the columns.
struct Rule {
    const char *finding;
    Literal statement;
};

/// Carried forward credits (CF) have no other side, and AR and CF no header.
constexpr Rule Rules[] = {
    {"Voucher %1 %2 does not balance: debit %3, credit %4.",
     "select VouStatus, VouNo, sum(isnull(DrAmt,0)) as Dr, sum(isnull(CrAmt,0)) as Cr from DetJV where "
     "VouStatus <> 'CF'"
     " group by VouStatus, VouNo having sum(isnull(DrAmt,0)) <> sum(isnull(CrAmt,0)) order by VouStatus, "
     "VouNo"},
    {"Voucher %1 %2 has lines but no header.",
     "select distinct VouStatus, VouNo from DetJV d where VouStatus not in ('AR','CF') and not exists"
     " (select m.VouNo from MasJV m where m.VouNo = d.VouNo and m.VouStatus = d.VouStatus)"},
    {"Voucher %1 %2 has a header but no lines.",
     "select VouStatus, VouNo from MasJV m where not exists"
     " (select d.VouNo from DetJV d where d.VouNo = m.VouNo and d.VouStatus = m.VouStatus)"},
    {"Two vouchers bear the number %1 %2.",
     "select VouStatus, VouNo from MasJV group by VouStatus, VouNo having count(*) > 1"},
    {"Lines post to account %1, which is no subsidiary account of the chart.",
     "select distinct AcCode from DetJV d where not exists"
     " (select a.RowID from Accounts a where a.RowID = d.AcCode and a.AcStatus = 'DD')"},
};

} // namespace

QStringList findings(ado::SqliteDriver &driver) {
    QStringList found;
    {
        ado::SqliteSession::Running integrity = driver.session().prepare("pragma integrity_check(20)");
        while (integrity.step())
            if (const std::string line = integrity.text(0); line != "ok")
                found.append(QStringLiteral("The file is damaged: %1.").arg(QString::fromStdString(line)));
    }
    if (!driver.table("DetJV"))
        return found;
    for (const Rule &rule : Rules)
        ado::runStatements(driver, rule.statement, [&found, &rule](const ado::Outcome &outcome) {
            for (qsizetype row = 0; outcome.rows && row < outcome.rows->rowCount(); ++row) {
                QString sentence = QLatin1String(rule.finding);
                for (int column = 0; column < outcome.rows->columnCount(); ++column)
                    sentence = sentence.arg(outcome.rows->text(row, column));
                found.append(sentence);
            }
        });
    return found;
}

} // namespace zel::tool
