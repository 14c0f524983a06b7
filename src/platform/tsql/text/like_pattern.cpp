#include "platform/tsql/text/characters.h"
#include "platform/tsql/text/names.h"
#include "platform/tsql/text/text_rules.h"

#include <algorithm>
#include <optional>

namespace zel::tsql {

using namespace characters;

namespace {

/// Bytes beyond ASCII stay as they are: none of them is a letter of its own.
constexpr auto FoldedBytes = [] {
    std::array<char, 256> table{};
    for (std::size_t i = 0; i < table.size(); ++i)
        table[i] = i < LowerAscii.size() ? LowerAscii[i] : char(i);
    return table;
}();

/// Whether `needle`, folded and plain ASCII, stands in a text: no byte of another character is an ASCII one.
bool containsAscii(std::string_view text, std::string_view needle) {
    const auto same = [](char stored, char wanted) {
        return FoldedBytes[static_cast<unsigned char>(stored)] == wanted;
    };
    return needle.empty() ||
           std::search(text.begin(), text.end(), needle.begin(), needle.end(), same) != text.end();
}

/// The text between the % of %text%, when it has no wildcard and is plain ASCII.
std::optional<std::string_view> plainContent(std::string_view pattern) {
    if (pattern.size() < 2 || pattern.front() != '%' || pattern.back() != '%' || !isAscii(pattern))
        return std::nullopt;
    const std::string_view content = pattern.substr(1, pattern.size() - 2);
    if (content.find_first_of("%_[") != std::string_view::npos)
        return std::nullopt;
    return content;
}

} // namespace

bool LikePattern::Element::accepts(char32_t folded) const {
    switch (kind) {
    case Kind::Character:
        return folded == character;
    case Kind::AnyOne:
        return true;
    case Kind::AnyRun:
        return false;
    case Kind::Set:
        return negated != std::any_of(ranges.begin(), ranges.end(), [&](const Range &range) {
                   return range.first <= folded && folded <= range.last;
               });
    }
    return false;
}

LikePattern::LikePattern(std::string_view pattern) {
    if (const auto content = plainContent(pattern)) {
        m_shape = Shape::Contains;
        m_needle = folded(*content);
    }
    while (!pattern.empty()) {
        const char32_t character = nextCharacter(pattern);
        if (character == U'%') {
            if (m_elements.empty() || m_elements.back().kind != Element::Kind::AnyRun)
                m_elements.push_back({Element::Kind::AnyRun});
        } else if (character == U'_') {
            m_elements.push_back({Element::Kind::AnyOne});
        } else if (character != U'[') {
            m_elements.push_back({Element::Kind::Character, foldedCharacter(character)});
        } else if (!readSet(pattern)) {
            m_shape = Shape::Nothing;
            return;
        }
    }
}

bool LikePattern::readSet(std::string_view &pattern) {
    Element set{Element::Kind::Set};
    if (pattern.starts_with('^')) {
        set.negated = true;
        pattern.remove_prefix(1);
    }
    while (!pattern.empty()) {
        const char32_t first = nextCharacter(pattern);
        if (first == U']') {
            m_elements.push_back(std::move(set));
            return true;
        }
        char32_t last = first;
        // Behind a dash even ] is the end of a range, so that [x-] stays open.
        if (pattern.size() > 1 && pattern.front() == '-') {
            pattern.remove_prefix(1);
            last = nextCharacter(pattern);
        }
        set.ranges.push_back({foldedCharacter(first), foldedCharacter(last)});
    }
    return false;
}

bool LikePattern::matches(std::string_view value) const {
    if (m_shape == Shape::Nothing)
        return false;
    if (m_shape == Shape::Contains)
        return containsAscii(value, m_needle);
    return matchesGeneral(value);
}

bool LikePattern::matchesGeneral(std::string_view value) const {
    std::size_t at = 0;
    // Where to go on when what follows the last % did not match: one character further in the value.
    std::optional<std::size_t> behindRun;
    std::string_view retry;
    for (;;) {
        if (at < m_elements.size() && m_elements[at].kind == Element::Kind::AnyRun) {
            behindRun = ++at;
            retry = value;
            continue;
        }
        if (at == m_elements.size() && (withoutTrailingBlanks(value).empty() || behindRun == at))
            return true;
        if (at < m_elements.size() && !value.empty()) {
            std::string_view rest = value;
            if (m_elements[at].accepts(foldedCharacter(nextCharacter(rest)))) {
                value = rest;
                ++at;
                continue;
            }
        }
        if (!behindRun || retry.empty())
            return false;
        nextCharacter(retry);
        value = retry;
        at = *behindRun;
    }
}

} // namespace zel::tsql
