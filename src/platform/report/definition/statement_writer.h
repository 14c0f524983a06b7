#pragma once

#include "platform/report/definition/definition.h"

#include <optional>

namespace zel::report {

/// A table as `from` and `join` name it: "Accounts A".
[[nodiscard]] Sql named(const TableDefinition &table);

/// Writes a bound condition or sort key as statement text. FormulaError 5 for what can't stand in a
/// statement.
class StatementWriter {
public:
    StatementWriter(const Definition &definition, const Parameters &parameters)
        : m_definition(definition), m_parameters(parameters) {}

    [[nodiscard]] Sql write(const Expression &node) const;
    [[nodiscard]] Sql condition(const Expression &node) const;
    /// Of a table joined as a sum the statement that gives it.
    [[nodiscard]] Sql column(int table, int index) const;

private:
    [[nodiscard]] Sql number(const Expression &node) const;
    [[nodiscard]] Sql infix(const Expression &node, Literal symbol) const;
    [[nodiscard]] Sql joined(const Expression &node, Literal word) const;
    [[nodiscard]] std::optional<Value> constant(const Expression &node) const;
    [[nodiscard]] Sql like(const Expression &node) const;
    [[nodiscard]] Sql compared(Op op, const Expression &left, const Expression &right) const;
    [[nodiscard]] Sql comparison(const Expression &node) const;
    [[nodiscard]] Sql range(const Expression &node) const;
    [[nodiscard]] Sql call(const Expression &node) const;

    const Definition &m_definition;
    const Parameters &m_parameters;
    int m_summed = -1; ///< the table whose rows are being summed, and whose columns are their own
};

/// FormulaError when a bound condition, group or sort key can't stand in a statement.
void checkInStatement(const Expression &expression, const Definition &definition);

} // namespace zel::report
