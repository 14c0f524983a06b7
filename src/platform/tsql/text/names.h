#pragma once

#include <string_view>

namespace zel::tsql {

[[nodiscard]] constexpr char lowered(char c) {
    return c >= 'A' && c <= 'Z' ? char(c | 0x20) : c;
}

/// Equal without regard to the case of ASCII letters, as names and keywords are compared.
[[nodiscard]] constexpr bool sameName(std::string_view a, std::string_view b) {
    if (a.size() != b.size())
        return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (a[i] != b[i] && lowered(a[i]) != lowered(b[i]))
            return false;
    }
    return true;
}

/// Whether a table of that name belongs to the connection, or procedure, that made it and goes with it.
[[nodiscard]] constexpr bool isTemporary(std::string_view table) {
    return !table.empty() && table.front() == '#';
}

[[nodiscard]] constexpr std::string_view withoutTrailingBlanks(std::string_view text) {
    while (!text.empty() && text.back() == ' ')
        text.remove_suffix(1);
    return text;
}

[[nodiscard]] constexpr bool isAscii(std::string_view text) {
    for (const char c : text) {
        if (static_cast<unsigned char>(c) >= 0x80)
            return false;
    }
    return true;
}

/// Characters of a UTF-8 text.
[[nodiscard]] constexpr int characterCount(std::string_view text) {
    int count = 0;
    for (const char c : text)
        count += (static_cast<unsigned char>(c) & 0xC0) != 0x80;
    return count;
}

/// The first `count` characters of a UTF-8 text.
[[nodiscard]] constexpr std::string_view firstCharacters(std::string_view text, int count) {
    std::size_t i = 0;
    while (i < text.size()) {
        if ((static_cast<unsigned char>(text[i]) & 0xC0) != 0x80 && count-- == 0)
            break;
        ++i;
    }
    return text.substr(0, i);
}

} // namespace zel::tsql
