#include "platform/ado/drivers/sqlite_function_glue.h"

#include "platform/tsql/engines/sqlite/sqlite_names.h"
#include "platform/tsql/text/conversions.h"
#include "platform/tsql/text/dates.h"
#include "platform/tsql/text/names.h"
#include "platform/tsql/text/text_rules.h"

#include <algorithm>
#include <climits>
#include <memory>

namespace zel::ado {

namespace {

namespace names = tsql::sqlite_names;
using tsql::TypeKind;

[[noreturn]] void invalidLength(int number, const char *function) {
    throw Error(number, std::string("Invalid length parameter passed to the ") + function + " function.");
}

int clamped(std::int64_t count) {
    return int(std::clamp<std::int64_t>(count, 0, INT_MAX));
}

void fold(sqlite3_context *context, Arguments arguments) {
    const std::string_view text = textOf(arguments[0]);
    const auto stays = [](char c) { return static_cast<unsigned char>(c) < 0x80 && (c < 'A' || c > 'Z'); };
    if (isText(arguments[0]) && (text.empty() || text.back() != ' ') &&
        std::all_of(text.begin(), text.end(), stays))
        return sqlite3_result_value(context, arguments[0]);
    giveText(context, tsql::comparisonKey(text));
}

/// The text up to its first letter beyond ASCII: only that far does NOCASE fold as the dialect does.
std::string_view asciiPart(std::string_view text) {
    text = tsql::withoutTrailingBlanks(text);
    const auto end =
        std::find_if(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
    return text.substr(0, std::size_t(end - text.begin()));
}

void rangeBegin(sqlite3_context *context, Arguments arguments) {
    giveText(context, asciiPart(textOf(arguments[0])));
}

void rangeEnd(sqlite3_context *context, Arguments arguments) {
    const std::string_view text = tsql::withoutTrailingBlanks(textOf(arguments[0]));
    const std::string_view part = asciiPart(text);
    // Behind the whole text only blanks may follow, behind a part of it any letter beyond ASCII.
    giveText(context, std::string(part) + (part.size() == text.size() ? "!" : "\xF4\x8F\xBF\xBF"));
}

void code(sqlite3_context *context, Arguments arguments) {
    const std::string_view text = textOf(arguments[0]);
    if (asciiPart(text).size() != text.size() && tsql::hasOtherCase(text))
        throw Error(446, std::string("Cannot resolve collation conflict for equal to operation."));
    sqlite3_result_value(context, arguments[0]);
}

/// The pattern is read once for a statement when it is the same for all rows.
void like(sqlite3_context *context, Arguments arguments) {
    constexpr int Place = 1;
    const auto *kept = static_cast<const tsql::LikePattern *>(sqlite3_get_auxdata(context, Place));
    std::unique_ptr<tsql::LikePattern> made;
    if (kept == nullptr)
        made = std::make_unique<tsql::LikePattern>(textOf(arguments[1]));
    const tsql::LikePattern &pattern = kept != nullptr ? *kept : *made;
    sqlite3_result_int(context, pattern.matches(textOf(arguments[0])) ? 1 : 0);
    if (made)
        sqlite3_set_auxdata(context, Place, made.release(),
                            [](void *pattern_) { delete static_cast<tsql::LikePattern *>(pattern_); });
}

void pad(sqlite3_context *context, Arguments arguments) {
    std::string text(textOf(arguments[0]));
    const std::int64_t missing = sqlite3_value_int64(arguments[1]) - tsql::characterCount(text);
    text.append(std::size_t(std::clamp<std::int64_t>(missing, 0, 8000)), ' ');
    giveText(context, text);
}

bool sameTexts(sqlite3_value *text, sqlite3_value *other, TypeKind) {
    return tsql::comparisonKey(textOf(text)) == tsql::comparisonKey(textOf(other));
}

bool sameConverted(sqlite3_value *text, sqlite3_value *other, TypeKind kind) {
    const std::string_view given = textOf(text);
    if (kind == TypeKind::DateTime || kind == TypeKind::Date) {
        const auto target = kind == TypeKind::Date ? DateTarget::Date : DateTarget::DateTime;
        const DateReading read = parseDate(given, target);
        if (read.error != 0)
            tsql::throwDateError(read.error);
        return read.date.text() == textOf(other);
    }
    const double number = sqlite3_value_double(other);
    switch (kind) {
    case TypeKind::Bit:
        return double(tsql::bitFromText(given)) == number;
    case TypeKind::Numeric:
        return scaledToDouble(tsql::numericFromText(given, MostDigits, MostDigits / 2), MostDigits / 2) ==
               number;
    case TypeKind::Money:
        return tsql::moneyFromText(given).toDouble() == number;
    case TypeKind::Float:
        return tsql::floatFromText(given) == number;
    default:
        return double(tsql::integerFromText(given, kind)) == number;
    }
}

/// Not as the others: where the second is NULL the first stays.
template <bool (*same)(sqlite3_value *, sqlite3_value *, TypeKind)>
void nullIf(sqlite3_context *context, int count, sqlite3_value **values) {
    const TypeKind kind = count > 2 ? TypeKind(sqlite3_value_int(values[2])) : TypeKind::Null;
    const auto isNull = [&](int i) { return sqlite3_value_type(values[i]) == SQLITE_NULL; };
    try {
        if (!isNull(0) && (isNull(1) || !same(values[0], values[1], kind)))
            sqlite3_result_value(context, values[0]);
    } catch (const Error &error) {
        giveError(context, error);
    }
}

void replace(sqlite3_context *context, Arguments arguments) {
    giveText(context, tsql::replaced(textOf(arguments[0]), textOf(arguments[1]), textOf(arguments[2])));
}

void upper(sqlite3_context *context, Arguments arguments) {
    giveText(context, tsql::upperCased(textOf(arguments[0])));
}

void lower(sqlite3_context *context, Arguments arguments) {
    giveText(context, tsql::lowerCased(textOf(arguments[0])));
}

void right(sqlite3_context *context, Arguments arguments) {
    const std::int64_t count = sqlite3_value_int64(arguments[1]);
    if (count < 0)
        invalidLength(536, "right");
    giveText(context, tsql::rightCharacters(textOf(arguments[0]), count));
}

void left(sqlite3_context *context, Arguments arguments) {
    const std::int64_t count = sqlite3_value_int64(arguments[1]);
    if (count < 0)
        invalidLength(536, "left");
    giveText(context, tsql::firstCharacters(textOf(arguments[0]), clamped(count)));
}

void substring(sqlite3_context *context, Arguments arguments) {
    std::string_view text = textOf(arguments[0]);
    std::int64_t start = sqlite3_value_int64(arguments[1]);
    std::int64_t count = sqlite3_value_int64(arguments[2]);
    if (count < 0)
        invalidLength(537, "LEFT or SUBSTRING");
    if (start < 1) {
        count = start < -count ? 0 : std::max<std::int64_t>(count + start - 1, 0);
        start = 1;
    }
    text.remove_prefix(tsql::firstCharacters(text, clamped(start - 1)).size());
    giveText(context, tsql::firstCharacters(text, clamped(count)));
}

void charIndex(sqlite3_context *context, Arguments arguments) {
    const std::string searched = tsql::folded(textOf(arguments[0]));
    const std::string text = tsql::folded(textOf(arguments[1]));
    const std::int64_t start = std::max<std::int64_t>(sqlite3_value_int64(arguments[2]), 1);
    const std::size_t from = tsql::firstCharacters(text, clamped(start - 1)).size();
    const auto at = searched.empty() ? std::string::npos : text.find(searched, from);
    sqlite3_result_int64(context, at == std::string::npos
                                      ? 0
                                      : tsql::characterCount(std::string_view(text).substr(0, at)) + 1);
}

void fittingText(sqlite3_context *context, Arguments arguments) {
    const std::string_view text = textOf(arguments[0]);
    const int width = sqlite3_value_int(arguments[1]);
    if (sqlite3_value_type(arguments[0]) == SQLITE_TEXT && std::int64_t(text.size()) <= width)
        return sqlite3_result_value(context, arguments[0]);
    giveText(context, tsql::fittingText(text, width));
}

constexpr Function Functions[] = {
    {names::Fold, 1, guarded<fold>},           {names::RangeBegin, 1, guarded<rangeBegin>},
    {names::RangeEnd, 1, guarded<rangeEnd>},   {names::Code, 1, guarded<code>},
    {names::Like, 2, guarded<like>},           {names::Pad, 2, guarded<pad>},
    {names::NullIf, 2, nullIf<sameTexts>},     {names::NullIfConverted, 3, nullIf<sameConverted>},
    {names::Replace, 3, guarded<replace>},     {names::Upper, 1, guarded<upper>},
    {names::Lower, 1, guarded<lower>},         {names::Right, 2, guarded<right>},
    {names::Left, 2, guarded<left>},           {names::Substring, 3, guarded<substring>},
    {names::CharIndex, 3, guarded<charIndex>}, {names::Text, 2, guarded<fittingText>},
};

} // namespace

std::span<const Function> textFunctions() {
    return Functions;
}

} // namespace zel::ado
