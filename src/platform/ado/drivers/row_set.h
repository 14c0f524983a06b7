#pragma once

#include "platform/ado/drivers/packed_array.h"
#include "platform/base/rows.h"
#include "platform/tsql/front_end.h"

#include <bit>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace zel::ado {

class RowSet;

/// Where rows that are read on demand come from: a statement that an engine has begun, on a snapshot of the
/// catalog that its end, or its loss, lets go of.
class RowSource {
public:
    RowSource() = default;
    RowSource(const RowSource &) = delete;
    RowSource &operator=(const RowSource &) = delete;
    virtual ~RowSource() = default;
    /// Appends the next row; false when there is none.
    virtual bool append(RowSet &rows) = 0;
};

/// The rows of one result: eight bytes and a tag a cell, all texts in one arena. Filled by a driver, row by
/// row and in each row column by column: at once, or as they are asked for. What is there never changes.
class RowSet final : public Rows {
public:
    /// `withIdentity`: each row carries the engine's row identity as one more cell behind the columns.
    explicit RowSet(std::vector<tsql::ResultColumn> columns, bool withIdentity = false);
    /// Rows on demand. While the event loop has nothing else to do they are read on to their end, so that no
    /// snapshot stays open for long.
    RowSet(std::vector<tsql::ResultColumn> columns, std::unique_ptr<RowSource> source);
    ~RowSet() override;

    void appendNull() { append(Tag::Null, 0); }
    void appendInteger(std::int64_t value) { append(Tag::Integer, value); }
    void appendReal(double value) { append(Tag::Real, std::bit_cast<std::int64_t>(value)); }
    void appendText(std::string_view utf8) {
        const auto place = static_cast<std::int64_t>(m_bytes.size());
        m_bytes.append(utf8.data(), utf8.size());
        append(Tag::Text, place << LengthBits | static_cast<std::int64_t>(utf8.size()));
    }
    /// Gives back what growing held in reserve.
    void finish();

    [[nodiscard]] qsizetype rowCount() const override;
    [[nodiscard]] qsizetype rowsRead() const override {
        return m_width ? qsizetype(m_cells.size()) / m_width : 0;
    }
    [[nodiscard]] bool isWhole() const override { return !m_source; }
    void readOn(qsizetype count) const override;
    [[nodiscard]] int columnCount() const override { return int(m_columns.size()); }
    [[nodiscard]] QString columnName(int column) const override;
    [[nodiscard]] int columnIndex(const QString &name) const override;
    [[nodiscard]] int columnIndex(std::string_view name) const;
    [[nodiscard]] bool isNumber(int column) const override;
    [[nodiscard]] bool isAmount(int column) const override;
    [[nodiscard]] Value value(qsizetype row, int column) const override;
    [[nodiscard]] QString text(qsizetype row, int column) const override;
    [[nodiscard]] bool isNull(qsizetype row, int column) const override;

    [[nodiscard]] const std::vector<tsql::ResultColumn> &columns() const { return m_columns; }
    /// The engine's row identity; nullopt where the rows carry none.
    [[nodiscard]] std::optional<std::int64_t> identity(qsizetype row) const;

    /// Longest text of one cell, in bytes.
    static constexpr int LengthBits = 28;
    static constexpr std::size_t LongestText = (std::size_t(1) << LengthBits) - 1;

private:
    enum class Tag : std::uint8_t { Null, Integer, Real, Text };
    class IdleReading;

    void append(Tag tag, std::int64_t cell) {
        m_tags.append(tag);
        m_cells.append(cell);
    }
    /// The place of a cell; rows and columns that are not there fail with std::out_of_range.
    [[nodiscard]] std::size_t index(qsizetype row, qsizetype column) const;
    [[nodiscard]] std::string_view bytes(std::int64_t cell) const {
        return {m_bytes.data() + (cell >> LengthBits), static_cast<std::size_t>(cell) & LongestText};
    }

    std::vector<tsql::ResultColumn> m_columns;
    bool m_asciiNames; ///< as nearly always, which makes them quick to compare
    qsizetype m_width;
    PackedArray<Tag> m_tags;
    PackedArray<std::int64_t> m_cells;
    PackedArray<char> m_bytes;
    std::unique_ptr<RowSource> m_source; ///< null once all rows are there
    std::unique_ptr<IdleReading> m_idleReading;
};

} // namespace zel::ado
