#include "platform/report/select.h"

#include "platform/base/number_text.h"
#include "platform/report/functions.h"

#include <algorithm>
#include <set>

namespace zel::report {

namespace {

[[noreturn]] void refuse(const Expression &expression, const QString &what) {
    throw FormulaError(errors::InvalidCall, what, expression.offset);
}

/// Writes a bound condition or sort key as statement text.
class Writer {
public:
    Writer(const Definition &definition, const Parameters &parameters)
        : m_definition(definition), m_parameters(parameters) {}

    Sql write(const Expression &node) const {
        switch (node.op) {
        case Op::Literal:
            return literal(node.literal);
        case Op::Parameter:
            return literal(m_parameters.at(static_cast<std::size_t>(node.index)));
        case Op::Column:
            return column(node.table, node.index);
        case Op::Formula:
            return write(*m_definition.formulas[static_cast<std::size_t>(node.index)].expression);
        case Op::Negate:
            return "-("_sql + number(*node.operands[0]) + ")";
        case Op::Add:
            return infix(node, " + ");
        case Op::Subtract:
            return infix(node, " - ");
        case Op::Multiply:
            return infix(node, " * ");
        case Op::And:
            return joined(node, " and ");
        case Op::Or:
            return joined(node, " or ");
        case Op::Not:
            return "not ("_sql + condition(*node.operands[0]) + ")";
        case Op::Like:
            return like(node);
        case Op::InRange:
            return range(node);
        case Op::If:
            return "case when "_sql + condition(*node.operands[0]) + " then " + write(*node.operands[1]) +
                   " else " + write(*node.operands[2]) + " end";
        case Op::Call:
            return call(node);
        case Op::Equal:
        case Op::NotEqual:
        case Op::Less:
        case Op::LessEqual:
        case Op::Greater:
        case Op::GreaterEqual:
            return comparison(node);
        default:
            refuse(node, QStringLiteral("This can't be part of a selection or an order."));
        }
    }

    Sql condition(const Expression &node) const {
        switch (node.op) {
        case Op::Formula:
            return condition(*m_definition.formulas[static_cast<std::size_t>(node.index)].expression);
        case Op::If:
        case Op::Literal:
        case Op::Parameter:
            refuse(node, QStringLiteral("This can't be a condition of a selection."));
        default:
            return write(node);
        }
    }

    Sql column(int table, int index) const {
        const TableDefinition &source = m_definition.tables[static_cast<std::size_t>(table)];
        const QString name =
            source.name + QLatin1Char('.') + source.columns[static_cast<std::size_t>(index)].name;
        return Sql::trusted(name.toStdString());
    }

private:
    static Sql literal(const Value &value) {
        if (value.isNull())
            return "null";
        if (std::holds_alternative<std::string>(value.storage()))
            return text(value.text());
        if (const auto *moment = std::get_if<DateTime>(&value.storage()))
            return text(sqlDate(moment->date));
        return Sql() + QString::fromStdString(value.decimal().toString());
    }

    static Sql text(QString letters) {
        letters.replace(QLatin1Char('\''), QStringLiteral("''"));
        return "'"_sql + letters + "'";
    }

    Sql number(const Expression &node) const {
        return node.op == Op::Column ? "isnull("_sql + write(node) + ", 0)" : write(node);
    }

    template <std::size_t N>
    Sql infix(const Expression &node, const char (&symbol)[N]) const {
        return "("_sql + number(*node.operands[0]) + symbol + number(*node.operands[1]) + ")";
    }

    template <std::size_t N>
    Sql joined(const Expression &node, const char (&word)[N]) const {
        return "("_sql + condition(*node.operands[0]) + word + condition(*node.operands[1]) + ")";
    }

    [[nodiscard]] std::optional<Value> constant(const Expression &node) const {
        if (node.op == Op::Literal)
            return node.literal;
        if (node.op == Op::Parameter)
            return m_parameters.at(static_cast<std::size_t>(node.index));
        return std::nullopt;
    }

    Sql like(const Expression &node) const {
        const auto pattern = constant(*node.operands[1]);
        if (!pattern)
            refuse(*node.operands[1], QStringLiteral("What follows like must be a text."));
        QString written;
        for (const QChar letter : pattern->text()) {
            if (letter == QLatin1Char('*'))
                written += QLatin1Char('%');
            else if (letter == QLatin1Char('?'))
                written += QLatin1Char('_');
            else if (letter == QLatin1Char('%') || letter == QLatin1Char('_') || letter == QLatin1Char('['))
                written += QLatin1Char('[') + QString(letter) + QLatin1Char(']');
            else
                written += letter;
        }
        return write(*node.operands[0]) + " like " + text(written);
    }

    /// A date says the whole day, whatever time of day a column holds.
    Sql dayComparison(Op op, const Sql &left, QDate day) const {
        const Sql begin = text(sqlDate(day));
        const QDate next = day.addDays(1);
        const Sql pastEnd = next.year() > 9999 ? " <= "_sql + begin : " < "_sql + text(sqlDate(next));
        const Sql afterEnd = next.year() > 9999 ? " > "_sql + begin : " >= "_sql + text(sqlDate(next));
        switch (op) {
        case Op::Equal:
            return "("_sql + left + " >= " + begin + " and " + left + pastEnd + ")";
        case Op::NotEqual:
            return "("_sql + left + " < " + begin + " or " + left + afterEnd + ")";
        case Op::Less:
            return left + " < " + begin;
        case Op::LessEqual:
            return left + pastEnd;
        case Op::Greater:
            return left + afterEnd;
        default:
            return left + " >= " + begin;
        }
    }

