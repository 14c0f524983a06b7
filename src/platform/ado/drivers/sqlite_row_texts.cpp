#include "platform/ado/drivers/sqlite_row_texts.h"

#include <algorithm>

namespace zel::ado {

namespace {

void appendQuoted(std::string &sql, std::string_view name) {
    sql += '"';
    for (std::size_t quote = name.find('"'); quote != std::string_view::npos; quote = name.find('"')) {
        sql.append(name, 0, quote + 1) += '"';
        name.remove_prefix(quote + 1);
    }
    sql.append(name) += '"';
}

/// Room for the text of most rows, so that it is not moved while it grows.
constexpr std::size_t UsualText = 500;

} // namespace

const std::string &InsertText::of(std::string_view table, std::span<const Assignment> values) {
    if (m_table == table && std::ranges::equal(m_columns, values, {}, {}, &Assignment::column))
        return m_text;
    m_table = table;
    m_columns.clear();
    for (const Assignment &assignment : values)
        m_columns.emplace_back(assignment.column);
    m_text.clear();
    m_text.reserve(UsualText);
    appendQuoted(m_text += "insert into ", table);
    if (values.empty()) {
        m_text += " default values";
    } else {
        m_text += " (";
        for (const Assignment &assignment : values)
            appendQuoted(&assignment == values.data() ? m_text : m_text += ", ", assignment.column);
        m_text += ") values (?";
        for (std::size_t further = 1; further < values.size(); ++further)
            m_text += ", ?";
        m_text += ')';
    }
    return m_text;
}

std::string updateText(std::string_view table, std::span<const Assignment> values) {
    std::string sql;
    sql.reserve(UsualText);
    appendQuoted(sql += "update ", table);
    sql += " set ";
    for (const Assignment &assignment : values) {
        appendQuoted(&assignment == values.data() ? sql : sql += ", ", assignment.column);
        sql += " = ?";
    }
    return sql += " where rowid = ?";
}

} // namespace zel::ado
