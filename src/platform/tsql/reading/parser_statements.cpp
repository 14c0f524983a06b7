#include "platform/tsql/reading/parser.h"

#include "platform/tsql/reading/failure.h"

namespace zel::tsql {

ActionNode *Parser::action(ActionKind kind) {
    ActionNode *made = m_arena.make<ActionNode>();
    made->kind = kind;
    made->at = token().begin;
    return made;
}

ActionNode *Parser::statement() {
    switch (token().keyword) {
    case Keyword::Select:
        return selection();
    case Keyword::Insert:
        return insertion();
    case Keyword::Update:
        return update();
    case Keyword::Delete:
        return deletion();
    case Keyword::Create:
        return creation();
    case Keyword::Drop:
        return removal();
    case Keyword::Declare:
        return declaration();
    case Keyword::Set:
        return setting();
    case Keyword::If:
        return choice();
    case Keyword::Return:
        return returning();
    case Keyword::Exec:
    case Keyword::Execute:
        ++m_at;
        return execution();
    default:
        break;
    }
    // A procedure's name alone calls it, at the head of the text only.
    if (m_at != 0 || !isName())
        refuse();
    return execution();
}

TableName Parser::tableName() {
    TableName made;
    made.at = token().begin;
    made.name = name();
    while (isSign('.')) {
        ++m_at;
        made.database = made.schema;
        made.schema = made.name;
        made.name = {};
        if (!isSign('.'))
            made.name = name();
    }
    if (made.name.empty())
        refuse();
    return made;
}

NameNode *Parser::nameList() {
    NameNode *first = nullptr;
    NameNode **last = &first;
    expect('(');
    do {
        *last = m_arena.make<NameNode>();
        (*last)->at = token().begin;
        (*last)->text = name();
        if (accept(Keyword::Desc))
            (*last)->descending = true;
        else
            accept(Keyword::Asc);
        last = &(*last)->next;
    } while (accept(','));
    expect(')');
    return first;
}

ActionNode *Parser::insertion() {
    ActionNode *made = action(ActionKind::Insert);
    ++m_at;
    accept(Keyword::Into);
    made->table = tableName();
    if (isSign('('))
        made->names = nameList();
    if (is(Keyword::Select)) {
        m_mayAssign = true;
        made->select = select(OrderBy::Always);
        for (const ItemNode *item = made->select->items; item != nullptr; item = item->next) {
            if (item->variable != NoVariable) {
                fail(m_source, item->at, 199,
                     "An INSERT statement cannot contain a SELECT statement that assigns values to a "
                     "variable.");
            }
        }
        return made;
    }
    expect(Keyword::Values);
    RowNode **lastRow = &made->rows;
    do {
        *lastRow = m_arena.make<RowNode>();
        (*lastRow)->at = token().begin;
        expect('(');
        Node **last = &(*lastRow)->values;
        do {
            *last = sum();
            last = &(*last)->next;
        } while (accept(','));
        expect(')');
        lastRow = &(*lastRow)->next;
    } while (accept(','));
    return made;
}

ActionNode *Parser::update() {
    ActionNode *made = action(ActionKind::Update);
    ++m_at;
    if (accept(Keyword::Statistics)) {
        made->kind = ActionKind::Analyze;
        made->table = tableName();
        return made;
    }
    made->table = tableName();
    expect(Keyword::Set);
    AssignmentNode **last = &made->assignments;
    do {
        *last = m_arena.make<AssignmentNode>();
        (*last)->at = token().begin;
        (*last)->name = name();
        if (accept('.')) {
            (*last)->qualifier = (*last)->name;
            (*last)->name = name();
        }
        expect('=');
        (*last)->value = sum();
        last = &(*last)->next;
    } while (accept(','));
    changedRows(*made);
    return made;
}

ActionNode *Parser::deletion() {
    ActionNode *made = action(ActionKind::Delete);
    ++m_at;
    accept(Keyword::From);
    made->table = tableName();
    changedRows(*made);
    return made;
}

void Parser::changedRows(ActionNode &change) {
    if (accept(Keyword::From))
        change.from = tables();
    if (accept(Keyword::Where))
        change.where = condition();
}

ActionNode *Parser::removal() {
    ++m_at;
    ActionNode *made = action(is(Keyword::Table) ? ActionKind::DropTable : ActionKind::DropProcedure);
    if (!accept(Keyword::Table) && !accept(Keyword::Procedure) && !accept(Keyword::Proc))
        refuse();
    made->table = tableName();
    return made;
}

ActionNode *Parser::execution() {
    ActionNode *made = action(ActionKind::Execute);
    made->table = tableName();
    const bool hasArguments = token().kind != TokenKind::End && !isSign(';') && !is(Keyword::End) &&
                              (token().keyword == Keyword::None || is(Keyword::Null) ||
                               is(Keyword::Default) || token().keyword == Keyword::Other);
    if (!hasArguments)
        return made;
    AssignmentNode **last = &made->assignments;
    do {
        *last = argument();
        last = &(*last)->next;
    } while (accept(','));
    return made;
}

AssignmentNode *Parser::argument() {
    AssignmentNode *made = m_arena.make<AssignmentNode>();
    made->at = token().begin;
    if (token().kind == TokenKind::Variable && token(1).sign == '=') {
        made->name = view(token());
        m_at += 2;
    }
    if (!accept(Keyword::Default))
        made->value = argumentValue();
    return made;
}

/// A literal, a variable, or a word that stands for itself as a text.
Node *Parser::argumentValue() {
    if (isSign('-')) {
        Node *made = node(NodeKind::Negate);
        ++m_at;
        if (token().kind != TokenKind::Integer && token().kind != TokenKind::Decimal &&
            token().kind != TokenKind::Float)
            refuse();
        made->a = primary();
        return made;
    }
    accept('+');
    if (isName()) {
        Node *made = node(NodeKind::Text);
        made->text = name();
        return made;
    }
    if (token().kind == TokenKind::Sign || (token().kind == TokenKind::Word && !is(Keyword::Null)))
        refuse();
    return primary();
}

} // namespace zel::tsql
