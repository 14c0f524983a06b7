// Spreadsheets' files, as zeldb import reads them.

#include "fuzzing.h"

#include "tools/zeldb/csv.h"

#include <algorithm>

using namespace zel;

namespace {

QString written(const QStringList &cells, QChar separator) {
    QStringList quoted;
    for (QString cell : cells)
        quoted << u'"' + cell.replace(u'"', QStringLiteral("\"\"")) + u'"';
    return quoted.join(separator) + u'\n';
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    (void)fuzz::accepted([&] {
        const tool::Csv table = tool::csvOf(bytes, QStringLiteral("FILE"));
        // Of one column nothing tells the separator; one that stands in the names may be told wrongly.
        const bool told =
            table.columns.size() > 1 && std::ranges::none_of(table.columns, [](const QString &name) {
                return name.contains(u',') || name.contains(u';') || name.contains(u'\t') ||
                       name.contains(u'\n');
            });
        QString again = written(table.columns, table.separator);
        qsizetype line = 0;
        for (const tool::Csv::Row &row : table.rows) {
            if (row.line <= std::exchange(line, row.line))
                fuzz::broken("the rows' lines go upwards", bytes.toStdString());
            again += written(row.cells, table.separator);
        }
        if (!told)
            return;
        const tool::Csv other = tool::csvOf(again.toUtf8(), QStringLiteral("AGAIN"));
        const bool same =
            other.columns == table.columns &&
            std::ranges::equal(other.rows, table.rows, {}, &tool::Csv::Row::cells, &tool::Csv::Row::cells);
        if (!same)
            fuzz::broken("a table that is written and read again is the same", bytes.toStdString());
    });
    return 0;
}
