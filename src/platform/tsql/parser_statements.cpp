#include "platform/tsql/parser.h"

#include "platform/tsql/failure.h"
#include "platform/tsql/names.h"

namespace zel::tsql {

ActionNode *Parser::statements() {
    ActionNode *first = nullptr;
    statementList(&first, false);
    if (token().kind != TokenKind::End)
        refuse();
    return first;
}

void Parser::statementList(ActionNode **last, bool untilEnd) {
    bool first = !untilEnd;
    while (true) {
        while (accept(';'))
            ;
        if (token().kind == TokenKind::End || is(Keyword::End))
            return;
        if (accept(Keyword::Begin)) {
            ActionNode *inner = nullptr;
            statementList(&inner, true);
            if (inner == nullptr)
                refuse();
            expect(Keyword::End);
            *last = inner;
        } else {
            *last = statement(first);
        }
        first = false;
        while (*last != nullptr)
            last = &(*last)->next;
    }
}

ActionNode *Parser::action(ActionKind kind) {
    ActionNode *made = m_arena.make<ActionNode>();
    made->kind = kind;
    made->at = token().begin;
    return made;
}

/// nullptr for a statement that asks nothing of an engine (set nocount on).
ActionNode *Parser::statement(bool first) {
    switch (token().keyword) {
    case Keyword::Select: {
        ActionNode *made = action(ActionKind::Select);
        made->select = select(OrderBy::Always);
        return made;
    }
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
    case Keyword::Exec:
    case Keyword::Execute:
        ++m_at;
        return execution();
    default:
        break;
    }
    // A procedure's name alone calls it, at the head of the text only.
    if (!first || !isName())
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

Type Parser::type(std::string_view *declared) {
    const std::size_t first = m_at;
    const std::string_view word = name();
    if (accept('(')) {
        if (!acceptWord("max")) {
            if (token().kind != TokenKind::Integer)
                refuse();
            ++m_at;
            if (accept(',')) {
                if (token().kind != TokenKind::Integer)
                    refuse();
                ++m_at;
            }
        }
        expect(')');
    }
    // As parseType reads it: without blanks and brackets around the word.
    std::string text(word);
    for (std::size_t i = first + 1; i < m_at; ++i)
        text += view(m_tokens[i]);
    const auto parsed = parseType(text);
    if (!parsed)
        fail(m_source, m_tokens[first].begin, 243, "Type " + text + " is not a defined system type.");
    if (declared != nullptr)
        *declared = m_arena.keep(text);
    // Without a length a converted text has room for thirty characters, a column for one.
    Type made = *parsed;
    if (declared != nullptr || text.find('(') != std::string::npos)
        return made;
    if (made.length == 1 && (made.kind == TypeKind::Char || made.kind == TypeKind::VarChar))
        made.length = 30;
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
        made->select = select(OrderBy::Always);
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
        expect('=');
        (*last)->value = sum();
        last = &(*last)->next;
    } while (accept(','));
    if (accept(Keyword::Where))
        made->where = condition();
    return made;
}

ActionNode *Parser::deletion() {
    ActionNode *made = action(ActionKind::Delete);
    ++m_at;
    accept(Keyword::From);
    made->table = tableName();
    if (accept(Keyword::Where))
        made->where = condition();
    return made;
}

ActionNode *Parser::creation() {
    ++m_at;
    if (accept(Keyword::Table))
        return table();
    if (is(Keyword::Procedure) || is(Keyword::Proc))
        return procedure();
    const bool unique = accept(Keyword::Unique);
    accept(Keyword::NonClustered) || accept(Keyword::Clustered);
    expect(Keyword::Index);
    return index(unique);
}

ActionNode *Parser::table() {
    ActionNode *made = action(ActionKind::CreateTable);
    made->table = tableName();
    expect('(');
    ColumnNode **last = &made->columns;
    do {
        if (accept(Keyword::Constraint))
            (void)name();
        if (accept(Keyword::Primary)) {
            expect(Keyword::Key);
            accept(Keyword::NonClustered) || accept(Keyword::Clustered);
            made->names = nameList();
        } else {
            *last = columnDefinition();
            last = &(*last)->next;
        }
    } while (accept(','));
    expect(')');
    return made;
}

ColumnNode *Parser::columnDefinition() {
    ColumnNode *made = m_arena.make<ColumnNode>();
    made->at = token().begin;
    made->name = name();
    made->type = type(&made->declared);
    while (true) {
        if (accept(Keyword::Identity)) {
            made->identity = made->notNull = true;
            if (accept('(')) {
                const bool fromOne = view(token()) == "1" && token(1).sign == ',' && view(token(2)) == "1";
                if (!fromOne)
                    refuse();
                m_at += 3;
                expect(')');
            }
        } else if (accept(Keyword::Not)) {
            expect(Keyword::Null);
            made->notNull = true;
        } else if (accept(Keyword::Null)) {
            // As without the word: columns take NULL unless told otherwise.
        } else if (accept(Keyword::Constraint)) {
            (void)name();
        } else if (accept(Keyword::Primary)) {
            expect(Keyword::Key);
            accept(Keyword::NonClustered) || accept(Keyword::Clustered);
            made->primaryKey = made->notNull = true;
        } else {
            return made;
        }
    }
}

ActionNode *Parser::index(bool unique) {
    ActionNode *made = action(ActionKind::CreateIndex);
    made->unique = unique;
    made->table = tableName();
    expect(Keyword::On);
    made->indexed = tableName();
    made->names = nameList();
    return made;
}

ActionNode *Parser::procedure() {
    ++m_at;
    ActionNode *made = action(ActionKind::CreateProcedure);
    made->table = tableName();
    const bool open = accept('(');
    if (token().kind == TokenKind::Variable)
        made->assignments = parameters();
    if (open)
        expect(')');
    expect(Keyword::As);
    statementList(&made->body, true);
    if (token().kind != TokenKind::End)
        refuse();
    return made;
}

AssignmentNode *Parser::parameters() {
    AssignmentNode *first = nullptr;
    AssignmentNode **last = &first;
    do {
        if (token().kind != TokenKind::Variable)
            refuse();
        *last = m_arena.make<AssignmentNode>();
        (*last)->at = token().begin;
        (*last)->name = view(token());
        ++m_at;
        accept(Keyword::As);
        std::string_view declared;
        (*last)->type = type(&declared);
        if (accept('='))
            (*last)->value = argumentValue();
        last = &(*last)->next;
    } while (accept(','));
    return first;
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

ActionNode *Parser::declaration() {
    ActionNode *made = action(ActionKind::Declare);
    ++m_at;
    if (token().kind != TokenKind::Variable)
        refuse();
    made->assignments = parameters();
    return made;
}

ActionNode *Parser::setting() {
    ActionNode *made = action(ActionKind::SetVariable);
    ++m_at;
    if (acceptWord("nocount")) {
        if (!accept(Keyword::On) && !acceptWord("off"))
            refuse();
        return nullptr;
    }
    if (token().kind != TokenKind::Variable)
        refuse();
    made->assignments = m_arena.make<AssignmentNode>();
    made->assignments->at = token().begin;
    made->assignments->name = view(token());
    ++m_at;
    expect('=');
    made->assignments->value = sum();
    return made;
}

} // namespace zel::tsql
