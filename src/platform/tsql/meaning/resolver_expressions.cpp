#include "platform/tsql/meaning/resolver.h"

#include "platform/tsql/meaning/types.h"
#include "platform/tsql/reading/failure.h"
#include "platform/tsql/reading/lexer.h"
#include "platform/tsql/text/names.h"

#include <algorithm>
#include <charconv>
#include <vector>

namespace zel::tsql {

namespace {

constexpr Type Integer{TypeKind::Int, 0, 0};
constexpr std::size_t MostDigits = 38;

/// Operands of one chain of numbers; bounds our own recursion, as the engines take fewer.
constexpr int MostNumbers = 1500;

/// The type of a number as it is written.
Type numberType(const Node &node) {
    if (node.kind == NodeKind::Float)
        return {TypeKind::Float, 0, 0};
    std::int64_t value = 0;
    const auto read = std::from_chars(node.text.data(), node.text.data() + node.text.size(), value);
    const std::size_t point = node.text.find('.');
    if (point == std::string_view::npos) {
        if (read.ec == std::errc() && value <= 2'147'483'647)
            return Integer;
        return {TypeKind::Numeric, std::min(38, static_cast<int>(node.text.size())), 0};
    }
    const auto scale = static_cast<int>(node.text.size() - point - 1);
    const auto whole = static_cast<int>(node.text.find_first_not_of('0') < point ? point : 0);
    return {TypeKind::Numeric, std::clamp(whole + scale, 1, 38), std::min(scale, 38)};
}

bool isBeyondDoubles(std::string_view number) {
    double value = 0;
    return std::from_chars(number.data(), number.data() + number.size(), value).ec ==
           std::errc::result_out_of_range;
}

/// Digits of an operand: a whole number written in the statement has as many as it shows, not an int's ten.
int precisionOf(const Expr &value) {
    return value.op == Op::NumberLiteral && value.n > 0 ? value.n : precision(value.type);
}

/// The type of arithmetic on two numerics: what does not fit into 38 digits loses decimals, those of a
/// product or a quotient down to six.
Type decimalResult(char op, const Expr &left, const Expr &right) {
    const int scale1 = decimals(left.type);
    const int scale2 = decimals(right.type);
    const int whole1 = precisionOf(left) - scale1;
    const int whole2 = precisionOf(right) - scale2;
    int scale = std::max(scale1, scale2);
    int whole = std::max(whole1, whole2) + 1;
    int least = 38 - whole + 1;
    if (op == '*') {
        scale = scale1 + scale2;
        whole = whole1 + whole2 + 1;
        least = 6;
    } else if (op == '/') {
        scale = std::max(6, scale1 + whole2 + scale2 + 1);
        whole = whole1 + scale2;
        least = 6;
    } else if (op == '%') {
        whole = std::min(whole1, whole2);
    }
    if (whole + scale <= 38)
        return {TypeKind::Numeric, std::max(1, whole + scale), scale};
    return {TypeKind::Numeric, 38, std::max(std::min(scale, 38 - whole), std::min(scale, least))};
}

} // namespace

Expr *Resolver::value(const Node &node) {
    switch (node.kind) {
    case NodeKind::Integer:
    case NodeKind::Decimal:
    case NodeKind::Float:
    case NodeKind::Text:
    case NodeKind::Null:
        return literal(node);
    case NodeKind::Column:
        return column(node);
    case NodeKind::Variable:
        return variable(node);
    case NodeKind::Negate:
        return negation(node);
    case NodeKind::Arithmetic:
        return arithmetic(node);
    case NodeKind::Case:
        return caseValue(node);
    case NodeKind::Cast:
        return castValue(node);
    case NodeKind::Call:
        return call(node);
    case NodeKind::Subselect: {
        BoundSelect *rows = scalar(*node.select);
        Expr *made = make(Op::Subselect, rows->items->value->type, node.at);
        made->select = rows;
        return made;
    }
    default:
        break;
    }
    // A condition, or a star, where a value belongs.
    fail(node.at, 102, "Incorrect syntax near a condition where a value is expected.");
}

Expr *Resolver::literal(const Node &node) {
    if (node.kind == NodeKind::Null)
        return make(Op::NullLiteral, {}, node.at);
    if (node.kind == NodeKind::Text) {
        Expr *made =
            make(Op::TextLiteral, {TypeKind::VarChar, std::max(1, characterCount(node.text)), 0}, node.at);
        made->text = node.text;
        return made;
    }
    if (node.kind == NodeKind::Float && isBeyondDoubles(node.text))
        fail(node.at, 168,
             "The floating point value '" + std::string(node.text.substr(0, 128)) +
                 "' is out of the range of computer representation (8 bytes).");
    const Type type = numberType(node);
    if (type.kind == TypeKind::Numeric && node.text.size() - (type.scale > 0 ? 1 : 0) > MostDigits)
        fail(node.at, 1007,
             "The number '" + std::string(node.text.substr(0, 128)) +
                 "' is out of the range for numeric representation (maximum precision 38).");
    Expr *made = m_converter.number(node.text, type, node.at);
    if (isInteger(type))
        made->n = static_cast<int>(node.text.size());
    return made;
}

Expr *Resolver::negation(const Node &node) {
    Expr *inner = value(*node.a);
    if (inner->op == Op::NullLiteral)
        return inner;
    if (isText(inner->type) || isDate(inner->type)) {
        fail(node.at, 8117,
             "Operand data type " + std::string(typeName(inner->type)) + " is invalid for minus operator.");
    }
    if (inner->op != Op::NumberLiteral)
        return make(Op::Negate, inner->type, node.at, inner);
    Expr *made = copy(*inner);
    made->at = node.at;
    made->text =
        inner->text.front() == '-' ? inner->text.substr(1) : m_arena.keep('-' + std::string(inner->text));
    return made;
}

Expr *Resolver::concatenation(Expr *left, Expr *right, std::uint32_t at) {
    left = m_converter.asText(left);
    right = m_converter.asText(right);
    Expr *made =
        make(Op::Concat, {TypeKind::VarChar, std::min(8000, left->type.length + right->type.length), 0}, at,
             copy(*left));
    made->a->next = copy(*right);
    return made;
}

Expr *Resolver::dateSum(Expr *left, Expr *right, const Node &node) {
    const Type type = commonType(left->type, right->type);
    const bool days = type.kind == TypeKind::DateTime && (node.op == '+' || node.op == '-');
    if (!days || (node.op == '-' && !isDate(left->type))) {
        const bool clash = type.kind == TypeKind::Date && (isNumber(left->type) || isNumber(right->type));
        fail(node.at, clash ? 206 : 402,
             clash ? "Operand type clash: date is incompatible with " +
                         std::string(typeName(isDate(left->type) ? right->type : left->type)) + "."
                   : "The data types " + std::string(typeName(left->type)) + " and " +
                         std::string(typeName(right->type)) + " are incompatible in the " +
                         std::string(1, node.op) + " operator.");
    }
    Expr *made = make(Op::DateSum, type, node.at, m_converter.convert(left, type, Purpose::Meet),
                      m_converter.convert(right, type, Purpose::Meet));
    made->n = node.op == '-' ? -1 : 1;
    return made;
}

/// A chain is gone through from its first operand, in a loop: it may be long. What adds texts is one list.
Expr *Resolver::arithmetic(const Node &node) {
    if (node.a->kind != NodeKind::Arithmetic) {
        Expr *left = value(*node.a);
        return arithmetic(node, left, value(*node.b));
    }
    std::vector<const Node *> chain;
    const Node *first = &node;
    for (; first->kind == NodeKind::Arithmetic; first = first->a)
        chain.push_back(first);
    Expr *left = value(*first);
    Expr *texts = nullptr; // what `left` is while it is a list of this chain's own
    Expr *last = nullptr;
    int numbers = 0;
    for (auto link = chain.rbegin(); link != chain.rend(); ++link) {
        Expr *made = arithmetic(**link, left, value(*(*link)->b));
        if (made->op == Op::Concat && texts != nullptr) {
            last = last->next = made->a->next;
            texts->type = made->type;
            continue;
        }
        left = made;
        texts = made->op == Op::Concat ? made : nullptr;
        last = texts != nullptr ? made->a->next : nullptr;
        if (texts == nullptr && ++numbers > MostNumbers)
            failTooDeep(m_source, (*link)->at);
    }
    return left;
}

Expr *Resolver::arithmetic(const Node &node, Expr *left, Expr *right) {
    const bool leftText = isText(left->type) || left->op == Op::NullLiteral;
    const bool rightText = isText(right->type) || right->op == Op::NullLiteral;
    if (node.op == '+' && leftText && rightText && (isText(left->type) || isText(right->type)))
        return concatenation(left, right, node.at);
    if (isDate(left->type) || isDate(right->type))
        return dateSum(left, right, node);
    if (isText(left->type) && isText(right->type)) {
        fail(node.at, 402,
             "The data types varchar and varchar are incompatible in the " + std::string(1, node.op) +
                 " operator.");
    }
    Type type = commonType(left->type, right->type);
    if (type.kind == TypeKind::Null || type.kind == TypeKind::Bit)
        type = Integer;
    const auto operand = [&](Expr *value) {
        const bool untyped = isText(value->type) || value->op == Op::NullLiteral;
        return m_converter.convert(value, untyped ? type : value->type, Purpose::Meet);
    };
    left = operand(left);
    right = operand(right);
    if (type.kind == TypeKind::Numeric)
        type = decimalResult(node.op, *left, *right);
    Op op = Op::Add;
    if (node.op == '-')
        op = Op::Subtract;
    else if (node.op == '*')
        op = Op::Multiply;
    else if (node.op == '/')
        op = isInteger(type) ? Op::IntegerDivide : Op::Divide;
    else if (node.op == '%')
        op = Op::Modulo;
    Expr *made = make(op, type, node.at, left, right);
    made->n = type.kind == TypeKind::Float ? -1 : decimals(type);
    return made;
}

Expr *Resolver::caseValue(const Node &node) {
    Type type;
    bool known = false;
    const auto widen = [&](const Expr &branch) {
        if (branch.op == Op::NullLiteral && branch.type.kind == TypeKind::Null)
            return;
        type = known ? commonType(type, branch.type) : branch.type;
        known = true;
    };
    Expr *made = make(Op::Case, {}, node.at);
    Expr **last = &made->a;
    for (const Node *when = node.b; when != nullptr; when = when->next->next) {
        *last = copy(*(node.a == nullptr ? condition(*when) : value(*when)));
        (*last)->next = copy(*value(*when->next));
        widen(*(*last)->next);
        last = &(*last)->next->next;
    }
    if (node.a != nullptr)
        meetTests(*made, value(*node.a));
    if (node.c != nullptr) {
        made->b = value(*node.c);
        widen(*made->b);
        made->b = m_converter.convert(made->b, type, Purpose::Meet);
    }
    for (Expr **branch = &made->a; *branch != nullptr; branch = &(*branch)->next->next)
        replaceConverted((*branch)->next, type);
    made->type = type;
    return made;
}

/// Makes the tested value and all that it may be meet in one type, so that it is evaluated once.
void Resolver::meetTests(Expr &choice, Expr *tested) {
    Type common = tested->type;
    for (const Expr *test = choice.a; test != nullptr; test = test->next->next)
        common = commonType(common, test->type);
    const bool texts = isText(common);
    choice.op = texts ? Op::CaseTexts : Op::Case;
    choice.c = texts ? comparedText(tested) : m_converter.convert(tested, common, Purpose::Meet);
    for (Expr **test = &choice.a; *test != nullptr; test = &(*test)->next->next) {
        if (!texts)
            replaceConverted(*test, common);
    }
}

/// Converts a member of a list in its place.
void Resolver::replaceConverted(Expr *&member, Type type) {
    Expr *rest = member->next;
    member->next = nullptr;
    member = copy(*m_converter.convert(member, type, Purpose::Meet));
    member->next = rest;
}

int Resolver::styleOf(const Node *node) {
    if (node == nullptr)
        return NoStyle;
    const Expr *style = value(*node);
    int number = -1;
    if (style->op == Op::NumberLiteral)
        std::from_chars(style->text.data(), style->text.data() + style->text.size(), number);
    if (number < 0)
        fail(node->at, 281, "The style must be a number that stands in the statement.");
    return number;
}

Expr *Resolver::castValue(const Node &node) {
    Expr *inner = value(*node.a);
    const int style = styleOf(node.c);
    Expr *made = copy(*m_converter.convert(inner, node.type, Purpose::Cast, style));
    made->type = node.type;
    made->next = nullptr;
    return made;
}

} // namespace zel::tsql
