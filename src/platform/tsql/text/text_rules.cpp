#include "platform/tsql/text/text_rules.h"

#include "platform/tsql/text/characters.h"
#include "platform/tsql/text/names.h"

#include <algorithm>

namespace zel::tsql {

using namespace characters;

namespace {

char32_t upperCharacter(char32_t character) {
    if (character >= StrayByte)
        return character;
    const char32_t other = QChar::toUpper(character);
    return other < 0x80 ? character : other;
}

char32_t lowerCharacter(char32_t character) {
    if (character >= StrayByte)
        return character;
    const char32_t other = QChar::toLower(character);
    return other < 0x80 ? character : other;
}

template <typename Map>
std::string mapped(std::string_view text, const std::array<char, 128> &ascii, Map map) {
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        if (isAscii(text.front())) {
            result += ascii[static_cast<unsigned char>(text.front())];
            text.remove_prefix(1);
        } else {
            appendCharacter(result, map(nextCharacter(text)));
        }
    }
    return result;
}

} // namespace

std::string folded(std::string_view text) {
    return mapped(text, LowerAscii, foldedCharacter);
}

std::string upperCased(std::string_view text) {
    return mapped(text, UpperAscii, upperCharacter);
}

std::string lowerCased(std::string_view text) {
    return mapped(text, LowerAscii, lowerCharacter);
}

std::string comparisonKey(std::string_view text) {
    return folded(withoutTrailingBlanks(text));
}

bool hasOtherCase(std::string_view text) {
    while (!text.empty()) {
        const char32_t character = nextCharacter(text);
        if (character < 0x80 || character >= StrayByte)
            continue;
        const QChar::Category category = QChar::category(character);
        if (category == QChar::Letter_Lowercase || category == QChar::Letter_Uppercase ||
            category == QChar::Letter_Titlecase || upperCharacter(character) != lowerCharacter(character))
            return true;
    }
    return false;
}

std::string_view rightCharacters(std::string_view text, std::int64_t count) {
    const int all = characterCount(text);
    if (count >= all)
        return text;
    return text.substr(firstCharacters(text, all - int(count)).size());
}

std::string replaced(std::string_view text, std::string_view search, std::string_view by) {
    if (search.empty())
        return std::string(text);
    std::string result;
    const auto isLetter = [](char c) {
        return !isAscii(c) ||
               LowerAscii[static_cast<unsigned char>(c)] != UpperAscii[static_cast<unsigned char>(c)];
    };
    if (std::none_of(search.begin(), search.end(), isLetter)) {
        for (auto at = text.find(search); at != std::string_view::npos; at = text.find(search)) {
            result.append(text.substr(0, at)).append(by);
            text.remove_prefix(at + search.size());
        }
        return result.append(text);
    }
    const std::string wanted = folded(search);
    while (!text.empty()) {
        std::string_view rest = text;
        std::string_view open = wanted;
        while (!open.empty() && !rest.empty()) {
            std::string_view ahead = rest;
            if (foldedCharacter(nextCharacter(ahead)) != nextCharacter(open)) {
                rest = {};
                open = wanted;
                break;
            }
            rest = ahead;
        }
        if (open.empty()) {
            result += by;
            text = rest;
        } else {
            const std::size_t length = characterLength(text);
            result += text.substr(0, length);
            text.remove_prefix(length);
        }
    }
    return result;
}

} // namespace zel::tsql
