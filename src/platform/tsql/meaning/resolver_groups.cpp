#include "platform/tsql/meaning/resolver.h"

#include "platform/tsql/meaning/types.h"

namespace zel::tsql {

namespace {

bool isColumnOf(const Expr &value, const Source &source) {
    return value.op == Op::ColumnValue && value.source == &source;
}

struct Sums {
    int count = 0;
    int scale = 0; ///< of all of them
};

/// Whether nothing but sums of one scale, the grouping column and values from elsewhere make it.
bool isOfSums(const Expr &value, const Expr &group, Sums &sums) {
    if (value.op == Op::Sum) {
        constexpr int Most = 100;
        if (value.distinct || ++sums.count > Most || (sums.count > 1 && sums.scale != value.n))
            return false;
        sums.scale = value.n;
        return true;
    }
    if ((value.op > Op::Sum && value.op <= Op::CountRows) || value.select != nullptr)
        return false;
    if (isColumnOf(value, *group.source))
        return value.m == group.m;
    for (const Expr *list : {value.a, value.b, value.c}) {
        for (const Expr *part = list; part != nullptr; part = part->next) {
            if (!isOfSums(*part, group, sums))
                return false;
        }
    }
    return true;
}

/// What the condition compares with something, beside other conditions.
template <class Told>
bool anyCompared(const Expr &condition, const Told &told) {
    if (condition.op == Op::And) {
        for (const Expr *part = condition.a; part != nullptr; part = part->next) {
            if (anyCompared(*part, told))
                return true;
        }
        return false;
    }
    return (condition.op == Op::Compare || condition.op == Op::Between) && told(*condition.a);
}

} // namespace

/// An engine may look up the rows of each group then, instead of going through all of the table.
bool Resolver::groupsBeginIndex(const BoundSelect &select) const {
    const Expr *group = select.groupBy;
    if (group == nullptr || group->next != nullptr || isText(group->type) || select.where == nullptr ||
        select.having != nullptr || select.distinct)
        return false;
    const Source *source = select.sources;
    if (source == nullptr || source->next != nullptr || source->derived != nullptr ||
        !isColumnOf(*group, *source))
        return false;
    Sums sums;
    for (const BoundItem *item = select.items; item != nullptr; item = item->next) {
        if (!isOfSums(*item->value, *group, sums))
            return false;
    }
    for (const BoundOrder *order = select.orderBy; order != nullptr; order = order->next) {
        if (!isOfSums(*order->value, *group, sums))
            return false;
    }
    return sums.count > 0 && anyCompared(*select.where, [&](const Expr &value) {
               return isColumnOf(value, *source) &&
                      m_catalog.indexed(*source->table, tsql::columnOf(*group).name,
                                        tsql::columnOf(value).name);
           });
}

} // namespace zel::tsql
