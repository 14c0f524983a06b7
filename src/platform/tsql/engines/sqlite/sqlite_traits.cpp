#include "platform/tsql/engines/sqlite/sqlite_chains.h"
#include "platform/tsql/engines/sqlite/sqlite_names.h"
#include "platform/tsql/engines/sqlite/sqlite_sums.h"
#include "platform/tsql/engines/sqlite/sqlite_texts.h"
#include "platform/tsql/engines/writer.h"
#include "platform/tsql/meaning/types.h"
#include "platform/tsql/text/names.h"

#include <algorithm>

namespace zel::tsql {

namespace {

/// Whether the digits of a number with a point are more than a double is sure to keep.
bool isLong(std::string_view number) {
    constexpr int Kept = 15;
    return number.find('.') != std::string_view::npos &&
           number.find_first_of("eE") == std::string_view::npos &&
           std::ranges::count_if(number, [](char c) { return c >= '0' && c <= '9'; }) > Kept;
}

void writeNumber(Writer &out, const Expr &node) {
    if (isLong(node.text)) // taken from its text, and refused where a digit would be lost
        out << "zel_num('" << node.text << "',38,"
            << std::to_string(node.text.size() - node.text.find('.') - 1) << ')';
    else if (node.text.front() == '-') // "5--5" would begin a comment
        out << '(' << node.text << ')';
    else
        out << node.text;
}

void writeText(Writer &out, const Expr &node) {
    out.quoted(node.text);
}

void writeColumn(Writer &out, const Expr &node) {
    out.column(node);
}

void writeVariable(Writer &out, const Expr &node) {
    out << '?' << out.parameter(static_cast<Slot>(node.n));
}

void writeComparison(Writer &out, const Expr &node) {
    out << '(' << *node.a << signText(node.n) << *node.b << ')';
}

void writeMembership(Writer &out, const Expr &node) {
    out << '(' << *node.a << " IN ";
    if (node.select != nullptr) {
        out.select(*node.select, Writer::SelectUse::Rows);
    } else {
        out << '(';
        out.list(node.b);
        out << ')';
    }
    out << ')';
}

bool isNonzeroLiteral(const Expr &value) {
    return value.op == Op::NumberLiteral && value.text.find_first_of("123456789") != std::string_view::npos;
}

void writeIntegerDivision(Writer &out, const Expr &node) {
    if (isNonzeroLiteral(*node.b))
        out << '(' << *node.a << '/' << *node.b << ')';
    else
        out << sqlite_names::IntDiv << '(' << *node.a << ',' << *node.b << ')';
}

void writeModulo(Writer &out, const Expr &node) {
    if (isNonzeroLiteral(*node.b) && isInteger(node.type))
        out << '(' << *node.a << '%' << *node.b << ')';
    else
        out << sqlite_names::Mod << '(' << *node.a << ',' << *node.b << ')';
}

void writeCase(Writer &out, const Expr &node) {
    const bool texts = node.op == Op::CaseTexts;
    const auto test = [&](const Expr &value) {
        if (texts)
            out.key(value);
        else
            out << value;
    };
    out << "CASE ";
    if (node.c != nullptr)
        test(*node.c);
    for (const Expr *when = node.a; when != nullptr; when = when->next->next) {
        out << " WHEN ";
        test(*when);
        out << " THEN " << *when->next;
    }
    if (node.b != nullptr)
        out << " ELSE " << *node.b;
    out << " END";
}

void writeAverage(Writer &out, const Expr &node) {
    out << sqlite_names::Div << '(';
    writeSumOf(out, node, node.m);
    out << (node.distinct ? ",count(DISTINCT " : ",count(") << *node.a << ")," << node.n << ')';
}

void writeCount(Writer &out, const Expr &node) {
    out << (node.distinct ? "count(DISTINCT " : "count(");
    if (node.distinct)
        out.key(*node.a);
    else
        out << *node.a;
    out << ')';
}

void writeExtreme(Writer &out, const Expr &node) {
    out << (node.op == Op::Minimum ? "min(" : "max(") << *node.a;
    if (isText(node.type) && node.a->op != Op::ColumnValue)
        out << " COLLATE NOCASE";
    out << ')';
}

void writeExists(Writer &out, const Expr &node) {
    out << "EXISTS ";
    out.select(*node.select, Writer::SelectUse::Rows);
}

void writeSubselect(Writer &out, const Expr &node) {
    out.select(*node.select, Writer::SelectUse::Value);
}

/// The declared type stays readable in the schema; NOCASE is the engine's own.
void writeColumnDefinition(Writer &out, const ColumnNode &column, bool isKey) {
    if (column.identity) {
        out << "INTEGER PRIMARY KEY AUTOINCREMENT";
        return;
    }
    out << (sameName(column.declared, "integer") ? "int" : column.declared);
    if (isText(column.type))
        out << " COLLATE NOCASE";
    if (column.notNull)
        out << " NOT NULL";
    if (isKey)
        out << " UNIQUE";
}

/// The engine notes the last number that it gave.
void writeIdentitySeed(Writer &out, std::string_view table, std::int64_t seed) {
    out << ";INSERT INTO sqlite_sequence(name,seq) VALUES(";
    out.quoted(table);
    out << ',' << std::to_string(seed - 1) << ')';
}

constexpr Traits Sqlite = [] {
    namespace names = sqlite_names; // NOLINT(misc-unused-alias-decls): the lambdas below use it
    Traits traits{};
    const auto node = [&](Op op, std::string_view text) {
        traits.nodes[static_cast<std::size_t>(op)] = {text, nullptr};
    };
    const auto special = [&](Op op, void (*write)(Writer &, const Expr &)) {
        traits.nodes[static_cast<std::size_t>(op)] = {{}, write};
    };
    node(Op::NullLiteral, "NULL");
    special(Op::NumberLiteral, writeNumber);
    special(Op::TextLiteral, writeText);
    node(Op::DateLiteral, "'$t'");
    special(Op::ColumnValue, writeColumn);
    node(Op::Now, "zel_now()");
    special(Op::Variable, writeVariable);

    node(Op::Negate, "(-$a)");
    special(Op::Add, writeSummands);
    special(Op::Subtract, writeSummands);
    node(Op::Multiply, "($a*$b)");
    special(Op::IntegerDivide, writeIntegerDivision);
    node(Op::Divide, "zel_div($a,$b,$n)");
    special(Op::Modulo, writeModulo);
    node(Op::RoundTo, "zel_round($a,$n)");
    node(Op::CutTo, "zel_cut($a,$n)");
    node(Op::Round, "zel_round($a,$b)");
    node(Op::Absolute, "abs($a)");

    special(Op::Concat, writeConcat);
    node(Op::Trim, "rtrim($a)");
    node(Op::TrimLeft, "ltrim($a)");
    node(Op::Length, "length(rtrim($a))");
    node(Op::ByteLength, "length($a)");
    special(Op::Replace, writeReplace);
    node(Op::Upper, "zel_upper($a)");
    node(Op::Lower, "zel_lower($a)");
    special(Op::Left, writeLeft);
    special(Op::Right, writeRight);
    node(Op::Substring, "zel_substring($a,$b,$c)");
    node(Op::CharIndex, "zel_charindex($a,$b,$c)");
    node(Op::Pad, "zel_pad($a,$n)");
    node(Op::Cut, "substr($a,1,$n)");
    node(Op::CheckWidth, "zel_text($a,$n)");

    node(Op::ToInteger, "zel_int($a,$n)");
    node(Op::ToNumeric, "zel_num($a,$n,$m)");
    node(Op::ToMoney, "zel_money($a)");
    node(Op::ToFloat, "zel_float($a)");
    node(Op::IntegerText, "CAST($a AS TEXT)");
    node(Op::NumberText, "zel_numtext($a,$n,$m)");
    node(Op::FloatText, "zel_floattext($a)");
    node(Op::ToDateTime, "zel_date($a,$n)");
    node(Op::ToDate, "zel_day($a,$n)");
    node(Op::DateOnly, "substr($a,1,10)");
    node(Op::DateText, "zel_datetext($a,$n,$m)");
    node(Op::Day, "CAST(substr($a,9,2) AS INTEGER)");
    node(Op::Month, "CAST(substr($a,6,2) AS INTEGER)");
    node(Op::Year, "CAST(substr($a,1,4) AS INTEGER)");

    node(Op::DateAdd, "zel_dateadd($n,$a,$b)");
    node(Op::DateDifference, "zel_datediff($n,$a,$b)");
    node(Op::PartOfDate, "zel_datepart($n,$a)");
    node(Op::PartName, "zel_datename($n,$a)");
    node(Op::DateSum, "zel_datesum($a,$b,$n)");

    node(Op::IfNull, "ifnull($a,$b)");
    node(Op::Coalesce, "coalesce($*)");
    node(Op::NullIf, "nullif($a,$b)");
    node(Op::NullIfTexts, "zel_nullif($a,$b)");
    node(Op::NullIfConverted, "zel_nullifas($a,$b,$n)");
    special(Op::Case, writeCase);
    special(Op::CaseTexts, writeCase);

    special(Op::And, writeAnd);
    special(Op::Or, writeOr);
    node(Op::Not, "(NOT $a)");
    special(Op::Compare, writeComparison);
    special(Op::CompareTexts, writeTextComparison);
    special(Op::Between, writeBetween);
    node(Op::IsNull, "($a IS NULL)");
    special(Op::In, writeMembership);
    special(Op::InTexts, writeTextMembership);
    special(Op::Like, writeLike);
    special(Op::Exists, writeExists);

    special(Op::Sum, writeSum);
    node(Op::PlainSum, "sum($d$a)");
    special(Op::Average, writeAverage);
    node(Op::IntegerAverage, "zel_idiv(sum($d$a),count($d$a))");
    node(Op::FloatAverage, "avg($d$a)");
    special(Op::Minimum, writeExtreme);
    special(Op::Maximum, writeExtreme);
    special(Op::Count, writeCount);
    node(Op::CountRows, "count(*)");
    special(Op::Subselect, writeSubselect);

    traits.rowIdentity = "_rowid_";
    traits.keyBegin = "zel_fold(";
    traits.keyEnd = ")";
    traits.onlyBegin = "zel_one(";
    traits.onlyEnd = ")";
    traits.groupsByIndex = writeGroupsByIndex;
    traits.columnDefinition = writeColumnDefinition;
    traits.identitySeed = writeIdentitySeed;
    traits.analyze = "ANALYZE";
    traits.createTemporary = "CREATE TEMP TABLE ";
    traits.temporaryIndex = "temp.";
    return traits;
}();

} // namespace

const Traits &sqlite() {
    return Sqlite;
}

} // namespace zel::tsql
