#include "platform/tsql/meaning/resolver.h"

#include "platform/tsql/meaning/types.h"
#include "platform/tsql/text/dates.h"
#include "platform/tsql/text/names.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace zel::tsql {

namespace {

constexpr Type Integer{TypeKind::Int, 0, 0};
constexpr Type Moment{TypeKind::DateTime, 0, 0};
constexpr Type Identity{TypeKind::Numeric, 38, 0};
constexpr Type LongText{TypeKind::VarChar, 8000, 0};
constexpr Type Name{TypeKind::VarChar, 30, 0};
constexpr int MostArguments = 16;

int literalNumber(const Expr &value) {
    int number = -1;
    if (value.op == Op::NumberLiteral)
        std::from_chars(value.text.data(), value.text.data() + value.text.size(), number);
    return number;
}

} // namespace

/// A call with its arguments, resolved and converted to what the function wants.
struct Resolver::Call {
    const Node &node;
    Op op;
    std::array<Expr *, MostArguments> values{};
    int count = 0;
    DatePart part = DatePart::Day;

    [[nodiscard]] Expr *operator[](int i) const { return values[static_cast<std::size_t>(i)]; }
};

/// The functions of the dialect, one row each.
struct FunctionTable {
    using Call = Resolver::Call;

    /// What becomes of an argument before the function sees it.
    enum class Wants {
        AsIs,
        Settled, ///< decimals with exactly their digits
        Text,
        Integer,
        Number,      ///< 8117 for what is none
        Moment,      ///< a date as it is, everything else as a datetime
        KnownMoment, ///< the same; 8116 for a bare NULL
        Part,        ///< a word that names a part of a date; no value, the others move up
    };
    /// The type of the result: this one, or that of an argument.
    struct Gives {
        Type type;
        int like = -1;
    };
    struct Entry {
        std::string_view name;
        int least;
        int most;
        Op op;
        std::array<Wants, 3> wants;
        Gives gives;
        Expr *(*typing)(Resolver &, Call &, const Entry &) = plain; ///< for what the columns before can't say
    };
    static const Entry *find(std::string_view name);
    static Call arguments(Resolver &r, const Node &node, const Entry &entry);
    static Expr *converted(Resolver &r, const Node &node, Expr *value, Wants wants);
    static DatePart part(Resolver &r, const Node &call, const Node &word);

    static Expr *plain(Resolver &r, Call &call, const Entry &entry) {
        const Type type = entry.gives.like < 0 ? entry.gives.type : call[entry.gives.like]->type;
        Expr *made = r.make(call.op, type, call.node.at, call[0], call[1], call[2]);
        made->n = static_cast<int>(call.part);
        return made;
    }
    static Expr *byteLength(Resolver &r, Call &call, const Entry &entry) {
        if (isNumber(call[0]->type))
            return r.m_converter.number(isInteger(call[0]->type) ? "4" : "9", Integer, call.node.at);
        call.values[0] = r.m_converter.asText(call[0]);
        return plain(r, call, entry);
    }
    static Expr *side(Resolver &r, Call &call, const Entry &entry) {
        Expr *made = plain(r, call, entry);
        const int count = literalNumber(*call[1]);
        if (count >= 0)
            made->type.length = std::clamp(count, 1, std::max(1, made->type.length));
        return made;
    }
    static Expr *charIndex(Resolver &r, Call &call, const Entry &entry) {
        if (call[2] == nullptr)
            call.values[2] = r.m_converter.number("1", Integer, call.node.at);
        return plain(r, call, entry);
    }
    static Expr *dateAdd(Resolver &r, Call &call, const Entry &entry) {
        if (call[1]->type.kind == TypeKind::Date && isTimePart(call.part)) {
            r.fail(call.node.at, 9810,
                   "The datepart " + std::string(call.node.a->text) +
                       " is not supported by date function dateadd for data type date.");
        }
        return plain(r, call, entry);
    }
    static Expr *ifNull(Resolver &r, Call &call, const Entry &) {
        const bool untyped = call[0]->op == Op::NullLiteral && call[0]->type.kind == TypeKind::Null;
        const Type type = untyped ? call[1]->type : call[0]->type;
        return r.make(call.op, type, call.node.at, call[0],
                      r.m_converter.convert(call[1], type, Purpose::Cast));
    }
    static Expr *identity(Resolver &r, Call &call, const Entry &entry) {
        Expr *made = plain(r, call, entry);
        made->n = static_cast<int>(r.m_scopes.identity);
        return made;
    }
    static Expr *coalesce(Resolver &r, Call &call, const Entry &) {
        Type type;
        for (int i = 0; i < call.count; ++i)
            type = commonType(type, call[i]->type);
        Expr *made = r.make(call.op, type, call.node.at);
        Expr **last = &made->a;
        for (int i = 0; i < call.count; ++i) {
            *last = r.copy(*r.m_converter.convert(call[i], type, Purpose::Meet));
            last = &(*last)->next;
        }
        return made;
    }
    static Expr *nullIf(Resolver &r, Call &call, const Entry &entry) {
        const Type common = commonType(call[0]->type, call[1]->type);
        if (call[0]->type.kind == TypeKind::Null) {
            r.fail(call.node.at, 4151,
                   "The type of the first argument to NULLIF cannot be the NULL constant because the type of "
                   "the "
                   "first argument has to be known.");
        }
        if (isText(common)) {
            call.op = Op::NullIfTexts;
            return plain(r, call, entry);
        }
        if (isDate(common) && isNumber(call[0]->type))
            call.values[0] = r.m_converter.convert(call[0], common, Purpose::Meet);
        call.values[1] = r.m_converter.convert(call[1], common, Purpose::Meet);
        Expr *made = plain(r, call, entry);
        if (isText(call[0]->type)) {
            made->op = Op::NullIfConverted;
            made->n = static_cast<int>(common.kind);
        }
        return made;
    }

