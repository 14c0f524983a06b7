#include "import.h"

#include "commands.h"
#include "console.h"

#include "platform/ado/statements.h"

#include <algorithm>

namespace zel::tool {

namespace {

constexpr const ImportKind *Kinds[] = {&importedAccounts, &importedStudents};

const ImportKind &kindOf(const QString &name) {
    for (const ImportKind *kind : Kinds)
        if (name == QLatin1String(kind->name))
            return *kind;
    refuse(QStringLiteral("\"%1\" can't be imported; accounts and students can.").arg(name));
}

bool same(const QString &given, const char *column) {
    return given.compare(QLatin1String(column), Qt::CaseInsensitive) == 0;
}

QStringList columnsOf(const ImportKind &kind) {
    QStringList all;
    for (const auto &[table, columns] : kind.columns)
        for (const char *column : columns)
            all.append(QLatin1String(column));
    return all;
}

void checkColumns(const Csv &table, const ImportKind &kind, const QString &path) {
    const QStringList known = columnsOf(kind);
    for (const QString &column : table.columns) {
        if (!known.contains(column, Qt::CaseInsensitive))
            refuse(QStringLiteral("The file \"%1\" has a column \"%2\", which %3 don't have; known are %4.")
                       .arg(path, column, QLatin1String(kind.name), known.join(QStringLiteral(", "))));
        if (std::ranges::count_if(table.columns, [&](const QString &other) {
                return other.compare(column, Qt::CaseInsensitive) == 0;
            }) > 1)
            refuse(QStringLiteral("The file \"%1\" has the column \"%2\" twice.").arg(path, column));
    }
    for (const char *needed : kind.needed)
        if (std::ranges::none_of(table.columns, [&](const QString &given) { return same(given, needed); }))
            refuse(QStringLiteral("The file \"%1\" has no column \"%2\"; its first line names the columns.")
                       .arg(path, QLatin1String(needed)));
}

/// What can be said of a row without the others: its cells are not too many, nor too long for their columns.
void checkCells(ado::Driver &driver, const Csv &table, const ImportKind &kind,
                std::map<qsizetype, QString> &refused) {
    std::vector<int> widths(std::size_t(table.columns.size()), 0);
    for (const auto &[name, columns] : kind.columns)
        for (const tsql::Column &column : driver.table(name)->columns)
            for (const char *known : columns)
                for (qsizetype at = 0; at < table.columns.size(); ++at)
                    if (column.name == known && same(table.columns[at], known) && isText(column.type))
                        widths[std::size_t(at)] = column.type.length;
    for (const Csv::Row &row : table.rows) {
        if (row.cells.size() != table.columns.size())
            refused[row.line] = QStringLiteral("has %1 cells, the first line %2")
                                    .arg(row.cells.size())
                                    .arg(table.columns.size());
        for (qsizetype at = 0; at < std::min(row.cells.size(), table.columns.size()); ++at)
            if (const int width = widths[std::size_t(at)]; width > 0 && row.cells[at].toUcs4().size() > width)
                refused[row.line] =
                    QStringLiteral("%1 has more than %2 characters").arg(table.columns[at]).arg(width);
    }
}

int run(const Arguments &given) {
    const ImportKind &kind = kindOf(given.word(1));
    const QString &path = given.word(2);
    const Csv table = readCsv(path);
    checkColumns(table, kind, path);
    if (table.rows.isEmpty())
        refuse(QStringLiteral("The file \"%1\" has no rows behind its first line.").arg(path));
    const std::unique_ptr<ado::Driver> driver = ado::openAsOwner(given.word(0));
    driver->begin(ado::Durability::Now); // undone unless it is committed
    std::map<qsizetype, QString> refused;
    checkCells(*driver, table, kind, refused);
    const int written = kind.write(*driver, table, refused);
    for (const auto &[line, why] : refused)
        put(stderr, QStringLiteral("line %1: %2\n").arg(line).arg(why).toUtf8());
    if (!refused.empty())
        refuse(QStringLiteral("%1 of %2 rows are refused, so nothing was imported.")
                   .arg(refused.size())
                   .arg(table.rows.size()));
    if (given.isSet("dry-run")) {
        say(QStringLiteral("All %1 can be imported: %2. Nothing was written.\n")
                .arg(QLatin1String(kind.name))
                .arg(written));
        return 0;
    }
    driver->commit();
    say(QStringLiteral("Imported %1: %2.\n").arg(QLatin1String(kind.name)).arg(written));
    return 0;
}

} // namespace

const Command import{
    .name = "import",
    .words = "[--dry-run] CATALOG (accounts | students) FILE.csv",
    .summary = "adds accounts or students of a spreadsheet",
    .help = "Adds the rows of a file that a spreadsheet saved as CSV (UTF-8; commas, semicolons\n"
            "or tabs), all of them or, when one is refused, none; each refused row is told with\n"
            "its line and the reason. The first line names the columns. The rows become what the\n"
            "screens would have saved: numbers and codes are given, names are in capitals.\n"
            "\n"
            "accounts  ParentID: the code or the title of the account above, which may stand\n"
            "          earlier in the file; empty for a control account. AcName. For control\n"
            "          accounts OrderStatus; for subsidiary ones OpenBal, openDate, BStatus (B\n"
            "          bank, S supplier), GST, NTN, ContactPer, Addr, Addr2, Contact, Fax, Email,\n"
            "          WebSite, Location.\n"
            "students  StuName, CellNo, SessionID and SubID (number or name), AppDate (today if\n"
            "          empty), RegNo, FatherName, NIC, Contact, Office, Email, MailAdd, LastQulS,\n"
            "          AudCompany, ExamAtt, ModPart, SectionAtoZ, RegFee; of the subject SubAmt\n"
            "          (its fee if empty), Discount, RecAmount, Nerration, InActive (1). A row\n"
            "          without StuName adds a subject to the student above it.",
    .options = {{"dry-run", nullptr, "only tell which rows are refused, and why"}},
    .least = 3,
    .most = 3,
    .run = run,
};

} // namespace zel::tool