    Sql compared(Op op, const Expression &left, const Expression &right) const {
        if (left.kind == Kind::Boolean || right.kind == Kind::Boolean)
            refuse(left, QStringLiteral("Conditions can't be compared in a selection."));
        const auto fixed = constant(right);
        if (fixed && left.kind == Kind::Date && fixed->date().isValid())
            return dayComparison(op, write(left), fixed->date());
        switch (op) {
        case Op::Equal:
            return write(left) + " = " + write(right);
        case Op::NotEqual:
            return write(left) + " <> " + write(right);
        case Op::Less:
            return write(left) + " < " + write(right);
        case Op::LessEqual:
            return write(left) + " <= " + write(right);
        case Op::Greater:
            return write(left) + " > " + write(right);
        default:
            return write(left) + " >= " + write(right);
        }
    }

    Sql comparison(const Expression &node) const {
        const Expression &left = *node.operands[0];
        const Expression &right = *node.operands[1];
        if (!constant(left) || constant(right))
            return compared(node.op, left, right);
        switch (node.op) {
        case Op::Less:
            return compared(Op::Greater, right, left);
        case Op::LessEqual:
            return compared(Op::GreaterEqual, right, left);
        case Op::Greater:
            return compared(Op::Less, right, left);
        case Op::GreaterEqual:
            return compared(Op::LessEqual, right, left);
        default:
            return compared(node.op, right, left);
        }
    }

    Sql range(const Expression &node) const {
        return "("_sql + compared(Op::GreaterEqual, *node.operands[0], *node.operands[1]) + " and " +
               compared(Op::LessEqual, *node.operands[0], *node.operands[2]) + ")";
    }

    Sql call(const Expression &node) const {
        const std::string_view pattern = function(node.index).sql;
        const auto place = pattern.find('$');
        if (place == std::string_view::npos)
            refuse(node, QStringLiteral("This function can't be part of a selection or an order."));
        return Sql::trusted(pattern.substr(0, place)) + write(*node.operands[0]) +
               Sql::trusted(pattern.substr(place + 1));
    }

    const Definition &m_definition;
    const Parameters &m_parameters;
};

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

Sql source(const TableDefinition &table) {
    const bool renamed = table.name.compare(table.source, Qt::CaseInsensitive) != 0;
    const QString text = renamed ? table.source + QLatin1Char(' ') + table.name : table.name;
    return Sql::trusted(text.toStdString());
}

Sql fromClause(const Definition &definition, const Writer &writer) {
    Sql from = " from "_sql + source(definition.tables.front());
    for (const TableDefinition &table : definition.tables) {
        if (table.join == Join::None)
            continue;
        from += table.join == Join::Inner ? " inner join "_sql : " left join "_sql;
        from += source(table);
        from += " on "_sql;
        from += writer.condition(*table.on);
    }
    return from;
}

Sql whereClause(const std::vector<ExpressionPtr> &conditions, const Writer &writer, const Sql &extra) {
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

Sql orderClause(const Definition &definition, const Writer &writer) {
    Sql order;
    std::set<std::string> seen;
    const auto add = [&](const ExpressionPtr &by, bool descending) {
        if (by->stage == Stage::Constant)
            return;
        const Sql key = writer.write(*by);
        if (!seen.insert(key.text()).second)
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
Sql columnList(const Definition &definition, const Writer &writer,
               const std::vector<std::pair<int, int>> &columns) {
    Sql list = "select "_sql;
    for (const auto &[table, index] : columns) {
        const TableDefinition &from = definition.tables[static_cast<std::size_t>(table)];
        const QString name =
            from.name + QLatin1Char('_') + from.columns[static_cast<std::size_t>(index)].name;
        if (table != columns.front().first || index != columns.front().second)
            list += ", "_sql;
        list += writer.column(table, index) + " as " + Sql::trusted(name.toStdString());
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
    std::vector<ExpressionPtr> all;
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
    const Writer writer(definition, parameters);
    Select select;
    select.columns = usedColumns(definition);
    std::erase_if(select.columns, [&](const auto &column) { return isLookup(definition, column.first); });
    select.text = columnList(definition, writer, select.columns) + fromClause(definition, writer) +
                  whereClause(selection.rows, writer, extra) + orderClause(definition, writer);
    return select;
}

Select lookupSelect(const Definition &definition, int table, const Selection &selection,
                    const Parameters &parameters) {
    const Writer writer(definition, parameters);
    const TableDefinition &wanted = definition.tables[static_cast<std::size_t>(table)];
    Select select;
    select.columns = usedColumns(definition);
    std::erase_if(select.columns, [&](const auto &column) { return column.first != table; });
    std::vector<ExpressionPtr> conditions;
    if (wanted.where)
        conditions.push_back(wanted.where);
    if (const auto given = selection.lookups.find(table); given != selection.lookups.end())
        conditions.insert(conditions.end(), given->second.begin(), given->second.end());
    select.text = columnList(definition, writer, select.columns) + " from " + source(wanted) +
                  whereClause(conditions, writer, {});
    return select;
}

Sql linkCondition(const SubreportDefinition &subreport, const Definition &outer, const Selection &selection,
                  const Parameters &inner, const Parameters &parameters) {
    const Writer inside(*subreport.definition, inner);
    const Writer outside(outer, parameters);
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
