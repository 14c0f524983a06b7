#pragma once

#include "platform/base/error.h"
#include "platform/base/sql.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

/// Each target is one such function; the fuzzer calls it with inputs that it makes from the corpus.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

namespace zel::fuzz {

inline std::string_view textOf(const std::uint8_t *data, std::size_t size) {
    return {reinterpret_cast<const char *>(data), size};
}

/// What must hold does not: the fuzzer keeps the input as it does for a crash.
[[noreturn]] inline void broken(std::string_view rule, std::string_view found) {
    std::fprintf(stderr, "BROKEN: %.*s\n%.*s\n", int(rule.size()), rule.data(), int(found.size()),
                 found.data());
    std::abort();
}

/// The pieces between backquotes are foreign: "select * from T where Name = '`O''Brien`'".
inline Sql withPieces(std::string_view text) {
    Sql made;
    bool foreign = false;
    for (std::size_t begin = 0; begin <= text.size(); foreign = !foreign) {
        const std::size_t end = std::min(text.find('`', begin), text.size());
        const std::string_view part = text.substr(begin, end - begin);
        if (foreign)
            made += QString::fromUtf8(part.data(), qsizetype(part.size()));
        else
            made += Sql::trusted(part);
        begin = end + 1;
    }
    return made;
}

/// The same text with a harmless word or number in place of each foreign piece: what the guard lets through
/// has the same shape.
inline Sql withHarmlessPieces(const Sql &text) {
    const auto isBlank = [](char c) { return c == ' ' || c == '\t'; };
    const auto isNumberPart = [](char c) { return (c >= '0' && c <= '9') || c == '.'; };
    Sql made;
    std::size_t copied = 0;
    for (const Sql::Piece &piece : text.pieces()) {
        made += Sql::trusted(text.text().substr(copied, piece.begin - copied));
        std::string word;
        for (std::size_t i = piece.begin; i < piece.end; ++i) {
            const char c = text.text()[i];
            const bool kept =
                isBlank(c) || (word.find_first_not_of(" \t") == std::string::npos && (c == '-' || c == '+'));
            if (kept)
                word += c;
            else if (word.empty() || (word.back() != '1' && word.back() != 'x'))
                word += isNumberPart(c) ? '1' : 'x';
        }
        made += QString::fromStdString(word);
        copied = piece.end;
    }
    made += Sql::trusted(text.text().substr(copied));
    return made;
}

/// Runs what may refuse by an Error, and nothing else; whether it did not.
template <typename Attempt>
bool accepted(Attempt attempt) {
    try {
        attempt();
        return true;
    } catch (const Error &error) {
        if (error.number() == 0 || *error.what() == '\0')
            broken("a refusal has a number and a description", error.what());
        return false;
    }
}

} // namespace zel::fuzz
