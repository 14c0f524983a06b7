#include "platform/tsql/engines/sqlite/sqlite_sums.h"

#include "platform/tsql/engines/sqlite/sqlite_names.h"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

namespace zel::tsql {

namespace {

void collectSums(const Expr *value, std::optional<int> scale, std::vector<const Expr *> &sums) {
    if (value == nullptr)
        return;
    if (value->op == Op::Sum && !value->distinct && (!scale || value->n == *scale))
        sums.push_back(value);
    for (const Expr *first : {value->a, value->b, value->c}) {
        for (const Expr *part = first; part != nullptr; part = part->next)
            collectSums(part, scale, sums);
    }
}

/// The sums, or those of one scale, that a select makes beside one another.
std::vector<const Expr *> sumsOf(const BoundSelect &select, std::optional<int> scale = {}) {
    std::vector<const Expr *> sums;
    for (const BoundItem *item = select.items; item != nullptr; item = item->next)
        collectSums(item->value, scale, sums);
    collectSums(select.having, scale, sums);
    for (const BoundOrder *one = select.orderBy; one != nullptr; one = one->next)
        collectSums(one->value, scale, sums);
    return sums;
}

/// Several sums are one call of a function for each row, since calls cost more than adding.
void writeSums(Writer &out, const std::vector<const Expr *> &sums) {
    out << sqlite_names::Sums << sums.front()->n;
    for (const Expr *sum : sums)
        out << (sum == sums.front() ? '(' : ',') << *sum->a;
    out << ')';
}

constexpr std::size_t MostArguments = 100;

} // namespace

void writeSumOf(Writer &out, const Expr &node, int scale) {
    out << sqlite_names::Sum << scale << (node.distinct ? "(DISTINCT " : "(") << *node.a << ')';
}

void writeSum(Writer &out, const Expr &node) {
    const BoundSelect &select = out.currentSelect();
    const std::vector<const Expr *> sums = sumsOf(select, node.n);
    const auto place = std::ranges::find(sums, &node);
    if (!select.byIndex && (sums.size() < 2 || sums.size() > MostArguments || place == sums.end()))
        return writeSumOf(out, node, node.n);
    out << sqlite_names::SumAt << '(';
    if (select.byIndex)
        out << 't' << select.sources->number << '.' << sqlite_names::Sums;
    else
        writeSums(out, sums);
    out << ',' << int(place - sums.begin()) << ')';
}

/// SQLite compares each row's group with the last one's; a look-up for each group saves that, and all rows
/// that the condition leaves out. The limit, which is none, keeps it from looking up again for each sum.
void writeGroupsByIndex(Writer &out, const BoundSelect &select) {
    const Source &source = *select.sources;
    const std::string &key = columnOf(*select.groupBy).name;
    const auto named = [&](char alias) -> Writer & {
        out << alias << source.number << '.';
        out.name(key);
        return out;
    };
    out << " FROM (SELECT ";
    named('g') << ",(SELECT ";
    writeSums(out, sumsOf(select));
    out << " FROM ";
    out.name(source.table->name);
    out << " AS t" << source.number << " WHERE ";
    named('t') << " IS ";
    named('g') << " AND " << *select.where << ") AS " << sqlite_names::Sums << " FROM (SELECT DISTINCT ";
    out.name(key);
    out << " FROM ";
    out.name(source.table->name);
    out << ") AS g" << source.number << " LIMIT -1) AS t" << source.number << " WHERE t" << source.number
        << '.' << sqlite_names::Sums << " IS NOT NULL";
}

} // namespace zel::tsql
