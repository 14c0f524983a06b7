#include "platform/tsql/engines/sqlite/sqlite_chains.h"

#include "platform/tsql/engines/sqlite/sqlite_names.h"
#include "platform/tsql/meaning/types.h"

#include <algorithm>
#include <span>
#include <vector>

namespace zel::tsql {

namespace {

using Operands = std::span<const Expr *const>;

/// Operands that are written behind one another; more are groups of groups.
constexpr std::size_t MostFlat = 200;

void writeGroups(Writer &out, Operands operands, std::string_view sign) {
    out << '(';
    std::size_t size = 1;
    while (operands.size() > size * MostFlat)
        size *= MostFlat;
    for (std::size_t begin = 0; begin < operands.size(); begin += size) {
        if (begin > 0)
            out << sign;
        if (size == 1)
            out << *operands[begin];
        else
            writeGroups(out, operands.subspan(begin, std::min(size, operands.size() - begin)), sign);
    }
    out << ')';
}

void writeList(Writer &out, const Expr &node, std::string_view sign) {
    std::vector<const Expr *> operands;
    for (const Expr *operand = node.a; operand != nullptr; operand = operand->next)
        operands.push_back(operand);
    writeGroups(out, operands, sign);
}

bool isSum(const Expr &value) {
    return value.op == Op::Add || value.op == Op::Subtract;
}

/// The sum that a sum begins with, where both are of one kind: whole numbers of one size, decimals, floats.
const Expr *leadingSum(const Expr &sum) {
    const Expr *lead = sum.a;
    if (isInteger(sum.type)) {
        if (lead->op != Op::ToInteger || lead->n != integerBits(sum.type))
            return nullptr;
        lead = lead->a;
    } else if (isDecimal(sum.type)) {
        if (lead->op != Op::RoundTo)
            return nullptr;
        lead = lead->a;
    }
    return isSum(*lead) && isInteger(lead->type) == isInteger(sum.type) &&
                   isDecimal(lead->type) == isDecimal(sum.type)
               ? lead
               : nullptr;
}

/// A function's arguments are limited too, so that the first of them may be the function of those before.
void writeCalls(Writer &out, const Expr &sum, Operands operands, std::string_view signs) {
    constexpr std::size_t MostArguments = 100;
    const std::size_t own =
        operands.size() <= MostArguments ? operands.size() : (operands.size() - 2) % (MostArguments - 1) + 1;
    const std::size_t before = operands.size() - own;
    const bool whole = isInteger(sum.type);
    out << (whole ? sqlite_names::AddIntegers : sqlite_names::AddDecimals) << '('
        << (whole ? integerBits(sum.type) : decimals(sum.type)) << ",'" << (before > 0 ? "+" : "")
        << signs.substr(before) << '\'';
    if (before > 0) {
        out << ',';
        writeCalls(out, sum, operands.first(before), signs.substr(0, before));
    }
    for (const Expr *operand : operands.subspan(before))
        out << ',' << *operand;
    out << ')';
}

} // namespace

void writeAnd(Writer &out, const Expr &node) {
    writeList(out, node, " AND ");
}

void writeOr(Writer &out, const Expr &node) {
    writeList(out, node, " OR ");
}

void writeConcat(Writer &out, const Expr &node) {
    writeList(out, node, "||");
}

void writeSummands(Writer &out, const Expr &node) {
    constexpr std::size_t Few = 8; // operators, then functions cost more for each row
    std::vector<const Expr *> operands;
    std::string signs;
    const Expr *first = &node;
    for (const Expr *sum = &node; sum != nullptr; sum = leadingSum(*sum)) {
        operands.push_back(sum->b);
        signs += sum->op == Op::Add ? '+' : '-';
        first = sum->a;
    }
    const bool calls = isInteger(node.type) || isDecimal(node.type);
    if (operands.size() == 1 || (calls && operands.size() < Few)) {
        out << '(' << *node.a << signs.front() << *node.b << ')';
        return;
    }
    operands.push_back(first);
    signs += '+';
    std::ranges::reverse(operands);
    std::ranges::reverse(signs);
    if (calls)
        return writeCalls(out, node, operands, signs);
    out << '(' << *operands.front();
    for (std::size_t i = 1; i < operands.size(); ++i)
        out << signs[i] << *operands[i];
    out << ')';
}

} // namespace zel::tsql
