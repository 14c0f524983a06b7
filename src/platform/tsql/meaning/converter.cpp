#include "platform/tsql/meaning/converter.h"

#include "platform/tsql/meaning/types.h"
#include "platform/tsql/reading/failure.h"
#include "platform/tsql/text/names.h"

#include <algorithm>

namespace zel::tsql {

Expr *Converter::make(Op op, Type type, std::uint32_t at, Expr *a, Expr *b, Expr *c) {
    Expr *made = m_arena.make<Expr>();
    made->op = op;
    made->type = type;
    made->at = at;
    made->a = a;
    made->b = b;
    made->c = c;
    return made;
}

Expr *Converter::number(std::string_view text, Type type, std::uint32_t at) {
    Expr *made = make(Op::NumberLiteral, type, at);
    made->text = text;
    return made;
}

Expr *Converter::settled(Expr *value) {
    const Expr *inner = value;
    while (inner->op == Op::Negate)
        inner = inner->a;
    const bool inexact = inner->op == Op::Add || inner->op == Op::Subtract || inner->op == Op::Multiply;
    if (inexact && isInteger(value->type)) { // the engine's integers are wider
        Expr *checked = make(Op::ToInteger, value->type, value->at, value);
        checked->n = integerBits(value->type);
        return checked;
    }
    if (!inexact || !isDecimal(value->type))
        return value;
    const bool cut = inner->op == Op::Multiply && value->type.kind == TypeKind::Money;
    Expr *rounded = make(cut ? Op::CutTo : Op::RoundTo, value->type, value->at, value);
    rounded->n = decimals(value->type);
    return rounded;
}

Expr *Converter::asText(Expr *value) {
    if (value->type.kind == TypeKind::VarChar)
        return value;
    return convert(value, {TypeKind::VarChar, std::max(1, textWidth(value->type)), 0}, Purpose::Cast);
}

Expr *Converter::convert(Expr *value, Type to, Purpose purpose, int style) {
    if (value->op == Op::NullLiteral) {
        Expr *typed = make(Op::NullLiteral, to, value->at);
        return typed;
    }
    if (isLiteral(*value))
        return convertLiteral(value, to, purpose, style);
    value = settled(value);
    switch (to.kind) {
    case TypeKind::Null:
        return value;
    case TypeKind::Bit:
    case TypeKind::TinyInt:
    case TypeKind::SmallInt:
    case TypeKind::Int:
    case TypeKind::BigInt:
        return toInteger(value, to, purpose);
    case TypeKind::Numeric:
    case TypeKind::Money:
        return toDecimal(value, to, purpose);
    case TypeKind::Float: {
        if (isDate(value->type))
            failClash(*value, to);
        return isNumber(value->type) && purpose == Purpose::Meet ? value
                                                                 : make(Op::ToFloat, to, value->at, value);
    }
    case TypeKind::Char:
    case TypeKind::VarChar:
        return toText(value, to, purpose, style);
    case TypeKind::Date:
    case TypeKind::DateTime:
        return toDate(value, to, style);
    }
    return value;
}

Expr *Converter::toInteger(Expr *value, Type to, Purpose purpose) {
    if (isDate(value->type))
        failClash(*value, to);
    if (isInteger(value->type) && (purpose == Purpose::Meet || integerBits(value->type) <= integerBits(to)))
        return value;
    if (isNumber(value->type) && purpose == Purpose::Meet)
        return value;
    Expr *made = make(Op::ToInteger, to, value->at, value);
    made->n = integerBits(to);
    return made;
}

Expr *Converter::toDecimal(Expr *value, Type to, Purpose purpose) {
    if (isDate(value->type))
        failClash(*value, to);
    const int whole = precision(to) - decimals(to);
    const bool fits = isNumber(value->type) && value->type.kind != TypeKind::Float &&
                      decimals(value->type) <= decimals(to) &&
                      precision(value->type) - decimals(value->type) <= whole;
    if (fits || (isNumber(value->type) && purpose == Purpose::Meet))
        return value;
    Expr *made = make(to.kind == TypeKind::Money ? Op::ToMoney : Op::ToNumeric, to, value->at, value);
    made->n = purpose == Purpose::Meet ? 38 : to.length;
    made->m = to.scale;
    return made;
}

bool Converter::showsAsterisk(Type from, Purpose purpose) {
    return isInteger(from) && from.kind != TypeKind::BigInt && purpose != Purpose::Assign;
}

Expr *Converter::toText(Expr *value, Type to, Purpose purpose, int style) {
    const Type from = value->type;
    const auto at = value->at;
    const bool toChar = to.kind == TypeKind::Char;
    Expr *text = value;
    int width = isDate(from) ? textWidth({TypeKind::DateTime, 0, 0}) : textWidth(from);
    if (isText(from)) {
        if (from.kind == TypeKind::Char && !toChar) {
            text = make(Op::Pad, {TypeKind::VarChar, from.length, 0}, at, value);
            text->n = from.length;
        }
    } else if (isDecimal(from) || (isInteger(from) && width > to.length)) {
        text = make(Op::NumberText, {TypeKind::VarChar, to.length, 0}, at, value);
        text->n = from.kind == TypeKind::Money ? 2 : decimals(from);
        text->m = width > to.length ? (showsAsterisk(from, purpose) ? -to.length : to.length) : 0;
        width = std::min(width, to.length);
    } else if (isInteger(from)) {
        text = make(Op::IntegerText, {TypeKind::VarChar, width, 0}, at, value);
    } else if (isDate(from)) {
        text = make(Op::DateText, {TypeKind::VarChar, width, 0}, at, value);
        text->n = style;
        text->m = from.kind == TypeKind::Date ? 1 : 0;
    } else {
        text = make(Op::FloatText, {TypeKind::VarChar, width, 0}, at, value);
    }
    if (width > to.length) {
        text = make(purpose == Purpose::Assign ? Op::CheckWidth : Op::Cut, to, at, text);
        text->n = to.length;
    }
    if (toChar && from.kind != TypeKind::Char)
        text = make(Op::Trim, to, at, text);
    return text;
}

Expr *Converter::toDate(Expr *value, Type to, int style) {
    if (isDate(value->type)) {
        if (to.kind == TypeKind::DateTime || value->type.kind == TypeKind::Date)
            return value;
        return make(Op::DateOnly, to, value->at, value);
    }
    if (isNumber(value->type) && to.kind == TypeKind::Date)
        failClash(*value, to);
    Expr *made = make(to.kind == TypeKind::Date ? Op::ToDate : Op::ToDateTime, to, value->at, value);
    made->n = style;
    return made;
}

void Converter::failConversion(const Expr &literal, Type to, Purpose purpose, const Error &error) {
    if (purpose != Purpose::Argument)
        fail(m_source, literal.at, error.number(), error.what());
    const bool tooLarge =
        error.number() == 220 || error.number() == 244 || error.number() == 248 || error.number() == 8115;
    if (tooLarge)
        failOverflow(literal, to);
    const std::string from(literal.op == Op::NumberLiteral ? "numeric" : "varchar");
    fail(m_source, literal.at, 8114,
         "Error converting data type " + from + " to " + std::string(typeName(to)) + ".");
}

void Converter::failOverflow(const Expr &value, Type to) {
    fail(m_source, value.at, 8115,
         "Arithmetic overflow error converting " +
             std::string(value.op == Op::NumberLiteral ? "expression" : "varchar") + " to data type " +
             std::string(typeName(to)) + ".");
}

void Converter::failClash(const Expr &value, Type to) {
    fail(m_source, value.at, 206,
         "Operand type clash: " + std::string(typeName(value.type)) + " is incompatible with " +
             std::string(typeName(to)) + ".");
}

} // namespace zel::tsql