    static Expr *aggregate(Resolver &r, Call &call, const Entry &entry) {
        if (call.node.op == '*')
            call.op = Op::CountRows;
        Expr *made = plain(r, call, entry);
        made->distinct = call.node.distinct;
        made->n = decimals(made->type);
        return made;
    }
    static Expr *sum(Resolver &r, Call &call, const Entry &entry) {
        const Type type = call[0]->type;
        if (type.kind == TypeKind::Bit)
            r.fail(call.node.at, 8117, "Operand data type bit is invalid for sum operator.");
        if (!isDecimal(type))
            call.op = Op::PlainSum;
        Expr *made = aggregate(r, call, entry);
        if (type.kind == TypeKind::Numeric)
            made->type.length = 38;
        if (!isInteger(type))
            return made;
        // The engine's integers are wider.
        made->type = type.kind == TypeKind::BigInt ? type : Integer;
        Expr *checked = r.make(Op::ToInteger, made->type, call.node.at, made);
        checked->n = integerBits(made->type);
        return checked;
    }
    static Expr *average(Resolver &r, Call &call, const Entry &entry) {
        const Type type = call[0]->type;
        if (isInteger(type))
            call.op = Op::IntegerAverage;
        else if (type.kind == TypeKind::Float)
            call.op = Op::FloatAverage;
        Expr *made = aggregate(r, call, entry);
        if (isInteger(type) && type.kind != TypeKind::BigInt)
            made->type = Integer;
        if (type.kind == TypeKind::Numeric)
            made->type = {TypeKind::Numeric, 38, std::max(6, type.scale)};
        made->n = decimals(made->type);
        made->m = decimals(type);
        return made;
    }
};

