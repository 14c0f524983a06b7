#pragma once

#include "platform/tsql/meaning/bound.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace zel::tsql {

class Writer;

/// How an engine says one node. `text` is what is written: $a, $b, $c the children, $* the list from a, $+
/// the list from b, $n and $m the numbers, $t the literal's text, $d "DISTINCT " where it applies. Where that
/// isn't enough, `write` is called instead.
struct NodeRule {
    std::string_view text;
    void (*write)(Writer &writer, const Expr &node) = nullptr;
};

/// What differs between the engines, as data.
struct Traits {
    std::array<NodeRule, OpCount> nodes;
    /// The name of the engine's own row identity, qualified by a source.
    std::string_view rowIdentity;
    /// What a comparison key of a text is written as in order by, group by and distinct: before and behind
    /// the text.
    std::string_view keyBegin;
    std::string_view keyEnd;
    /// The item of a sub-select that must have one row at most: before and behind it.
    std::string_view onlyBegin;
    std::string_view onlyEnd;
    /// What comes behind the items of a select with BoundSelect::byIndex; nullptr where the engine itself
    /// finds the quick way.
    void (*groupsByIndex)(Writer &writer, const BoundSelect &select);
    /// A column's definition in `create table`, without its name.
    void (*columnDefinition)(Writer &writer, const ColumnNode &column, bool isKey);
    /// Behind `create table`: the identity begins at `seed`, which is above 1.
    void (*identitySeed)(Writer &writer, std::string_view table, std::int64_t seed);
    std::string_view analyze;
    /// The words of a create before the name of a table that is the connection's own.
    std::string_view createTemporary;
    /// What comes before the name of such a table's index.
    std::string_view temporaryIndex;
};

} // namespace zel::tsql
