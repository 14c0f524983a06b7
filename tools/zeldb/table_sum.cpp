#include "table_sum.h"

#include <array>

namespace zel::tool {

namespace {

constexpr std::size_t SumBytes = 16;

void appendCell(std::string &text, std::string_view cell) {
    constexpr std::string_view Special("\\\t\n\r\0", 5);
    constexpr char Letters[] = "\\tnr0";
    for (std::size_t at = cell.find_first_of(Special); at != std::string_view::npos;
         at = cell.find_first_of(Special)) {
        text.append(cell, 0, at);
        text += '\\';
        text += Letters[Special.find(cell[at])];
        cell.remove_prefix(at + 1);
    }
    text.append(cell);
}

} // namespace

void appendRow(std::string &text, ado::Cells row) {
    bool first = true;
    for (const auto &cell : row) {
        if (!first)
            text += '\t';
        first = false;
        if (cell)
            appendCell(text, *cell);
        else
            text += "\\N";
    }
    text += '\n';
}

TableSum::TableSum() : m_state() {
    crypto_generichash_init(&m_state, nullptr, 0, SumBytes);
}

void TableSum::add(std::string_view line) {
    ++m_rows;
    crypto_generichash_update(&m_state, reinterpret_cast<const unsigned char *>(line.data()), line.size());
}

void TableSum::finish() {
    std::array<unsigned char, SumBytes> bytes{};
    crypto_generichash_final(&m_state, bytes.data(), bytes.size());
    std::array<char, 2 * SumBytes + 1> digits{};
    m_sum = sodium_bin2hex(digits.data(), digits.size(), bytes.data(), bytes.size());
}

} // namespace zel::tool
