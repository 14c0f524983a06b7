#include "platform/tsql/text/type.h"

#include "platform/tsql/text/names.h"

#include <algorithm>
#include <charconv>

namespace zel::tsql {

namespace {

struct TypeWord {
    std::string_view word;
    Type type; ///< as declared without a length
};

/// Lengths of unbounded texts are the longest that the server keeps in a row.
constexpr int Unbounded = 8000;

/// A type whose range or clock is not the one of these is no type here.
constexpr TypeWord Words[] = {
    {"int", {TypeKind::Int, 0, 0}},
    {"varchar", {TypeKind::VarChar, 1, 0}},
    {"datetime", {TypeKind::DateTime, 0, 0}},
    {"numeric", {TypeKind::Numeric, 18, 0}},
    {"char", {TypeKind::Char, 1, 0}},
    {"smallint", {TypeKind::SmallInt, 0, 0}},
    {"decimal", {TypeKind::Numeric, 18, 0}},
    {"integer", {TypeKind::Int, 0, 0}},
    {"bigint", {TypeKind::BigInt, 0, 0}},
    {"money", {TypeKind::Money, 19, 4}},
    {"float", {TypeKind::Float, 0, 0}},
    {"real", {TypeKind::Float, 0, 0}},
    {"bit", {TypeKind::Bit, 0, 0}},
    {"date", {TypeKind::Date, 0, 0}},
    {"tinyint", {TypeKind::TinyInt, 0, 0}},
    {"nvarchar", {TypeKind::VarChar, 1, 0}},
    {"nchar", {TypeKind::Char, 1, 0}},
    {"text", {TypeKind::VarChar, Unbounded, 0}},
    {"ntext", {TypeKind::VarChar, Unbounded, 0}},
};

bool readInt(std::string_view &text, int &value) {
    while (!text.empty() && text.front() == ' ')
        text.remove_prefix(1);
    const auto read = std::from_chars(text.data(), text.data() + text.size(), value);
    if (read.ec != std::errc())
        return false;
    text.remove_prefix(static_cast<std::size_t>(read.ptr - text.data()));
    while (!text.empty() && text.front() == ' ')
        text.remove_prefix(1);
    return true;
}

} // namespace

std::optional<Type> parseType(std::string_view declared) {
    const std::size_t open = declared.find('(');
    const std::string_view word = withoutTrailingBlanks(declared.substr(0, open));
    const auto found = std::find_if(std::begin(Words), std::end(Words),
                                    [&](const TypeWord &entry) { return sameName(entry.word, word); });
    if (found == std::end(Words))
        return std::nullopt;
    Type type = found->type;
    if (open == std::string_view::npos)
        return type;
    std::string_view rest = declared.substr(open + 1);
    if (isText(type) && rest.size() >= 4 && sameName(rest.substr(0, 3), "max")) {
        type.length = Unbounded;
        return rest.substr(3) == ")" ? std::optional(type) : std::nullopt;
    }
    int first = 0;
    int second = 0;
    if (!readInt(rest, first))
        return std::nullopt;
    if (type.kind == TypeKind::Numeric && !rest.empty() && rest.front() == ',') {
        rest.remove_prefix(1);
        if (!readInt(rest, second) || second < 0 || second > first)
            return std::nullopt;
    }
    if (rest != ")" || first < 1)
        return std::nullopt;
    if (isText(type))
        type.length = first <= Unbounded ? first : 0;
    else if (type.kind == TypeKind::Numeric)
        type = {TypeKind::Numeric, first <= 38 ? first : 0, second};
    else if (type.kind != TypeKind::Float && type.kind != TypeKind::DateTime)
        return std::nullopt;
    if ((isText(type) || type.kind == TypeKind::Numeric) && type.length == 0)
        return std::nullopt;
    return type;
}

std::string_view typeName(Type type) {
    switch (type.kind) {
    case TypeKind::Null:
        return "NULL";
    case TypeKind::Bit:
        return "bit";
    case TypeKind::TinyInt:
        return "tinyint";
    case TypeKind::SmallInt:
        return "smallint";
    case TypeKind::Int:
        return "int";
    case TypeKind::BigInt:
        return "bigint";
    case TypeKind::Numeric:
        return "numeric";
    case TypeKind::Money:
        return "money";
    case TypeKind::Float:
        return "float";
    case TypeKind::Char:
        return "char";
    case TypeKind::VarChar:
        return "varchar";
    case TypeKind::Date:
        return "date";
    case TypeKind::DateTime:
        return "datetime";
    }
    return {};
}

} // namespace zel::tsql
