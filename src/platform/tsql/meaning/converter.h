#pragma once

#include "platform/base/error.h"
#include "platform/tsql/meaning/bound.h"
#include "platform/tsql/reading/arena.h"
#include "platform/tsql/text/dates.h"

namespace zel::tsql {

/// Why a value is converted, which decides what becomes of one that does not fit.
enum class Purpose {
    Meet,     ///< two values meet in a comparison or an operator: nothing is checked that need not be
    Cast,     ///< texts are cut to the width
    Assign,   ///< into a column: texts that are too long fail (8152)
    Argument, ///< into a procedure's parameter: texts are cut, all other failures are 8114
};

/// Puts the dialect's conversions into the tree. Literals are converted at once, with the server's error when
/// that fails; everything else gets a node that the engine carries out.
class Converter {
public:
    explicit Converter(Arena &arena) : m_arena(arena) {}
    /// The text that failures point into.
    void setSource(std::string_view source) { m_source = source; }

    [[nodiscard]] Expr *convert(Expr *value, Type to, Purpose purpose, int style = NoStyle);
    /// As a varchar, a char with its blanks.
    [[nodiscard]] Expr *asText(Expr *value);
    /// Arithmetic on decimals is done in doubles; behind this it has exactly its decimals again. A whole
    /// number outside its type's range is 8115.
    [[nodiscard]] Expr *settled(Expr *value);

    [[nodiscard]] Expr *make(Op op, Type type, std::uint32_t at, Expr *a = nullptr, Expr *b = nullptr,
                             Expr *c = nullptr);
    [[nodiscard]] Expr *number(std::string_view text, Type type, std::uint32_t at);

private:
    Expr *convertLiteral(Expr *literal, Type to, Purpose purpose, int style);
    Expr *literalToInteger(Expr *literal, Type to, Purpose purpose);
    Expr *literalToDecimal(Expr *literal, Type to, Purpose purpose);
    Expr *literalToFloat(Expr *literal, Type to, Purpose purpose);
    Expr *literalToText(Expr *literal, Type to, Purpose purpose, int style);
    Expr *literalToDate(Expr *literal, Type to, Purpose purpose, int style);
    Expr *toInteger(Expr *value, Type to, Purpose purpose);
    Expr *toDecimal(Expr *value, Type to, Purpose purpose);
    /// Whether an integer that finds no room in a text shows as an asterisk there: the other numbers, and all
    /// in a column, fail.
    [[nodiscard]] static bool showsAsterisk(Type from, Purpose purpose);
    Expr *toText(Expr *value, Type to, Purpose purpose, int style);
    Expr *toDate(Expr *value, Type to, int style);
    /// The failure of a literal's conversion, at its place.
    [[noreturn]] void failConversion(const Expr &literal, Type to, Purpose purpose, const Error &error);
    [[noreturn]] void failClash(const Expr &value, Type to);
    [[noreturn]] void failOverflow(const Expr &value, Type to);

    Arena &m_arena;
    std::string_view m_source;
};

} // namespace zel::tsql
