#include "platform/report/definition/statement_writer.h"

#include "platform/base/number_text.h"
#include "platform/report/formula/functions.h"

namespace zel::report {

namespace {

[[noreturn]] void refuse(const Expression &expression, const QString &what) {
    throw FormulaError(errors::InvalidCall, what, expression.offset);
}

Sql text(QString letters) {
    letters.replace(QLatin1Char('\''), QStringLiteral("''"));
    return "'"_sql + letters + "'";
}

Sql literal(const Value &value) {
    if (value.isNull())
        return "null";
    if (std::holds_alternative<std::string>(value.storage()))
        return text(value.text());
    if (const auto *moment = std::get_if<DateTime>(&value.storage()))
        return text(sqlDate(moment->date));
    return Sql() + QString::fromStdString(value.decimal().toString());
}

/// A date says the whole day, whatever time of day a column holds.
Sql dayComparison(Op op, const Sql &left, QDate day) {
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

} // namespace

Sql named(const TableDefinition &table) {
    const bool renamed = table.name.compare(table.source, Qt::CaseInsensitive) != 0;
    return renamed ? Sql::name(table.source) + " " + Sql::name(table.name) : Sql::name(table.name);
}

Sql StatementWriter::write(const Expression &node) const {
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

Sql StatementWriter::condition(const Expression &node) const {
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

Sql StatementWriter::column(int table, int index) const {
    const TableDefinition &source = m_definition.tables[static_cast<std::size_t>(table)];
    const QString name =
        source.name + QLatin1Char('.') + source.columns[static_cast<std::size_t>(index)].name;
    if (source.join != Join::Sum || table == m_summed)
        return Sql::name(name);
    StatementWriter inside = *this;
    inside.m_summed = table;
    return "(select sum("_sql + Sql::name(name) + ") from " + named(source) + " where " +
           inside.condition(*source.on) + ")";
}

Sql StatementWriter::number(const Expression &node) const {
    return node.op == Op::Column ? "isnull("_sql + write(node) + ", 0)" : write(node);
}

Sql StatementWriter::infix(const Expression &node, Literal symbol) const {
    return "("_sql + number(*node.operands[0]) + symbol + number(*node.operands[1]) + ")";
}

Sql StatementWriter::joined(const Expression &node, Literal word) const {
    return "("_sql + condition(*node.operands[0]) + word + condition(*node.operands[1]) + ")";
}

std::optional<Value> StatementWriter::constant(const Expression &node) const {
    if (node.op == Op::Literal)
        return node.literal;
    if (node.op == Op::Parameter)
        return m_parameters.at(static_cast<std::size_t>(node.index));
    return std::nullopt;
}

Sql StatementWriter::like(const Expression &node) const {
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

Sql StatementWriter::compared(Op op, const Expression &left, const Expression &right) const {
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

Sql StatementWriter::comparison(const Expression &node) const {
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

Sql StatementWriter::range(const Expression &node) const {
    return "("_sql + compared(Op::GreaterEqual, *node.operands[0], *node.operands[1]) + " and " +
           compared(Op::LessEqual, *node.operands[0], *node.operands[2]) + ")";
}

Sql StatementWriter::call(const Expression &node) const {
    const Literal pattern = function(node.index).sql;
    if (pattern.text().find('$') == std::string_view::npos)
        refuse(node, QStringLiteral("This function can't be part of a selection or an order."));
    return pattern.before('$') + write(*node.operands[0]) + pattern.behind('$');
}

void checkInStatement(const Expression &expression, const Definition &definition) {
    const Parameters parameters(definition.parameters.size());
    static_cast<void>(StatementWriter(definition, parameters).write(expression));
}

} // namespace zel::report
