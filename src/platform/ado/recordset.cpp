#include "platform/ado/recordset.h"

#include "platform/ado/column_rules.h"
#include "platform/ado/statements.h"
#include "platform/base/error.h"

#include <algorithm>
#include <map>
#include <optional>
#include <vector>

namespace zel::ado {

namespace {

/// A row that was changed or added since the rows were opened: what it holds now, and where the engine has
/// it.
struct OwnRow {
    std::vector<Value> values;
    std::int64_t identity = 0;
};

constexpr int NotUpdatable = 3251;

} // namespace

/// The rows as opened are never touched: rows that were changed lie over them, added ones behind them.
struct Recordset::Private {
    std::shared_ptr<const RowSet> opened;
    std::string table; ///< '' when the rows can't be edited
    Connection *connection = nullptr;
    LockType lock = adLockOptimistic;

    std::map<qsizetype, OwnRow> changed;
    std::vector<OwnRow> added;
    qsizetype current = 0;

    /// By column of the rows: the table's column behind it, nothing behind a computed one. Filled when the
    /// first is asked for.
    mutable std::vector<std::optional<tsql::Column>> tableColumns;

    bool adding = false;
    /// By column: what was set since AddNew or the last Update. Empty when nothing was.
    std::vector<std::optional<Value>> edited;

