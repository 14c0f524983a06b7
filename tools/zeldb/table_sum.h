#pragma once

#include "platform/ado/drivers/upkeep.h"

#include <sodium.h>

#include <string>
#include <string_view>

namespace zel::tool {

/// Appends a row as a line: cells parted by tabs, NULL as \N; in a cell \\, \t, \n, \r and \0 stand for a
/// backslash, a tab, the ends of a line and a zero byte.
void appendRow(std::string &text, ado::Cells row);

/// How many rows a table has, and a sum over them in their order. Of the same rows it is the same on every
/// engine.
class TableSum {
public:
    TableSum();
    /// A row's line, as appendRow gives it.
    void add(std::string_view line);
    /// To be called once, after the last row.
    void finish();

    [[nodiscard]] std::int64_t rows() const { return m_rows; }
    [[nodiscard]] const std::string &sum() const { return m_sum; } ///< sixteen bytes in hexadecimal digits
    friend bool operator==(const TableSum &a, const TableSum &b) {
        return a.m_rows == b.m_rows && a.m_sum == b.m_sum;
    }

private:
    crypto_generichash_state m_state;
    std::int64_t m_rows = 0;
    std::string m_sum;
};

} // namespace zel::tool
