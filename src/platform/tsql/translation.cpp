#include "platform/tsql/translation.h"

#include "platform/base/error.h"
#include "platform/tsql/reading/parser.h"

namespace zel::tsql {

/// Nothing is kept of a statement's trees. A failure of its meaning gives way to one of syntax further on.
std::vector<Statement> Translation::run(std::string_view source, const std::vector<Token> &tokens) {
    m_resolver.setSource(source);
    Parser parser(source, tokens, m_arena);
    while (const ActionNode *action = parser.next()) {
        try {
            statements(action);
        } catch (const Error &) {
            while (parser.next() != nullptr)
                m_arena.reset();
            throw;
        }
        m_resolver.forget();
        m_arena.reset();
    }
    for (const std::size_t jump : m_returns)
        m_statements[jump].next = m_statements.size();
    return std::move(m_statements);
}

void Translation::statement(const ActionNode &action) {
    switch (action.kind) {
    case ActionKind::Select:
        return select(action);
    case ActionKind::Insert:
        return insertion(action);
    case ActionKind::Update:
        return change(action, StatementKind::Update);
    case ActionKind::Delete:
        return change(action, StatementKind::Delete);
    case ActionKind::CreateTable:
        return createTable(action);
    case ActionKind::DropTable:
        return dropTable(action);
    case ActionKind::CreateIndex:
        return createIndex(action);
    case ActionKind::CreateProcedure:
        return createProcedure(action);
    case ActionKind::DropProcedure:
        return dropProcedure(action);
    case ActionKind::Execute:
        return execute(action);
    case ActionKind::Declare:
        return declare(action);
    case ActionKind::SetVariable:
        return setVariable(action);
    case ActionKind::SetOption:
        add(StatementKind::SetOption);
        return;
    case ActionKind::If:
        return choice(action);
    case ActionKind::Return:
        return returning(action);
    case ActionKind::Analyze:
        return analyze(action);
    }
}

void Translation::analyze(const ActionNode &action) {
    Writer out = writer();
    out.analyze(m_resolver.table(action.table));
    add(StatementKind::Analyze, &out);
}

void Translation::select(const ActionNode &action) {
    if (action.select->items->variable != NoVariable)
        return selectVariables(*action.select);
    const BoundSelect &rows = *m_resolver.topSelect(*action.select);
    Writer out = writer();
    out.topSelect(rows);
    Statement &made = add(StatementKind::Select, &out);
    if (rows.rowIdentity)
        made.baseTable = rows.sources->table->name;
    std::size_t count = 0;
    for (const BoundItem *item = rows.items; item != nullptr; item = item->next)
        ++count;
    made.columns.reserve(count);
    for (const BoundItem *item = rows.items; item != nullptr; item = item->next) {
        ResultColumn &column = made.columns.emplace_back();
        column.name = item->name;
        column.type = item->value->type;
        if (rows.rowIdentity && item->value->op == Op::ColumnValue)
            column.baseColumn = columnOf(*item->value).name;
    }
}

void Translation::insertion(const ActionNode &action) {
    const BoundInsert &insert = *m_resolver.insertion(action);
    Writer out = writer();
    out.insertion(insert);
    Statement &made = add(StatementKind::Insert, &out);
    made.name = insert.table->name;
    made.makesIdentity = std::ranges::any_of(insert.table->columns, &Column::identity);
    made.scopeIdentity = m_resolver.scopes().identity;
}

void Translation::change(const ActionNode &action, StatementKind kind) {
    const BoundChange &change = *m_resolver.change(action);
    Writer out = writer();
    if (kind == StatementKind::Update)
        out.update(change);
    else
        out.deletion(change);
    add(kind, &out).name = change.target->table->name;
}

} // namespace zel::tsql
