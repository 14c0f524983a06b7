#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zel::tsql {

/// One character for another, by the simple folding of Unicode and no locale: 'A' and 'a' become one, 'e' and
/// its accented forms stay apart, nothing beyond ASCII folds into ASCII, and no text changes its number of
/// characters. Text is UTF-8; bytes that are none pass through.
[[nodiscard]] std::string folded(std::string_view text);
[[nodiscard]] std::string upperCased(std::string_view text);
[[nodiscard]] std::string lowerCased(std::string_view text);

/// What `=`, `distinct`, `group by` and `order by` see of a text: folded, without the blanks at its end.
[[nodiscard]] std::string comparisonKey(std::string_view text);

/// Whether a letter beyond ASCII stands in the text that has another case.
[[nodiscard]] bool hasOtherCase(std::string_view text);

/// The last `count` characters; all of a shorter text.
[[nodiscard]] std::string_view rightCharacters(std::string_view text, std::int64_t count);

/// A text every `search` of which, in any case, is replaced; an empty search changes nothing.
[[nodiscard]] std::string replaced(std::string_view text, std::string_view search, std::string_view by);

/// The pattern of a `like`, read once and matched against many values: % any run, _ any one character, [abc],
/// [a-c] and [^abc] sets, a [ that nothing closes matches nothing, ] is itself. Case is folded; blanks at the
/// end of the value may be left over, those at the end of the pattern count.
class LikePattern {
public:
    explicit LikePattern(std::string_view pattern);
    [[nodiscard]] bool matches(std::string_view value) const;

private:
    struct Range {
        char32_t first;
        char32_t last;
    };
    struct Element {
        enum class Kind { Character, AnyOne, AnyRun, Set } kind;
        char32_t character = 0;
        bool negated = false;
        std::vector<Range> ranges = {};
        [[nodiscard]] bool accepts(char32_t folded) const;
    };
    enum class Shape { Nothing, Contains, General };

    /// Reads what follows a [, up to its ]; false when nothing closes it.
    bool readSet(std::string_view &pattern);
    [[nodiscard]] bool matchesGeneral(std::string_view value) const;

    Shape m_shape = Shape::General;
    std::string m_needle; ///< of %text% in plain ASCII: folded
    std::vector<Element> m_elements;
};

} // namespace zel::tsql
