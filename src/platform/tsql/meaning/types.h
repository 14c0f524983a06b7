#pragma once

#include "platform/tsql/text/type.h"

namespace zel::tsql {

[[nodiscard]] constexpr bool isInteger(Type type) {
    return type.kind >= TypeKind::Bit && type.kind <= TypeKind::BigInt;
}
/// Numeric or money.
[[nodiscard]] constexpr bool isDecimal(Type type) {
    return type.kind == TypeKind::Numeric || type.kind == TypeKind::Money;
}
[[nodiscard]] constexpr bool isNumber(Type type) {
    return type.kind >= TypeKind::Bit && type.kind <= TypeKind::Float;
}
[[nodiscard]] constexpr bool isDate(Type type) {
    return type.kind == TypeKind::Date || type.kind == TypeKind::DateTime;
}

/// 1, 16, 32 or 64 for the integer types.
[[nodiscard]] int integerBits(Type type);
/// The decimals that a number of the type has; 0 for integers, 4 for money.
[[nodiscard]] int decimals(Type type);
/// A number's precision as a numeric: int is 10, money 19.
[[nodiscard]] int precision(Type type);
/// "varchar", "int" ... as the server's messages name the types.
[[nodiscard]] std::string_view typeName(Type type);
/// Of two types the one that the other is converted to when they meet; numbers of one rank get room for both.
[[nodiscard]] Type commonType(Type a, Type b);
/// The widest text that a number or a date of the type makes.
[[nodiscard]] int textWidth(Type type);

} // namespace zel::tsql
