#include "platform/ado/drivers/row_set.h"

#include "platform/base/date_text.h"
#include "platform/base/number_text.h"

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QObject>

#include <algorithm>
#include <limits>
#include <stdexcept>

namespace zel::ado {

namespace {

using tsql::TypeKind;

char lowered(char letter) {
    return letter >= 'A' && letter <= 'Z' ? char(letter + ('a' - 'A')) : letter;
}

bool isAscii(std::string_view text) {
    return std::none_of(text.begin(), text.end(),
                        [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
}

/// Whether two ASCII names are one, case ignored.
bool sameAscii(std::string_view a, std::string_view b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char one, char other) {
               return one == other || lowered(one) == lowered(other);
           });
}

std::int64_t wholeOf(const Decimal &number) {
    return number.tenThousandths() / Decimal::Scale;
}

Value fromInteger(std::int64_t cell, TypeKind kind) {
    switch (kind) {
    case TypeKind::Numeric:
    case TypeKind::Money:
        return Decimal::fromInteger(cell);
    case TypeKind::Float:
        return double(cell);
    case TypeKind::Char:
    case TypeKind::VarChar:
        return std::to_string(cell);
    default:
        return cell;
    }
}

Value fromReal(double cell, const tsql::Type &type) {
    switch (type.kind) {
    case TypeKind::Float:
        return cell;
    case TypeKind::Bit:
    case TypeKind::TinyInt:
    case TypeKind::SmallInt:
    case TypeKind::Int:
    case TypeKind::BigInt:
        return wholeOf(Decimal::fromDouble(cell));
    case TypeKind::Char:
    case TypeKind::VarChar:
        return plainText(cell);
    default: {
        // A quotient has more decimals than a Decimal.
        const Decimal nearest = Decimal::fromDouble(cell);
        return type.scale <= 4 || nearest.toDouble() == cell ? Value(nearest) : Value(cell);
    }
    }
}

Value fromText(std::string_view cell, TypeKind kind) {
    switch (kind) {
    case TypeKind::Numeric:
    case TypeKind::Money:
        if (const auto number = Decimal::parse(cell))
            return *number;
        break;
    case TypeKind::Bit:
    case TypeKind::TinyInt:
    case TypeKind::SmallInt:
    case TypeKind::Int:
    case TypeKind::BigInt:
        if (const auto number = Decimal::parse(cell))
            return wholeOf(*number);
        break;
    case TypeKind::Date:
    case TypeKind::DateTime:
        if (const auto moment = fromStoredDate(cell))
            return *moment;
        break;
    default:
        break;
    }
    return std::string(cell);
}

} // namespace

/// Reads on in slices, each short enough that a key does not wait, once the first rows are painted.
class RowSet::IdleReading : public QObject {
public:
    explicit IdleReading(const RowSet &rows) : m_rows(rows) {
        constexpr int PaintedMs = 20;
        m_timer.start(PaintedMs, this);
    }

protected:
    void timerEvent(QTimerEvent *) override {
        constexpr qint64 SliceNs = 4'000'000;
        constexpr qsizetype RowsBetweenLooks = 32;
        QElapsedTimer slice;
        slice.start();
        do {
            m_rows.readOn(m_rows.rowsRead() + RowsBetweenLooks);
        } while (!m_rows.isWhole() && slice.nsecsElapsed() < SliceNs);
        if (m_rows.isWhole())
            m_timer.stop();
        else
            m_timer.start(0, this);
    }

private:
    const RowSet &m_rows;
    QBasicTimer m_timer;
};

RowSet::RowSet(std::vector<tsql::ResultColumn> columns, bool withIdentity)
    : m_columns(std::move(columns)),
      m_asciiNames(std::all_of(m_columns.begin(), m_columns.end(),
                               [](const tsql::ResultColumn &column) { return isAscii(column.name); })),
      m_width(qsizetype(m_columns.size()) + (withIdentity ? 1 : 0)) {}

RowSet::RowSet(std::vector<tsql::ResultColumn> columns, std::unique_ptr<RowSource> source)
    : RowSet(std::move(columns)) {
    m_source = std::move(source);
    m_idleReading = std::make_unique<IdleReading>(*this);
}

RowSet::~RowSet() = default;

qsizetype RowSet::rowCount() const {
    readOn(std::numeric_limits<qsizetype>::max());
    return rowsRead();
}

/// Rows on demand are the same rows whenever they are read, so that reading them changes nothing to anybody.
void RowSet::readOn(qsizetype count) const {
    auto &rows = const_cast<RowSet &>(*this);
    while (m_source && rowsRead() < count) {
        // A source that fails is not asked again.
        std::unique_ptr<RowSource> source = std::move(rows.m_source);
        if (source->append(rows))
            rows.m_source = std::move(source);
        else
            rows.finish();
    }
}

void RowSet::finish() {
    m_tags.trim();
    m_cells.trim();
    m_bytes.trim();
}

std::size_t RowSet::index(qsizetype row, qsizetype column) const {
    if (row < 0 || column < 0 || column >= m_width || !holds(row))
        throw std::out_of_range("RowSet");
    return std::size_t(row * m_width + column);
}

QString RowSet::columnName(int column) const {
    return QString::fromStdString(m_columns.at(std::size_t(column)).name);
}

int RowSet::columnIndex(const QString &name) const {
    const QByteArray utf8 = name.toUtf8();
    return columnIndex(std::string_view(utf8.constData(), std::size_t(utf8.size())));
}

int RowSet::columnIndex(std::string_view name) const {
    const bool ascii = m_asciiNames && isAscii(name);
    const QString text = ascii ? QString() : QString::fromUtf8(name.data(), qsizetype(name.size()));
    for (std::size_t column = 0; column < m_columns.size(); ++column)
        if (ascii ? sameAscii(m_columns[column].name, name)
                  : columnName(int(column)).compare(text, Qt::CaseInsensitive) == 0)
            return int(column);
    return -1;
}

bool RowSet::isNumber(int column) const {
    const TypeKind kind = m_columns.at(std::size_t(column)).type.kind;
    return kind >= TypeKind::Bit && kind <= TypeKind::Float;
}

bool RowSet::isAmount(int column) const {
    const tsql::Type type = m_columns.at(std::size_t(column)).type;
    return type.kind == TypeKind::Money || (type.kind == TypeKind::Numeric && type.scale > 0);
}

bool RowSet::isNull(qsizetype row, int column) const {
    return m_tags[index(row, column)] == Tag::Null;
}

Value RowSet::value(qsizetype row, int column) const {
    const std::size_t at = index(row, column);
    const tsql::Type &type = m_columns.at(std::size_t(column)).type;
    const TypeKind kind = type.kind;
    switch (m_tags[at]) {
    case Tag::Integer:
        return fromInteger(m_cells[at], kind);
    case Tag::Real:
        return fromReal(std::bit_cast<double>(m_cells[at]), type);
    case Tag::Text:
        return fromText(bytes(m_cells[at]), kind);
    case Tag::Null:
        break;
    }
    return {};
}

QString RowSet::text(qsizetype row, int column) const {
    const std::size_t at = index(row, column);
    const TypeKind kind = m_columns.at(std::size_t(column)).type.kind;
    const Tag tag = m_tags[at];
    if (tag == Tag::Text && (kind == TypeKind::VarChar || kind == TypeKind::Char)) {
        const std::string_view utf8 = bytes(m_cells[at]);
        return QString::fromUtf8(utf8.data(), qsizetype(utf8.size()));
    }
    if (tag == Tag::Integer)
        return QString::number(m_cells[at]);
    return value(row, column).text();
}

std::optional<std::int64_t> RowSet::identity(qsizetype row) const {
    if (m_width == qsizetype(m_columns.size()))
        return std::nullopt;
    const std::size_t at = index(row, columnCount());
    if (m_tags[at] != Tag::Integer)
        return std::nullopt;
    return m_cells[at];
}

} // namespace zel::ado
