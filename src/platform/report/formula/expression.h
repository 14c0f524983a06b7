#pragma once

#include "platform/base/error.h"
#include "platform/base/sql.h"
#include "platform/base/value.h"

#include <memory>
#include <string>
#include <vector>

namespace zel::report {

/// The kinds of value that formulas know. Null fits all of them.
enum class Kind { Null, Number, Text, Date, Boolean };
[[nodiscard]] QString nameOf(Kind kind);

enum class Op {
    Literal,
    Column,    ///< {Table.Column}
    Formula,   ///< {Name} of a formula
    Total,     ///< {Name} of a total, or Sum, Count, RunningTotal
    Parameter, ///< {Name} of a parameter
    Negate,
    Not,
    Add,
    Subtract,
    Multiply,
    Divide,
    Concatenate,
    Equal,
    NotEqual,
    Less,
    LessEqual,
    Greater,
    GreaterEqual,
    Like,
    InRange, ///< operands: tested, from, to
    And,
    Or,
    If, ///< operands: condition, then, else
    Call,
};

/// When a value is known: with a row, with the totals of a group, on a page, or only when all pages are made.
enum class Stage { Constant, Row, Total, Page, Pages };

struct Expression;
using ExpressionPtr = std::shared_ptr<const Expression>;

/// A formula's tree. The parser fills all but the members below `name`, which bind() fills.
struct Expression {
    Op op = Op::Literal;
    std::size_t offset = 0; ///< of its first byte in the formula
    Value literal;
    std::vector<std::shared_ptr<Expression>> operands;
    std::string name; ///< "Table.Column", a named thing's name, or a function's

    Kind kind = Kind::Null;
    Stage stage = Stage::Constant;
    int table = -1; ///< of a Column
    int index = -1; ///< column of the table, formula, total, parameter or function
};

/// What is wrong with a formula, and where: a byte offset in its text.
class FormulaError : public Error {
public:
    FormulaError(int number, const QString &description, std::size_t offset)
        : Error(number, description), m_offset(offset) {}
    [[nodiscard]] std::size_t offset() const noexcept { return m_offset; }

private:
    std::size_t m_offset;
};

/// Reads a formula. Its foreign pieces must each lie inside one text or date, or be a number in a number's
/// place; else, as for any other text that is no formula, FormulaError: 105 for an open quote, 207 for a word
/// that is no name, 241 for no such date, 102 for the rest.
[[nodiscard]] std::shared_ptr<Expression> parse(const Sql &formula);

/// The error again, with line and column and the line with a caret under it in its description.
[[nodiscard]] Error located(const FormulaError &error, std::string_view formula, const QString &what);

} // namespace zel::report
