#include "platform/tsql/resolver.h"

#include "platform/tsql/failure.h"
#include "platform/tsql/lexer.h"
#include "platform/tsql/names.h"
#include "platform/tsql/types.h"

#include <algorithm>
#include <charconv>

namespace zel::tsql {

namespace {

constexpr Type Integer{TypeKind::Int, 0, 0};

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

/// Digits of an operand: a whole number in the statement has as many as it shows, not an int's ten.
int precisionOf(const Expr &value) {
    if (value.op == Op::NumberLiteral && isInteger(value.type))
        return static_cast<int>(value.text.size() - (value.text.front() == '-' ? 1 : 0));
    return precision(value.type);
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
    return m_converter.number(node.text, numberType(node), node.at);
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
    return make(Op::Concat, {TypeKind::VarChar, std::min(8000, left->type.length + right->type.length), 0},
                at, left, right);
}

Expr *Resolver::arithmetic(const Node &node) {
    Expr *left = value(*node.a);
    Expr *right = value(*node.b);
    const bool leftText = isText(left->type) || left->op == Op::NullLiteral;
    const bool rightText = isText(right->type) || right->op == Op::NullLiteral;
    if (node.op == '+' && leftText && rightText && (isText(left->type) || isText(right->type)))
        return concatenation(left, right, node.at);
    if (isDate(left->type) || isDate(right->type) || (isText(left->type) && isText(right->type))) {
        fail(node.at, 402,
             "The data types " + std::string(typeName(left->type)) + " and " +
                 std::string(typeName(right->type)) + " are incompatible in the " + std::string(1, node.op) +
                 " operator.");
    }
    Type type = commonType(left->type, right->type);
    if (type.kind == TypeKind::Null || type.kind == TypeKind::Bit)
        type = Integer;
    left = m_converter.convert(left, isText(left->type) || left->op == Op::NullLiteral ? type : left->type,
                               Purpose::Meet);
    right = m_converter.convert(
        right, isText(right->type) || right->op == Op::NullLiteral ? type : right->type, Purpose::Meet);
    Op op = Op::Add;
    int scale = std::max(decimals(left->type), decimals(right->type));
    const int whole =
        std::max(precisionOf(*left) - decimals(left->type), precisionOf(*right) - decimals(right->type));
    int digits = whole + scale + 1;
    switch (node.op) {
    case '-':
        op = Op::Subtract;
        break;
    case '*':
        op = Op::Multiply;
        scale = decimals(left->type) + decimals(right->type);
        digits = precisionOf(*left) + precisionOf(*right) + 1;
        break;
    case '/':
        op = isInteger(type) ? Op::IntegerDivide : Op::Divide;
        scale = std::max(6, decimals(left->type) + precisionOf(*right) + 1);
        digits = precisionOf(*left) - decimals(left->type) + decimals(right->type) + scale;
        break;
    case '%':
        op = Op::Modulo;
        break;
    default:
        break;
    }
    if (type.kind == TypeKind::Numeric) {
        if (digits > 38) {
            scale = std::max(std::min(scale, 38 - (digits - scale)), std::min(scale, 6));
            digits = 38;
        }
        type = {TypeKind::Numeric, digits, scale};
    }
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
        Expr *test =
            node.a == nullptr ? condition(*when) : comparison(value(*node.a), value(*when), '=', when->at);
        *last = copy(*test);
        (*last)->next = copy(*value(*when->next));
        widen(*(*last)->next);
        last = &(*last)->next->next;
    }
    if (node.c != nullptr) {
        made->b = value(*node.c);
        widen(*made->b);
        made->b = m_converter.convert(made->b, type, Purpose::Meet);
    }
    for (Expr **branch = &made->a; *branch != nullptr; branch = &(*branch)->next->next) {
        Expr *&result = (*branch)->next;
        Expr *rest = result->next;
        result->next = nullptr;
        result = copy(*m_converter.convert(result, type, Purpose::Meet));
        result->next = rest;
    }
    made->type = type;
    return made;
}

int Resolver::styleOf(const Node *node) {
    if (node == nullptr)
        return 0;
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

Expr *Resolver::condition(const Node &node) {
    switch (node.kind) {
    case NodeKind::And:
    case NodeKind::Or: {
        Expr *left = condition(*node.a);
        return make(node.kind == NodeKind::And ? Op::And : Op::Or, {}, node.at, left, condition(*node.b));
    }
    case NodeKind::Not:
        return make(Op::Not, {}, node.at, condition(*node.a));
    case NodeKind::Compare: {
        Expr *left = value(*node.a);
        return comparison(left, value(*node.b), node.op, node.at);
    }
    case NodeKind::Between:
        return between(node);
    case NodeKind::In:
        return membership(node);
    case NodeKind::Like:
        return pattern(node);
    case NodeKind::IsNull:
        return negated(make(Op::IsNull, {}, node.at, value(*node.a)), node.negated);
    case NodeKind::Exists: {
        Expr *made = make(Op::Exists, {}, node.at);
        made->select = select(*node.select, false);
        return made;
    }
    default:
        break;
    }
    (void)value(node);
    fail(node.at, 4145,
         "An expression of non-boolean type specified in a context where a condition is expected.");
}

Expr *Resolver::negated(Expr *inner, bool negated) {
    return negated ? make(Op::Not, {}, inner->at, inner) : inner;
}

/// Trailing blanks count for nothing in comparisons, so cutting them off before is idle and would hide a
/// column.
Expr *Resolver::comparedText(Expr *value) {
    while (value->op == Op::Trim || value->op == Op::Pad)
        value = value->a;
    return value;
}

Expr *Resolver::comparison(Expr *left, Expr *right, char sign, std::uint32_t at) {
    Expr *made = nullptr;
    if (left->op == Op::NullLiteral || right->op == Op::NullLiteral) {
        made = make(Op::Compare, {}, at, left, right);
    } else if (isText(left->type) && isText(right->type)) {
        made = make(Op::CompareTexts, {}, at, comparedText(left), comparedText(right));
    } else {
        const Type type = commonType(left->type, right->type);
        left = m_converter.convert(left, type, Purpose::Meet);
        made = make(Op::Compare, {}, at, left, m_converter.convert(right, type, Purpose::Meet));
    }
    made->n = sign;
    return made;
}

Expr *Resolver::between(const Node &node) {
    Expr *inner = value(*node.a);
    Expr *low = value(*node.b);
    Expr *high = value(*node.c);
    const Type type = commonType(commonType(inner->type, low->type), high->type);
    if (isText(type) || low->op == Op::NullLiteral || high->op == Op::NullLiteral) {
        Expr *above = comparison(inner, low, GreaterOrEqual, node.at);
        Expr *below = comparison(inner, high, LessOrEqual, node.at);
        return negated(make(Op::And, {}, node.at, above, below), node.negated);
    }
    inner = m_converter.convert(inner, type, Purpose::Meet);
    low = m_converter.convert(low, type, Purpose::Meet);
    high = m_converter.convert(high, type, Purpose::Meet);
    return negated(make(Op::Between, {}, node.at, inner, low, high), node.negated);
}

Expr *Resolver::membership(const Node &node) {
    Expr *inner = value(*node.a);
    if (node.select != nullptr) {
        BoundSelect *rows = scalar(*node.select);
        Expr *&item = rows->items->value;
        const bool texts = isText(inner->type) && isText(item->type);
        Expr *made = make(texts ? Op::InTexts : Op::In, {}, node.at);
        if (!texts) {
            const Type type = commonType(inner->type, item->type);
            inner = m_converter.convert(inner, type, Purpose::Meet);
            for (BoundSelect *part = rows; part != nullptr; part = part->unionAll)
                part->items->value = m_converter.convert(part->items->value, type, Purpose::Meet);
        } else {
            inner = comparedText(inner);
        }
        made->a = inner;
        made->select = rows;
        return negated(made, node.negated);
    }
    Type type = inner->type;
    Expr *list = nullptr;
    Expr **last = &list;
    for (const Node *element = node.b; element != nullptr; element = element->next) {
        *last = copy(*value(*element));
        if ((*last)->op != Op::NullLiteral)
            type = commonType(type, (*last)->type);
        last = &(*last)->next;
    }
    const bool texts = isText(type);
    for (Expr **element = &list; *element != nullptr; element = &(*element)->next) {
        Expr *rest = (*element)->next;
        (*element)->next = nullptr;
        if (!texts)
            *element = copy(*m_converter.convert(*element, type, Purpose::Meet));
        else
            *element = copy(*comparedText(*element));
        (*element)->next = rest;
    }
    inner = texts ? comparedText(inner) : m_converter.convert(inner, type, Purpose::Meet);
    return negated(make(texts ? Op::InTexts : Op::In, {}, node.at, inner, list), node.negated);
}

/// What `like` looks at: a text as it is, everything else as its plain text.
Expr *Resolver::likeText(Expr *value) {
    return value->op == Op::NullLiteral || isText(value->type) ? value : m_converter.asText(value);
}

Expr *Resolver::pattern(const Node &node) {
    Expr *left = likeText(value(*node.a));
    Expr *right = value(*node.b);
    right = right->op == Op::NullLiteral ? right : m_converter.asText(right);
    return negated(make(Op::Like, {}, node.at, left, right), node.negated);
}

} // namespace zel::tsql
