#include "platform/tsql/meaning/converter.h"

#include "platform/base/number_text.h"
#include "platform/base/scaled_number.h"
#include "platform/tsql/meaning/types.h"
#include "platform/tsql/reading/failure.h"
#include "platform/tsql/text/conversions.h"
#include "platform/tsql/text/names.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace zel::tsql {

namespace {

/// A number literal with so many decimals; 8115 for one of more than 38 digits.
ScaledCount scaled(const Expr &literal, int scale) {
    if (literal.type.kind != TypeKind::Float)
        return numericFromText(literal.text, MostDigits, scale);
    const auto count = scaledFromDouble(floatFromText(literal.text), scale);
    if (!count)
        throw Error(8115,
                    std::string("Arithmetic overflow error converting expression to data type numeric."));
    return *count;
}

std::int64_t integerOf(const Expr &literal, TypeKind kind) {
    if (literal.op == Op::TextLiteral)
        return kind == TypeKind::Bit ? bitFromText(literal.text) : integerFromText(literal.text, kind);
    if (literal.type.kind == TypeKind::Float)
        return integerFromDouble(floatFromText(literal.text), kind);
    // The decimals are cut off.
    const std::size_t point = std::min(literal.text.find('.'), literal.text.size());
    const ScaledCount whole = point == 0 || literal.text.substr(0, point) == "-"
                                  ? 0
                                  : numericFromText(literal.text.substr(0, point), MostDigits, 0);
    if (whole != ScaledCount(std::int64_t(whole)))
        throw Error(8115, "Arithmetic overflow error converting expression to data type " +
                              std::string(typeName(Type{kind})) + ".");
    return fittingInteger(std::int64_t(whole), kind);
}

ScaledCount decimalOf(const Expr &literal, Type to, int precision) {
    if (to.kind != TypeKind::Money)
        return literal.op == Op::TextLiteral ? numericFromText(literal.text, precision, to.scale)
                                             : fittingNumeric(scaled(literal, to.scale), precision);
    if (literal.op == Op::TextLiteral)
        return moneyFromText(literal.text).tenThousandths();
    const ScaledCount count = scaled(literal, 4);
    if (count != ScaledCount(std::int64_t(count)))
        throw Error(8115, std::string("Arithmetic overflow error converting expression to data type money."));
    return count;
}

/// Whole numbers of so many digits, with hundredths, are exact on every engine.
constexpr ScaledCount SafeWhole = 10'000'000'000'000;

} // namespace

Expr *Converter::convertLiteral(Expr *literal, Type to, Purpose purpose, int style) {
    if (isInteger(to))
        return literalToInteger(literal, to, purpose);
    if (isDecimal(to))
        return literalToDecimal(literal, to, purpose);
    if (to.kind == TypeKind::Float)
        return literalToFloat(literal, to, purpose);
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
    try {
        return number(m_arena.keep(std::to_string(integerOf(*literal, to.kind))), to, literal->at);
    } catch (const Error &error) {
        failConversion(*literal, to, purpose, error);
    }
}

Expr *Converter::literalToDecimal(Expr *literal, Type to, Purpose purpose) {
    if (literal->op == Op::DateLiteral)
        failClash(*literal, to);
    if (literal->op == Op::NumberLiteral && purpose == Purpose::Meet)
        return literal;
    const int scale = decimals(to);
    ScaledCount count = 0;
    try {
        count = decimalOf(*literal, to, purpose == Purpose::Meet ? MostDigits : to.length);
    } catch (const Error &error) {
        failConversion(*literal, to, purpose, error);
    }
    Expr *written = number(m_arena.keep(scaledText(count, scale)), to, literal->at);
    const ScaledCount whole = count / powerOfTen(scale);
    if (purpose != Purpose::Assign || (whole < SafeWhole && whole > -SafeWhole))
        return written;
    // The engine at hand says itself whether it can hold so large a number.
    Expr *checked = make(to.kind == TypeKind::Money ? Op::ToMoney : Op::ToNumeric, to, literal->at, written);
    checked->n = to.length;
    checked->m = to.scale;
    return checked;
}

Expr *Converter::literalToFloat(Expr *literal, Type to, Purpose purpose) {
    if (literal->op == Op::DateLiteral)
        failClash(*literal, to);
    try {
        std::array<char, 40> text{};
        const auto end = std::to_chars(text.data(), text.data() + text.size(), floatFromText(literal->text),
                                       std::chars_format::scientific);
        return number(m_arena.keep({text.data(), static_cast<std::size_t>(end.ptr - text.data())}), to,
                      literal->at);
    } catch (const Error &error) {
        failConversion(*literal, to, purpose, error);
    }
}

Expr *Converter::literalToText(Expr *literal, Type to, Purpose purpose, int style) {
    if (literal->op == Op::DateLiteral ||
        (literal->op == Op::NumberLiteral && literal->type.kind == TypeKind::Money))
        return toText(literal, to, purpose, style);
    std::string_view text = literal->text;
    if (literal->type.kind == TypeKind::Char && to.kind != TypeKind::Char) {
        std::string padded(text);
        padded.append(std::size_t(std::max(0, literal->type.length - characterCount(text))), ' ');
        text = m_arena.keep(padded);
    }
    if (literal->op == Op::NumberLiteral) {
        // 007 is 7, .5 is 0.5; decimals stay as many as were written.
        const int scale = decimals(literal->type);
        text =
            m_arena.keep(literal->type.kind == TypeKind::Float ? plainText(floatFromText(text))
                                                               : scaledText(scaled(*literal, scale), scale));
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
    if (literal->op == Op::DateLiteral && (target == DateTarget::DateTime || literal->text.size() <= 10))
        return literal;
    if (literal->op == Op::NumberLiteral && target == DateTarget::Date)
        failClash(*literal, to);
    DateReading reading;
    try {
        reading = literal->op == Op::NumberLiteral ? dateFromDays(floatFromText(literal->text), target)
                                                   : parseDate(literal->text, target, orderOfStyle(style));
        if (reading.error != 0)
            throwDateError(reading.error);
    } catch (const Error &error) {
        failConversion(*literal, to, purpose, error);
    }
    Expr *made = make(Op::DateLiteral, to, literal->at);
    made->text = m_arena.keep(reading.date.text());
    return made;
}

} // namespace zel::tsql
