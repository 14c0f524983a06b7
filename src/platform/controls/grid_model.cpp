#include "platform/controls/grid_model.h"

#include "platform/base/error.h"

#include <QTimerEvent>

#include <algorithm>
#include <limits>
#include <utility>

namespace zel::controls {

namespace {

constexpr int LookMs = 30;
constexpr int RowsAtOnce = 256;

int fitting(qsizetype rows) {
    return static_cast<int>(qMin<qsizetype>(rows, std::numeric_limits<int>::max() - 1));
}

} // namespace

void GridModel::beginReset() {
    const ForView view(this);
    m_changing = true;
    beginResetModel();
}

void GridModel::endReset() {
    m_looks.stop();
    m_holdsRows = false;
    m_shown = m_bound ? fitting(m_bound->rowsRead()) : 0;
    if (m_bound && !m_bound->isWhole())
        m_looks.start(LookMs, this);
    const ForView view(this);
    endResetModel();
    m_changing = false;
}

void GridModel::bind(RowsPtr rows, qsizetype atOnce) {
    if (rows)
        rows->readOn(atOnce);
    else
        showAll();
    beginReset();
    if (rows) {
        m_cells.clear();
        m_headings.clear();
        m_cols = rows->columnCount();
        for (int col = 0; col < m_cols; ++col)
            m_headings << rows->columnName(col);
    } else if (m_bound) {
        m_cells.assign(static_cast<std::size_t>(m_shown), QStringList());
    }
    m_bound = std::move(rows);
    m_numbers.clear();
    m_amounts.clear();
    for (int col = 0; m_bound && col < m_cols; ++col) {
        m_numbers << m_bound->isNumber(col);
        m_amounts << m_bound->isAmount(col);
    }
    endReset();
}

void GridModel::clear() {
    showAll();
    blank(static_cast<std::size_t>(rows() - 1));
}

void GridModel::showNone() {
    blank(1);
}

void GridModel::blank(std::size_t count) {
    beginReset();
    m_bound.reset();
    m_cells.assign(count, QStringList());
    m_headings.clear();
    m_numbers.clear();
    m_amounts.clear();
    endReset();
}

int GridModel::rows() const {
    return (m_bound ? m_shown : static_cast<int>(m_cells.size())) + 1;
}

void GridModel::showUpTo(qsizetype count) {
    if (!m_bound || count <= m_shown)
        return;
    m_bound->readOn(count);
    showRead();
}

void GridModel::showAll() {
    showUpTo(std::numeric_limits<qsizetype>::max());
}

void GridModel::showRead() {
    const int read = fitting(m_bound->rowsRead());
    if (m_bound->isWhole())
        m_looks.stop();
    if (read == m_shown || std::exchange(m_changing, true))
        return;
    const ForView view(this);
    beginInsertRows({}, m_shown, read - 1);
    m_shown = read;
    endInsertRows();
    m_changing = false;
}

void GridModel::holdRows(bool hold) {
    m_holdsRows = hold;
    if (!hold && m_bound)
        showRead();
}

void GridModel::timerEvent(QTimerEvent *event) {
    if (event->timerId() != m_looks.timerId())
        QAbstractTableModel::timerEvent(event);
    else if (!m_holdsRows)
        showRead();
}

bool GridModel::canFetchMore(const QModelIndex &parent) const {
    return !parent.isValid() && m_bound && !m_holdsRows &&
           (!m_bound->isWhole() || m_shown < m_bound->rowsRead());
}

void GridModel::fetchMore(const QModelIndex &parent) {
    if (canFetchMore(parent))
        showUpTo(m_shown + RowsAtOnce);
}

bool GridModel::isBlank() const {
    const auto isEmpty = [](const QString &cell) { return cell.isEmpty(); };
    return !m_bound && m_cells.size() == 1 && std::ranges::all_of(m_cells.front(), isEmpty);
}

void GridModel::setRows(int rows) {
    const int below = rows - 1;
    if (below < 0)
        throw Error(380, QStringLiteral("Invalid property value"));
    showAll();
    const int present = this->rows() - 1;
    if (below == present)
        return;
    copyBound();
    if (below > present)
        beginInsertRows({}, present, below - 1);
    else
        beginRemoveRows({}, below, present - 1);
    m_cells.resize(static_cast<std::size_t>(below));
    if (below > present)
        endInsertRows();
    else
        endRemoveRows();
}

void GridModel::setCols(int cols) {
    if (cols < 0)
        throw Error(380, QStringLiteral("Invalid property value"));
    if (cols == m_cols)
        return;
    const ForView view(this);
    m_changing = true;
    const bool grows = cols > m_cols;
    if (grows)
        beginInsertColumns({}, m_cols, cols - 1);
    else
        beginRemoveColumns({}, cols, m_cols - 1);
    m_cols = cols;
    if (grows)
        endInsertColumns();
    else
        endRemoveColumns();
    m_changing = false;
}

void GridModel::removeRow(int row) {
    showAll();
    if (row < 1 || row >= rows())
        throw Error(30009, QStringLiteral("Invalid Row value"));
    copyBound();
    beginRemoveRows({}, row - 1, row - 1);
    m_cells.erase(m_cells.begin() + (row - 1));
    endRemoveRows();
}

void GridModel::checkCell(int row, int col) const {
    if (row < 0 || row >= rows() || col < 0 || col >= m_cols)
        throw Error(381, QStringLiteral("Subscript out of range"));
}

QString GridModel::text(int row, int col) const {
    checkCell(row, col);
    if (row > 0 && m_bound)
        return col < m_bound->columnCount() ? m_bound->text(row - 1, col) : QString();
    const QStringList &cells = row == 0 ? m_headings : m_cells[static_cast<std::size_t>(row - 1)];
    return cells.value(col);
}

void GridModel::setText(int row, int col, const QString &text) {
    if (row > 0)
        showAll();
    checkCell(row, col);
    if (row > 0)
        copyBound();
    QStringList &cells = row == 0 ? m_headings : m_cells[static_cast<std::size_t>(row - 1)];
    if (cells.size() <= col)
        cells.resize(col + 1);
    cells[col] = text;
    if (row == 0)
        Q_EMIT headerDataChanged(Qt::Horizontal, col, col);
    else
        Q_EMIT dataChanged(index(row - 1, col), index(row - 1, col));
}

void GridModel::copyBound() {
    if (!m_bound)
        return;
    const RowsPtr source = std::move(m_bound);
    m_bound.reset();
    m_cells.assign(static_cast<std::size_t>(m_shown), QStringList());
    for (std::size_t row = 0; row < m_cells.size(); ++row) {
        for (int col = 0; col < source->columnCount(); ++col)
            m_cells[row] << source->text(static_cast<qsizetype>(row), col);
    }
}

void GridModel::setAlignment(int col, Qt::Alignment alignment) {
    m_alignments[col] = alignment;
    Q_EMIT headerDataChanged(Qt::Horizontal, col, col);
    if (rows() > 1 && col < m_cols)
        Q_EMIT dataChanged(index(0, col), index(rows() - 2, col), {Qt::TextAlignmentRole});
}

bool GridModel::holdsAmounts(int col) const {
    return m_amounts.value(col) || m_alignments.value(col).testFlag(Qt::AlignRight);
}

Qt::Alignment GridModel::alignment(int col) const {
    const Qt::Alignment fallback = m_numbers.value(col) ? Qt::AlignRight : Qt::AlignLeft;
    const Qt::Alignment set = m_alignments.value(col);
    return (set ? set : fallback) | Qt::AlignVCenter;
}

/// Rows that the model has anyway change nothing about it by being read.
int GridModel::rowCount(const QModelIndex &parent) const {
    if (m_forView == 0)
        const_cast<GridModel *>(this)->showAll();
    return parent.isValid() ? 0 : rows() - 1;
}

QModelIndex GridModel::index(int row, int column, const QModelIndex &parent) const {
    if (m_forView == 0)
        const_cast<GridModel *>(this)->showUpTo(qsizetype(row) + 1);
    const bool there = row >= 0 && row < rows() - 1 && column >= 0 && column < m_cols && !parent.isValid();
    return there ? createIndex(row, column) : QModelIndex();
}

int GridModel::columnCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : m_cols;
}

QVariant GridModel::data(const QModelIndex &index, int role) const {
    if (!index.isValid())
        return {};
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(alignment(index.column()));
    if (role == Qt::DisplayRole)
        return text(index.row() + 1, index.column());
    if (role == AmountRole)
        return m_amounts.value(index.column());
    return {};
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= m_cols)
        return {};
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(alignment(section));
    if (role == Qt::DisplayRole)
        return m_headings.value(section);
    return {};
}

} // namespace zel::controls
