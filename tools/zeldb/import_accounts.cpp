// Accounts as the chart's screen saves them: each below the one that ParentID names.

#include "import.h"

#include "platform/base/error.h"

namespace zel::tool {

namespace {

demo::Account controlAccount(const Record &record, const Chart &chart) {
    demo::Account account;
    account.nodes = QString::number(chart.nextControl());
    account.name = record.upper("AcName");
    account.order = record.text("OrderStatus");
    return account;
}

/// Below `above`: a subsidiary account has all the rest.
demo::Account accountBelow(const Chart::Found &above, const Record &record, const Chart &chart) {
    demo::Account account;
    account.nodes = above.code + u'.' + QString::number(chart.nextBelow(above.code));
    account.name = record.upper("AcName");
    if (above.status == QLatin1String("HH"))
        return account;
    account.opened = record.date("openDate");
    account.opening = record.cents("OpenBal");
    account.mark = record.upper("BStatus");
    account.contactPerson = record.upper("ContactPer");
    account.location = record.upper("Location");
    account.address = record.text("Addr");
    account.address2 = record.text("Addr2");
    account.contact = record.text("Contact");
    account.fax = record.text("Fax");
    account.email = record.text("Email");
    account.website = record.text("WebSite");
    account.gst = record.masked("GST", "##-##-####-###-##");
    account.ntn = record.masked("NTN", "#######-#");
    return account;
}

/// What the screen has no box for on this level.
void refuseOthers(const Record &record, std::initializer_list<const char *> columns, const char *level) {
    for (const char *column : columns)
        if (!record.text(column).isEmpty())
            throw RefusedRow{
                QStringLiteral("a %1 has no %2").arg(QLatin1String(level), QLatin1String(column))};
}

demo::Account accountOf(const Record &record, const Chart &chart) {
    const QString above = record.upper("ParentID");
    if (record.text("AcName").isEmpty())
        throw RefusedRow{QStringLiteral("AcName is empty")};
    const auto detail = {"OpenBal", "openDate", "BStatus", "GST",   "NTN",     "ContactPer", "Addr",
                         "Addr2",   "Contact",  "Fax",     "Email", "WebSite", "Location"};
    const QString mark = record.upper("BStatus");
    if (!mark.isEmpty() && mark != QLatin1String("B") && mark != QLatin1String("S"))
        throw RefusedRow{QStringLiteral("BStatus is B for a bank, S for a supplier or empty")};
    if (bool number = true;
        !record.text("OrderStatus").isEmpty() && (record.text("OrderStatus").toUInt(&number), !number))
        throw RefusedRow{QStringLiteral("OrderStatus is no number: \"%1\"").arg(record.text("OrderStatus"))};
    if (above.isEmpty()) {
        refuseOthers(record, detail, "control account");
        if (chart.hasTitle(record.upper("AcName")))
            throw RefusedRow{
                QStringLiteral("an account \"%1\" is there already").arg(record.upper("AcName"))};
        return controlAccount(record, chart);
    }
    const Chart::Found found = chart.account(above);
    if (found.status == QLatin1String("DD"))
        throw RefusedRow{QStringLiteral("nothing can stand below the subsidiary account %1").arg(found.code)};
    refuseOthers(record, {"OrderStatus"}, "lower account");
    if (found.status == QLatin1String("HH"))
        refuseOthers(record, detail, "sub-control account");
    else if (chart.hasTitle(record.upper("AcName"))) // a sub-control account may repeat a title
        throw RefusedRow{QStringLiteral("an account \"%1\" is there already").arg(record.upper("AcName"))};
    return accountBelow(found, record, chart);
}

int write(ado::Driver &driver, const Csv &table, std::map<qsizetype, QString> &refused) {
    Chart chart(driver);
    demo::ScreenRows rows(driver, QStringLiteral("sa"));
    int written = 0;
    for (const Csv::Row &row : table.rows) {
        if (refused.contains(row.line))
            continue;
        try {
            const demo::Account account = accountOf(Record(table, row), chart);
            const auto point = account.nodes.lastIndexOf(u'.');
            constexpr const char *Levels[] = {"HH", "HD", "DD"};
            rows.writeAccount(account);
            chart.added(account.nodes, account.nodes.left(point),
                        point < 0 ? 0 : account.nodes.mid(point + 1).toInt(), account.name,
                        QLatin1String(Levels[account.nodes.count(u'.')]));
            ++written;
        } catch (const RefusedRow &refusal) {
            refused[row.line] = refusal.why;
        } catch (const Error &failure) { // of a column that can't hold the value
            refused[row.line] = failure.description();
        }
    }
    return written;
}

} // namespace

const ImportKind importedAccounts{
    .name = "accounts",
    .columns = {{"Accounts",
                 {"ParentID", "AcName", "OrderStatus", "OpenBal", "openDate", "BStatus", "GST", "NTN",
                  "ContactPer", "Addr", "Addr2", "Contact", "Fax", "Email", "WebSite", "Location"}}},
    .needed = {"ParentID", "AcName"},
    .write = write,
};

} // namespace zel::tool
