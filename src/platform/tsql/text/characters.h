#pragma once

#include <QChar>

#include <array>
#include <string>
#include <string_view>

// The characters of a UTF-8 text one by one, for the rules of texts.
namespace zel::tsql::characters {

/// Bytes that are no UTF-8 stand for themselves, above the last character there is.
inline constexpr char32_t StrayByte = 0x110000;

constexpr std::array<char, 128> asciiTable(char first, char last, int shift) {
    std::array<char, 128> table{};
    for (int i = 0; i < 128; ++i)
        table[std::size_t(i)] = i >= first && i <= last ? char(i + shift) : char(i);
    return table;
}
inline constexpr auto LowerAscii = asciiTable('A', 'Z', 'a' - 'A');
inline constexpr auto UpperAscii = asciiTable('a', 'z', 'A' - 'a');

inline bool isAscii(char c) {
    return (static_cast<unsigned char>(c) & 0x80U) == 0;
}

inline bool isContinuation(char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

/// The length in bytes of the character at the front of a text that is not empty; 1 for a stray byte.
inline std::size_t characterLength(std::string_view text) {
    const auto lead = static_cast<unsigned char>(text.front());
    const std::size_t length = lead < 0x80   ? 1
                               : lead < 0xC2 ? 1
                               : lead < 0xE0 ? 2
                               : lead < 0xF0 ? 3
                               : lead < 0xF5 ? 4
                                             : 1;
    if (length == 1 || length > text.size())
        return 1;
    for (std::size_t i = 1; i < length; ++i) {
        if (!isContinuation(text[i]))
            return 1;
    }
    // Overlong forms, surrogates and what lies beyond the last character are no characters.
    const auto second = static_cast<unsigned char>(text[1]);
    const bool none = (lead == 0xE0 && second < 0xA0) || (lead == 0xED && second > 0x9F) ||
                      (lead == 0xF0 && second < 0x90) || (lead == 0xF4 && second > 0x8F);
    return none ? 1 : length;
}

inline char32_t characterAt(std::string_view text, std::size_t length) {
    const auto byte = [&](std::size_t i) { return char32_t(static_cast<unsigned char>(text[i])); };
    switch (length) {
    case 2:
        return (byte(0) & 0x1FU) << 6U | (byte(1) & 0x3FU);
    case 3:
        return (byte(0) & 0x0FU) << 12U | (byte(1) & 0x3FU) << 6U | (byte(2) & 0x3FU);
    case 4:
        return (byte(0) & 0x07U) << 18U | (byte(1) & 0x3FU) << 12U | (byte(2) & 0x3FU) << 6U |
               (byte(3) & 0x3FU);
    default:
        return byte(0) < 0x80 ? byte(0) : StrayByte + byte(0);
    }
}

inline char32_t nextCharacter(std::string_view &text) {
    const std::size_t length = characterLength(text);
    const char32_t character = characterAt(text, length);
    text.remove_prefix(length);
    return character;
}

inline void appendCharacter(std::string &text, char32_t character) {
    const auto put = [&](char32_t byte) { text += static_cast<char>(static_cast<unsigned char>(byte)); };
    if (character >= StrayByte) {
        put(character - StrayByte);
    } else if (character < 0x80) {
        put(character);
    } else if (character < 0x800) {
        put(0xC0U | character >> 6U);
        put(0x80U | (character & 0x3FU));
    } else if (character < 0x10000) {
        put(0xE0U | character >> 12U);
        put(0x80U | (character >> 6U & 0x3FU));
        put(0x80U | (character & 0x3FU));
    } else {
        put(0xF0U | character >> 18U);
        put(0x80U | (character >> 12U & 0x3FU));
        put(0x80U | (character >> 6U & 0x3FU));
        put(0x80U | (character & 0x3FU));
    }
}

/// Nothing beyond ASCII folds into ASCII, so that plain texts can be compared byte by byte.
inline char32_t foldedCharacter(char32_t character) {
    if (character < 0x80)
        return char32_t(LowerAscii[character]);
    if (character >= StrayByte)
        return character;
    const char32_t folded = QChar::toCaseFolded(character);
    return folded < 0x80 ? character : folded;
}

} // namespace zel::tsql::characters
