#include "platform/tsql/meaning/resolver.h"

#include "platform/tsql/meaning/types.h"
#include "platform/tsql/text/names.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace zel::tsql {

namespace {

constexpr Type Integer{TypeKind::Int, 0, 0};
constexpr int LongestText = 8000;
constexpr int MostArguments = 16;

int literalNumber(const Expr &value) {
    int number = -1;
    if (value.op == Op::NumberLiteral)
        std::from_chars(value.text.data(), value.text.data() + value.text.size(), number);
    return number;
}

} // namespace

/// The arguments of a call, resolved.
struct Resolver::Arguments {
    const Node &node;
    std::array<Expr *, MostArguments> values{};
    int count = 0;

    [[nodiscard]] Expr *operator[](int i) const { return values[static_cast<std::size_t>(i)]; }
};

/// The functions of the dialect: name, how many arguments, and how the call is typed.
struct FunctionTable {
    using Arguments = Resolver::Arguments;
    using Typing = Expr *(*)(Resolver &, Arguments &, Op);
    struct Entry {
        std::string_view name;
        int least;
        int most;
        Op op;
        Typing typing;
    };
    static const Entry *find(std::string_view name);

    static Expr *text(Resolver &r, Arguments &arguments, int i) { return r.m_converter.asText(arguments[i]); }
    static Expr *integer(Resolver &r, Arguments &arguments, int i) {
        return r.m_converter.convert(arguments[i], Integer, Purpose::Cast);
    }
    static Type textType(int length) { return {TypeKind::VarChar, std::clamp(length, 1, LongestText), 0}; }

    /// One text in, a text no longer out.
    static Expr *sameText(Resolver &r, Arguments &arguments, Op op) {
        Expr *value = text(r, arguments, 0);
        return r.make(op, value->type, arguments.node.at, value);
    }
    static Expr *length(Resolver &r, Arguments &arguments, Op op) {
        if (op == Op::ByteLength && isNumber(arguments[0]->type))
            return r.m_converter.number(isInteger(arguments[0]->type) ? "4" : "9", Integer,
                                        arguments.node.at);
        return r.make(op, Integer, arguments.node.at, text(r, arguments, 0));
    }
    static Expr *replace(Resolver &r, Arguments &arguments, Op op) {
        return r.make(op, textType(LongestText), arguments.node.at, text(r, arguments, 0),
                      text(r, arguments, 1), text(r, arguments, 2));
    }
    static Expr *side(Resolver &r, Arguments &arguments, Op op) {
        Expr *value = text(r, arguments, 0);
        const int count = literalNumber(*arguments[1]);
        const int width = count < 0 ? value->type.length : std::min(count, value->type.length);
        return r.make(op, textType(width), arguments.node.at, value, integer(r, arguments, 1));
    }
    static Expr *substring(Resolver &r, Arguments &arguments, Op op) {
        Expr *value = text(r, arguments, 0);
        return r.make(op, value->type, arguments.node.at, value, integer(r, arguments, 1),
                      integer(r, arguments, 2));
    }
    static Expr *charIndex(Resolver &r, Arguments &arguments, Op op) {
        Expr *start = arguments.count > 2 ? integer(r, arguments, 2)
                                          : r.m_converter.number("1", Integer, arguments.node.at);
        return r.make(op, Integer, arguments.node.at, text(r, arguments, 0), text(r, arguments, 1), start);
    }
    static Expr *datePart(Resolver &r, Arguments &arguments, Op op) {
        Expr *date = arguments[0];
        if (!isDate(date->type)) {
            r.fail(arguments.node.at, 8116,
                   "Argument data type " + std::string(typeName(date->type)) +
                       " is invalid for argument 1 of " + std::string(arguments.node.text) + " function.");
        }
        return r.make(op, Integer, arguments.node.at, date);
    }
    static Expr *moment(Resolver &r, Arguments &arguments, Op op) {
        return r.make(op, {TypeKind::DateTime, 0, 0}, arguments.node.at);
    }
    static Expr *identity(Resolver &r, Arguments &arguments, Op op) {
        Expr *made = r.make(op, {TypeKind::Numeric, 38, 0}, arguments.node.at);
        made->n = static_cast<int>(r.m_scopes.identity);
        return made;
    }
    static Expr *ifNull(Resolver &r, Arguments &arguments, Op op) {
        Expr *first = r.m_converter.settled(arguments[0]);
        const bool untyped = first->op == Op::NullLiteral && first->type.kind == TypeKind::Null;
        const Type type = untyped ? arguments[1]->type : first->type;
        Expr *second = r.m_converter.convert(arguments[1], type, Purpose::Cast);
        return r.make(op, type, arguments.node.at, first, second);
    }
    static Expr *coalesce(Resolver &r, Arguments &arguments, Op op) {
        Type type;
        for (int i = 0; i < arguments.count; ++i)
            type = commonType(type, arguments[i]->type);
        Expr *made = r.make(op, type, arguments.node.at);
        Expr **last = &made->a;
        for (int i = 0; i < arguments.count; ++i) {
            *last = r.copy(*r.m_converter.convert(arguments[i], type, Purpose::Meet));
            last = &(*last)->next;
        }
        return made;
    }
    static Expr *nullIf(Resolver &r, Arguments &arguments, Op op) {
        Expr *made = r.make(op, arguments[0]->type, arguments.node.at);
        made->a = r.copy(*r.comparison(arguments[0], arguments[1], '=', arguments.node.at));
        made->a->next = r.make(Op::NullLiteral, made->type, arguments.node.at);
        made->b = arguments[0];
        return made;
    }
    static Expr *numeric(Resolver &r, Arguments &arguments, int i, const char *function) {
        Expr *value = r.m_converter.settled(arguments[i]);
        if (value->op != Op::NullLiteral && !isNumber(value->type)) {
            r.fail(arguments.node.at, 8117,
                   "Operand data type " + std::string(typeName(value->type)) + " is invalid for " + function +
                       " operator.");
        }
        return value;
    }
    static Expr *absolute(Resolver &r, Arguments &arguments, Op op) {
        Expr *value = numeric(r, arguments, 0, "abs");
        return r.make(op, value->type, arguments.node.at, value);
    }
    static Expr *round(Resolver &r, Arguments &arguments, Op op) {
        Expr *value = numeric(r, arguments, 0, "round");
        return r.make(op, value->type, arguments.node.at, value, integer(r, arguments, 1));
    }

