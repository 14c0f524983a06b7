// Statement texts, with foreign pieces between backquotes, against the catalog's own tables and procedures.

#include "fuzzing.h"
#include "written_tables.h"

#include "platform/tsql/reading/guard.h"

using namespace zel;

namespace {

/// Kinds of tokens, numbers alike.
std::string shape(const Sql &text) {
    std::string kinds;
    for (const tsql::Token &token : tsql::tokenize(text.text())) {
        const bool isNumber = token.kind == tsql::TokenKind::Decimal || token.kind == tsql::TokenKind::Float;
        kinds += char('a' + int(isNumber ? tsql::TokenKind::Integer : token.kind));
    }
    return kinds;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const Sql text = fuzz::withPieces(fuzz::textOf(data, size));
    const bool guarded = fuzz::accepted([&] { tsql::checkPieces(text); });
    if (guarded && !text.pieces().empty() && shape(text) != shape(fuzz::withHarmlessPieces(text)))
        fuzz::broken("a foreign piece adds nothing to a statement", text.text());
    fuzz::WrittenTables::institute().check(text);
    return 0;
}
