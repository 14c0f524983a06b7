#pragma once

#include "platform/tsql/text/type.h"

#include <cstdint>
#include <string_view>

/// The tree as it was written, names not yet looked up. All nodes live in an Arena; lists are chained by
/// `next`; `at` is the byte of the source where the thing begins.
namespace zel::tsql {

enum class NodeKind : std::uint8_t {
    Integer,
    Decimal,
    Float,
    Text, ///< `text` holds the value, its quotes resolved
    Null,
    Column,   ///< [qualifier.]text
    Star,     ///< [qualifier.]*
    Variable, ///< text with its @; `variable` tells which
    Negate,
    Arithmetic, ///< a `op` b: + - * / %
    Compare,    ///< a `op` b: = < > and the two-character signs of the lexer
    And,        ///< all of the list from a
    Or,         ///< one of the list from a
    Not,
    Between, ///< a between b and c
    In,      ///< a in (list from b, or select)
    Like,    ///< a like b
    IsNull,
    Exists,
    Case, ///< [a] when b then b.next when ... else c
    Cast, ///< a as type, c the style
    Call, ///< text(a, a.next ...)
    Subselect,
};

struct SelectNode;

/// The place of a variable among those of its batch or procedure, in the order of their declaration.
using VariableIndex = std::int32_t;
inline constexpr VariableIndex NoVariable = -1; ///< also @@rowcount and its like

/// What is known of a variable when its whole batch or procedure has been read.
struct VariableNode {
    Type type;
    bool assigned = false; ///< by a set or a select, besides what its declaration gives it
};

struct Node {
    NodeKind kind = NodeKind::Null;
    char op = '\0';
    bool negated = false;  ///< not between, not in, not like, is not null
    bool distinct = false; ///< count(distinct x)
    VariableIndex variable = NoVariable;
    std::uint32_t at = 0;
    std::string_view text;
    std::string_view qualifier;
    Node *a = nullptr;
    Node *b = nullptr;
    Node *c = nullptr;
    Node *next = nullptr;
    SelectNode *select = nullptr;
    Type type;
};

struct NameNode {
    std::string_view text;
    std::uint32_t at = 0;
    bool descending = false;
    NameNode *next = nullptr;
};

/// [[database].[schema].]name
struct TableName {
    std::string_view database;
    std::string_view schema;
    std::string_view name;
    std::uint32_t at = 0;
};

enum class JoinKind : std::uint8_t { Comma, Inner, Left, Right, Full, Cross };

struct TableNode {
    TableName table;
    SelectNode *derived = nullptr;
    std::string_view alias;
    JoinKind join = JoinKind::Comma;
    Node *on = nullptr;
    TableNode *next = nullptr;
};

struct ItemNode {
    Node *value = nullptr;
    std::string_view alias;
    VariableIndex variable = NoVariable; ///< that takes the value instead of a result
    std::uint32_t at = 0;
    ItemNode *next = nullptr;
};

struct OrderNode {
    Node *value = nullptr;
    bool descending = false;
    OrderNode *next = nullptr;
};

struct SelectNode {
    std::uint32_t at = 0;
    bool distinct = false;
    Node *top = nullptr;
    ItemNode *items = nullptr;
    TableNode *from = nullptr;
    Node *where = nullptr;
    Node *groupBy = nullptr;
    Node *having = nullptr;
    OrderNode *orderBy = nullptr; ///< of the whole union, at its first select
    SelectNode *united = nullptr; ///< the next select of the union
    bool unitedAll = false;       ///< `united` came by union all
};

struct ColumnNode {
    std::string_view name;
    std::uint32_t at = 0;
    Type type;
    std::string_view declared; ///< the type as it was written
    bool notNull = false;
    bool identity = false;
    std::int64_t seed = 1; ///< of an identity
    bool primaryKey = false;
    ColumnNode *next = nullptr;
};

/// A set clause of an update, a declared variable, a parameter or an argument.
struct AssignmentNode {
    std::string_view qualifier; ///< of a set clause: TABLE.name
    std::string_view name;
    std::uint32_t at = 0;
    VariableIndex variable = NoVariable; ///< that is declared, or that a set assigns to
    Type type;
    Node *value = nullptr; ///< nullptr: no default; for an argument: the word DEFAULT
    AssignmentNode *next = nullptr;
};

struct RowNode {
    Node *values = nullptr;
    std::uint32_t at = 0;
    RowNode *next = nullptr;
};

enum class ActionKind : std::uint8_t {
    Select,
    Insert,
    Update,
    Delete,
    CreateTable,
    DropTable,
    CreateIndex,
    CreateProcedure,
    DropProcedure,
    Execute,
    Declare,
    SetVariable,
    SetOption, ///< one that changes no answer (set nocount on)
    If,
    Return,
    Analyze,
};

/// One statement; which members count depends on the kind.
struct ActionNode {
    ActionKind kind = ActionKind::Select;
    std::uint32_t at = 0;
    TableName table; ///< also the name of a procedure or an index
    TableName indexed;
    SelectNode *select = nullptr;
    NameNode *names = nullptr; ///< columns of an insert, an index or a primary key
    RowNode *rows = nullptr;
    AssignmentNode *assignments = nullptr;
    ColumnNode *columns = nullptr;
    TableNode *from = nullptr; ///< of a change: the tables that it joins
    /// Of a change; of an index, which rows it holds; of an if, its condition; of a return, its value.
    Node *where = nullptr;
    ActionNode *body = nullptr;      ///< of a procedure or an if
    ActionNode *otherwise = nullptr; ///< of an if
    bool unique = false;
    ActionNode *next = nullptr;
};

} // namespace zel::tsql
