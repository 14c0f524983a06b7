#include "platform/tsql/reading/parser.h"

#include "platform/tsql/reading/parser_level.h"
#include "platform/tsql/text/names.h"

#include <utility>

namespace zel::tsql {

SelectNode *Parser::select(OrderBy orderBy) {
    const Level level(*this);
    SelectNode *made = oneSelect();
    for (SelectNode *last = made; accept(Keyword::Union); last = last->united) {
        last->unitedAll = accept(Keyword::All);
        last->united = oneSelect();
    }
    const bool ordered = orderBy == OrderBy::Always || (orderBy == OrderBy::WithTop && made->top != nullptr);
    if (ordered && accept(Keyword::Order))
        made->orderBy = orderList();
    return made;
}

SelectNode *Parser::oneSelect() {
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
    const bool mayAssign = std::exchange(m_mayAssign, false);
    ItemNode **lastItem = &made->items;
    do {
        *lastItem = item(mayAssign);
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
    return made;
}

OrderNode *Parser::orderList() {
    OrderNode *first = nullptr;
    OrderNode **last = &first;
    expect(Keyword::By);
    do {
        *last = m_arena.make<OrderNode>();
        (*last)->value = sum();
        if (accept(Keyword::Desc))
            (*last)->descending = true;
        else
            accept(Keyword::Asc);
        last = &(*last)->next;
    } while (accept(','));
    return first;
}

ItemNode *Parser::item(bool mayAssign) {
    ItemNode *made = m_arena.make<ItemNode>();
    made->at = token().begin;
    if (mayAssign && token().kind == TokenKind::Variable && token(1).sign == '=') {
        made->variable = assignedVariable();
        made->value = sum();
        return made;
    }
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

} // namespace zel::tsql
