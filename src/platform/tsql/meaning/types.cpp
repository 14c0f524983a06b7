#include "platform/tsql/meaning/types.h"

#include "platform/tsql/text/names.h"

#include <algorithm>
#include <array>

namespace zel::tsql {

namespace {

/// Of two types that meet, the one further behind is the common one.
int rank(TypeKind kind) {
    constexpr std::array Order{TypeKind::Null,    TypeKind::Char,     TypeKind::VarChar, TypeKind::Bit,
                               TypeKind::TinyInt, TypeKind::SmallInt, TypeKind::Int,     TypeKind::BigInt,
                               TypeKind::Money,   TypeKind::Numeric,  TypeKind::Float,   TypeKind::Date,
                               TypeKind::DateTime};
    return int(std::ranges::find(Order, kind) - Order.begin());
}

} // namespace

int integerBits(Type type) {
    switch (type.kind) {
    case TypeKind::Bit:
        return 1;
    case TypeKind::TinyInt:
        return 8;
    case TypeKind::SmallInt:
        return 16;
    case TypeKind::Int:
        return 32;
    default:
        return 64;
    }
}

int decimals(Type type) {
    return type.kind == TypeKind::Money ? 4 : type.kind == TypeKind::Numeric ? type.scale : 0;
}

int precision(Type type) {
    switch (type.kind) {
    case TypeKind::Bit:
        return 1;
    case TypeKind::TinyInt:
        return 3;
    case TypeKind::SmallInt:
        return 5;
    case TypeKind::Int:
        return 10;
    case TypeKind::BigInt:
    case TypeKind::Money:
        return 19;
    case TypeKind::Numeric:
        return type.length;
    default:
        return 0;
    }
}

Type commonType(Type a, Type b) {
    Type common = rank(a.kind) >= rank(b.kind) ? a : b;
    if (common.kind == TypeKind::Numeric && isNumber(a) && isNumber(b)) {
        const int scale = std::max(decimals(a), decimals(b));
        const int whole = std::max(precision(a) - decimals(a), precision(b) - decimals(b));
        common = {TypeKind::Numeric, std::min(38, whole + scale), std::min(scale, 38)};
    } else if (isText(a) && isText(b)) {
        common.length = std::max(a.length, b.length);
    }
    return common;
}

int textWidth(Type type) {
    switch (type.kind) {
    case TypeKind::Char:
    case TypeKind::VarChar:
        return type.length;
    case TypeKind::Bit:
        return 1;
    case TypeKind::TinyInt:
        return 3;
    case TypeKind::SmallInt:
        return 6;
    case TypeKind::Int:
        return 11;
    case TypeKind::BigInt:
        return 20;
    case TypeKind::Numeric:
        return type.length + 3;
    case TypeKind::Money:
        return 21;
    case TypeKind::Float:
        return 24;
    case TypeKind::Date:
        return 10;
    case TypeKind::DateTime:
        return 26;
    case TypeKind::Null:
        return 1;
    }
    return 0;
}

} // namespace zel::tsql
