#include "platform/tsql/meaning/resolver.h"

#include "platform/tsql/meaning/types.h"
#include "platform/tsql/reading/lexer.h"

namespace zel::tsql {

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
    const bool literal = low->op == Op::NullLiteral || high->op == Op::NullLiteral;
    if (isText(type) && inner->op != Op::ColumnValue && !literal) // it is evaluated once
        return negated(
            make(Op::BetweenTexts, {}, node.at, comparedText(inner), comparedText(low), comparedText(high)),
            node.negated);
    if (isText(type) || literal) {
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
