#include "platform/tsql/reading/parser.h"

#include "platform/tsql/reading/parser_level.h"
#include "platform/tsql/text/names.h"

namespace zel::tsql {

Node *Parser::disjunction() {
    const Level level(*this);
    return junction(NodeKind::Or, Keyword::Or, &Parser::conjunction);
}

Node *Parser::conjunction() {
    return junction(NodeKind::And, Keyword::And, &Parser::negation);
}

/// A chain of one word is one list, however long it is.
Node *Parser::junction(NodeKind kind, Keyword word, Node *(Parser::*part)()) {
    Node *first = (this->*part)();
    if (!is(word))
        return first;
    Node *made = pair(kind, first, nullptr, token().begin);
    for (Node **last = &first->next; accept(word); last = &(*last)->next)
        *last = (this->*part)();
    return made;
}

Node *Parser::negation() {
    if (!is(Keyword::Not))
        return predicate();
    const Level level(*this);
    Node *made = node(NodeKind::Not);
    ++m_at;
    made->a = negation();
    return made;
}

Node *Parser::predicate() {
    if (is(Keyword::Exists)) {
        Node *made = node(NodeKind::Exists);
        ++m_at;
        expect('(');
        made->select = select(OrderBy::WithTop);
        expect(')');
        return made;
    }
    Node *left = sum();
    const char sign = token().sign;
    if (sign == '=' || sign == '<' || sign == '>' || sign == LessOrEqual || sign == GreaterOrEqual ||
        sign == NotEqual) {
        const auto at = token().begin;
        ++m_at;
        return pair(NodeKind::Compare, left, sum(), at, sign);
    }
    if (is(Keyword::Is)) {
        Node *made = node(NodeKind::IsNull);
        ++m_at;
        made->negated = accept(Keyword::Not);
        expect(Keyword::Null);
        made->a = left;
        return made;
    }
    return membership(left);
}

Node *Parser::membership(Node *left) {
    const bool negated =
        is(Keyword::Not) && (token(1).keyword == Keyword::In || token(1).keyword == Keyword::Like ||
                             token(1).keyword == Keyword::Between);
    if (negated)
        ++m_at;
    const auto at = token().begin;
    Node *made = nullptr;
    if (accept(Keyword::Between)) {
        made = pair(NodeKind::Between, left, sum(), at);
        expect(Keyword::And);
        made->c = sum();
    } else if (accept(Keyword::Like)) {
        made = pair(NodeKind::Like, left, sum(), at);
    } else if (accept(Keyword::In)) {
        expect('(');
        made = pair(NodeKind::In, left, nullptr, at);
        if (is(Keyword::Select)) {
            made->select = select(OrderBy::WithTop);
        } else {
            Node **last = &made->b;
            do {
                *last = sum();
                last = &(*last)->next;
            } while (accept(','));
        }
        expect(')');
    } else {
        return left;
    }
    made->negated = negated;
    return made;
}

Node *Parser::sum() {
    Node *left = product();
    while (isSign('+') || isSign('-')) {
        const Token &sign = token();
        ++m_at;
        left = pair(NodeKind::Arithmetic, left, product(), sign.begin, sign.sign);
    }
    return left;
}

Node *Parser::product() {
    Node *left = unary();
    while (isSign('*') || isSign('/') || isSign('%')) {
        const Token &sign = token();
        ++m_at;
        left = pair(NodeKind::Arithmetic, left, unary(), sign.begin, sign.sign);
    }
    return left;
}

Node *Parser::unary() {
    if (isSign('-')) {
        const Level level(*this);
        Node *made = node(NodeKind::Negate);
        ++m_at;
        made->a = unary();
        return made;
    }
    if (isSign('+')) {
        const Level level(*this);
        ++m_at;
        return unary();
    }
    return primary();
}

Node *Parser::primary() {
    const Token &here = token();
    switch (here.kind) {
    case TokenKind::Integer:
    case TokenKind::Decimal:
    case TokenKind::Float: {
        Node *made = node(here.kind == TokenKind::Integer   ? NodeKind::Integer
                          : here.kind == TokenKind::Decimal ? NodeKind::Decimal
                                                            : NodeKind::Float);
        made->text = view(here);
        ++m_at;
        return made;
    }
    case TokenKind::Text: {
        Node *made = node(NodeKind::Text);
        made->text = literalText(here);
        ++m_at;
        return made;
    }
    case TokenKind::Variable: {
        Node *made = node(NodeKind::Variable);
        made->text = view(here);
        made->variable = variable(here);
        ++m_at;
        return made;
    }
    case TokenKind::Quoted:
    case TokenKind::Word:
        return columnOrCall();
    case TokenKind::Sign:
        if (here.sign == '(') {
            const Level level(*this);
            ++m_at;
            Node *inner = nullptr;
            if (is(Keyword::Select)) {
                inner = node(NodeKind::Subselect);
                inner->select = select(OrderBy::WithTop);
            } else {
                inner = condition();
            }
            expect(')');
            return inner;
        }
        break;
    case TokenKind::End:
        break;
    }
    refuse();
}

Node *Parser::columnOrCall() {
    const Token &here = token();
    if (here.keyword == Keyword::Null) {
        Node *made = node(NodeKind::Null);
        ++m_at;
        return made;
    }
    if (here.keyword == Keyword::Case)
        return caseExpression();
    const bool isFunctionWord = here.keyword == Keyword::Convert || here.keyword == Keyword::Left ||
                                here.keyword == Keyword::Right ||
                                (here.keyword == Keyword::Other && (isWord("coalesce") || isWord("nullif")));
    if (here.kind == TokenKind::Word && (isFunctionWord || here.keyword == Keyword::None) &&
        token(1).sign == '(') {
        ++m_at;
        return call(view(here), here.begin);
    }
    Node *made = node(NodeKind::Column);
    made->text = name();
    // Of table.column, schema.table.column and database.schema.table.column the last two parts count.
    while (isSign('.')) {
        ++m_at;
        if (isSign('.'))
            continue;
        made->qualifier = made->text;
        made->text = name();
    }
    return made;
}

Node *Parser::caseExpression() {
    const Level level(*this);
    Node *made = node(NodeKind::Case);
    ++m_at;
    if (!is(Keyword::When))
        made->a = sum();
    Node **last = &made->b;
    while (accept(Keyword::When)) {
        *last = made->a == nullptr ? condition() : sum();
        expect(Keyword::Then);
        (*last)->next = sum();
        last = &(*last)->next->next;
    }
    if (made->b == nullptr)
        refuse();
    if (accept(Keyword::Else))
        made->c = sum();
    expect(Keyword::End);
    return made;
}

Node *Parser::call(std::string_view function, std::uint32_t at) {
    const Level level(*this);
    Node *made = node(NodeKind::Call);
    made->at = at;
    made->text = function;
    expect('(');
    if (sameName(function, "cast")) {
        made->kind = NodeKind::Cast;
        made->a = sum();
        expect(Keyword::As);
        made->type = type();
    } else if (sameName(function, "convert")) {
        made->kind = NodeKind::Cast;
        made->type = type();
        expect(',');
        made->a = sum();
        if (accept(','))
            made->c = sum();
    } else if (accept('*')) {
        made->op = '*';
    } else if (!isSign(')')) {
        if (accept(Keyword::Distinct))
            made->distinct = true;
        else
            accept(Keyword::All);
        Node **last = &made->a;
        do {
            *last = sum();
            last = &(*last)->next;
        } while (accept(','));
    }
    expect(')');
    return made;
}

} // namespace zel::tsql
