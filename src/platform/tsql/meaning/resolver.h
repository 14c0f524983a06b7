#pragma once

#include "platform/tsql/meaning/bound.h"
#include "platform/tsql/meaning/converter.h"
#include "platform/tsql/meaning/slot.h"
#include "platform/tsql/reading/arena.h"

#include <deque>
#include <list>
#include <string_view>
#include <vector>

namespace zel::tsql {

/// Looks names up in the catalog, types every expression and puts the dialect's conversions in. Throws the
/// server's errors for what is not there (207, 208, 209, 4104, 137 ...) or does not fit.
class Resolver {
public:
    Resolver(const Catalog &catalog, Arena &arena) : m_catalog(catalog), m_arena(arena), m_converter(arena) {}

    /// The text that `at` of all nodes means from now on: a procedure's body has its own.
    void setSource(std::string_view source);
    [[nodiscard]] std::string_view source() const { return m_source; }

    // Variables, in the order of their declaration. A procedure has its own ones and its own identity.
    struct Scopes {
        std::size_t variables = 0; ///< where the innermost scope's begin
        Slot identity = ScopeIdentitySlot;
        int temporaries = 0; ///< the number of the scope that new #tables belong to; 0 for the connection's
    };
    [[nodiscard]] Scopes openScope(Slot identity, int temporaries);
    /// Back to the scope that openScope gave; those of the procedure's #tables that are still there.
    [[nodiscard]] std::vector<Table> closeScope(const Scopes &outer);
    [[nodiscard]] const Scopes &scopes() const { return m_scopes; }
    /// The next variable: a literal that stands for it, or the slot that holds its value.
    void declare(Type type, Expr *literal) { m_variables.push_back({type, 0, literal}); }
    void declare(Type type, Slot slot) { m_variables.push_back({type, slot, nullptr}); }
    [[nodiscard]] Slot slotOf(VariableIndex variable) const { return variableAt(variable).slot; }
    /// A value outside any select, not yet converted.
    [[nodiscard]] Expr *argument(const Node &node) { return value(node); }
    /// A value as the variable takes it.
    [[nodiscard]] Expr *assigned(VariableIndex variable, const Node &node) {
        return assigned(variable, value(node));
    }
    [[nodiscard]] Expr *test(const Node &node) { return condition(node); }
    /// A select whose items are values of variables.
    [[nodiscard]] BoundSelect *assignment(const SelectNode &node);
    /// Lets go of what was resolved; what the text created stays known. The arena may be emptied then.
    void forget();

    [[nodiscard]] const Table *findTable(const TableName &name) const;
    /// Throws 208 when there is none.
    [[nodiscard]] const Table &table(const TableName &name) const;
    /// What the text itself created or dropped is known to its later statements. A procedure's #tables hide
    /// others of the name.
    const Table &created(Table table);
    /// A table of that name that stands in the way of a new one.
    [[nodiscard]] const Table *inTheWay(const TableName &name) const;
    /// What the engine is to call a new table.
    [[nodiscard]] std::string engineName(const TableName &name) const;
    void dropped(const Table &table);

    [[nodiscard]] BoundSelect *topSelect(const SelectNode &node);
    [[nodiscard]] BoundInsert *insertion(const ActionNode &node);
    [[nodiscard]] BoundChange *change(const ActionNode &node);

    [[nodiscard]] Converter &converter() { return m_converter; }

private:
    friend struct FunctionTable;
    struct Call;
    struct Scope;
    struct ScopeEntry;
    struct Variable {
        Type type;
        Slot slot;
        Expr *literal; ///< instead of a slot
    };
    struct CreatedTable {
        std::string name; ///< as written; the table's own name is the engine's
        int scope;
        Table table;
    };

    // Selects.
    BoundSelect *select(const SelectNode &node, bool inOrder);
    BoundSelect *oneSelect(const SelectNode &node, bool inOrder);
    void unite(BoundSelect &first, const SelectNode &node);
    BoundSelect *throughTable(BoundSelect &rows);
    void addSources(const TableNode *node, Scope &scope);
    Source *makeSource(const TableNode &node);
    void addItems(const ItemNode *node, Scope &scope);
    void addStar(const Node &node, Scope &scope, BoundItem **&last);
    void addOrder(const OrderNode *node, BoundSelect &select);
    BoundOrder *orderOf(const OrderNode &node, BoundSelect &select);
    void checkGroups(const BoundSelect &select);
    /// 8120 for a column of the grouped select that is in no group; `inner`: within a sub-select of it.
    void checkGrouped(const Expr &value, const BoundSelect &select, bool inner);
    void checkGrouped(const BoundSelect &inner, const BoundSelect &select);
    void checkReach(const Expr *argument, std::uint32_t at) const;
    bool atMostOneRow(const BoundSelect &select) const;
    bool groupsBeginIndex(const BoundSelect &select) const;
    BoundSelect *scalar(const SelectNode &node);

