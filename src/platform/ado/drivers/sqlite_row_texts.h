#pragma once

#include "platform/ado/drivers/driver.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zel::ado {

/// The text that inserts a row, a parameter a column; mostly that of the row before.
class InsertText {
public:
    [[nodiscard]] const std::string &of(std::string_view table, std::span<const Assignment> values);

private:
    std::string m_table;
    std::vector<std::string> m_columns;
    std::string m_text;
};

/// The text that changes the row whose identity is the last parameter, behind one a column.
[[nodiscard]] std::string updateText(std::string_view table, std::span<const Assignment> values);

} // namespace zel::ado
