#include "platform/ado/drivers/sqlite_function_glue.h"

#include "platform/tsql/engines/sqlite/sqlite_names.h"
#include "platform/tsql/text/dates.h"

#include <QDateTime>

namespace zel::ado {

namespace {

namespace names = tsql::sqlite_names;

void give(sqlite3_context *context, const tsql::DateReading &reading) {
    if (reading.error != 0)
        tsql::throwDateError(reading.error);
    giveText(context, reading.date.text());
}

void toDate(sqlite3_context *context, Arguments arguments) {
    constexpr auto Target = tsql::DateTarget::DateTime;
    if (!isText(arguments[0]))
        return give(context, tsql::dateFromDays(sqlite3_value_double(arguments[0]), Target));
    const std::string_view text = textOf(arguments[0]);
    if (tsql::isStoredDate(text))
        return sqlite3_result_value(context, arguments[0]);
    give(context, tsql::parseDate(text, Target, sqlite3_value_int(arguments[1])));
}

void toDay(sqlite3_context *context, Arguments arguments) {
    constexpr auto Target = tsql::DateTarget::Date;
    give(context, isText(arguments[0])
                      ? tsql::parseDate(textOf(arguments[0]), Target, sqlite3_value_int(arguments[1]))
                      : tsql::dateFromDays(sqlite3_value_double(arguments[0]), Target));
}

void dateText(sqlite3_context *context, Arguments arguments) {
    const auto moment = tsql::fromStoredDate(textOf(arguments[0]));
    giveText(context, tsql::dateText(moment ? *moment : tsql::dateFromText(textOf(arguments[0])),
                                     sqlite3_value_int(arguments[1])));
}

void now(sqlite3_context *context, Arguments) {
    const QDateTime moment = QDateTime::currentDateTime();
    giveText(context, tsql::storedDate({moment.date(), moment.time()}));
}

constexpr Function Functions[] = {
    {names::Date, 2, guarded<toDate>},
    {names::Day, 2, guarded<toDay>},
    {names::DateText, 2, guarded<dateText>},
    // Like all the others it counts as deterministic: SQLite then asks once for a run of a statement, so that
    // all of its rows see the same moment.
    {names::Now, 0, guarded<now>},
};

} // namespace

std::span<const Function> dateFunctions() {
    return Functions;
}

} // namespace zel::ado