    // Expressions.
    Expr *value(const Node &node);
    Expr *condition(const Node &node);
    Expr *column(const Node &node);
    Expr *columnOf(const Source &source, int index, std::uint32_t at);
    Expr *variable(const Node &node);
    Expr *literal(const Node &node);
    Expr *negation(const Node &node);
    Expr *arithmetic(const Node &node);
    Expr *arithmetic(const Node &node, Expr *left, Expr *right);
    Expr *dateSum(Expr *left, Expr *right, const Node &node);
    Expr *concatenation(Expr *left, Expr *right, std::uint32_t at);
    Expr *junction(const Node &node);
    Expr *caseValue(const Node &node);
    void meetTests(Expr &choice, Expr *tested);
    void replaceConverted(Expr *&member, Type type);
    Expr *castValue(const Node &node);
    Expr *comparison(Expr *left, Expr *right, char sign, std::uint32_t at);
    Expr *between(const Node &node);
    Expr *membership(const Node &node);
    Expr *pattern(const Node &node);
    Expr *negated(Expr *value, bool negated);
    Expr *call(const Node &node);
    int styleOf(const Node *node);
    Expr *likeText(Expr *value);
    Expr *comparedText(Expr *value);

    Expr *make(Op op, Type type, std::uint32_t at, Expr *a = nullptr, Expr *b = nullptr, Expr *c = nullptr) {
        return m_converter.make(op, type, at, a, b, c);
    }
    Expr *copy(const Expr &value);
    const Variable &variableAt(VariableIndex variable) const {
        return m_variables[m_scopes.variables + static_cast<std::size_t>(variable)];
    }
    Expr *slotValue(Slot slot, Type type, std::uint32_t at);
    Expr *assigned(VariableIndex variable, Expr *value) {
        return m_converter.convert(value, variableAt(variable).type, Purpose::Cast);
    }
    int columnIndex(const Table &table, std::string_view name) const;
    [[noreturn]] void fail(std::size_t at, int number, std::string_view message) const;
    [[noreturn]] void failColumn(std::size_t at, std::string_view name) const;
    Expr *assigned(Expr *value, const Column &column);
    Source *changedSource(const ActionNode &node, BoundSelect &rows);
    BoundAssignment *setColumn(const AssignmentNode &set, const Source &target,
                               const BoundAssignment *before);
    BoundAssignment *insertedColumn(const NameNode &name, const Table &target, const BoundAssignment *before);
    BoundRow *insertedRow(const ActionNode &node, const RowNode &row, const BoundAssignment *columns,
                          int count);
    void checkGivenOnce(const Column &column, const BoundAssignment *before, std::uint32_t at) const;
    void checkValueCount(const ActionNode &node, std::uint32_t at, int columns, int values) const;
    void checkInsertedColumns(const BoundInsert &insert, std::uint32_t at) const;

    const Catalog &m_catalog;
    Arena &m_arena;
    Converter m_converter;
    std::string_view m_source;
    Scope *m_scope = nullptr;
    int m_sources = 0;
    std::vector<Variable> m_variables;
    Scopes m_scopes;
    std::deque<Table> m_tables;           ///< of derived tables
    std::list<CreatedTable> m_created;    ///< the newest first
    std::vector<const Table *> m_dropped; ///< of the catalog
};

/// The place in the query that is being resolved.
struct Resolver::Scope {
    BoundSelect *select = nullptr;
    Scope *outer = nullptr;
    bool aggregatesAllowed = false;
    bool inAggregate = false;
};

/// Makes a scope the innermost one for its own lifetime.
struct Resolver::ScopeEntry {
    ScopeEntry(Resolver &resolver, Scope &scope) : m_resolver(resolver), m_outer(resolver.m_scope) {
        scope.outer = m_outer;
        resolver.m_scope = &scope;
    }
    /// A failure may come from where another scope stood in for this one.
    ~ScopeEntry() { m_resolver.m_scope = m_outer; }
    ScopeEntry(const ScopeEntry &) = delete;
    ScopeEntry &operator=(const ScopeEntry &) = delete;

private:
    Resolver &m_resolver;
    Scope *m_outer;
};

} // namespace zel::tsql
