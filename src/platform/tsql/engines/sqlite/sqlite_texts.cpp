#include "platform/tsql/engines/sqlite/sqlite_texts.h"

#include "platform/tsql/engines/sqlite/sqlite_names.h"
#include "platform/tsql/reading/lexer.h"
#include "platform/tsql/text/names.h"

#include <algorithm>
#include <climits>

namespace zel::tsql {

namespace {

/// The engine's own `like` refuses longer patterns.
constexpr std::size_t LongestPattern = 40'000;

int mirrored(int sign) {
    switch (sign) {
    case '<':
        return '>';
    case '>':
        return '<';
    case LessOrEqual:
        return GreaterOrEqual;
    case GreaterOrEqual:
        return LessOrEqual;
    default:
        return sign;
    }
}

/// A char(n) lies in the file without trailing blanks.
bool isTrimmed(const Expr &value) {
    return value.type.kind == TypeKind::Char;
}

void writeTrimmed(Writer &out, const Expr &value) {
    if (isTrimmed(value) || value.op == Op::Trim)
        out << value;
    else
        out << "rtrim(" << value << ')';
}

void writeFolded(Writer &out, const Expr &value) {
    out << sqlite_names::Fold << '(' << value << ')';
}

/// With an ASCII literal the built-in NOCASE says it all, since no other character folds into ASCII; and it
/// has the indexes.
void writeWithLiteral(Writer &out, const Expr &value, int sign, std::string_view literal) {
    literal = withoutTrailingBlanks(literal);
    out << '(';
    if (sign == '=' && value.op == Op::ColumnValue && !isTrimmed(value) && value.source->derived == nullptr &&
        !literal.empty()) {
        // A range keeps an index on the column in use; within it only trailing blanks can differ.
        out << value << ">=";
        out.quoted(literal);
        out << " AND " << value << '<';
        std::string above(literal);
        above += '!';
        out.quoted(above);
        out << " AND ";
    }
    writeTrimmed(out, value);
    out << signText(sign);
    out.quoted(literal);
    const bool ownCollation =
        value.op == Op::ColumnValue && isTrimmed(value) && value.source->derived == nullptr;
    out << (ownCollation ? ")" : " COLLATE NOCASE)");
}

/// The last source that the value depends on; a large number when a select or a choice, whose conditions may
/// be long, stands in it, 0 without any.
int lastSource(const Expr *value) {
    int last = 0;
    for (; value != nullptr; value = value->next) {
        const int own = value->select != nullptr || value->op == Op::Case ? INT_MAX
                        : value->source != nullptr                        ? value->source->number
                                                                          : 0;
        last = std::max({last, own, lastSource(value->a), lastSource(value->b), lastSource(value->c)});
    }
    return last;
}

/// Whether an index on this column could find the other value: the column of an inner select or of a later
/// table.
bool canSearch(const Expr &column, const Expr &other) {
    return column.op == Op::ColumnValue && column.source->derived == nullptr &&
           lastSource(&other) < column.source->number;
}

void writeRange(Writer &out, const Expr &column, const Expr &other) {
    out << column << ">=" << sqlite_names::RangeBegin << '(' << other << ") AND " << column << '<'
        << sqlite_names::RangeEnd << '(' << other << ") AND ";
}

/// A column of the two-letter codes over which joins need their indexes.
bool isCode(const Expr &value) {
    return value.op == Op::ColumnValue && isTrimmed(value) && value.type.length == 2;
}

bool onlyAsciiLiterals(const Expr *list) {
    for (; list != nullptr; list = list->next) {
        if (list->op != Op::TextLiteral || !isAscii(list->text))
            return false;
    }
    return true;
}

} // namespace

std::string_view signText(int sign) {
    switch (sign) {
    case LessOrEqual:
        return "<=";
    case GreaterOrEqual:
        return ">=";
    case NotEqual:
        return "<>";
    case '<':
        return "<";
    case '>':
        return ">";
    default:
        return "=";
    }
}

void writeTextComparison(Writer &out, const Expr &node) {
    const Expr &left = *node.a;
    const Expr &right = *node.b;
    const bool rightLiteral = right.op == Op::TextLiteral && isAscii(right.text);
    const bool leftLiteral = left.op == Op::TextLiteral && isAscii(left.text);
    if (rightLiteral && left.op != Op::TextLiteral)
        return writeWithLiteral(out, left, node.n, right.text);
    if (leftLiteral && right.op != Op::TextLiteral)
        return writeWithLiteral(out, right, mirrored(node.n), left.text);
    if (node.n == '=' && isCode(left) && isCode(right)) {
        // Said both ways, so that either column can be searched for the other.
        out << '(' << left << '=' << sqlite_names::Code << '(' << right << ") AND " << right << '='
            << sqlite_names::Code << '(' << left << "))";
        return;
    }
    out << '(';
    if (node.n == '=' && canSearch(left, right))
        writeRange(out, left, right);
    else if (node.n == '=' && canSearch(right, left))
        writeRange(out, right, left);
    writeFolded(out, left);
    out << signText(node.n);
    writeFolded(out, right);
    out << ')';
}

void writeTextMembership(Writer &out, const Expr &node) {
    const Expr &value = *node.a;
    if (node.select != nullptr) {
        out << '(';
        writeFolded(out, value);
        out << " IN ";
        out.select(*node.select, Writer::SelectUse::Keys);
        out << ')';
        return;
    }
    const bool ascii = onlyAsciiLiterals(node.b);
    out << '(';
    if (ascii) {
        writeTrimmed(out, value);
        const bool ownCollation =
            value.op == Op::ColumnValue && isTrimmed(value) && value.source->derived == nullptr;
        if (!ownCollation)
            out << " COLLATE NOCASE";
    } else {
        writeFolded(out, value);
    }
    out << " IN (";
    for (const Expr *element = node.b; element != nullptr; element = element->next) {
        if (element != node.b)
            out << ',';
        if (ascii)
            out.quoted(withoutTrailingBlanks(element->text));
        else
            writeFolded(out, *element);
    }
    out << "))";
}

void writeBetween(Writer &out, const Expr &node) {
    const bool plain = !isText(node.a->type);
    if (plain || node.a->op != Op::ColumnValue) {
        const auto side = [&](const Expr &value) {
            if (plain)
                out << value;
            else
                writeFolded(out, value);
        };
        out << '(';
        side(*node.a);
        out << " BETWEEN ";
        side(*node.b);
        out << " AND ";
        side(*node.c);
        out << ')';
        return;
    }
    // Each side by itself may use an index.
    Expr compared;
    compared.op = Op::CompareTexts;
    compared.a = node.a;
    compared.b = node.b;
    compared.n = GreaterOrEqual;
    out << '(';
    writeTextComparison(out, compared);
    compared.b = node.c;
    compared.n = LessOrEqual;
    out << " AND ";
    writeTextComparison(out, compared);
    out << ')';
}

void writeLike(Writer &out, const Expr &node) {
    const Expr &value = *node.a;
    const Expr &pattern = *node.b;
    const bool literal = pattern.op == Op::TextLiteral;
    // The engine's own `like` knows neither sets nor letters beyond ASCII, and minds the value's trailing
    // blanks.
    const bool own = literal && !pattern.text.empty() && pattern.text.back() == '%' &&
                     isAscii(pattern.text) && pattern.text.find('[') == std::string_view::npos &&
                     pattern.text.size() < LongestPattern;
    const bool blanksCount = !literal || pattern.text.find(' ') != std::string_view::npos || !own;
    out << (own ? std::string_view("(") : std::string_view(sqlite_names::Like));
    if (!own)
        out << '(';
    if (isTrimmed(value) && blanksCount)
        out << sqlite_names::Pad << '(' << value << ',' << value.type.length << ')';
    else if (own && value.op == Op::IntegerText)
        out << *value.a; // it takes a number's plain text by itself
    else
        out << value;
    out << (own ? " LIKE " : ",") << pattern << ')';
}

void writeLeft(Writer &out, const Expr &node) {
    if (node.b->op == Op::NumberLiteral && node.b->text.front() != '-')
        out << "substr(" << *node.a << ",1," << *node.b << ')';
    else
        out << sqlite_names::Left << '(' << *node.a << ',' << *node.b << ')';
}

void writeRight(Writer &out, const Expr &node) {
    const std::string_view count = node.b->text;
    if (node.b->op == Op::NumberLiteral && count.front() != '-' && count != "0")
        out << "substr(" << *node.a << ",-" << count << ')';
    else
        out << sqlite_names::Right << '(' << *node.a << ',' << *node.b << ')';
}

void writeReplace(Writer &out, const Expr &node) {
    bool letters = node.b->op != Op::TextLiteral;
    for (const char c : node.b->text)
        letters =
            letters || static_cast<unsigned char>(c) >= 0x80 || (lowered(c) >= 'a' && lowered(c) <= 'z');
    out << (letters ? sqlite_names::Replace : "replace") << '(' << *node.a << ',' << *node.b << ',' << *node.c
        << ')';
}

} // namespace zel::tsql
