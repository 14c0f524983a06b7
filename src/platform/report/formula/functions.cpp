#include "platform/report/formula/functions.h"

#include "platform/base/number_text.h"
#include "platform/report/formula/amount_in_words.h"
#include "platform/report/formula/evaluate.h"

#include <array>

namespace zel::report {

namespace {

using Arguments = std::span<const Value>;

Value toText(Arguments arguments, const Scene &) {
    const QString picture = arguments.size() > 1 ? arguments[1].text() : QString();
    const bool date = std::holds_alternative<DateTime>(arguments[0].storage());
    if (date && !picture.isEmpty())
        return shown(arguments[0], Kind::Date, {}, picture);
    return arguments.size() > 1 ? shown(arguments[0], Kind::Number, picture, {}) : arguments[0].text();
}

Value upper(Arguments arguments, const Scene &) {
    return arguments[0].text().toUpper();
}

Value trim(Arguments arguments, const Scene &) {
    return arguments[0].text().trimmed();
}

Value left(Arguments arguments, const Scene &) {
    return arguments[0].text().left(static_cast<int>(arguments[1].integer()));
}

Value toNumber(Arguments arguments, const Scene &) {
    return leadingNumber(arguments[0].text());
}

Value isNull(Arguments arguments, const Scene &) {
    return arguments[0].isNull() ? 1 : 0;
}

Value isBlank(Arguments arguments, const Scene &) {
    return arguments[0].text().trimmed().isEmpty() ? 1 : 0;
}

Value absolute(Arguments arguments, const Scene &) {
    const Decimal number = arguments[0].decimal();
    return number < Decimal() ? -number : number;
}

Value rounded(Arguments arguments, const Scene &) {
    const auto digits = arguments.size() > 1 ? arguments[1].integer() : 0;
    return arguments[0].decimal().rounded(static_cast<int>(std::clamp<std::int64_t>(digits, 0, 4)));
}

Value inWords(Arguments arguments, const Scene &) {
    return amountInWords(arguments[0].decimal(), WordScale::Thousands);
}

Value inWordsLakh(Arguments arguments, const Scene &) {
    return amountInWords(arguments[0].decimal(), WordScale::Lakhs);
}

Value year(Arguments arguments, const Scene &) {
    const QDate date = arguments[0].date();
    return date.isValid() ? Value(date.year()) : Value();
}

Value month(Arguments arguments, const Scene &) {
    const QDate date = arguments[0].date();
    return date.isValid() ? Value(date.month()) : Value();
}

Value day(Arguments arguments, const Scene &) {
    const QDate date = arguments[0].date();
    return date.isValid() ? Value(date.day()) : Value();
}

Value pageNumber(Arguments, const Scene &scene) {
    return scene.pageNumber();
}

Value pageCount(Arguments, const Scene &scene) {
    return scene.pageCount();
}

Value continued(Arguments, const Scene &scene) {
    return scene.continued() ? 1 : 0;
}

Value rowNumber(Arguments, const Scene &scene) {
    return scene.rowNumber();
}

Value printDate(Arguments, const Scene &scene) {
    return scene.printTime().date();
}

Value printTime(Arguments, const Scene &scene) {
    return scene.printTime().time().toString(QStringLiteral("HH:mm"));
}

Value userName(Arguments, const Scene &scene) {
    return scene.userName();
}

Value fromSubreport(Arguments arguments, const Scene &scene) {
    return scene.fromSubreport(arguments[0].text(), arguments[1].text());
}

constexpr std::array<Function, 23> functions{{
    {"totext", 1, 2, {Kind::Null, Kind::Text}, Kind::Text, Stage::Constant, toText},
    {"upper", 1, 1, {Kind::Text}, Kind::Text, Stage::Constant, upper, "upper($)"},
    {"trim", 1, 1, {Kind::Text}, Kind::Text, Stage::Constant, trim, "ltrim(rtrim($))"},
    {"left", 2, 2, {Kind::Text, Kind::Number}, Kind::Text, Stage::Constant, left},
    {"tonumber", 1, 1, {Kind::Text}, Kind::Number, Stage::Constant, toNumber, "cast(rtrim($) as bigint)"},
    {"isnull", 1, 1, {Kind::Null}, Kind::Boolean, Stage::Constant, isNull, "$ is null"},
    {"isblank", 1, 1, {Kind::Text}, Kind::Boolean, Stage::Constant, isBlank},
    {"abs", 1, 1, {Kind::Number}, Kind::Number, Stage::Constant, absolute},
    {"round", 1, 2, {Kind::Number, Kind::Number}, Kind::Number, Stage::Constant, rounded},
    {"amountinwords", 1, 1, {Kind::Number}, Kind::Text, Stage::Constant, inWords},
    {"amountinwordslakh", 1, 1, {Kind::Number}, Kind::Text, Stage::Constant, inWordsLakh},
    {"year", 1, 1, {Kind::Date}, Kind::Number, Stage::Constant, year, "year($)"},
    {"month", 1, 1, {Kind::Date}, Kind::Number, Stage::Constant, month, "month($)"},
    {"day", 1, 1, {Kind::Date}, Kind::Number, Stage::Constant, day, "day($)"},
    {"pagenumber", 0, 0, {}, Kind::Number, Stage::Page, pageNumber},
    {"pagecount", 0, 0, {}, Kind::Number, Stage::Pages, pageCount},
    {"continued", 0, 0, {}, Kind::Boolean, Stage::Page, continued},
    {"rownumber", 0, 0, {}, Kind::Number, Stage::Row, rowNumber},
    {"printdate", 0, 0, {}, Kind::Date, Stage::Constant, printDate},
    {"printtime", 0, 0, {}, Kind::Text, Stage::Constant, printTime},
    {"username", 0, 0, {}, Kind::Text, Stage::Constant, userName},
    {"fromsub", 2, 2, {Kind::Text, Kind::Text}, Kind::Number, Stage::Total, fromSubreport},
    {"date",
     1,
     1,
     {Kind::Date},
     Kind::Date,
     Stage::Constant,
     [](Arguments arguments, const Scene &) {
         const QDate date = arguments[0].date();
         return date.isValid() ? Value(date) : Value();
     }},
}};

} // namespace

int functionIndex(std::string_view name) {
    const auto *found = std::ranges::find(functions, name, &Function::name);
    return found == functions.end() ? -1 : static_cast<int>(found - functions.begin());
}

const Function &function(int index) {
    return functions[static_cast<std::size_t>(index)];
}

} // namespace zel::report
