#include "platform/tsql/reading/parser.h"

#include "platform/tsql/reading/failure.h"
#include "platform/tsql/text/names.h"

#include <charconv>

namespace zel::tsql {

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

ActionNode *Parser::creation() {
    ++m_at;
    if (accept(Keyword::Table))
        return table();
    if (is(Keyword::Procedure) || is(Keyword::Proc)) {
        if (m_at != 1) {
            fail(m_source, token().begin, 111,
                 "'CREATE/ALTER PROCEDURE' must be the first statement in a query batch.");
        }
        return procedure();
    }
    const bool unique = accept(Keyword::Unique);
    accept(Keyword::NonClustered) || accept(Keyword::Clustered);
    expect(Keyword::Index);
    return index(unique);
}

ActionNode *Parser::table() {
    ActionNode *made = action(ActionKind::CreateTable);
    made->table = tableName();
    if (made->table.name.starts_with("##")) // all connections'
        syntaxError(m_source, m_tokens, m_at - 1);
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
            if (accept('('))
                identityBounds(*made);
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
            checkIdentity(*made);
            return made;
        }
    }
}

void Parser::checkIdentity(const ColumnNode &column) const {
    const TypeKind kind = column.type.kind;
    const bool whole = (kind > TypeKind::Bit && kind <= TypeKind::BigInt) ||
                       (kind == TypeKind::Numeric && column.type.scale == 0);
    if (column.identity && !whole)
        fail(m_source, column.at, 2749,
             "Identity column '" + std::string(column.name) +
                 "' must be of data type int, bigint, smallint, tinyint, or decimal or numeric with a scale "
                 "of 0.");
}

/// Behind the parenthesis: from where an identity counts, and by what. It counts upwards one by one.
void Parser::identityBounds(ColumnNode &column) {
    const std::string_view seed = view(token());
    const auto read = std::from_chars(seed.data(), seed.data() + seed.size(), column.seed);
    if (token().kind != TokenKind::Integer || read.ec != std::errc() || column.seed < 1)
        refuse();
    ++m_at;
    expect(',');
    if (view(token()) != "1")
        refuse();
    ++m_at;
    expect(')');
}

ActionNode *Parser::index(bool unique) {
    ActionNode *made = action(ActionKind::CreateIndex);
    made->unique = unique;
    made->table = tableName();
    expect(Keyword::On);
    made->indexed = tableName();
    made->names = nameList();
    if (accept(Keyword::Where))
        made->where = condition();
    return made;
}

ActionNode *Parser::procedure() {
    ++m_at;
    m_inProcedure = true;
    ActionNode *made = action(ActionKind::CreateProcedure);
    made->table = tableName();
    if (isTemporary(made->table.name))
        syntaxError(m_source, m_tokens, m_at - 1);
    const bool open = accept('(');
    if (token().kind == TokenKind::Variable)
        made->assignments = parameters(&Parser::argumentValue);
    if (open)
        expect(')');
    expect(Keyword::As);
    statementList(&made->body);
    if (token().kind != TokenKind::End)
        refuse();
    return made;
}

AssignmentNode *Parser::parameters(Node *(Parser::*initialValue)()) {
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
            (*last)->value = (this->*initialValue)();
        declareVariable(**last);
        last = &(*last)->next;
    } while (accept(','));
    return first;
}

} // namespace zel::tsql
