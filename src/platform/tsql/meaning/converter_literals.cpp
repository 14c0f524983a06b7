#include "platform/tsql/meaning/converter.h"

#include "platform/tsql/meaning/types.h"
#include "platform/tsql/reading/failure.h"
#include "platform/tsql/text/date_text.h"
#include "platform/tsql/text/decimal_text.h"
#include "platform/tsql/text/names.h"

#include <array>
#include <charconv>

namespace zel::tsql {

namespace {

std::optional<double> parseFloat(std::string_view text) {
    while (!text.empty() && text.front() == ' ')
        text.remove_prefix(1);
    text = withoutTrailingBlanks(text);
    if (text.empty())
        return 0.0;
    if (text.front() == '+')
        text.remove_prefix(1);
    double value = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool whole = read.ec == std::errc() && read.ptr == text.data() + text.size();
    const bool number = text.find_first_not_of("0123456789+-.eE") == std::string_view::npos;
    return whole && number ? std::optional(value) : std::nullopt;
}

/// The digits of a number literal, of a float too.
std::optional<DecimalText> digitsOf(const Expr &literal) {
    if (literal.type.kind != TypeKind::Float)
        return DecimalText::parse(literal.text);
    const auto value = parseFloat(literal.text);
    std::array<char, 400> fixed{};
    const auto end =
        std::to_chars(fixed.data(), fixed.data() + fixed.size(), *value, std::chars_format::fixed);
    return DecimalText::parse({fixed.data(), static_cast<std::size_t>(end.ptr - fixed.data())});
}

/// Whether a whole number fits into an integer of so many bits.
bool fits(const DecimalText &number, int bits) {
    std::int64_t value = 0;
    const std::string text = number.toString();
    const auto read = std::from_chars(text.data(), text.data() + text.size(), value);
    if (read.ec != std::errc())
        return false;
    return bits == 64 ||
           (value >= -(std::int64_t(1) << (bits - 1)) && value < (std::int64_t(1) << (bits - 1)));
}

/// Whole numbers of so many digits, with hundredths, are exact on every engine.
constexpr std::size_t SafeWholeDigits = 13;

bool onlyBlanks(std::string_view text) {
    return withoutTrailingBlanks(text).empty();
}

} // namespace

Expr *Converter::convertLiteral(Expr *literal, Type to, Purpose purpose, int style) {
    if (isInteger(to))
        return literalToInteger(literal, to, purpose);
    if (isDecimal(to))
        return literalToDecimal(literal, to, purpose);
    if (to.kind == TypeKind::Float)
        return literalToFloat(literal, to);
    if (isText(to))
        return literalToText(literal, to, purpose, style);
    if (isDate(to))
        return literalToDate(literal, to, purpose, style);
    return literal;
}

Expr *Converter::literalToInteger(Expr *literal, Type to, Purpose purpose) {
    if (literal->op == Op::DateLiteral)
        failClash(*literal, to);
    if (literal->op == Op::NumberLiteral && purpose == Purpose::Meet)
        return literal;
    if (literal->op == Op::TextLiteral && to.kind == TypeKind::Bit) {
        const std::string_view word = withoutTrailingBlanks(literal->text);
        if (sameName(word, "true") || sameName(word, "false"))
            return number(sameName(word, "true") ? "1" : "0", to, literal->at);
    }
    if (literal->op == Op::TextLiteral && onlyBlanks(literal->text))
        return number("0", to, literal->at);
    auto value = literal->op == Op::TextLiteral ? DecimalText::parse(literal->text) : digitsOf(*literal);
    const bool pointInText =
        literal->op == Op::TextLiteral && literal->text.find('.') != std::string_view::npos;
    if (!value || pointInText)
        failConversion(*literal, to, purpose, to.kind == TypeKind::BigInt ? 8114 : 245);
    value->truncate();
    if (to.kind == TypeKind::Bit)
        return number(value->toString() == "0" ? "0" : "1", to, literal->at);
    if (!fits(*value, integerBits(to))) {
        if (literal->op != Op::TextLiteral || purpose == Purpose::Argument)
            failOverflow(*literal, to);
        fail(m_source, literal->at, 248,
             "The conversion of the varchar value '" + std::string(literal->text.substr(0, 128)) +
                 "' overflowed an " + std::string(typeName(to)) + " column.");
    }
    return number(m_arena.keep(value->toString()), to, literal->at);
}

Expr *Converter::literalToDecimal(Expr *literal, Type to, Purpose purpose) {
    if (literal->op == Op::DateLiteral)
        failClash(*literal, to);
    if (literal->op == Op::NumberLiteral && purpose == Purpose::Meet)
        return literal;
    const bool money = to.kind == TypeKind::Money;
    if (money && literal->op == Op::TextLiteral && onlyBlanks(literal->text))
        return number("0", to, literal->at);
    auto value =
        literal->op == Op::TextLiteral ? DecimalText::parse(literal->text, money) : digitsOf(*literal);
    if (!value)
        failConversion(*literal, to, purpose, money ? 235 : 8114);
    value->round(static_cast<std::size_t>(decimals(to)));
    const int whole = (money || purpose == Purpose::Meet ? (money ? 19 : 38) : to.length) - decimals(to);
    if (static_cast<int>(value->whole.size()) > whole)
        failOverflow(*literal, to);
    Expr *written = number(m_arena.keep(value->toString()), to, literal->at);
    if (purpose != Purpose::Assign || value->whole.size() <= SafeWholeDigits)
        return written;
    // The engine at hand says itself whether it can hold so large a number.
    Expr *checked = make(money ? Op::ToMoney : Op::ToNumeric, to, literal->at, written);
    checked->n = to.length;
    checked->m = to.scale;
    return checked;
}

Expr *Converter::literalToFloat(Expr *literal, Type to) {
    if (literal->op == Op::DateLiteral)
        failClash(*literal, to);
    const auto value = parseFloat(literal->text);
    if (!value)
        failConversion(*literal, to, Purpose::Cast, 8114);
    std::array<char, 40> text{};
    const auto end =
        std::to_chars(text.data(), text.data() + text.size(), *value, std::chars_format::scientific);
    return number(m_arena.keep({text.data(), static_cast<std::size_t>(end.ptr - text.data())}), to,
                  literal->at);
}

Expr *Converter::literalToText(Expr *literal, Type to, Purpose purpose, int style) {
    if (literal->op == Op::DateLiteral ||
        (literal->op == Op::NumberLiteral && literal->type.kind == TypeKind::Money))
        return toText(literal, to, purpose, style);
    std::string_view text = literal->text;
    if (literal->op == Op::NumberLiteral) {
        if (literal->type.kind == TypeKind::Float) {
            const auto value = digitsOf(*literal);
            std::string plain = value->toString();
            text = m_arena.keep(plain);
        } else {
            // 007 is 7, .5 is 0.5; decimals stay as many as were written.
            text = m_arena.keep(DecimalText::parse(text)->toString());
        }
        if (characterCount(text) > to.length) {
            if (!showsAsterisk(literal->type, purpose))
                failOverflow(*literal, to);
            text = "*";
        }
    } else if (purpose != Purpose::Meet && static_cast<int>(text.size()) > to.length &&
               characterCount(text) > to.length) {
        const std::string_view cut = firstCharacters(text, to.length);
        if (purpose == Purpose::Assign && withoutTrailingBlanks(text).size() > cut.size())
            fail(m_source, literal->at, 8152, "String or binary data would be truncated.");
        text = cut;
    }
    Expr *made = make(Op::TextLiteral, to, literal->at);
    made->text = to.kind == TypeKind::Char ? withoutTrailingBlanks(text) : text;
    return made;
}

Expr *Converter::literalToDate(Expr *literal, Type to, Purpose purpose, int style) {
    const DateTarget target = to.kind == TypeKind::Date ? DateTarget::Date : DateTarget::DateTime;
    DateReading reading;
    if (literal->op == Op::DateLiteral) {
        if (target == DateTarget::DateTime || literal->text.size() <= 10)
            return literal;
        reading = parseDate(literal->text, target);
    } else if (literal->op == Op::TextLiteral) {
        reading = parseDate(literal->text, target, style);
        if (reading.error != 0)
            failConversion(*literal, to, purpose, reading.error);
    } else {
        if (target == DateTarget::Date)
            failClash(*literal, to);
        reading = dateFromDays(*parseFloat(literal->text), target);
        if (reading.error != 0)
            failOverflow(*literal, to);
    }
    Expr *made = make(Op::DateLiteral, to, literal->at);
    made->text = m_arena.keep(reading.date.text());
    return made;
}

} // namespace zel::tsql
