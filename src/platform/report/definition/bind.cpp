#include "platform/report/definition/definition.h"
#include "platform/report/formula/functions.h"

#include <algorithm>

namespace zel::report {

namespace {

using Node = std::shared_ptr<Expression>;

bool same(const QString &left, const QString &right) {
    return left.compare(right, Qt::CaseInsensitive) == 0;
}

template <typename Things>
int indexOf(const Things &things, const QString &name) {
    const auto found =
        std::ranges::find_if(things, [&](const auto &thing) { return same(thing.name, name); });
    return found == things.end() ? -1 : static_cast<int>(found - things.begin());
}

bool fits(Kind kind, Kind wanted) {
    return kind == wanted || kind == Kind::Null || wanted == Kind::Null;
}

class Binder {
public:
    explicit Binder(Definition &definition) : m_definition(definition) {}

    void bind(const Node &node) {
        if (node->op == Op::Call && bindTotal(node))
            return;
        for (const Node &operand : node->operands) {
            bind(operand);
            node->stage = std::max(node->stage, operand->stage);
        }
        switch (node->op) {
        case Op::Literal:
            return bindLiteral(*node);
        case Op::Column:
            return bindName(*node);
        case Op::Call:
            return bindCall(*node);
        case Op::Negate:
            return bindNegation(*node);
        case Op::Subtract:
        case Op::Multiply:
        case Op::Divide:
            return all(*node, Kind::Number, Kind::Number);
        case Op::Add:
            return bindSum(*node);
        case Op::Concatenate:
            node->kind = Kind::Text;
            return;
        case Op::Like:
            return all(*node, Kind::Text, Kind::Boolean);
        case Op::And:
        case Op::Or:
        case Op::Not:
            return all(*node, Kind::Boolean, Kind::Boolean);
        case Op::If:
            return bindIf(*node);
        default:
            return bindComparison(*node);
        }
    }

private:
    static void need(const Expression &node, Kind wanted) {
        if (!fits(node.kind, wanted))
            throw FormulaError(
                errors::TypeMismatch,
                QStringLiteral("This must be %1, not %2.").arg(nameOf(wanted), nameOf(node.kind)),
                node.offset);
    }

    static void all(Expression &node, Kind operands, Kind result) {
        for (const Node &operand : node.operands)
            need(*operand, operands);
        node.kind = result;
    }

    static void bindLiteral(Expression &node) {
        const Value::Storage &value = node.literal.storage();
        if (std::holds_alternative<std::string>(value))
            node.kind = Kind::Text;
        else if (std::holds_alternative<DateTime>(value))
            node.kind = Kind::Date;
        else if (!node.literal.isNull())
            node.kind = Kind::Number;
    }

    /// A sign before a number is part of it.
    static void bindNegation(Expression &node) {
        all(node, Kind::Number, Kind::Number);
        if (node.operands[0]->op != Op::Literal || node.operands[0]->literal.isNull())
            return;
        node.op = Op::Literal;
        node.literal = -node.operands[0]->literal.decimal();
        node.operands.clear();
    }

    static void bindSum(Expression &node) {
        if (node.operands[0]->kind == Kind::Text || node.operands[1]->kind == Kind::Text) {
            node.op = Op::Concatenate;
            return all(node, Kind::Text, Kind::Text);
        }
        all(node, Kind::Number, Kind::Number);
    }

    static void bindIf(Expression &node) {
        need(*node.operands[0], Kind::Boolean);
        node.kind = node.operands[1]->kind == Kind::Null ? node.operands[2]->kind : node.operands[1]->kind;
        need(*node.operands[2], node.kind);
    }

    static void bindComparison(Expression &node) {
        Kind kind = Kind::Null;
        for (const Node &operand : node.operands) {
            need(*operand, kind);
            if (kind == Kind::Null)
                kind = operand->kind;
        }
        node.kind = Kind::Boolean;
    }

    void bindName(Expression &node) {
        const QString name = QString::fromStdString(node.name);
        const auto point = name.indexOf(QLatin1Char('.'));
        if (point >= 0)
            return bindColumn(node, name.left(point).trimmed(), name.mid(point + 1).trimmed());
        if ((node.index = indexOf(m_definition.formulas, name)) >= 0) {
            const ExpressionPtr &formula =
                m_definition.formulas[static_cast<std::size_t>(node.index)].expression;
            node.op = Op::Formula;
            node.kind = formula->kind;
            node.stage = formula->stage;
        } else if ((node.index = indexOf(m_definition.totals, name)) >= 0) {
            node.op = Op::Total;
            node.kind = Kind::Number;
            node.stage = Stage::Total;
        } else if ((node.index = indexOf(m_definition.parameters, name)) >= 0) {
            node.op = Op::Parameter;
            node.kind = m_definition.parameters[static_cast<std::size_t>(node.index)].kind;
        } else {
            throw FormulaError(207, QStringLiteral("Invalid name {%1}.").arg(name), node.offset);
        }
    }

