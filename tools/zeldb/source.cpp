#include "source.h"

#include "console.h"
#include "platform/ado/statements.h"
#include "progress.h"

#include <numeric>

namespace zel::tool {

namespace {

void run(ado::Driver &target, const std::string &statement) {
    ado::runStatements(target, Sql::trusted(statement), [](const ado::Outcome &) {});
}

TableSum read(ado::Driver &driver, const ado::TableDefinition &table, Progress &progress) {
    TableSum sum;
    std::string line;
    driver.readRows(table, [&](ado::Cells row) {
        line.clear();
        appendRow(line, row);
        sum.add(line);
        progress.step();
    });
    sum.finish();
    return sum;
}

} // namespace

CatalogSource::CatalogSource(ado::Driver &driver) : m_driver(driver) {
    m_driver.beginReading();
    m_inventory = m_driver.inventory();
    for (const std::string &name : m_inventory.leftOut)
        put(stderr,
            "zeldb: Left out, since another program made it: " + QByteArray::fromStdString(name) + ".\n");
}

std::int64_t rowsOf(const ado::Inventory &inventory) {
    return std::accumulate(
        inventory.tables.begin(), inventory.tables.end(), std::int64_t(0),
        [](std::int64_t sum, const ado::TableDefinition &table) { return sum + table.rows; });
}

std::vector<TableSum> fill(ado::Driver &target, Source &source, Progress &progress) {
    const ado::Inventory &all = source.inventory();
    std::vector<TableSum> sums;
    std::string line;
    for (const ado::Login &login : all.logins)
        target.addLogin(login);
    for (const ado::TableDefinition &table : all.tables) {
        run(target, table.statement);
        const std::unique_ptr<ado::RowSink> sink = target.addRows(table);
        TableSum &sum = sums.emplace_back();
        source.readRows(table, [&](ado::Cells row) {
            sink->add(row);
            line.clear();
            appendRow(line, row);
            sum.add(line);
            progress.step();
        });
        sink->finish();
        sum.finish();
    }
    for (const ado::TableDefinition &table : all.tables)
        for (const std::string &index : table.indexes)
            run(target, index);
    for (const std::string &procedure : all.procedures)
        run(target, procedure);
    target.setVersion(all.version); // an older one's is refreshed like any
    std::size_t at = 0;
    for (const ado::TableDefinition &table : all.tables)
        if (!(read(target, table, progress) == sums[at++]))
            refuse(QStringLiteral("The rows of the table %1 did not come out as they went in; please report "
                                  "this, nothing was changed.")
                       .arg(QString::fromStdString(table.name)));
    target.analyze();
    return sums;
}

} // namespace zel::tool
