#pragma once

#include "platform/tsql/meaning/catalog.h"
#include "platform/tsql/reading/node.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

/// The resolved and typed tree: every name is a column, every conversion of the dialect stands in it. All of
/// it lives in an Arena. How an engine says a node is the business of its Traits.
namespace zel::tsql {

enum class Op : std::uint8_t {
    // Leaves.
    NullLiteral,
    NumberLiteral, ///< text: as written, a '-' before a negative one; n: digits of a whole one in the
                   ///< statement
    TextLiteral,
    DateLiteral, ///< text: the stored form
    ColumnValue,
    Now,
    Variable, ///< n: its slot; what it holds when the statement runs
    // Numbers.
    Negate,
    Add,
    Subtract,
    Multiply,
    IntegerDivide,
    Divide, ///< n: decimals of the result, -1 for float
    Modulo,
    RoundTo, ///< n: decimals; arithmetic on decimals is exact again behind it
    CutTo,   ///< n: decimals; products of money are cut, not rounded
    Round,   ///< b: digits
    Absolute,
    // Texts.
    Concat, ///< list from a
    Trim,
    TrimLeft,
    Length,
    ByteLength,
    Replace, ///< a, b by c
    Upper,
    Lower,
    Left,
    Right,
    Substring,
    CharIndex,
    Pad,        ///< n: width of the char(n) whose stored text lacks its trailing blanks
    Cut,        ///< n: width
    CheckWidth, ///< n: width of the column; too long is an error
    // From type to type.
    ToInteger, ///< n: bits
    ToNumeric, ///< n: precision, m: scale
    ToMoney,
    ToFloat,
    IntegerText,
    NumberText, ///< n: decimals, m: width or 0, negative where what is longer shows as "*"
    FloatText,
    ToDateTime, ///< n: style
    ToDate,     ///< n: style
    DateOnly,
    DateText, ///< n: style, m: 1 for a date without a time of day
    Day,
    Month,
    Year,
    DateAdd,        ///< n: the DatePart; a count, b date
    DateDifference, ///< n: the DatePart; from a to b
    PartOfDate,     ///< n: the DatePart
    PartName,       ///< n: the DatePart
    DateSum,        ///< a and b as days; n: the sign
    // Choices.
    IfNull,
    Coalesce, ///< list from a
    NullIf,   ///< NULL where a is b; numbers or dates
    NullIfTexts,
    NullIfConverted, ///< a is a text that meets b as the type of kind n
    Case,      ///< condition, value, condition, value ... from a; b: else. With c: values that it may be
    CaseTexts, ///< the same with a text c
    // Conditions.
    And, ///< list from a
    Or,  ///< list from a
    Not,
    Compare,      ///< n: the sign; numbers or dates
    CompareTexts, ///< n: the sign
    Between,
    IsNull,
    In, ///< a in list from b, or in select
    InTexts,
    Like,
    Exists,
    // Aggregates; `distinct`.
    Sum, ///< n: decimals
    PlainSum,
    Average, ///< n: decimals of the result, m: of the argument
    IntegerAverage,
    FloatAverage,
    Minimum,
    Maximum,
    Count,
    CountRows,
    // A select as a value.
    Subselect,

    Last_,
};
inline constexpr std::size_t OpCount = static_cast<std::size_t>(Op::Last_);

struct BoundSelect;

/// One table, or derived table, of a select.
struct Source {
    const Table *table = nullptr;
    BoundSelect *derived = nullptr;
    std::string_view alias; ///< the name that columns may be qualified with
    int number = 0;         ///< unique within the statement; engines know the source by it
    JoinKind join = JoinKind::Comma;
    struct Expr *on = nullptr;
    Source *next = nullptr;
};

struct Expr {
    Op op = Op::NullLiteral;
    bool distinct = false;
    std::uint32_t at = 0;
    Type type;
    int n = 0;
    int m = 0; ///< of a column: its place in the table
    std::string_view text;
    Expr *a = nullptr;
    Expr *b = nullptr;
    Expr *c = nullptr;
    Expr *next = nullptr;
    const Source *source = nullptr;
    BoundSelect *select = nullptr;
};

struct BoundItem {
    Expr *value = nullptr;
    std::string_view name;
    BoundItem *next = nullptr;
};

struct BoundOrder {
    Expr *value = nullptr;
    int item = 0; ///< the place of the select item that it names, from 1; 0 for none
    bool descending = false;
    BoundOrder *next = nullptr;
};

struct BoundSelect {
    bool distinct = false;
    bool aggregate = false; ///< aggregates without group by: exactly one row
    bool atMostOneRow = false;
    bool rowIdentity = false; ///< the engine's row identity goes behind the last item
    bool byIndex = false;     ///< sums by a column that begins an index, whose next column is compared
    bool inOrder = false;     ///< rows that nothing else orders come as they were inserted
    std::string_view top;
    BoundItem *items = nullptr;
    Source *sources = nullptr;
    Expr *where = nullptr;
    Expr *groupBy = nullptr;
    Expr *having = nullptr;
    BoundOrder *orderBy = nullptr;
    BoundSelect *united = nullptr; ///< the next select of the union
    bool unitedAll = false;        ///< `united` came by union all: equal rows stay
};

struct BoundAssignment {
    const Column *column = nullptr;
    Expr *value = nullptr;
    BoundAssignment *next = nullptr;
};

struct BoundRow {
    Expr *values = nullptr;
    BoundRow *next = nullptr;
};

struct BoundInsert {
    const Table *table = nullptr;
    BoundAssignment *columns = nullptr; ///< values unused
    BoundRow *rows = nullptr;
    BoundSelect *select = nullptr;
};

/// An update, or without assignments a delete.
struct BoundChange {
    Source *target = nullptr;
    BoundSelect *rows = nullptr; ///< with `from`: the joined tables, the target among them, and the condition
    BoundAssignment *assignments = nullptr;
    Expr *where = nullptr;
};

/// Whether equal rows of its selects fall together.
[[nodiscard]] inline bool unitesRows(const BoundSelect &select) {
    const BoundSelect *part = &select;
    while (part->united != nullptr && part->unitedAll)
        part = part->united;
    return part->united != nullptr;
}
/// Whether a right or full join stands between this table and the next comma.
[[nodiscard]] inline bool keepsRight(const Source &first) {
    const Source *one = first.next;
    while (one != nullptr && one->join != JoinKind::Comma && one->join != JoinKind::Right &&
           one->join != JoinKind::Full)
        one = one->next;
    return one != nullptr && one->join != JoinKind::Comma;
}
[[nodiscard]] constexpr bool isLiteral(const Expr &expr) {
    return expr.op <= Op::DateLiteral;
}
[[nodiscard]] inline const Column &columnOf(const Expr &expr) {
    return expr.source->table->columns[static_cast<std::size_t>(expr.m)];
}

} // namespace zel::tsql
