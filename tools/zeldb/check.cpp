#include "tools/zeldb/check.h"

#include "platform/ado/statements.h"
#include "platform/base/error.h"
#include "platform/base/number_text.h"
#include "schema/schema_texts.h"
#include "tools/zeldb/shown.h"

#include <QRegularExpression>

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

/// Tables of the connection's own for what the catalog's tables don't tell, so that rules can ask for it.
void fillTables(ado::Driver &driver, const QStringList &damage, const QStringList &missing) {
    constexpr int Longest = 2000;
    Sql tables = "create table #logins (Name varchar(128)) create table #missing (Name varchar(128)) "
                 "create table #damage (Text varchar(2000)) ";
    const auto put = [&tables](Literal insert, const QString &text) {
        tables += Sql(insert) + QString(text).replace(u'\'', QLatin1String("''")) + "') ";
    };
    for (const std::string &login : driver.loginNames())
        put("insert into #logins values ('", QString::fromStdString(login));
    for (const QString &table : missing)
        put("insert into #missing values ('", table);
    for (const QString &sentence : damage)
        put("insert into #damage values ('", sentence.left(Longest));
    ask(driver, tables);
}

/// What the engine finds. Damage that stops its test is damage, too.
QStringList damageOf(ado::Driver &driver) {
    QStringList sentences;
    try {
        for (const std::string &sentence : driver.damage())
            sentences.append(QString::fromStdString(sentence));
    } catch (const Error &failure) {
        sentences.append(failure.description());
    }
    return sentences;
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
    const int all = int(rules().size()) + 1;
    int done = 0;
    const auto step = [&] {
        if (progress)
            progress(done++, all);
    };
    step();
    const Reading moment(driver);
    const QStringList damage = damageOf(driver);
    driver.refresh();
    const QStringList missing = missingTables(driver);
    const bool maybeLeftOut = !missing.isEmpty() || !driver.table("DetJV");
    fillTables(driver, damage, missing);
    std::vector<Finding> found;
    for (const Rule &rule : rules()) {
        step();
        try {
            tell(rule, *ask(driver, rule.statement), found);
        } catch (const Error &failure) {
            if (damage.isEmpty() && !(maybeLeftOut && isOfMissing(failure)))
                throw;
        }
    }
    step();
    return found;
}

} // namespace zel::tool
