#pragma once

#include <cstddef>
#include <string_view>

namespace zel::tool {

struct EmbeddedText {
    std::string_view name;
    std::string_view text;
};

/// The files of rules/ as they were when the program was built, in the order of their names.
extern const EmbeddedText ruleTexts[];
extern const std::size_t ruleTextsCount;

} // namespace zel::tool
