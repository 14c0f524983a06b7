#include "platform/tsql/front_end.h"

#include "platform/tsql/reading/guard.h"
#include "platform/tsql/reading/secrets.h"
#include "platform/tsql/text/names.h"
#include "platform/tsql/translation.h"

#include <algorithm>

namespace zel::tsql {

std::vector<Statement> translate(const Sql &text, const Catalog &catalog, const Traits &engine) {
    const std::string_view source = text.text();
    try {
        const std::vector<Token> tokens = tokenize(source);
        if (!text.pieces().empty())
            checkPieces(text, tokens);
        return Translation(catalog, engine).run(source, tokens);
    } catch (const Error &error) {
        throw withoutSecrets(error, text);
    }
}

std::vector<std::string_view> batches(std::string_view script) {
    std::vector<std::string_view> found;
    std::size_t begin = 0;
    std::size_t line = 0;
    const auto add = [&](std::size_t end) {
        const std::string_view batch = script.substr(begin, end - begin);
        if (batch.find_first_not_of(" \t\r\n") != std::string_view::npos)
            found.push_back(batch);
    };
    while (line < script.size()) {
        const std::size_t end = std::min(script.find('\n', line), script.size());
        std::string_view word = script.substr(line, end - line);
        while (!word.empty() && (word.back() == ' ' || word.back() == '\r' || word.back() == '\t'))
            word.remove_suffix(1);
        while (!word.empty() && (word.front() == ' ' || word.front() == '\t'))
            word.remove_prefix(1);
        if (sameName(word, "go")) {
            add(line);
            begin = std::min(end + 1, script.size());
        }
        line = end + 1;
    }
    add(script.size());
    return found;
}

} // namespace zel::tsql
