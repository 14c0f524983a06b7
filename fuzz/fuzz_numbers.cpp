// Numbers, dates and texts of the dialect: what is written is read as the same again.

#include "fuzzing.h"

#include "platform/base/date_text.h"
#include "platform/base/number_text.h"
#include "platform/tsql/text/conversions.h"
#include "platform/tsql/text/text_rules.h"

#include <cstring>

using namespace zel;

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const std::string_view text = fuzz::textOf(data, size);
    (void)fuzz::accepted([&] {
        if (const auto number = Decimal::parse(text); number && Decimal::parse(number->toString()) != number)
            fuzz::broken("a number's text is read as the number", text);
    });
    (void)fuzz::accepted([&] {
        const Decimal money = tsql::moneyFromText(text);
        if (tsql::moneyFromText(money.toString()) != money)
            fuzz::broken("a sum of money's text is read as the same", text);
    });
    (void)fuzz::accepted([&] {
        const QString typed = QString::fromUtf8(text.data(), qsizetype(text.size()));
        const Decimal amount = leadingNumber(typed);
        const QString stored = storedAmount(amount);
        if (storedAmount(leadingNumber(stored)) != stored || shownAmount(amount).remove(u',') != stored)
            fuzz::broken("an amount is shown and stored alike", text);
    });
    for (const DateTarget target : {DateTarget::DateTime, DateTarget::Date}) {
        const DateOrder order = size % 2 == 0 ? DateOrder::MonthFirst : DateOrder::DayFirst;
        const DateReading read = parseDate(text, target, order);
        if (read.error != 0)
            continue;
        const DateReading again = parseDate(read.date.text(), target);
        if (again.error != 0 || again.date.text() != read.date.text())
            fuzz::broken("a date's text is read as the date", read.date.text());
    }
    for (const auto rule : {tsql::folded, tsql::upperCased, tsql::lowerCased, tsql::comparisonKey})
        if (rule(rule(text)) != rule(text))
            fuzz::broken("a rule of texts applied again changes nothing", text);
    double real = 0;
    if (size >= sizeof real) {
        std::memcpy(&real, data, sizeof real);
        if (const std::string written = plainText(real); real - real == 0)
            (void)fuzz::accepted([&] { (void)tsql::floatFromText(written); });
    }
    return 0;
}