    static Expr *aggregate(Resolver &r, Arguments &arguments, Op op, Type type, Expr *argument) {
        Expr *made = r.make(op, type, arguments.node.at, argument);
        made->distinct = arguments.node.distinct;
        made->n = std::min(decimals(type), 8);
        return made;
    }
    static Expr *count(Resolver &r, Arguments &arguments, Op op) {
        if (arguments.node.op == '*')
            return aggregate(r, arguments, Op::CountRows, Integer, nullptr);
        return aggregate(r, arguments, op, Integer, arguments[0]);
    }
    static Expr *extreme(Resolver &r, Arguments &arguments, Op op) {
        Expr *value = r.m_converter.settled(arguments[0]);
        return aggregate(r, arguments, op, value->type, value);
    }
    static Expr *sum(Resolver &r, Arguments &arguments, Op op) {
        numeric(r, arguments, 0, "sum");
        Expr *value = arguments[0];
        Type type = value->type;
        if (type.kind == TypeKind::Numeric)
            type.length = 38;
        else if (type.kind == TypeKind::SmallInt || type.kind == TypeKind::Bit)
            type = Integer;
        return aggregate(r, arguments, isDecimal(type) ? op : Op::PlainSum, type, value);
    }
    static Expr *average(Resolver &r, Arguments &arguments, Op op) {
        numeric(r, arguments, 0, "avg");
        Expr *value = arguments[0];
        if (isInteger(value->type))
            return aggregate(r, arguments, Op::IntegerAverage, Integer, value);
        if (value->type.kind == TypeKind::Float)
            return aggregate(r, arguments, Op::FloatAverage, value->type, value);
        Type type = value->type;
        if (type.kind == TypeKind::Numeric)
            type = {TypeKind::Numeric, 38, std::max(6, type.scale)};
        Expr *made = aggregate(r, arguments, op, type, value);
        made->m = std::min(decimals(value->type), 8);
        return made;
    }
};

