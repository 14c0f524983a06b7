#include "platform/report/query/select.h"

#include "platform/report/definition/statement_writer.h"

#include <algorithm>
#include <set>

namespace zel::report {

namespace {

[[noreturn]] void refuse(const Expression &expression, const QString &what) {
    throw FormulaError(errors::InvalidCall, what, expression.offset);
}

void collectTables(const Expression &node, const Definition &definition, std::set<int> &tables) {
    if (node.op == Op::Column)
        tables.insert(node.table);
    if (node.op == Op::Formula)
        collectTables(*definition.formulas[static_cast<std::size_t>(node.index)].expression, definition,
                      tables);
    for (const auto &operand : node.operands)
        collectTables(*operand, definition, tables);
}

void collectColumns(const Expression &node, std::vector<std::pair<int, int>> &columns) {
    if (node.op == Op::Column &&
        std::ranges::find(columns, std::pair(node.table, node.index)) == columns.end())
        columns.emplace_back(node.table, node.index);
    for (const auto &operand : node.operands)
        collectColumns(*operand, columns);
}

bool isLookup(const Definition &definition, int table) {
    return table > 0 && definition.tables[static_cast<std::size_t>(table)].join == Join::None;
}

void divide(const ExpressionPtr &condition, const Definition &definition, Selection &selection) {
    if (!condition)
        return;
    if (condition->op == Op::And) {
        for (const auto &operand : condition->operands)
            divide(operand, definition, selection);
        return;
    }
    std::set<int> tables;
    collectTables(*condition, definition, tables);
    const auto alone = std::ranges::find_if(tables, [&](int table) { return isLookup(definition, table); });
    if (alone == tables.end()) {
        selection.rows.push_back(condition);
        return;
    }
    if (tables.size() > 1)
        refuse(
            *condition,
            QStringLiteral("Table %1 is joined to nothing: no condition can hold it against another table.")
                .arg(definition.tables[static_cast<std::size_t>(*alone)].name));
    selection.lookups[*alone].push_back(condition);
}

Sql fromClause(const Definition &definition, const StatementWriter &writer) {
    Sql from = " from "_sql + named(definition.tables.front());
    for (const TableDefinition &table : definition.tables) {
        if (table.join == Join::None || table.join == Join::Sum)
            continue;
        from += table.join == Join::Inner ? " inner join "_sql : " left join "_sql;
        from += named(table);
        from += " on "_sql;
        from += writer.condition(*table.on);
    }
    return from;
}

Sql whereClause(const std::vector<ExpressionPtr> &conditions, const StatementWriter &writer,
                const Sql &extra) {
    Sql where;
    const auto add = [&](const Sql &condition) {
        where += where.text().empty() ? " where "_sql : " and "_sql;
        where += condition;
    };
    for (const ExpressionPtr &condition : conditions)
        add(writer.condition(*condition));
    if (!extra.text().empty())
        add(extra);
    return where;
}

Sql orderClause(const Definition &definition, const StatementWriter &writer) {
    Sql order;
    std::set<std::string> seen;
    const auto add = [&](const ExpressionPtr &by, bool descending) {
        if (by->stage == Stage::Constant)
            return;
        const Sql key = writer.write(*by);
        if (!seen.emplace(key.text()).second)
            return;
        order += order.text().empty() ? " order by "_sql : ", "_sql;
        order += key;
        if (descending)
            order += " desc"_sql;
    };
    for (const GroupDefinition &group : definition.groups)
        add(group.by, group.descending);
    for (const SortDefinition &sort : definition.sort)
        add(sort.by, sort.descending);
    return order;
}

/// "select T.A as T_A, ..." of the columns that fit; a statement with none of them reads a 1 for each row.
Sql columnList(const Definition &definition, const StatementWriter &writer,
               const std::vector<std::pair<int, int>> &columns) {
    Sql list = "select "_sql;
    for (const auto &[table, index] : columns) {
        const TableDefinition &from = definition.tables[static_cast<std::size_t>(table)];
        const QString name =
            from.name + QLatin1Char('_') + from.columns[static_cast<std::size_t>(index)].name;
        if (table != columns.front().first || index != columns.front().second)
            list += ", "_sql;
        list += writer.column(table, index) + " as " + Sql::name(name);
    }
    if (columns.empty())
        list += "1 as Row"_sql;
    return list;
}

void addBands(const std::vector<BandDefinition> &bands, std::vector<ExpressionPtr> &all) {
    for (const BandDefinition &band : bands) {
        all.push_back(band.when);
        for (const ItemDefinition &item : band.items) {
            if (const auto *field = std::get_if<FieldDefinition>(&item)) {
                all.push_back(field->expression);
                all.push_back(field->when);
            } else if (const auto *line = std::get_if<LineDefinition>(&item)) {
                all.push_back(line->when);
            } else if (const auto *box = std::get_if<BoxDefinition>(&item)) {
                all.push_back(box->when);
            } else if (const auto *place = std::get_if<SubreportPlace>(&item)) {
                all.push_back(place->when);
            }
        }
    }
}

} // namespace

std::vector<ExpressionPtr> evaluatedExpressions(const Definition &definition) {
    std::vector<ExpressionPtr> all = definition.linked;
    for (const auto *bands : {&definition.reportHeaders, &definition.pageHeaders, &definition.details,
                              &definition.reportFooters, &definition.pageFooters})
        addBands(*bands, all);
    for (const GroupDefinition &group : definition.groups) {
        addBands(group.headers, all);
        addBands(group.footers, all);
        all.push_back(group.by);
        all.push_back(group.title);
    }
    for (const FormulaDefinition &formula : definition.formulas)
        all.push_back(formula.expression);
    for (const TotalDefinition &total : definition.totals)
        all.push_back(total.of);
    for (const SubreportDefinition &subreport : definition.subreports) {
        for (const LinkDefinition &link : subreport.links)
            all.push_back(link.outer);
    }
    std::erase(all, nullptr);
    return all;
}

Selection selectionOf(const Definition &definition, const ExpressionPtr &condition) {
    Selection selection;
    divide(definition.where, definition, selection);
    divide(condition, definition, selection);
    return selection;
}

namespace {

std::vector<std::pair<int, int>> usedColumns(const Definition &definition) {
    std::vector<std::pair<int, int>> columns;
    for (const ExpressionPtr &expression : evaluatedExpressions(definition))
        collectColumns(*expression, columns);
    return columns;
}

} // namespace

Select rowsSelect(const Definition &definition, const Selection &selection, const Parameters &parameters,
                  const Sql &extra) {
    const StatementWriter writer(definition, parameters);
    Select select;
    select.columns = usedColumns(definition);
    std::erase_if(select.columns, [&](const auto &column) { return isLookup(definition, column.first); });
    select.text = columnList(definition, writer, select.columns) + fromClause(definition, writer) +
                  whereClause(selection.rows, writer, extra) + orderClause(definition, writer);
    return select;
}

Select lookupSelect(const Definition &definition, int table, const Selection &selection,
                    const Parameters &parameters) {
    const StatementWriter writer(definition, parameters);
    const TableDefinition &wanted = definition.tables[static_cast<std::size_t>(table)];
    Select select;
    select.columns = usedColumns(definition);
    std::erase_if(select.columns, [&](const auto &column) { return column.first != table; });
    std::vector<ExpressionPtr> conditions;
    if (wanted.where)
        conditions.push_back(wanted.where);
    if (const auto given = selection.lookups.find(table); given != selection.lookups.end())
        conditions.insert(conditions.end(), given->second.begin(), given->second.end());
    select.text = columnList(definition, writer, select.columns) + " from " + named(wanted) +
                  whereClause(conditions, writer, {});
    return select;
}

Sql linkCondition(const SubreportDefinition &subreport, const Definition &outer, const Selection &selection,
                  const Parameters &inner, const Parameters &parameters) {
    const StatementWriter inside(*subreport.definition, inner);
    const StatementWriter outside(outer, parameters);
    Sql condition;
    for (const LinkDefinition &link : subreport.links) {
        if (!condition.text().empty())
            condition += " and "_sql;
        condition += inside.write(*link.inner) + " in (select " + outside.write(*link.outer) +
                     fromClause(outer, outside) + whereClause(selection.rows, outside, {}) + ")";
    }
    return condition;
}

} // namespace zel::report
