#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <string_view>

namespace zel::demo {

/// A row of a table of text: its cells, without the blanks around them.
class Row {
public:
    explicit Row(QStringList cells) : m_cells(std::move(cells)) {}
    /// '' behind the last one.
    [[nodiscard]] QString operator[](int cell) const { return m_cells.value(cell); }
    [[nodiscard]] int number(int cell) const { return m_cells.value(cell).toInt(); }
    /// An amount in rupees, as hundredths.
    [[nodiscard]] std::int64_t cents(int cell) const {
        const QString text = m_cells.value(cell);
        const auto point = text.indexOf(u'.');
        if (point < 0)
            return text.toLongLong() * 100;
        const std::int64_t part = text.mid(point + 1).leftJustified(2, u'0').toLongLong();
        return text.left(point).toLongLong() * 100 + (text.startsWith(u'-') ? -part : part);
    }

private:
    QStringList m_cells;
};

/// The rows of a text, a line each, cells parted by "|"; empty lines and those with # say nothing.
[[nodiscard]] inline QList<Row> tableOf(std::string_view text) {
    QList<Row> rows;
    const QStringList lines = QString::fromUtf8(text.data(), qsizetype(text.size())).split(u'\n');
    for (const QString &line : lines) {
        if (line.isEmpty() || line.startsWith(u'#'))
            continue;
        QStringList cells = line.split(u'|');
        for (QString &cell : cells)
            cell = cell.trimmed();
        rows.append(Row(std::move(cells)));
    }
    return rows;
}

/// Those whose first cell is `word`.
[[nodiscard]] inline QList<Row> tableOf(std::string_view text, const QString &word) {
    QList<Row> rows = tableOf(text);
    rows.removeIf([&word](const Row &row) { return row[0] != word; });
    return rows;
}

} // namespace zel::demo
