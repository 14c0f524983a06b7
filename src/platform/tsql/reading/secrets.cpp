#include "platform/tsql/reading/secrets.h"

#include "platform/tsql/reading/failure.h"
#include "platform/tsql/reading/lexer.h"
#include "platform/tsql/text/names.h"

#include <algorithm>
#include <array>
#include <optional>
#include <vector>

namespace zel::tsql {

namespace {

constexpr std::string_view Stars = "***";
constexpr std::array<std::string_view, 4> LoginProcedures = {"sp_addlogin", "sp_adduser",
                                                             "sp_addsrvrolemember", "sp_password"};

struct Range {
    std::size_t begin;
    std::size_t end;
};
using Ranges = std::vector<Range>; ///< in the order of the text, none within another

bool isLoginProcedure(std::string_view name) {
    return std::ranges::any_of(LoginProcedures, [&](auto known) { return sameName(known, name); });
}

/// Words and quoted names of a text, even of one that is no statement: what a quote opens is not parted.
std::size_t firstLoginProcedure(std::string_view source) {
    for (std::size_t at = 0; at < source.size();) {
        std::size_t end = at;
        while (end < source.size() && isWordPart(source[end]))
            ++end;
        if (isLoginProcedure(source.substr(at, end - at)))
            return end;
        at = std::max(end, at + 1);
    }
    return source.size();
}

bool beginsStatement(Keyword word) {
    static constexpr std::array Words = {Keyword::Select, Keyword::Insert,  Keyword::Update, Keyword::Delete,
                                         Keyword::Create, Keyword::Drop,    Keyword::Exec,   Keyword::Execute,
                                         Keyword::Set,    Keyword::Declare, Keyword::Begin,  Keyword::End};
    return std::ranges::find(Words, word) != Words.end();
}

/// Everything behind a login procedure's name up to what ends the statement: `;` or a line that begins
/// another statement. Where the text can't be parted into tokens, all behind the first such name.
Ranges loginArguments(std::string_view source) {
    const std::size_t first = firstLoginProcedure(source);
    if (first == source.size())
        return {};
    std::vector<Token> tokens;
    try {
        tokens = tokenize(source);
    } catch (const Error &) {
        return {{first, source.size()}};
    }
    Ranges found;
    bool hides = false;
    for (std::size_t i = 0; i < tokens.size() && tokens[i].kind != TokenKind::End; ++i) {
        const Token &token = tokens[i];
        const std::size_t quote = token.kind == TokenKind::Quoted ? 1 : 0;
        const std::string_view written =
            source.substr(token.begin + quote, token.end - token.begin - 2 * quote);
        const bool startsLine =
            i > 0 && source.substr(tokens[i - 1].end, token.begin - tokens[i - 1].end).find('\n') !=
                         std::string_view::npos;
        if (token.sign == ';' || (startsLine && beginsStatement(token.keyword)))
            hides = false;
        else if (hides && token.sign != ',')
            found.push_back({token.begin, token.end});
        hides = hides || isLoginProcedure(written);
    }
    return found;
}

Ranges secretsOf(std::string_view source, const Sql &text) {
    Ranges all = loginArguments(source);
    if (source == text.text())
        for (const Sql::Piece &piece : text.pieces())
            if (piece.secret && piece.begin < piece.end)
                all.push_back({piece.begin, piece.end});
    std::ranges::sort(all, {}, &Range::begin);
    Ranges joined;
    for (const Range &range : all) {
        if (!joined.empty() && range.begin <= joined.back().end)
            joined.back().end = std::max(joined.back().end, range.end);
        else
            joined.push_back(range);
    }
    return joined;
}

struct Masked {
    std::string text;
    std::size_t at;
};

/// The text with stars in place of the secrets, and where its byte `at` is then.
Masked masked(std::string_view source, const Ranges &secrets, std::size_t at) {
    Masked made{{}, at};
    std::size_t copied = 0;
    for (const Range &range : secrets) {
        made.text += source.substr(copied, range.begin - copied);
        if (at >= range.end)
            made.at = made.at - (range.end - range.begin) + Stars.size();
        else if (at > range.begin)
            made.at = made.at - (at - range.begin);
        made.text += Stars;
        copied = range.end;
    }
    made.text += source.substr(copied);
    return made;
}

/// Whether the words stand in the source, and nowhere within a secret.
bool isPublic(std::string_view words, std::string_view source, const Ranges &secrets) {
    std::size_t at = source.find(words);
    if (at == std::string_view::npos)
        return false;
    for (; at != std::string_view::npos; at = source.find(words, at + 1))
        for (const Range &range : secrets)
            if (at < range.end && range.begin < at + words.size())
                return false;
    return true;
}

/// The message, with stars where it tells a name or a value that may be secret: between its first quote and
/// its last, else behind a colon or an equals sign.
std::string masked(std::string_view message, std::string_view source, const Ranges &secrets) {
    const std::size_t mark = message.find_first_of("'\":=");
    if (mark == std::string_view::npos)
        return std::string(message);
    const bool isQuoted = message[mark] == '\'' || message[mark] == '"';
    const std::size_t first = isQuoted ? mark + 1 : std::min(mark + 2, message.size());
    const std::size_t last = isQuoted ? std::max(message.find_last_of("'\""), first) : message.size();
    if (isPublic(message.substr(first, last - first), source, secrets))
        return std::string(message);
    return std::string(message.substr(0, first)).append(Stars).append(message.substr(last));
}

} // namespace

Error withoutSecrets(const Error &error, const Sql &text) {
    const Ranges secrets = secretsOf(text.text(), text);
    const auto *failure = dynamic_cast<const Failure *>(&error);
    if (failure == nullptr)
        return secrets.empty() ? error : Error(error.number(), masked(error.what(), text.text(), secrets));
    const Ranges own = secretsOf(failure->source(), text); // a procedure's text may call one too
    if (secrets.empty() && own.empty())
        return error;
    std::string message = masked(failure->message(), failure->source(), own);
    if (!secrets.empty() && failure->source() != text.text())
        message = masked(failure->message(), text.text(), secrets);
    const Masked shown = masked(failure->source(), own, failure->at());
    return Failure(shown.text, shown.at, error.number(), message);
}

} // namespace zel::tsql
