#include "shell/line_grid.h"

#include "platform/base/error.h"
#include "platform/base/number_text.h"

#include <utility>

namespace zel::shell {

namespace {

constexpr int InvalidUseOfNull = 94;
constexpr auto Stored = "###0.00";

QString shownCell(ado::Recordset &line, const ReadColumn &column) {
    if (!column.field)
        return {};
    const ado::Field field = line.Fields(column.field);
    if (column.shown == Shown::TextOrBlank)
        return field.text();
    if (field.isNull())
        throw Error(InvalidUseOfNull, QString("Invalid use of Null"));
    return column.shown == Shown::Amount ? shownAmount(field.value().decimal()) : field.text();
}

std::vector<ScreenBox> boxesOf(QWidget &screen, std::span<const LineColumn> columns) {
    std::vector<ScreenBox> boxes;
    for (const LineColumn &column : columns)
        boxes.emplace_back(screen, column.box);
    return boxes;
}

} // namespace

LineGrid::LineGrid(QWidget &screen, const LineTable &table, std::function<void(int row)> taken)
    : m_table(table), m_grid(named<controls::Grid>(screen, table.grid)),
      m_rowUnderEdit(screen, {table.rowUnderEdit}), m_boxes(boxesOf(screen, table.columns)),
      m_emptiedByAdd(screenBoxes(screen, table.emptiedByAdd)),
      m_emptiedByRemove(screenBoxes(screen, table.emptiedByRemove)), m_taken(std::move(taken)) {
    connect(&m_grid,
            table.takenBackBy == TakenBackBy::Click ? &controls::Grid::rowClicked
                                                    : &controls::Grid::rowDoubleClicked,
            this, &LineGrid::takeBack);
}

void LineGrid::reset() {
    QList<controls::Grid::Column> columns;
    for (const LineColumn &column : m_table.columns) {
        const bool text = column.picture == Picture::Plain;
        columns.append(
            {column.heading, column.twips, text ? Qt::Alignment() : Qt::AlignRight | Qt::AlignVCenter});
    }
    m_grid.setRows(1);
    m_grid.setCols(int(columns.size()));
    m_grid.setColumns(columns);
}

bool LineGrid::isRepeated() const {
    if (!m_rowUnderEdit.read().isEmpty())
        return false;
    const QString code = m_boxes.front().read();
    for (int row = 1; row < m_grid.Rows(); ++row)
        if (m_grid.TextMatrix(row, 0) == code)
            return true;
    return false;
}

void LineGrid::add() {
    const QString underEdit = m_rowUnderEdit.read();
    int row = m_grid.Rows();
    if (underEdit.isEmpty())
        m_grid.setRows(row + 1);
    else
        row = underEdit.toInt();
    for (std::size_t col = 0; col < m_boxes.size(); ++col) {
        const QString value = m_boxes[col].read();
        const bool amount = m_table.columns[col].picture == Picture::Amount;
        m_grid.setTextMatrix(row, int(col), amount ? format(value, "##,###0.00") : value);
    }
    m_rowUnderEdit.write({});
    empty(m_emptiedByAdd);
}

void LineGrid::takeBack(int row) {
    if (row < 1 || m_grid.TextMatrix(row, 0).isEmpty())
        return;
    m_rowUnderEdit.write(QString::number(row));
    for (std::size_t col = 0; col < m_boxes.size(); ++col) {
        const LineColumn &column = m_table.columns[col];
        const QString cell = m_grid.TextMatrix(row, int(col));
        if (column.takenBack)
            m_boxes[col].write(column.picture == Picture::Amount ? format(cell, Stored) : cell);
    }
    if (m_taken)
        m_taken(row);
}

void LineGrid::remove() {
    if (m_grid.Rows() > 2)
        m_grid.RemoveItem(m_grid.Row());
    else
        reset();
    empty(m_emptiedByRemove);
    m_rowUnderEdit.write({});
}

void LineGrid::append(ado::Recordset &line, std::span<const ReadColumn> columns) {
    const int row = m_grid.Rows();
    m_grid.setRows(row + 1);
    for (std::size_t col = 0; col < columns.size(); ++col)
        m_grid.setTextMatrix(row, int(col), shownCell(line, columns[col]));
}

Decimal LineGrid::total(int column) const {
    const bool amount = m_table.columns[std::size_t(column)].picture == Picture::Amount;
    Decimal sum;
    for (int row = 1; row < m_grid.Rows(); ++row) {
        const QString cell = m_grid.TextMatrix(row, column);
        if (m_table.countsWithoutCode || !m_grid.TextMatrix(row, 0).isEmpty())
            sum += leadingNumber(amount ? format(cell, Stored) : cell);
    }
    return sum;
}

} // namespace zel::shell
