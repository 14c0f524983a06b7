// A pattern of `like`, a line end, and the value: the matcher agrees with the plain one below.

#include "fuzzing.h"

#include "platform/tsql/text/characters.h"
#include "platform/tsql/text/text_rules.h"

#include <vector>

using namespace zel;

namespace {

using Characters = std::vector<char32_t>;

Characters charactersOf(std::string_view text) {
    Characters all;
    while (!text.empty())
        all.push_back(tsql::characters::nextCharacter(text));
    return all;
}

/// One thing of a pattern: a character, any one, any run, or a set of ranges.
struct Part {
    enum { One, Any, Run, Set } kind = One;
    std::vector<std::pair<char32_t, char32_t>> ranges;
    bool negated = false;
};

/// False when a set is left open.
bool parts(const Characters &pattern, std::vector<Part> &all) {
    const auto folded = tsql::characters::foldedCharacter;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        Part part;
        if (pattern[i] == U'%' || pattern[i] == U'_') {
            part.kind = pattern[i] == U'%' ? Part::Run : Part::Any;
        } else if (pattern[i] == U'[') {
            part.kind = Part::Set;
            if (++i < pattern.size() && pattern[i] == U'^') {
                part.negated = true;
                ++i;
            }
            while (i < pattern.size() && pattern[i] != U']') {
                const bool range = i + 2 < pattern.size() && pattern[i + 1] == U'-';
                part.ranges.push_back({folded(pattern[i]), folded(pattern[range ? i + 2 : i])});
                i += range ? 3 : 1;
            }
            if (i >= pattern.size())
                return false;
        } else {
            part.ranges.push_back({folded(pattern[i]), folded(pattern[i])});
        }
        all.push_back(std::move(part));
    }
    return true;
}

bool takes(const Part &part, char32_t character) {
    if (part.kind == Part::Any)
        return true;
    for (const auto &[first, last] : part.ranges)
        if (first <= character && character <= last)
            return !part.negated;
    return part.negated;
}

/// Which beginnings of the value each beginning of the pattern matches, one part at a time.
bool plainlyMatches(std::string_view pattern, std::string_view value) {
    std::vector<Part> all;
    if (!parts(charactersOf(pattern), all))
        return false;
    const Characters letters = charactersOf(value);
    std::vector<bool> reached(letters.size() + 1);
    reached[0] = true;
    for (const Part &part : all) {
        std::vector<bool> next(letters.size() + 1);
        for (std::size_t i = 0; i <= letters.size(); ++i) {
            if (part.kind == Part::Run)
                next[i] = reached[i] || (i > 0 && next[i - 1]);
            else if (i > 0)
                next[i] = reached[i - 1] && takes(part, tsql::characters::foldedCharacter(letters[i - 1]));
        }
        reached = next;
    }
    for (std::size_t i = letters.size() + 1; i-- > 0;) {
        if (reached[i])
            return true;
        if (i > 0 && letters[i - 1] != U' ')
            return false;
    }
    return false;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const std::string_view both = fuzz::textOf(data, size);
    const std::size_t line = std::min(both.find('\n'), both.size());
    const std::string_view pattern = both.substr(0, line);
    const std::string_view value = both.substr(std::min(line + 1, both.size()));
    if (tsql::LikePattern(pattern).matches(value) != plainlyMatches(pattern, value))
        fuzz::broken("a value is like a pattern or not", both);
    return 0;
}
