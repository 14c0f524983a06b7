#include "platform/tsql/reading/failure.h"

#include "platform/tsql/text/names.h"

#include <algorithm>

namespace zel::tsql {

namespace {

constexpr std::size_t ShownBefore = 50;
constexpr std::size_t ShownBehind = 30;

bool insideCharacter(std::string_view text, std::size_t at) {
    return at < text.size() && (static_cast<unsigned char>(text[at]) & 0xC0) == 0x80;
}

} // namespace

std::string described(std::string_view source, std::size_t at, std::string_view message) {
    at = std::min(at, source.size());
    std::size_t lineBegin = 0;
    int line = 1;
    for (std::size_t i = 0; i < at; ++i) {
        if (source[i] == '\n') {
            ++line;
            lineBegin = i + 1;
        }
    }
    const std::size_t lineEnd = std::min(source.find_first_of("\r\n", at), source.size());
    std::size_t shownBegin = at - lineBegin > ShownBefore ? at - ShownBefore : lineBegin;
    while (insideCharacter(source, shownBegin))
        ++shownBegin;
    std::size_t shownEnd = lineEnd - at > ShownBehind ? at + ShownBehind : lineEnd;
    while (insideCharacter(source, shownEnd))
        ++shownEnd;
    const std::string_view lead = source.substr(shownBegin, at - shownBegin);

    std::string text(message);
    text += "\nLine " + std::to_string(line) + ", column " +
            std::to_string(characterCount(source.substr(lineBegin, at - lineBegin)) + 1) + ":\n";
    text += source.substr(shownBegin, shownEnd - shownBegin);
    text += '\n';
    text.append(static_cast<std::size_t>(characterCount(lead)), ' ');
    text += '^';
    std::replace(text.begin(), text.end(), '\t', ' '); // so that the caret stands below its place
    return text;
}

Failure::Failure(std::string_view source, std::size_t at, int number, std::string_view message)
    : Error(number, described(source, at, message)), m_source(source), m_message(message),
      m_at(std::min(at, source.size())) {}

void fail(std::string_view source, std::size_t at, int number, std::string_view message) {
    throw Failure(source, at, number, message);
}

} // namespace zel::tsql
