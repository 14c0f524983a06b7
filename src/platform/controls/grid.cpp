#include "platform/controls/grid.h"

#include "platform/controls/cell_delegate.h"
#include "platform/controls/grid_header.h"
#include "platform/controls/grid_model.h"
#include "platform/controls/look.h"
#include "platform/controls/shortcut.h"
#include "platform/controls/typing.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QLabel>
#include <QScrollBar>

#include <algorithm>

namespace zel::controls {

namespace {

constexpr int DefaultTwips = 1440;
constexpr int HeadingMargin = 16;
constexpr int CellMargin = 16;
constexpr int EmptyLabelTop = 18;
constexpr qsizetype LeastRowsAtOnce = 64; ///< of a view that may have no size yet
constexpr auto LargestAmount = "99,999,999,999.99";

int headingWidth(const QHeaderView *header, const QString &heading) {
    return QFontMetrics(header->font()).horizontalAdvance(heading) + HeadingMargin;
}

int amountWidth(const QFontMetrics &metrics) {
    return metrics.horizontalAdvance(QLatin1String(LargestAmount)) + CellMargin;
}

} // namespace

Grid::Grid(QWidget *parent) : QTableView(parent), m_model(new GridModel) {
    m_model->setParent(this);
    setHorizontalHeader(new GridHeader(Qt::Horizontal, this));
    setVerticalHeader(new GridHeader(Qt::Vertical, this));
    setModel(m_model);
    setItemDelegate(new CellDelegate(this));
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setTabKeyNavigation(false);
    setAlternatingRowColors(true);
    setWordWrap(false);
    setCornerButtonEnabled(false);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setStyleSheet(sheet(QStringLiteral("heading")));
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setSectionsClickable(false);
    QFont bold = font();
    bold.setBold(true);
    horizontalHeader()->setFont(bold);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);

    connect(this, &QAbstractItemView::clicked, this,
            [this](const QModelIndex &index) { Q_EMIT rowClicked(index.row() + 1); });
    connect(verticalScrollBar(), &QScrollBar::sliderPressed, m_model, [this] { m_model->holdRows(true); });
    connect(verticalScrollBar(), &QScrollBar::sliderReleased, m_model, [this] { m_model->holdRows(false); });
    setRows(2);
    applyWidths();
}

int Grid::Rows() const {
    m_model->showAll();
    return m_model->rows();
}

void Grid::setRows(int rows) {
    const int row = Row();
    m_model->setRows(rows);
    keepRow(row);
}

int Grid::Cols() const {
    return m_model->cols();
}

void Grid::setCols(int cols) {
    const int row = Row();
    m_model->setCols(cols);
    applyWidths();
    keepRow(row);
}

QString Grid::TextMatrix(int row, int col) const {
    m_model->showUpTo(row);
    return m_model->text(row, col);
}

void Grid::setTextMatrix(int row, int col, const QString &text) {
    const bool wasBlank = row > 0 && m_model->isBlank();
    m_model->setText(row, col, text);
    if (row == 0)
        applyWidths();
    else if (wasBlank)
        keepRow(Row());
}

void Grid::RemoveItem(int row) {
    const int current = Row();
    m_model->removeRow(row);
    keepRow(current);
}

void Grid::Clear() {
    const int row = Row();
    m_model->clear();
    applyWidths();
    keepRow(row);
}

void Grid::setDataSource(zel::RowsPtr rows) {
    // More than the view has room for, so that the scroll bar is there from the first.
    m_model->bind(std::move(rows), qMax<qsizetype>(LeastRowsAtOnce, 2 * rowsOnView()));
    applyWidths();
    keepRow(1);
}

void Grid::showNone() {
    m_model->showNone();
    applyWidths();
    keepRow(1);
}

qsizetype Grid::rowsOnView() const {
    return viewport()->height() / verticalHeader()->defaultSectionSize() + 1;
}

void Grid::setColWidth(int col, int twips) {
    m_twips[col] = twips;
    if (col < Cols())
        applyWidths();
}

int Grid::ColWidth(int col) const {
    return m_twips.value(col, DefaultTwips);
}

void Grid::setColAlignment(int col, Qt::Alignment alignment) {
    m_model->setAlignment(col, alignment);
}

void Grid::setColumns(const QList<Column> &columns) {
    const int row = Row();
    m_model->setCols(int(columns.size()));
    for (int col = 0; col < columns.size(); ++col) {
        m_model->setText(0, col, columns[col].heading);
        m_twips[col] = columns[col].twips;
        if (columns[col].alignment)
            m_model->setAlignment(col, columns[col].alignment);
    }
    applyWidths();
    keepRow(row);
}

