#include "platform/tsql/reading/parser.h"

#include "platform/tsql/reading/failure.h"
#include "platform/tsql/reading/parser_level.h"
#include "platform/tsql/text/names.h"

#include <algorithm>
#include <array>

namespace zel::tsql {

namespace {

std::string lowered(std::string_view name) {
    std::string lower(name);
    for (char &c : lower)
        c = tsql::lowered(c);
    return lower;
}

} // namespace

ActionNode *Parser::next() {
    while (accept(';'))
        ;
    return token().kind == TokenKind::End ? nullptr : block();
}

/// Up to the word end or the end of the text.
void Parser::statementList(ActionNode **last) {
    const Level level(*this);
    while (true) {
        while (accept(';'))
            ;
        if (token().kind == TokenKind::End || is(Keyword::End))
            return;
        *last = block();
        while (*last != nullptr)
            last = &(*last)->next;
    }
}

/// One statement, or those between begin and end.
ActionNode *Parser::block() {
    if (!accept(Keyword::Begin))
        return statement();
    ActionNode *inner = nullptr;
    statementList(&inner);
    if (inner == nullptr)
        refuse();
    expect(Keyword::End);
    return inner;
}

/// A select gives rows or assigns to variables, never both.
ActionNode *Parser::selection() {
    ActionNode *made = action(ActionKind::Select);
    m_mayAssign = true;
    made->select = select(OrderBy::Always);
    const bool assigns = made->select->items->variable != NoVariable;
    for (const ItemNode *item = made->select->items; item != nullptr; item = item->next) {
        if ((item->variable != NoVariable) != assigns) {
            fail(m_source, item->at, 141,
                 "A SELECT statement that assigns a value to a variable must not be combined with "
                 "data-retrieval operations.");
        }
    }
    if (assigns && made->select->united != nullptr) {
        fail(m_source, made->select->items->at, 10734,
             "Variable assignment is not allowed in a statement containing a top level UNION, INTERSECT or "
             "EXCEPT operator.");
    }
    return made;
}

ActionNode *Parser::choice() {
    const Level level(*this);
    ActionNode *made = action(ActionKind::If);
    ++m_at;
    made->where = condition();
    made->body = block();
    const std::size_t behind = m_at;
    while (accept(';'))
        ;
    if (accept(Keyword::Else))
        made->otherwise = block();
    else
        m_at = behind;
    return made;
}

ActionNode *Parser::returning() {
    ActionNode *made = action(ActionKind::Return);
    ++m_at;
    constexpr std::array ValueWords = {Keyword::None, Keyword::Case, Keyword::Convert,
                                       Keyword::Null, Keyword::Left, Keyword::Right};
    const bool hasValue = token().kind != TokenKind::End && !isSign(';') &&
                          std::ranges::find(ValueWords, token().keyword) != ValueWords.end();
    if (!hasValue)
        return made;
    if (!m_inProcedure) {
        fail(m_source, made->at, 178,
             "A RETURN statement with a return value cannot be used in this context.");
    }
    made->where = sum();
    return made;
}

ActionNode *Parser::declaration() {
    ActionNode *made = action(ActionKind::Declare);
    ++m_at;
    if (token().kind != TokenKind::Variable)
        refuse();
    made->assignments = parameters(&Parser::sum);
    return made;
}

ActionNode *Parser::setting() {
    ActionNode *made = action(ActionKind::SetVariable);
    ++m_at;
    if (acceptWord("nocount")) {
        if (!accept(Keyword::On) && !acceptWord("off"))
            refuse();
        made->kind = ActionKind::SetOption;
        return made;
    }
    if (token().kind != TokenKind::Variable)
        refuse();
    made->assignments = m_arena.make<AssignmentNode>();
    made->assignments->at = token().begin;
    made->assignments->variable = assignedVariable();
    made->assignments->value = sum();
    return made;
}

void Parser::declareVariable(AssignmentNode &variable) {
    const auto place = static_cast<VariableIndex>(m_variables.size());
    if (!m_variablesByName.emplace(lowered(variable.name), place).second) {
        fail(m_source, variable.at, 134,
             "The variable name '" + std::string(variable.name) +
                 "' has already been declared. Variable names must be unique within a query batch or stored "
                 "procedure.");
    }
    variable.variable = place;
    m_variables.push_back({variable.type, false});
}

VariableIndex Parser::variable(const Token &token) const {
    const std::string name = lowered(view(token));
    if (const auto found = m_variablesByName.find(name); found != m_variablesByName.end())
        return found->second;
    if (name != "@@rowcount" && name != "@@identity")
        fail(m_source, token.begin, 137,
             "Must declare the scalar variable \"" + std::string(view(token)) + "\".");
    return NoVariable;
}

VariableIndex Parser::assignedVariable() {
    const VariableIndex found = variable(token());
    if (found == NoVariable)
        syntaxError(m_source, m_tokens, m_at);
    m_variables[static_cast<std::size_t>(found)].assigned = true;
    ++m_at;
    expect('=');
    return found;
}

} // namespace zel::tsql
