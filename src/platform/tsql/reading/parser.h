#pragma once

#include "platform/tsql/reading/arena.h"
#include "platform/tsql/reading/lexer.h"
#include "platform/tsql/reading/node.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace zel::tsql {

/// Tokens to trees, by recursive descent. Throws 102 and 156 for what the dialect (or our part of it) does
/// not know, 191 for expressions nested too deeply. Texts of the tree point into the source or the arena;
/// both must outlive it.
class Parser {
public:
    Parser(std::string_view source, const std::vector<Token> &tokens, Arena &arena)
        : m_source(source), m_tokens(tokens), m_arena(arena) {}

    /// The next statement of the text, or those of the next block; nullptr when there are no more. Trees of
    /// earlier ones are not looked at again.
    [[nodiscard]] ActionNode *next();
    /// Variables of what has been read so far, parameters first.
    [[nodiscard]] const std::vector<VariableNode> &variables() const { return m_variables; }

private:
    struct Level;

    // Tokens.
    [[nodiscard]] const Token &token(std::size_t ahead = 0) const {
        return m_tokens[std::min(m_at + ahead, m_tokens.size() - 1)];
    }
    [[nodiscard]] bool is(Keyword word) const { return token().keyword == word; }
    [[nodiscard]] bool isSign(char sign) const { return token().sign == sign; }
    [[nodiscard]] bool isWord(std::string_view word, std::size_t ahead = 0) const;
    bool accept(Keyword word);
    bool accept(char sign);
    bool acceptWord(std::string_view word);
    void expect(Keyword word);
    void expect(char sign);
    [[nodiscard]] std::string_view view(const Token &token) const;
    [[nodiscard]] bool isName(std::size_t ahead = 0) const;
    [[nodiscard]] std::string_view name();
    [[nodiscard]] std::string_view nameText(const Token &token) const;
    [[nodiscard]] std::string_view literalText(const Token &token) const;
    [[noreturn]] void refuse() const;

    // Statements (parser_statements.cpp).
    ActionNode *statement();
    ActionNode *action(ActionKind kind);
    void statementList(ActionNode **last);
    ActionNode *block();
    ActionNode *choice();
    ActionNode *returning();
    ActionNode *selection();
    ActionNode *insertion();
    ActionNode *update();
    ActionNode *deletion();
    void changedRows(ActionNode &change);
    ActionNode *creation();
    ActionNode *table();
    ActionNode *index(bool unique);
    ActionNode *procedure();
    ActionNode *removal();
    ActionNode *execution();
    ActionNode *declaration();
    ActionNode *setting();
    ColumnNode *columnDefinition();
    void identityBounds(ColumnNode &column);
    void checkIdentity(const ColumnNode &column) const;
    AssignmentNode *parameters(Node *(Parser::*initialValue)());
    AssignmentNode *argument();
    Node *argumentValue();
    NameNode *nameList();
    TableName tableName();
    Type type(std::string_view *declared = nullptr);

    // Variables: 134 for one declared twice, 137 for one that isn't.
    void declareVariable(AssignmentNode &variable);
    [[nodiscard]] VariableIndex variable(const Token &token) const;
    /// The variable before the `=` that comes next; both are passed over.
    VariableIndex assignedVariable();

    // Queries and expressions.
    /// Where an order by may stand: a sub-select has one only beside top.
    enum class OrderBy { WithTop, Always };
    SelectNode *select(OrderBy orderBy);
    SelectNode *oneSelect();
    OrderNode *orderList();
    ItemNode *item(bool mayAssign);
    std::string_view itemAlias();
    TableNode *tables();
    TableNode *tableSource();
    Node *condition() { return disjunction(); }
    Node *disjunction();
    Node *conjunction();
    Node *junction(NodeKind kind, Keyword word, Node *(Parser::*part)());
    Node *negation();
    Node *predicate();
    Node *membership(Node *left);
    Node *sum();
    Node *product();
    Node *unary();
    Node *primary();
    Node *columnOrCall();
    Node *caseExpression();
    Node *call(std::string_view function, std::uint32_t at);
    Node *node(NodeKind kind);
    Node *pair(NodeKind kind, Node *a, Node *b, std::uint32_t at, char op = '\0');

    std::string_view m_source;
    const std::vector<Token> &m_tokens;
    Arena &m_arena;
    std::size_t m_at = 0;
    int m_depth = 0;
    bool m_mayAssign = false; ///< the select that is read next may assign to variables
    bool m_inProcedure = false;
    std::vector<VariableNode> m_variables;
    std::unordered_map<std::string, VariableIndex> m_variablesByName; ///< in lower case
};

} // namespace zel::tsql