int Grid::Row() const {
    return currentIndex().isValid() ? currentIndex().row() + 1 : 0;
}

void Grid::setRow(int row) {
    m_model->showUpTo(row);
    keepRow(row);
}

int Grid::Col() const {
    return currentIndex().isValid() ? currentIndex().column() : 0;
}

/// Makes `row`, or the nearest there is, the current one. The current cell is never in a hidden column, which
/// the arrow keys could not leave.
void Grid::keepRow(int row) {
    showEmptiness();
    const int last = m_model->rows() - 1;
    if (last < 1)
        return;
    int col = 0;
    while (col < Cols() - 1 && isColumnHidden(col))
        ++col;
    setCurrentIndex(m_model->index(qBound(1, row, last) - 1, col));
}

void Grid::applyWidth(int col) {
    const int twips = ColWidth(col);
    setColumnHidden(col, twips <= 0);
    if (twips <= 0)
        return;
    const int least = m_model->holdsAmounts(col) ? amountWidth(fontMetrics()) : 0;
    setColumnWidth(col,
                   std::max({pixels(twips), headingWidth(horizontalHeader(), m_model->text(0, col)), least}));
}

void Grid::applyWidths() {
    for (int col = 0; col < Cols(); ++col)
        applyWidth(col);
    spreadRest();
}

void Grid::spreadRest() {
    int widest = -1;
    for (int col = 0; col < Cols(); ++col)
        if (!isColumnHidden(col) && (widest < 0 || ColWidth(col) >= ColWidth(widest)))
            widest = col;
    if (widest < 0)
        return;
    applyWidth(widest);
    if (const int rest = viewport()->width() - horizontalHeader()->length(); rest > 0)
        setColumnWidth(widest, columnWidth(widest) + rest);
}

void Grid::resizeEvent(QResizeEvent *event) {
    QTableView::resizeEvent(event);
    spreadRest();
    if (m_emptyLabel)
        m_emptyLabel->resize(viewport()->width(), m_emptyLabel->height());
}

QString Grid::emptyText() const {
    return m_emptyLabel ? m_emptyLabel->text() : QString();
}

void Grid::setEmptyText(const QString &text) {
    if (!m_emptyLabel) {
        m_emptyLabel = new QLabel(viewport());
        m_emptyLabel->setObjectName(QStringLiteral("lblEmpty"));
        m_emptyLabel->setAlignment(Qt::AlignCenter);
        m_emptyLabel->setForegroundRole(QPalette::PlaceholderText);
        m_emptyLabel->setAttribute(Qt::WA_TransparentForMouseEvents);
    }
    m_emptyLabel->setText(text);
    m_emptyLabel->setGeometry(0, EmptyLabelTop, viewport()->width(), m_emptyLabel->sizeHint().height());
    showEmptiness();
}

void Grid::showEmptiness() {
    setShowGrid(!m_model->isBlank());
    if (m_emptyLabel)
        m_emptyLabel->setVisible(m_model->isBlank() || m_model->rows() < 2);
}

/// A blank row that stands alone is the current one, and not selected.
QItemSelectionModel::SelectionFlags Grid::selectionCommand(const QModelIndex &index,
                                                           const QEvent *event) const {
    return m_model->isBlank() ? QItemSelectionModel::Clear : QTableView::selectionCommand(index, event);
}

void Grid::keyPressEvent(QKeyEvent *event) {
    if (isEnter(event)) {
        Q_EMIT enterPressed(Row());
    } else if (keys::TakeRow.is(event)) {
        if (const int row = Row(); row > 0) {
            Q_EMIT rowClicked(row);
            Q_EMIT rowDoubleClicked(row);
        }
    } else {
        QTableView::keyPressEvent(event);
    }
}

/// The view's own signal wants both clicks on one cell; here the row is what is chosen.
void Grid::mouseDoubleClickEvent(QMouseEvent *event) {
    const QModelIndex hit = indexAt(event->position().toPoint());
    QTableView::mouseDoubleClickEvent(event);
    if (hit.isValid() && event->button() == Qt::LeftButton)
        Q_EMIT rowDoubleClicked(hit.row() + 1);
}

void Grid::contextMenuEvent(QContextMenuEvent *event) {
    const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
    const QRect cell = visualRect(currentIndex());
    Q_EMIT contextMenuAsked(byKey ? viewport()->mapToGlobal(cell.center()) : event->globalPos());
}

void Grid::changeEvent(QEvent *event) {
    QTableView::changeEvent(event);
    if (event->type() != QEvent::FontChange && event->type() != QEvent::StyleChange)
        return;
    QFont bold = font();
    bold.setBold(true);
    horizontalHeader()->setFont(bold);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    applyWidths();
}

} // namespace zel::controls
