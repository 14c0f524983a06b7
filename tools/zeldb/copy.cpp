#include "commands.h"
#include "console.h"
#include "progress.h"
#include "source.h"

#include "platform/ado/column_rules.h"
#include "platform/ado/statements.h"
#include "platform/base/date_text.h"
#include "platform/base/error.h"
#include "schema/new_catalog.h"

#include <algorithm>

namespace zel::tool {

namespace {

using tsql::TypeKind;

QString shownType(const tsql::Column &column) {
    const std::string_view name = typeName(column.type);
    QString text = QString::fromUtf8(name.data(), qsizetype(name.size()));
    if (isText(column.type))
        text += QStringLiteral("(%1)").arg(column.type.length);
    else if (column.type.kind == TypeKind::Numeric)
        text += QStringLiteral("(%1,%2)").arg(column.type.length).arg(column.type.scale);
    return text + QLatin1String(column.nullable ? "" : " not null");
}

/// Whether an engine that holds a column to its type would take the cell.
bool fits(const std::optional<std::string_view> &cell, const tsql::Column &column) {
    if (!cell)
        return column.nullable;
    if (column.type.kind == TypeKind::Date || column.type.kind == TypeKind::DateTime)
        return fromStoredDate(*cell).has_value();
    if (cell->find('\0') != std::string_view::npos)
        return false;
    try {
        (void)ado::fitted(std::string(*cell), column.type);
        return true;
    } catch (const Error &) {
        return false;
    }
}

QString shownCell(const std::optional<std::string_view> &cell) {
    return cell ? u'"' + QString::fromUtf8(cell->data(), qsizetype(cell->size())) + u'"'
                : QStringLiteral("NULL");
}

/// What does not fit: a sentence for each column, and how many values there are.
struct Misfits {
    QStringList sentences;
    std::int64_t values = 0;
};

void look(ado::Driver &driver, Source &source, const ado::TableDefinition &definition, Misfits &found,
          Progress &progress) {
    const tsql::Table *table = driver.table(definition.name);
    if (!table)
        refuse(QStringLiteral("The table %1 can't be read.").arg(QString::fromStdString(definition.name)));
    std::vector<std::int64_t> misfits(definition.columns.size());
    std::vector<QString> first(misfits.size());
    std::int64_t row = 0;
    source.readRows(definition, [&](ado::Cells cells) {
        ++row;
        for (std::size_t at = 0; at < cells.size(); ++at)
            if (!fits(cells[at], table->columns.at(at)) && misfits[at]++ == 0)
                first[at] = QStringLiteral("row %1, ").arg(row) + shownCell(cells[at]);
        progress.step();
    });
    for (std::size_t at = 0; at < misfits.size(); ++at) {
        if (misfits[at] == 0)
            continue;
        found.values += misfits[at];
        found.sentences.append(
            QStringLiteral("%1.%2 is %3: rows that do not fit: %4, the first is %5.")
                .arg(QString::fromStdString(definition.name), QString::fromStdString(definition.columns[at]),
                     shownType(table->columns[at]), QString::number(misfits[at]), first[at]));
    }
}

Misfits misfitsOf(ado::Driver &driver, Source &source) {
    Misfits found;
    Progress progress("Looking", rowsOf(source.inventory()));
    for (const ado::TableDefinition &table : source.inventory().tables)
        look(driver, source, table, found, progress);
    return found;
}

QString counted(const ado::Inventory &inventory) {
    return QStringLiteral("%1 tables with %L2 rows").arg(inventory.tables.size()).arg(rowsOf(inventory));
}

QString shownSums(const ado::Inventory &inventory, const std::vector<TableSum> &sums) {
    std::size_t width = 0;
    for (const ado::TableDefinition &table : inventory.tables)
        width = std::max(width, table.name.size());
    QString text;
    for (std::size_t at = 0; at < sums.size(); ++at)
        text += QStringLiteral("%1  %2  %3\n")
                    .arg(QString::fromStdString(inventory.tables[at].name).leftJustified(qsizetype(width)))
                    .arg(sums[at].rows(), 9)
                    .arg(QString::fromStdString(sums[at].sum()));
    return text;
}

int run(const Arguments &given) {
    const QString &to = given.word(1);
    const std::unique_ptr<ado::Driver> driver = ado::openAsOwner(given.word(0));
    schema::requireNoCatalog(to);
    CatalogSource source(*driver);
    const Misfits misfits = misfitsOf(*driver, source);
    if (given.isSet("dry-run")) {
        for (const QString &sentence : misfits.sentences)
            say(sentence + u'\n');
        if (misfits.values == 0)
            say(QStringLiteral("All fits: %1.\n").arg(counted(source.inventory())));
        return misfits.values == 0 ? 0 : 1;
    }
    if (misfits.values > 0)
        refuse(QStringLiteral(
                   "%L1 values do not fit in their columns, so nothing was copied; zeldb copy --dry-run "
                   "tells which.")
                   .arg(misfits.values));
    std::vector<TableSum> sums;
    Progress progress("Copying", 2 * rowsOf(source.inventory()));
    schema::makeCatalog(to, [&](ado::Driver &target) { sums = fill(target, source, progress); });
    say(shownSums(source.inventory(), sums));
    say(QStringLiteral("Copied %1, the logins too; read again, all are the same.\n")
            .arg(counted(source.inventory())));
    return 0;
}

} // namespace

const Command copy{
    .name = "copy",
    .words = "[--dry-run] FROM TO",
    .summary = "copies a catalog to another place, while the program runs",
    .help = "Copies all that a catalog holds at one moment, logins and menu rights included, to a\n"
            "place without a catalog, reads it again there, and shows for each table its rows\n"
            "and a sum over them, which is the same on every engine. Stopped at any moment it\n"
            "leaves no catalog or a whole one.",
    .options = {{"dry-run", nullptr, "only tell what does not fit in its column"}},
    .least = 2,
    .most = 2,
    .run = run,
};

} // namespace zel::tool
