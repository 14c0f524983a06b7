#pragma once

#include "platform/report/definition/definition.h"

#include <map>
#include <utility>

namespace zel::report {

/// The statement that reads rows, and which {Table.Column} each of its columns is.
struct Select {
    Sql text;
    std::vector<std::pair<int, int>> columns;
};

/// What one run selects: the conditions on the rows, and those on each table that is joined to nothing.
struct Selection {
    std::vector<ExpressionPtr> rows;
    std::map<int, std::vector<ExpressionPtr>> lookups;
};

/// Divides the definition's selection and the given one by what they are about. FormulaError when a condition
/// is about a table joined to nothing and another at once.
[[nodiscard]] Selection selectionOf(const Definition &definition, const ExpressionPtr &condition);

/// All of a run's rows: columns, joins, selection and order in one statement. `extra` is a further
/// condition's text, or empty. FormulaError for what can't stand in a statement.
[[nodiscard]] Select rowsSelect(const Definition &definition, const Selection &selection,
                                const Parameters &parameters, const Sql &extra = {});
/// The rows of a table that is joined to nothing.
[[nodiscard]] Select lookupSelect(const Definition &definition, int table, const Selection &selection,
                                  const Parameters &parameters);
/// "inner in (select outer ...)": the condition on a sub-report's rows that its links make.
[[nodiscard]] Sql linkCondition(const SubreportDefinition &subreport, const Definition &outer,
                                const Selection &selection, const Parameters &inner,
                                const Parameters &parameters);

/// Every formula of the definition that a run evaluates.
[[nodiscard]] std::vector<ExpressionPtr> evaluatedExpressions(const Definition &definition);

} // namespace zel::report