namespace {

using F = FunctionTable;

constexpr F::Entry Functions[] = {
    {"isnull", 2, 2, Op::IfNull, F::ifNull},
    {"sum", 1, 1, Op::Sum, F::sum},
    {"max", 1, 1, Op::Maximum, F::extreme},
    {"min", 1, 1, Op::Minimum, F::extreme},
    {"count", 1, 1, Op::Count, F::count},
    {"avg", 1, 1, Op::Average, F::average},
    {"rtrim", 1, 1, Op::Trim, F::sameText},
    {"ltrim", 1, 1, Op::TrimLeft, F::sameText},
    {"right", 2, 2, Op::Right, F::side},
    {"left", 2, 2, Op::Left, F::side},
    {"replace", 3, 3, Op::Replace, F::replace},
    {"day", 1, 1, Op::Day, F::datePart},
    {"month", 1, 1, Op::Month, F::datePart},
    {"year", 1, 1, Op::Year, F::datePart},
    {"getdate", 0, 0, Op::Now, F::moment},
    {"len", 1, 1, Op::Length, F::length},
    {"datalength", 1, 1, Op::ByteLength, F::length},
    {"upper", 1, 1, Op::Upper, F::sameText},
    {"lower", 1, 1, Op::Lower, F::sameText},
    {"substring", 3, 3, Op::Substring, F::substring},
    {"charindex", 2, 3, Op::CharIndex, F::charIndex},
    {"coalesce", 2, MostArguments, Op::Coalesce, F::coalesce},
    {"nullif", 2, 2, Op::Case, F::nullIf},
    {"abs", 1, 1, Op::Absolute, F::absolute},
    {"round", 2, 2, Op::Round, F::round},
    {"scope_identity", 0, 0, Op::Variable, F::identity},
};

bool isAggregate(Op op) {
    return op >= Op::Sum && op <= Op::CountRows;
}

} // namespace

const FunctionTable::Entry *FunctionTable::find(std::string_view name) {
    for (const Entry &entry : Functions) {
        if (sameName(entry.name, name))
            return &entry;
    }
    return nullptr;
}

Expr *Resolver::call(const Node &node) {
    const FunctionTable::Entry *function = FunctionTable::find(node.text);
    if (function == nullptr) {
        fail(node.at, 195, "'" + std::string(node.text) + "' is not a recognized built-in function name.");
    }
    const bool aggregate = isAggregate(function->op);
    const bool star = node.op == '*';
    if ((star && function->op != Op::Count) || (node.distinct && !aggregate))
        fail(node.at, 102, "Incorrect syntax near '" + std::string(node.text) + "'.");
    if (aggregate) {
        if (m_scope == nullptr || !m_scope->aggregatesAllowed)
            fail(node.at, 147, "An aggregate may not appear in the WHERE clause.");
        if (m_scope->inAggregate) {
            fail(node.at, 130,
                 "Cannot perform an aggregate function on an expression containing an aggregate or a "
                 "subquery.");
        }
        m_scope->select->aggregate = true;
        m_scope->inAggregate = true;
    }
    Arguments arguments{node};
    for (const Node *argument = node.a; argument != nullptr; argument = argument->next) {
        if (arguments.count < function->most)
            arguments.values[static_cast<std::size_t>(arguments.count)] = value(*argument);
        ++arguments.count;
    }
    if (aggregate) {
        m_scope->inAggregate = false;
        checkReach(star ? nullptr : arguments[0], node.at);
    }
    if (!star && (arguments.count < function->least || arguments.count > function->most)) {
        fail(node.at, 174,
             "The " + std::string(function->name) + " function requires " + std::to_string(function->least) +
                 " argument(s).");
    }
    return function->typing(*this, arguments, function->op);
}

} // namespace zel::tsql