namespace {

using F = FunctionTable;
using W = FunctionTable::Wants;

constexpr F::Gives LikeFirst{{}, 0};
constexpr F::Gives LikeSecond{{}, 1};

constexpr F::Entry Functions[] = {
    {"isnull", 2, 2, Op::IfNull, {W::Settled, W::AsIs}, LikeFirst, F::ifNull},
    {"sum", 1, 1, Op::Sum, {W::Number}, LikeFirst, F::sum},
    {"max", 1, 1, Op::Maximum, {W::Settled}, LikeFirst, F::aggregate},
    {"min", 1, 1, Op::Minimum, {W::Settled}, LikeFirst, F::aggregate},
    {"count", 1, 1, Op::Count, {W::AsIs}, {Integer}, F::aggregate},
    {"avg", 1, 1, Op::Average, {W::Number}, LikeFirst, F::average},
    {"rtrim", 1, 1, Op::Trim, {W::Text}, LikeFirst},
    {"ltrim", 1, 1, Op::TrimLeft, {W::Text}, LikeFirst},
    {"right", 2, 2, Op::Right, {W::Text, W::Integer}, LikeFirst, F::side},
    {"left", 2, 2, Op::Left, {W::Text, W::Integer}, LikeFirst, F::side},
    {"replace", 3, 3, Op::Replace, {W::Text, W::Text, W::Text}, {LongText}},
    {"day", 1, 1, Op::Day, {W::KnownMoment}, {Integer}},
    {"month", 1, 1, Op::Month, {W::KnownMoment}, {Integer}},
    {"year", 1, 1, Op::Year, {W::KnownMoment}, {Integer}},
    {"getdate", 0, 0, Op::Now, {}, {Moment}},
    {"len", 1, 1, Op::Length, {W::Text}, {Integer}},
    {"datalength", 1, 1, Op::ByteLength, {W::AsIs}, {Integer}, F::byteLength},
    {"upper", 1, 1, Op::Upper, {W::Text}, LikeFirst},
    {"lower", 1, 1, Op::Lower, {W::Text}, LikeFirst},
    {"substring", 3, 3, Op::Substring, {W::Text, W::Integer, W::Integer}, LikeFirst},
    {"charindex", 2, 3, Op::CharIndex, {W::Text, W::Text, W::Integer}, {Integer}, F::charIndex},
    {"coalesce", 2, MostArguments, Op::Coalesce, {}, {}, F::coalesce},
    {"nullif", 2, 2, Op::NullIf, {W::Settled, W::Settled}, LikeFirst, F::nullIf},
    {"abs", 1, 1, Op::Absolute, {W::Number}, LikeFirst},
    {"round", 2, 2, Op::Round, {W::Number, W::Integer}, LikeFirst},
    {"dateadd", 3, 3, Op::DateAdd, {W::Part, W::Integer, W::Moment}, LikeSecond, F::dateAdd},
    {"datediff", 3, 3, Op::DateDifference, {W::Part, W::Moment, W::Moment}, {Integer}},
    {"datename", 2, 2, Op::PartName, {W::Part, W::KnownMoment}, {Name}},
    {"datepart", 2, 2, Op::PartOfDate, {W::Part, W::KnownMoment}, {Integer}},
    {"scope_identity", 0, 0, Op::Variable, {}, {Identity}, F::identity},
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

Expr *FunctionTable::converted(Resolver &r, const Node &node, Expr *value, Wants wants) {
    switch (wants) {
    case Wants::AsIs:
    case Wants::Part:
        return value;
    case Wants::Text:
        return r.m_converter.asText(value);
    case Wants::Integer:
        return r.m_converter.convert(value, Integer, Purpose::Cast);
    case Wants::KnownMoment:
        if (value->op == Op::NullLiteral && value->type.kind == TypeKind::Null)
            r.fail(node.at, 8116,
                   "Argument data type NULL is invalid for argument 1 of " + std::string(node.text) +
                       " function.");
        [[fallthrough]];
    case Wants::Moment:
        return isDate(value->type) ? value : r.m_converter.convert(value, Moment, Purpose::Cast);
    case Wants::Number:
        if (value->op != Op::NullLiteral && !isNumber(value->type)) {
            r.fail(node.at, 8117,
                   "Operand data type " + std::string(typeName(value->type)) + " is invalid for " +
                       std::string(node.text) + " operator.");
        }
        break;
    case Wants::Settled:
        break;
    }
    return r.m_converter.settled(value);
}

DatePart FunctionTable::part(Resolver &r, const Node &call, const Node &word) {
    if (word.kind != NodeKind::Column || !word.qualifier.empty())
        r.fail(word.at, 1023, "Invalid parameter 1 specified for " + std::string(call.text) + ".");
    const auto named = datePart(word.text);
    if (!named || (*named == DatePart::IsoWeek && sameName(call.text, "dateadd")))
        r.fail(word.at, 155,
               "'" + std::string(word.text) + "' is not a recognized " + std::string(call.text) + " option.");
    return *named;
}

FunctionTable::Call FunctionTable::arguments(Resolver &r, const Node &node, const Entry &entry) {
    Call call{node, entry.op};
    int given = 0;
    for (const Node *argument = node.a; argument != nullptr; argument = argument->next, ++given) {
        const auto place = static_cast<std::size_t>(given);
        const Wants wants = place < entry.wants.size() ? entry.wants[place] : Wants::AsIs;
        if (given >= entry.most)
            continue;
        if (wants == Wants::Part)
            call.part = part(r, node, *argument);
        else
            call.values[static_cast<std::size_t>(call.count++)] =
                converted(r, node, r.value(*argument), wants);
    }
    if (node.op != '*' && (given < entry.least || given > entry.most)) {
        r.fail(node.at, 174,
               "The " + std::string(entry.name) + " function requires " + std::to_string(entry.least) +
                   " argument(s).");
    }
    return call;
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
    FunctionTable::Call call = FunctionTable::arguments(*this, node, *function);
    if (aggregate) {
        m_scope->inAggregate = false;
        checkReach(star ? nullptr : call[0], node.at);
    }
    return function->typing(*this, call, *function);
}

} // namespace zel::tsql
