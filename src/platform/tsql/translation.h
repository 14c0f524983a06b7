#pragma once

#include "platform/tsql/front_end.h"
#include "platform/tsql/engines/writer.h"
#include "platform/tsql/meaning/resolver.h"
#include "platform/tsql/reading/arena.h"
#include "platform/tsql/reading/failure.h"
#include "platform/tsql/reading/lexer.h"

#include <deque>
#include <string>
#include <vector>

    namespace zel::tsql {

    /// One call of translate(): the statements of a text, and of the procedures that it calls, one by one
    /// through resolver and writer.
    class Translation {
    public:
        Translation(const Catalog &catalog, const Traits &engine)
            : m_catalog(catalog), m_engine(engine), m_resolver(catalog, m_arena) {}

        [[nodiscard]] std::vector<Statement> run(std::string_view source, const std::vector<Token> &tokens);

    private:
        void statements(const ActionNode *action) {
            for (; action != nullptr; action = action->next)
                statement(*action);
        }

        void statement(const ActionNode &action);
        void select(const ActionNode &action);
        void insertion(const ActionNode &action);
        void change(const ActionNode &action, StatementKind kind);
        void createTable(const ActionNode &action);
        void dropTable(const ActionNode &action);
        void createIndex(const ActionNode &action);
        /// Of a filtered index: rows where one column is, or is not, NULL.
        void checkFilter(const ActionNode &index, const Table &table);
        void createProcedure(const ActionNode &action);
        void dropProcedure(const ActionNode &action);
        void execute(const ActionNode &action);
        void serverCall(const ActionNode &action, std::string_view name);
        void expand(const ActionNode &action, const std::string &text);
        std::vector<Expr *> bind(const ActionNode &action, const ActionNode &procedure,
                                 std::string_view body);
        void declare(const ActionNode &action);

        Statement &add(StatementKind kind, Writer *writer = nullptr) {
            Statement &made = m_statements.emplace_back();
            made.kind = kind;
            if (writer != nullptr) {
                made.tooDeep = writer->deepest();
                made.sql = writer->take();
            }
            return made;
        }
        [[nodiscard]] Writer writer() const { return Writer(m_engine, m_resolver.source()); }
        [[noreturn]] void fail(std::size_t at, int number, const std::string &message) const {
            tsql::fail(m_resolver.source(), at, number, message);
        }

        const Catalog &m_catalog;
        const Traits &m_engine;
        Arena m_arena;
        Resolver m_resolver;
        std::vector<Statement> m_statements;
        std::deque<std::vector<Token>> m_bodies; ///< tokens of the procedures' texts
        int m_calls = 0;
    };

} // namespace zel::tsql
