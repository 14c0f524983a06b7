#include "platform/tsql/text/text_rules.h"

#include "platform/tsql/text/characters.h"
#include "platform/tsql/text/names.h"

#include <algorithm>
#include <map>
#include <vector>

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

/// By the folded character beyond ASCII, all that fold into it, where these are several.
const std::map<char32_t, std::u32string> &caseClasses() {
    static const auto classes = [] {
        std::map<char32_t, std::u32string> made;
        for (char32_t character = 0x80; character < StrayByte; ++character) {
            if (const char32_t one = foldedCharacter(character); one != character)
                made.try_emplace(one, 1, one).first->second += character;
        }
        return made;
    }();
    return classes;
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

std::optional<std::string> otherCase(std::string_view text, int number, int most) {
    std::vector<std::u32string> letters;
    int texts = 1;
    for (std::string_view rest = text; !rest.empty();) {
        const char32_t character = nextCharacter(rest);
        const auto found = caseClasses().find(foldedCharacter(character));
        letters.push_back(found == caseClasses().end() ? std::u32string(1, character) : found->second);
        texts *= int(letters.back().size());
        if (texts - 1 > most)
            return std::nullopt;
    }
    for (int place = 0; place < texts; ++place) {
        std::string made;
        int choice = place;
        for (const std::u32string &letter : letters) {
            appendCharacter(made, letter[std::size_t(choice) % letter.size()]);
            choice /= int(letter.size());
        }
        if (made != text && --number == 0)
            return made;
    }
    return std::string(text);
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