    void bindColumn(Expression &node, const QString &table, const QString &column) const {
        node.table = m_definition.table(table);
        if (node.table < 0)
            throw FormulaError(207, QStringLiteral("The report has no table %1.").arg(table), node.offset);
        const auto &columns = m_definition.tables[static_cast<std::size_t>(node.table)].columns;
        node.index = indexOf(columns, column);
        if (node.index < 0)
            throw FormulaError(207, QStringLiteral("Table %1 has no field %2 here.").arg(table, column),
                               node.offset);
        node.kind = columns[static_cast<std::size_t>(node.index)].kind;
        node.stage = Stage::Row;
    }

    void bindCall(Expression &node) const {
        node.index = functionIndex(node.name);
        const QString name = QString::fromStdString(node.name);
        if (node.index < 0)
            throw FormulaError(207, QStringLiteral("Invalid name %1.").arg(name), node.offset);
        const Function &called = function(node.index);
        const int count = static_cast<int>(node.operands.size());
        if (count < called.minimum || count > called.maximum)
            throw FormulaError(8144, QStringLiteral("%1 takes other arguments.").arg(name), node.offset);
        for (std::size_t i = 0; i < node.operands.size(); ++i)
            need(*node.operands[i], called.arguments[i]);
        node.kind = called.result;
        node.stage = std::max(node.stage, called.stage);
        if (called.name == "fromsub")
            bindFromSubreport(node);
    }

    void bindFromSubreport(Expression &node) const {
        const QString name = node.operands[0]->literal.text();
        const int index = m_definition.subreport(name);
        if (index < 0)
            throw FormulaError(207, QStringLiteral("The report has no sub-report %1 above.").arg(name),
                               node.offset);
        const auto &place = m_definition.subreports[static_cast<std::size_t>(index)];
        const QString wanted = node.operands[1]->literal.text();
        const int formula = place.definition->formula(wanted);
        if (formula < 0)
            throw FormulaError(207, QStringLiteral("Sub-report %1 has no formula %2.").arg(name, wanted),
                               node.offset);
        if (!place.links.empty())
            throw FormulaError(
                errors::InvalidCall,
                QStringLiteral("Sub-report %1 is linked: it says something else for each row.").arg(name),
                node.offset);
        node.kind = place.definition->formulas[static_cast<std::size_t>(formula)].expression->kind;
    }

    /// Sum(number [, "Group"]), Count(any [, "Group"]), RunningTotal(number [, "Group"]), Groups("Counted" [,
    /// "Group"]).
    bool bindTotal(const Node &node) {
        const bool running = node->name == "runningtotal";
        const bool groups = node->name == "groups";
        if (!running && !groups && node->name != "sum" && node->name != "count")
            return false;
        if (node->operands.empty() || node->operands.size() > 2)
            throw FormulaError(8144, QStringLiteral("A total takes one or two arguments."), node->offset);
        TotalDefinition total;
        total.running = running;
        if (groups) {
            total.function = TotalDefinition::Function::Groups;
            total.counted = groupNamed(*node->operands[0]);
        } else {
            total.function =
                node->name == "count" ? TotalDefinition::Function::Count : TotalDefinition::Function::Sum;
            bind(node->operands[0]);
            if (total.function == TotalDefinition::Function::Sum)
                need(*node->operands[0], Kind::Number);
            if (node->operands[0]->stage > Stage::Row)
                throw FormulaError(errors::InvalidCall,
                                   QStringLiteral("A total is taken over what rows hold."),
                                   node->operands[0]->offset);
            total.of = node->operands[0];
        }
        if (node->operands.size() == 2)
            total.group = groupNamed(*node->operands[1]);
        node->op = Op::Total;
        node->kind = Kind::Number;
        node->stage = Stage::Total;
        node->index = static_cast<int>(m_definition.totals.size());
        m_definition.totals.push_back(std::move(total));
        return true;
    }

    [[nodiscard]] int groupNamed(const Expression &node) const {
        const int index = m_definition.group(node.literal.text());
        if (index < 0)
            throw FormulaError(207, QStringLiteral("The report has no group of that name above."),
                               node.offset);
        return index;
    }

    Definition &m_definition;
};

} // namespace

ExpressionPtr bind(const std::shared_ptr<Expression> &parsed, Definition &definition) {
    Binder(definition).bind(parsed);
    return parsed;
}

int Definition::subreport(const QString &wanted) const {
    return indexOf(subreports, wanted);
}

int Definition::formula(const QString &wanted) const {
    return indexOf(formulas, wanted);
}

int Definition::group(const QString &wanted) const {
    return indexOf(groups, wanted);
}

int Definition::table(const QString &wanted) const {
    return indexOf(tables, wanted);
}

} // namespace zel::report
