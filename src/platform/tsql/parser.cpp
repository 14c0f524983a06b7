#include "platform/tsql/parser.h"

#include "platform/tsql/failure.h"
#include "platform/tsql/names.h"

#include <algorithm>

namespace zel::tsql {

namespace {

/// What the engines take is deeper; this bounds our own recursion.
constexpr int DeepestNesting = 400;

} // namespace

struct Parser::Level {
    explicit Level(Parser &parser) : m_parser(parser) {
        if (++m_parser.m_depth > DeepestNesting) {
            fail(parser.m_source, parser.token().begin, 191,
                 "Some part of your SQL statement is nested too deeply. Rewrite the query or break it up "
                 "into smaller "
                 "queries.");
        }
    }
    ~Level() { --m_parser.m_depth; }
    Level(const Level &) = delete;
    Level &operator=(const Level &) = delete;

private:
    Parser &m_parser;
};

const Token &Parser::token(std::size_t ahead) const {
    return m_tokens[std::min(m_at + ahead, m_tokens.size() - 1)];
}

std::string_view Parser::view(const Token &token) const {
    return m_source.substr(token.begin, token.end - token.begin);
}

bool Parser::isWord(std::string_view word, std::size_t ahead) const {
    return token(ahead).kind == TokenKind::Word && sameName(view(token(ahead)), word);
}

bool Parser::accept(Keyword word) {
    if (!is(word))
        return false;
    ++m_at;
    return true;
}

bool Parser::accept(char sign) {
    if (!isSign(sign))
        return false;
    ++m_at;
    return true;
}

bool Parser::acceptWord(std::string_view word) {
    if (!isWord(word))
        return false;
    ++m_at;
    return true;
}

void Parser::expect(Keyword word) {
    if (!accept(word))
        refuse();
}

void Parser::expect(char sign) {
    if (!accept(sign))
        refuse();
}

void Parser::refuse() const {
    syntaxError(m_source, m_tokens, m_at);
}

bool Parser::isName(std::size_t ahead) const {
    const Token &here = token(ahead);
    return here.kind == TokenKind::Quoted || (here.kind == TokenKind::Word && here.keyword == Keyword::None);
}

std::string_view Parser::name() {
    if (!isName())
        refuse();
    return nameText(m_tokens[m_at++]);
}

std::string_view Parser::nameText(const Token &token) const {
    const std::string_view text = view(token);
    if (token.kind != TokenKind::Quoted)
        return text;
    const std::string_view inner = text.substr(1, text.size() - 2);
    if (inner.find(text.back()) == std::string_view::npos)
        return inner;
    char *copy = m_arena.characters(inner.size());
    std::size_t size = 0;
    for (std::size_t i = 0; i < inner.size(); ++i) {
        copy[size++] = inner[i];
        i += inner[i] == text.back() ? 1 : 0;
    }
    return {copy, size};
}

std::string_view Parser::literalText(const Token &token) const {
    const std::string_view text = view(token);
    const std::size_t open = text.front() == '\'' ? 0 : 1;
    const std::string_view inner = text.substr(open + 1, text.size() - open - 2);
    if (inner.find('\'') == std::string_view::npos)
        return inner;
    char *copy = m_arena.characters(inner.size());
    std::size_t size = 0;
    for (std::size_t i = 0; i < inner.size(); ++i) {
        copy[size++] = inner[i];
        i += inner[i] == '\'' ? 1 : 0;
    }
    return {copy, size};
}

Node *Parser::node(NodeKind kind) {
    Node *made = m_arena.make<Node>();
    made->kind = kind;
    made->at = token().begin;
    return made;
}

Node *Parser::pair(NodeKind kind, Node *a, Node *b, std::uint32_t at, char op) {
    Node *made = m_arena.make<Node>();
    made->kind = kind;
    made->op = op;
    made->at = at;
    made->a = a;
    made->b = b;
    return made;
}

SelectNode *Parser::select(OrderBy orderBy) {
    const Level level(*this);
    SelectNode *made = m_arena.make<SelectNode>();
    made->at = token().begin;
    expect(Keyword::Select);
    if (accept(Keyword::Distinct))
        made->distinct = true;
    else
        accept(Keyword::All);
    if (accept(Keyword::Top)) {
        const bool open = accept('(');
        if (token().kind != TokenKind::Integer)
            refuse();
        made->top = primary();
        if (open)
            expect(')');
    }
    ItemNode **lastItem = &made->items;
    do {
        *lastItem = item();
        lastItem = &(*lastItem)->next;
    } while (accept(','));
    if (accept(Keyword::From))
        made->from = tables();
    if (accept(Keyword::Where))
        made->where = condition();
    if (accept(Keyword::Group)) {
        expect(Keyword::By);
        Node **last = &made->groupBy;
        do {
            *last = sum();
            last = &(*last)->next;
        } while (accept(','));
    }
    if (accept(Keyword::Having))
        made->having = condition();
    if (accept(Keyword::Union)) {
        expect(Keyword::All);
        made->unionAll = select(OrderBy::Never);
    }
    if (is(Keyword::Order)) {
        if (orderBy == OrderBy::Never || (orderBy == OrderBy::WithTop && made->top == nullptr))
            return made;
        ++m_at;
        expect(Keyword::By);
        OrderNode **last = &made->orderBy;
        do {
            *last = m_arena.make<OrderNode>();
            (*last)->value = sum();
            if (accept(Keyword::Desc))
                (*last)->descending = true;
            else
                accept(Keyword::Asc);
            last = &(*last)->next;
        } while (accept(','));
    }
    return made;
}

ItemNode *Parser::item() {
    ItemNode *made = m_arena.make<ItemNode>();
    if (isSign('*')) {
        made->value = node(NodeKind::Star);
        ++m_at;
        return made;
    }
    if (isName() && token(1).sign == '.' && token(2).sign == '*') {
        made->value = node(NodeKind::Star);
        made->value->qualifier = name();
        m_at += 2;
        return made;
    }
    if ((isName() || token().kind == TokenKind::Text) && token(1).sign == '=') {
        made->alias = itemAlias();
        ++m_at;
        made->value = sum();
        return made;
    }
    made->value = sum();
    if (accept(Keyword::As)) {
        if (!isName() && token().kind != TokenKind::Text)
            refuse();
        made->alias = itemAlias();
    } else if (isName() || token().kind == TokenKind::Text) {
        made->alias = itemAlias();
    }
    return made;
}

std::string_view Parser::itemAlias() {
    return token().kind == TokenKind::Text ? literalText(m_tokens[m_at++]) : name();
}

TableNode *Parser::tables() {
    TableNode *first = tableSource();
    TableNode **last = &first->next;
    while (true) {
        JoinKind join = JoinKind::Inner;
        if (accept(',')) {
            join = JoinKind::Comma;
        } else if (is(Keyword::Join) || is(Keyword::Inner)) {
            accept(Keyword::Inner);
            expect(Keyword::Join);
        } else if (is(Keyword::Left) || is(Keyword::Right) || is(Keyword::Full)) {
            join = is(Keyword::Left) ? JoinKind::Left : is(Keyword::Right) ? JoinKind::Right : JoinKind::Full;
            ++m_at;
            accept(Keyword::Outer);
            expect(Keyword::Join);
        } else if (accept(Keyword::Cross)) {
            join = JoinKind::Cross;
            expect(Keyword::Join);
        } else {
            return first;
        }
        *last = tableSource();
        (*last)->join = join;
        if (join != JoinKind::Comma && join != JoinKind::Cross) {
            expect(Keyword::On);
            (*last)->on = condition();
        }
        last = &(*last)->next;
    }
}

TableNode *Parser::tableSource() {
    TableNode *made = m_arena.make<TableNode>();
    if (accept('(')) {
        made->table.at = token().begin;
        made->derived = select(OrderBy::Always);
        expect(')');
        accept(Keyword::As);
        made->alias = name();
        return made;
    }
    made->table = tableName();
    if (accept(Keyword::As) || isName())
        made->alias = name();
    return made;
}

Node *Parser::disjunction() {
    const Level level(*this);
    Node *left = conjunction();
    int chain = 0;
    while (is(Keyword::Or)) {
        const auto at = token().begin;
        ++m_at;
        ++chain;
        ++m_depth;
        const Level deeper(*this);
        left = pair(NodeKind::Or, left, conjunction(), at);
    }
    m_depth -= chain;
    return left;
}

Node *Parser::conjunction() {
    Node *left = negation();
    int chain = 0;
    while (is(Keyword::And)) {
        const auto at = token().begin;
        ++m_at;
        ++chain;
        ++m_depth;
        const Level deeper(*this);
        left = pair(NodeKind::And, left, negation(), at);
    }
    m_depth -= chain;
    return left;
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
    int chain = 0;
    while (isSign('+') || isSign('-')) {
        const Token &sign = token();
        ++m_at;
        ++chain;
        ++m_depth;
        const Level deeper(*this);
        left = pair(NodeKind::Arithmetic, left, product(), sign.begin, sign.sign);
    }
    m_depth -= chain;
    return left;
}

Node *Parser::product() {
    Node *left = unary();
    int chain = 0;
    while (isSign('*') || isSign('/') || isSign('%')) {
        const Token &sign = token();
        ++m_at;
        ++chain;
        ++m_depth;
        const Level deeper(*this);
        left = pair(NodeKind::Arithmetic, left, unary(), sign.begin, sign.sign);
    }
    m_depth -= chain;
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
