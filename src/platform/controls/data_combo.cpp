#include "platform/controls/data_combo.h"

#include "platform/base/error.h"
#include "platform/controls/shortcut.h"

#include <QAbstractListModel>
#include <QKeyEvent>
#include <QSignalBlocker>

namespace zel::controls {

namespace {

constexpr int MostMeasured = 200;
constexpr int LengthOfMany = 24;

/// One column of rows, read as it is shown.
class ColumnModel : public QAbstractListModel {
public:
    using QAbstractListModel::QAbstractListModel;

    void show(RowsPtr rows, int column) {
        beginResetModel();
        m_rows = std::move(rows);
        m_column = column;
        endResetModel();
    }

    [[nodiscard]] int rowCount(const QModelIndex &parent) const override {
        return m_rows && !parent.isValid() ? static_cast<int>(m_rows->rowCount()) : 0;
    }

    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override {
        const bool shown = role == Qt::DisplayRole || role == Qt::EditRole;
        return shown && index.isValid() ? m_rows->text(index.row(), m_column) : QVariant();
    }

private:
    RowsPtr m_rows;
    int m_column = 0;
};

int columnOf(const RowsPtr &rows, const QString &name) {
    const int column = rows->columnIndex(name);
    if (column < 0)
        throw Error(errors::ItemNotFound, QStringLiteral("Item cannot be found in the collection "
                                                         "corresponding to the requested name or ordinal."));
    return column;
}

} // namespace

DataCombo::DataCombo(QWidget *parent) : ComboBox(parent) {
    setLettersPick(true);
    setModel(new ColumnModel(this));
}

void DataCombo::setRowSource(RowsPtr rows) {
    m_rows = std::move(rows);
    fill();
}

void DataCombo::ReFill(RowsPtr rows) {
    const QString bound = BoundText();
    m_rows = std::move(rows);
    fill(rowBoundTo(bound));
}

void DataCombo::setListField(const QString &column) {
    m_listField = column;
    fill();
}

void DataCombo::setBoundColumn(const QString &column) {
    m_boundColumn = column;
    if (m_rows)
        (void)columnOf(m_rows, column);
}

/// A reset model makes the base pick its first row for a moment; nobody is told of that.
void DataCombo::fill(int picked) {
    const QString before = Text();
    const bool lists = m_rows && !m_listField.isEmpty();
    const int column = lists ? columnOf(m_rows, m_listField) : 0;
    {
        const QSignalBlocker quiet(this);
        static_cast<ColumnModel *>(model())->show(lists ? m_rows : nullptr, column);
        setCurrentIndex(picked);
        m_absent.clear();
    }
    // Of many rows the texts are not measured for the width.
    const bool many = count() > MostMeasured;
    setMinimumContentsLength(many ? LengthOfMany : 0);
    setSizeAdjustPolicy(many ? AdjustToMinimumContentsLengthWithIcon : AdjustToContentsOnFirstShow);
    if (Text() != before)
        Q_EMIT changed();
}

QString DataCombo::BoundText() const {
    if (!m_rows || m_boundColumn.isEmpty() || currentIndex() < 0)
        return m_absent;
    return m_rows->text(currentIndex(), columnOf(m_rows, m_boundColumn));
}

int DataCombo::rowBoundTo(const QString &text) const {
    if (!m_rows || m_boundColumn.isEmpty() || text.isEmpty())
        return -1;
    const int column = columnOf(m_rows, m_boundColumn);
    for (int row = 0; row < m_rows->rowCount(); ++row) {
        if (m_rows->text(row, column) == text)
            return row;
    }
    return -1;
}

void DataCombo::setBoundText(const QString &text) {
    const int found = rowBoundTo(text);
    m_absent = found < 0 ? text : QString();
    setCurrentIndex(found);
}

void DataCombo::keyPressEvent(QKeyEvent *event) {
    if (keys::Unpick.is(event) || keys::UnpickToo.is(event))
        setBoundText({});
    else
        ComboBox::keyPressEvent(event);
}

} // namespace zel::controls
