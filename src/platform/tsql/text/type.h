#pragma once

#include <optional>
#include <string_view>

namespace zel::tsql {

enum class TypeKind {
    Null,
    Bit,
    TinyInt,
    SmallInt,
    Int,
    BigInt,
    Numeric,
    Money,
    Float,
    Char,
    VarChar,
    Date,
    DateTime
};

struct Type {
    TypeKind kind = TypeKind::Null;
    int length = 0; ///< characters of a text type; precision of a numeric
    int scale = 0;  ///< decimals of a numeric
};

/// The type that a declared type text ("varchar(50)", "numeric(18,2)", "INTEGER") means, for the columns of a
/// catalog; nullopt for a text that is no type of the dialect.
[[nodiscard]] std::optional<Type> parseType(std::string_view declared);

[[nodiscard]] constexpr bool isText(Type type) {
    return type.kind == TypeKind::Char || type.kind == TypeKind::VarChar;
}

/// "varchar", "int" ... as the server's messages name the types.
[[nodiscard]] std::string_view typeName(Type type);

} // namespace zel::tsql