    [[nodiscard]] const RowSet &rows() const {
        if (!opened)
            throw Error(errors::ObjectClosed, "Operation is not allowed when the object is closed.");
        return *opened;
    }
    [[nodiscard]] qsizetype count() const { return rows().rowCount() + qsizetype(added.size()); }
    [[nodiscard]] bool has(qsizetype row) const { return row >= 0 && (rows().holds(row) || row < count()); }
    [[nodiscard]] const OwnRow *own(qsizetype row) const {
        if (!rows().holds(row))
            return &added.at(std::size_t(row - rows().rowCount()));
        const auto found = changed.find(row);
        return found == changed.end() ? nullptr : &found->second;
    }
    void requireRow() const {
        if (!adding && !has(current))
            throw Error(errors::NoCurrentRow,
                        "Either BOF or EOF is True, or the current record has been deleted. "
                        "Requested operation requires a current record.");
    }
    void requireEditable() const {
        if (table.empty() || lock == adLockReadOnly)
            throw Error(NotUpdatable,
                        "Current Recordset does not support updating. This may be a limitation of the "
                        "provider, or of the selected locktype.");
    }
    [[nodiscard]] const tsql::Column *tableColumn(int column) const;
    [[nodiscard]] Value value(int column) const;
    [[nodiscard]] OwnRow copyOfCurrent() const;
    [[nodiscard]] std::vector<Assignment> assignments() const;
    void addRow();
    void changeRow();
};

/// The table's column that a column of the rows shows; null for a computed one.
const tsql::Column *Recordset::Private::tableColumn(int column) const {
    if (tableColumns.empty()) {
        tableColumns.resize(rows().columns().size());
        const tsql::Table *base = table.empty() ? nullptr : connection->driver().table(table);
        std::size_t next = 0; // the rows mostly have the table's columns in their order
        for (std::size_t at = 0; base && at < tableColumns.size(); ++at)
            for (std::size_t tried = 0; tried < base->columns.size(); ++tried) {
                const tsql::Column &candidate = base->columns[(next + tried) % base->columns.size()];
                if (candidate.name != rows().columns()[at].baseColumn)
                    continue;
                tableColumns[at] = candidate;
                next += tried + 1;
                break;
            }
    }
    const auto &known = tableColumns.at(std::size_t(column));
    return known ? &*known : nullptr;
}

Value Recordset::Private::value(int column) const {
    requireRow();
    if (!edited.empty() && edited.at(std::size_t(column)))
        return *edited[std::size_t(column)];
    if (adding)
        return {};
    if (const OwnRow *row = own(current))
        return row->values.at(std::size_t(column));
    return rows().value(current, column);
}

OwnRow Recordset::Private::copyOfCurrent() const {
    OwnRow row;
    row.values.resize(std::size_t(rows().columnCount()));
    for (int column = 0; column < rows().columnCount(); ++column)
        row.values[std::size_t(column)] = value(column);
    const OwnRow *own = this->own(current);
    const auto identity = own ? own->identity : rows().identity(current);
    if (!identity)
        throw Error(NotUpdatable, "Insufficient key column information for updating or refreshing.");
    row.identity = *identity;
    return row;
}

std::vector<Assignment> Recordset::Private::assignments() const {
    std::vector<Assignment> result;
    result.reserve(edited.size());
    for (std::size_t column = 0; column < edited.size(); ++column)
        if (edited[column])
            result.push_back({rows().columns().at(column).baseColumn, *edited[column]});
    return result;
}

void Recordset::Private::addRow() {
    OwnRow row;
    row.identity = connection->driver().insertRow(table, assignments());
    row.values.resize(std::size_t(rows().columnCount()));
    for (std::size_t column = 0; column < edited.size(); ++column)
        if (edited[column])
            row.values[column] = *std::move(edited[column]);
    for (int column = 0; column < rows().columnCount(); ++column)
        if (const tsql::Column *known = tableColumn(column); known && known->identity)
            row.values[std::size_t(column)] = row.identity;
    added.push_back(std::move(row));
    current = count() - 1;
}

void Recordset::Private::changeRow() {
    OwnRow row = copyOfCurrent();
    if (!connection->driver().updateRow(table, row.identity, assignments()))
        throw Error(errors::NoCurrentRow,
                    "Row cannot be located for updating. Some values may have been changed "
                    "since it was last read.");
    if (current >= rows().rowCount())
        added.at(std::size_t(current - rows().rowCount())) = std::move(row);
    else
        changed.insert_or_assign(current, std::move(row));
}

Recordset::Recordset() : d(std::make_unique<Private>()) {}

Recordset::~Recordset() = default;

void Recordset::Open(const Sql &source, Connection &activeConnection, CursorType, LockType lockType,
                     Options options) {
    if (d->opened)
        throw Error(3705, "Operation is not allowed when the object is open.");
    Private opening;
    opening.connection = &activeConnection;
    opening.lock = lockType;
    const auto take = [&opening](Outcome outcome) {
        if (opening.opened || !outcome.rows)
            return;
        opening.opened = std::move(outcome.rows);
        opening.table = std::move(outcome.statement.baseTable);
    };
    const bool onDemand = (options & adAsyncFetch) != 0 && MaxRecords == 0;
    if (onDemand)
        opening.lock = adLockReadOnly;
    runStatements(activeConnection.driver(), source, take, {MaxRecords, onDemand});
    *d = std::move(opening);
}

void Recordset::Close() {
    (void)d->rows();
    *d = Private();
}

ObjectState Recordset::State() const {
    return d->opened ? adStateOpen : adStateClosed;
}

qsizetype Recordset::RecordCount() const {
    return d->count();
}

void Recordset::MoveFirst() {
    if (d->adding || !d->edited.empty())
        Update();
    if (!d->has(0))
        d->requireRow();
    d->current = 0;
}

void Recordset::MoveNext() {
    if (d->adding || !d->edited.empty())
        Update();
    d->requireRow();
    ++d->current;
}

bool Recordset::atEnd() const {
    return !d->has(d->current);
}

void Recordset::AddNew() {
    (void)d->rows();
    if (d->adding || !d->edited.empty())
        Update();
    d->requireEditable();
    d->adding = true;
}

Field Recordset::Fields(const QString &name) {
    return fieldAt(d->rows().columnIndex(name));
}

Field Recordset::Fields(const char *name) {
    return fieldAt(d->rows().columnIndex(std::string_view(name)));
}

Field Recordset::fieldAt(int column) {
    if (column < 0)
        throw Error(errors::ItemNotFound,
                    "Item cannot be found in the collection corresponding to the requested name or ordinal.");
    return {*this, column};
}

void Recordset::Update() {
    d->requireRow();
    if (d->adding) {
        d->addRow();
    } else if (!d->edited.empty()) {
        d->changeRow();
    }
    d->adding = false;
    d->edited.clear();
}

RowsPtr Recordset::rows() const {
    return d->opened;
}

Value Field::value() const {
    return m_recordset.d->value(m_column);
}

Field &Field::operator=(const Value &value) {
    Recordset::Private &rows = *m_recordset.d;
    rows.requireEditable();
    rows.requireRow();
    const tsql::Column *column = rows.tableColumn(m_column);
    if (!column)
        throw Error(NotUpdatable, "The field is computed and can't be set.");
    if (column->identity)
        throw Error(8102, "Cannot update identity column '" + column->name + "'.");
    Value held = fitted(value, column->type);
    if (rows.edited.empty())
        rows.edited.resize(std::size_t(rows.rows().columnCount()));
    rows.edited.at(std::size_t(m_column)) = std::move(held);
    return *this;
}

int Field::DefinedSize() const {
    return definedSize(m_recordset.d->rows().columns().at(std::size_t(m_column)).type);
}

int Field::Precision() const {
    return precision(m_recordset.d->rows().columns().at(std::size_t(m_column)).type);
}

} // namespace zel::ado
