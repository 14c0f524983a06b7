#include "tools/zeldb/check.h"

#include "platform/ado/statements.h"
#include "platform/base/error.h"
#include "platform/base/number_text.h"
#include "schema/schema_texts.h"
#include "tools/zeldb/shown.h"

#include <QRegularExpression>

#include <algorithm>

namespace zel::tool {

namespace {

/// A transaction that reads, for as long as it is needed.
class Reading {
public:
    explicit Reading(ado::Driver &driver) : m_driver(driver) { m_driver.beginReading(); }
    ~Reading() { m_driver.rollback(); }
    Reading(const Reading &) = delete;
    Reading &operator=(const Reading &) = delete;

private:
    ado::Driver &m_driver;
};

std::shared_ptr<const ado::RowSet> ask(ado::Driver &driver, const Sql &statement) {
    std::shared_ptr<const ado::RowSet> rows;
    ado::runStatements(driver, statement, [&rows](const ado::Outcome &outcome) { rows = outcome.rows; });
    return rows;
}

/// The tables of the schema that a catalog lacks; none when it lacks all of them.
QStringList missingTables(const ado::Driver &driver) {
    static const QRegularExpression made(QStringLiteral("^create table (\\w+)"),
                                         QRegularExpression::MultilineOption);
    const QString schema = QString::fromUtf8(schema::tables.data(), qsizetype(schema::tables.size()));
    QStringList missing;
    bool anyThere = false;
    for (auto each = made.globalMatch(schema); each.hasNext();) {
        const QString name = each.next().captured(1);
        if (driver.table(name.toStdString()))
            anyThere = true;
        else
            missing.append(name);
    }
    return anyThere ? missing : QStringList();
}

/// Tables of the connection's own that rules ask: for what the catalog's tables don't tell, and for the sums
/// of each voucher's lines, over which many a rule goes. Odd lines are neither a debit nor a credit.
constexpr Literal OwnTables = R"(
create table #logins (Name varchar(128))
create table #missing (Name varchar(128))
create table #vouchers (VouStatus char(2) not null, VouNo int not null, Lines int, Dated int, Posted int, Contras int, Odd int,
    Debit numeric(18,2), Credit numeric(18,2), FirstDay datetime, LastDay datetime, primary key (VouStatus, VouNo)))";
constexpr Literal SumUp = R"(
insert into #vouchers (VouStatus, VouNo, Lines, Dated, Posted, Contras, Odd, Debit, Credit, FirstDay, LastDay)
    select VouStatus, VouNo, count(*), count(VouDate), count(AcCode), count(CrAc),
        sum(case when DrAmt < 0 or CrAmt < 0 or (DrAmt <> 0 and CrAmt <> 0) or (DrAmt is null and CrAmt is null) then 1 else 0 end),
        sum(isnull(DrAmt, 0)), sum(isnull(CrAmt, 0)), min(VouDate), max(VouDate)
    from DetJV group by VouStatus, VouNo)";

void fillTables(ado::Driver &driver, const QStringList &missing) {
    Sql rows = " ";
    const auto put = [&rows](Literal insert, const QString &text) {
        rows += Sql(insert) + QString(text).replace(u'\'', QLatin1String("''")) + "') ";
    };
    for (const std::string &login : driver.loginNames())
        put("insert into #logins values ('", QString::fromStdString(login));
    for (const QString &table : missing)
        put("insert into #missing values ('", table);
    ask(driver, rows);
}

/// What the engine finds, by the rule that has no query. Damage that stops its test is damage, too.
std::vector<Finding> damageOf(ado::Driver &driver) {
    const auto engines =
        std::ranges::find_if(rules(), [](const Rule &rule) { return rule.statement.text().empty(); });
    std::vector<Finding> found;
    const auto put = [&](const QString &sentence) {
        found.push_back(
            {&*engines, {}, QString(engines->finding).replace(QLatin1String("{What}"), sentence)});
    };
    try {
        for (const std::string &told : driver.damage())
            for (const QString &sentence : QString::fromStdString(told).split(u'\n'))
                if (!sentence.contains(QLatin1String("***"))) // which only heads the others
                    put(sentence);
    } catch (const Error &failure) {
        put(failure.description());
    }
    return found;
}

QString cellText(const ado::RowSet &rows, qsizetype row, int column) {
    const Value value = rows.value(row, column);
    return rows.isAmount(column) && !value.isNull() ? storedAmount(value.decimal()) : shown(value);
}

void tell(const Rule &rule, const ado::RowSet &rows, std::vector<Finding> &found) {
    for (qsizetype row = 0; row < rows.rowCount(); ++row) {
        Finding &finding = found.emplace_back(Finding{&rule, {}, rule.finding});
        for (const QString &key : rule.keys)
            finding.keys.emplace_back(key, rows.value(row, rows.columnIndex(key)));
        for (int column = 0; column < rows.columnCount(); ++column)
            finding.text.replace(u'{' + rows.columnName(column) + u'}', cellText(rows, row, column));
    }
}

bool isOfMissing(const Error &failure) {
    constexpr int NoColumn = 207;
    constexpr int NoTable = 208;
    return failure.number() == NoColumn || failure.number() == NoTable;
}

} // namespace

std::vector<Finding> findings(ado::Driver &driver, const std::function<void(int done, int all)> &progress) {
    const int all = int(rules().size()) + 2; // the engine's test, the sums
    int done = 0;
    const auto step = [&] {
        if (progress)
            progress(done++, all);
    };
    step();
    ask(driver, OwnTables);
    const Reading moment(driver);
    if (auto damage = damageOf(driver); !damage.empty())
        return damage; // what such a file says of the books is not to be trusted
    driver.refresh();
    const QStringList missing = missingTables(driver);
    const bool maybeLeftOut = !missing.isEmpty() || !driver.table("DetJV");
    fillTables(driver, missing);
    const auto attempt = [&](const Sql &statement) {
        try {
            return ask(driver, statement);
        } catch (const Error &failure) {
            if (!maybeLeftOut || !isOfMissing(failure))
                throw;
        }
        return std::shared_ptr<const ado::RowSet>();
    };
    step();
    attempt(SumUp);
    std::vector<Finding> found;
    for (const Rule &rule : rules()) {
        step();
        if (rule.statement.text().empty())
            continue;
        if (const auto rows = attempt(rule.statement))
            tell(rule, *rows, found);
    }
    step();
    return found;
}

} // namespace zel::tool
