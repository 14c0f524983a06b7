#pragma once

#include <cstdint>
#include <string_view>

namespace zel::tsql {

/// The reserved words of the dialect. Those that the parser knows have a name of their own, the others are
/// Other: they are no names either.
enum class Keyword : std::uint8_t {
    None,
    Other,
    All,
    And,
    As,
    Asc,
    Begin,
    Between,
    By,
    Case,
    Clustered,
    Constraint,
    Convert,
    Create,
    Cross,
    Declare,
    Default,
    Delete,
    Desc,
    Distinct,
    Drop,
    Else,
    End,
    Exec,
    Execute,
    Exists,
    From,
    Full,
    Group,
    Having,
    Identity,
    If,
    In,
    Index,
    Inner,
    Insert,
    Into,
    Is,
    Join,
    Key,
    Left,
    Like,
    NonClustered,
    Not,
    Null,
    On,
    Or,
    Order,
    Outer,
    Primary,
    Proc,
    Procedure,
    Return,
    Right,
    Select,
    Set,
    Statistics,
    Table,
    Then,
    Top,
    Union,
    Unique,
    Update,
    Values,
    When,
    Where,
    With,
};

/// None when the word is not reserved.
[[nodiscard]] Keyword keyword(std::string_view word);

} // namespace zel::tsql
