#pragma once

#include "platform/tsql/engines/writer.h"
#include "platform/tsql/front_end.h"
#include "platform/tsql/meaning/resolver.h"
#include "platform/tsql/reading/arena.h"
#include "platform/tsql/reading/failure.h"
#include "platform/tsql/reading/lexer.h"

#include <algorithm>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace zel::tsql {

class RowValues;

/// One call of translate(): the statements of a text, and of the procedures that it calls, one by one
/// through resolver and writer. Of a statement that is done nothing but what goes to the engine is kept.
class Translation {
public:
    Translation(const Catalog &catalog, const Traits &engine)
        : m_catalog(catalog), m_engine(engine), m_resolver(catalog, m_arena) {}

    [[nodiscard]] std::vector<Statement> run(std::string_view source, const std::vector<Token> &tokens);

private:
    /// A procedure as it was read: once for all its calls.
    struct Procedure {
        const ActionNode *action = nullptr;
        std::vector<VariableNode> variables;
    };
    struct Procedures {
        Arena arena;
        std::map<const std::string *, Procedure> byText;
    };

    void statements(const ActionNode *action) {
        for (; action != nullptr; action = action->next)
            statement(*action);
    }

    void statement(const ActionNode &action);
    void select(const ActionNode &action);
    void insertion(const ActionNode &action);
    void change(const ActionNode &action, StatementKind kind);
    void analyze(const ActionNode &action);

    // Definitions (translation_definitions.cpp).
    void createTable(const ActionNode &action);
    void dropTable(const ActionNode &action);
    void createIndex(const ActionNode &action);
    /// Of a filtered index: rows where one column is, or is not, NULL.
    void checkFilter(const ActionNode &index, const Table &table);
    void createProcedure(const ActionNode &action);
    void dropProcedure(const ActionNode &action);

    // Procedures (translation_procedures.cpp).
    void execute(const ActionNode &action);
    void serverCall(const ActionNode &action, std::string_view name);
    const Procedure &procedure(const ActionNode &action, const std::string &text);
    void expand(const ActionNode &action, const std::string &text);
    std::vector<Expr *> bind(const ActionNode &action, const ActionNode &procedure, std::string_view body);
    void declareParameters(const Procedure &procedure, const std::vector<Expr *> &values);

    // Variables and the way through the statements (translation_control.cpp).
    void declare(const ActionNode &action);
    void setVariable(const ActionNode &action);
    void selectVariables(const SelectNode &select);
    /// A value after the other; the place behind them.
    std::size_t assignInTurn(const BoundItem *item, const std::vector<Slot> &targets);
    void assignEachRow(BoundSelect &rows, const std::vector<Slot> &targets, RowValues &values);
    void choice(const ActionNode &action);
    void returning(const ActionNode &action);
    /// The values go to the slots when the batch comes by.
    Statement &assign(const BoundSelect &values, std::vector<Slot> targets);
    Statement &assign(Expr *value, Slot target);
    [[nodiscard]] Slot newSlot() { return m_slots++; }

    Statement &add(StatementKind kind, Writer *writer = nullptr) {
        Statement &made = m_statements.emplace_back();
        made.kind = kind;
        if (writer != nullptr) {
            made.sql = writer->take();
            made.parameters = writer->takeParameters();
        }
        return made;
    }
    [[nodiscard]] Writer writer() const {
        constexpr std::size_t MostExpected = 1024; // of a batch's text each statement is a small part
        return Writer(m_engine, std::min(m_resolver.source().size() * 2 + 128, MostExpected));
    }
    [[noreturn]] void fail(std::size_t at, int number, const std::string &message) const {
        tsql::fail(m_resolver.source(), at, number, message);
    }

    const Catalog &m_catalog;
    const Traits &m_engine;
    Arena m_arena;
    Resolver m_resolver;
    std::vector<Statement> m_statements;
    std::unique_ptr<Procedures> m_procedures; ///< from the first call on
    const Procedure *m_procedure = nullptr;   ///< whose body is translated
    std::vector<std::size_t> m_returns;       ///< statements that jump to the procedure's end
    Slot m_slots = KeptSlots;
    int m_calls = 0;   ///< that are in one another
    int m_choices = 0; ///< that are in one another, within the procedure
    int m_scopes = 0;  ///< procedures entered so far
};

} // namespace zel::tsql
