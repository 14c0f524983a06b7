#include "platform/ado/drivers/sqlite_function_glue.h"

#include "platform/tsql/engines/sqlite/sqlite_names.h"
#include "platform/tsql/text/dates.h"

#include <QDateTime>

namespace zel::ado {

namespace {

namespace names = tsql::sqlite_names;

void give(sqlite3_context *context, const DateReading &reading) {
    if (reading.error != 0)
        tsql::throwDateError(reading.error);
    giveText(context, reading.date.text());
}

DateOrder orderOf(sqlite3_value *style) {
    return tsql::orderOfStyle(sqlite3_value_int(style));
}

void toDate(sqlite3_context *context, Arguments arguments) {
    constexpr auto Target = DateTarget::DateTime;
    if (!isText(arguments[0]))
        return give(context, dateFromDays(sqlite3_value_double(arguments[0]), Target));
    const std::string_view text = textOf(arguments[0]);
    if (tsql::isStoredDate(text))
        return sqlite3_result_value(context, arguments[0]);
    give(context, parseDate(text, Target, orderOf(arguments[1])));
}

void toDay(sqlite3_context *context, Arguments arguments) {
    constexpr auto Target = DateTarget::Date;
    give(context, isText(arguments[0]) ? parseDate(textOf(arguments[0]), Target, orderOf(arguments[1]))
                                       : dateFromDays(sqlite3_value_double(arguments[0]), Target));
}

DateTime momentOf(sqlite3_value *value) {
    const std::string_view text = textOf(value);
    const auto stored = fromStoredDate(text);
    if (stored)
        return *stored;
    const DateReading read = parseDate(text, DateTarget::DateTime);
    if (read.error != 0)
        tsql::throwDateError(read.error);
    return fromStoredDate(read.date.text()).value_or(DateTime{});
}

tsql::DatePart partOf(sqlite3_value *value) {
    return tsql::DatePart(sqlite3_value_int(value));
}

void dateText(sqlite3_context *context, Arguments arguments) {
    giveText(context, tsql::dateText(momentOf(arguments[0]), sqlite3_value_int(arguments[1]),
                                     sqlite3_value_int(arguments[2]) != 0));
}

void dateAdd(sqlite3_context *context, Arguments arguments) {
    giveText(context, storedDate(tsql::dateAdded(momentOf(arguments[2]), partOf(arguments[0]),
                                                 sqlite3_value_int64(arguments[1])))
                          .text());
}

void dateDifference(sqlite3_context *context, Arguments arguments) {
    sqlite3_result_int64(
        context, tsql::dateDifference(partOf(arguments[0]), momentOf(arguments[1]), momentOf(arguments[2])));
}

void partOfDate(sqlite3_context *context, Arguments arguments) {
    sqlite3_result_int(context, tsql::partOf(momentOf(arguments[1]), partOf(arguments[0])));
}

void partName(sqlite3_context *context, Arguments arguments) {
    giveText(context, tsql::partName(momentOf(arguments[1]), partOf(arguments[0])));
}

void dateSum(sqlite3_context *context, Arguments arguments) {
    giveText(context, storedDate(tsql::dateSum(momentOf(arguments[0]), momentOf(arguments[1]),
                                               sqlite3_value_int(arguments[2]) < 0))
                          .text());
}

void now(sqlite3_context *context, Arguments) {
    const QDateTime moment = QDateTime::currentDateTime();
    giveText(context,
             storedDate(fromTicks(ticksOf({moment.date(), moment.time()})).value_or(DateTime{})).text());
}

constexpr Function Functions[] = {
    {names::Date, 2, guarded<toDate>},
    {names::Day, 2, guarded<toDay>},
    {names::DateText, 3, guarded<dateText>},
    {names::DateAdd, 3, guarded<dateAdd>},
    {names::DateDifference, 3, guarded<dateDifference>},
    {names::PartOfDate, 2, guarded<partOfDate>},
    {names::PartName, 2, guarded<partName>},
    {names::DateSum, 3, guarded<dateSum>},
    // Like all the others it counts as deterministic: SQLite then asks once for a run of a statement, so that
    // all of its rows see the same moment.
    {names::Now, 0, guarded<now>},
};

} // namespace

std::span<const Function> dateFunctions() {
    return Functions;
}

} // namespace zel::ado
