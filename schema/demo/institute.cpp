#include "schema/demo/institute.h"

#include "platform/base/error.h"
#include "schema/demo/calendar.h"
#include "schema/demo/demo_texts.h"
#include "schema/demo/enrolment.h"
#include "schema/demo/office.h"
#include "schema/demo/table.h"

#include <algorithm>
#include <map>

namespace zel::demo {

namespace {

constexpr int SmallPayments = 260;
constexpr int SmallReceipts = 225;

void readChart(Institute &institute) {
    for (const Row &row : tableOf(chart))
        institute.chart.push_back({row[0], row[1], row[2],
                                   row[3].isEmpty() ? std::optional<Cents>() : row.cents(3), row[4], row[5],
                                   row[6], row[7], FirstDay, row[0]});
    institute.cash = institute.account(QStringLiteral("CASH IN HAND"));
    institute.bank = institute.account(QStringLiteral("UNITED CITY BANK"));
    institute.savings = institute.account(QStringLiteral("CRESCENT SAVINGS BANK"));
}

QDate dayOf(const QString &text) {
    return QDate::fromString(text, Qt::ISODate);
}

void readCourses(Institute &institute) {
    for (const Row &row : tableOf(courses))
        if (row[0] == QLatin1String("session"))
            institute.sessions.push_back({row[1], dayOf(row[2]), dayOf(row[3]), row.number(4)});
        else if (row[0] == QLatin1String("course"))
            institute.courses.push_back({row[1], row[2], row[3], row.number(4), institute.account(row[5])});
        else
            institute.subjects.push_back({int(institute.courses.size()), row[1], row.cents(2)});
}

/// Each kind counts from 1; each bank has its cheque book, and a payment is one cheque.
void number(Institute &institute) {
    std::ranges::stable_sort(institute.vouchers, {}, &Voucher::date);
    std::map<Kind, int> numbers;
    std::map<AccountAt, int> cheques;
    for (Voucher &voucher : institute.vouchers) {
        voucher.number = ++numbers[voucher.kind];
        if (voucher.kind != Kind::BP)
            continue;
        const AccountAt bank = voucher.lines.front().credit;
        const QString cheque = QString::number(100'000 * bank + ++cheques[bank]);
        for (Line &line : voucher.lines)
            line.cheque = cheque;
    }
}

} // namespace

AccountAt Institute::account(const QString &name) const {
    const auto found = std::ranges::find(chart, name, &Account::name);
    if (found == chart.end())
        throw Error(errors::InvalidCall, QStringLiteral("The chart has no account \"%1\".").arg(name));
    return AccountAt(found - chart.begin());
}

Institute makeInstitute(std::uint64_t seed) {
    Institute institute{};
    readChart(institute);
    readCourses(institute);
    enrol(institute, seed);
    keepOffice(institute, seed + 1);
    addSundries(institute, seed + 2, "CP", SmallPayments);
    addSundries(institute, seed + 3, "CR", SmallReceipts);
    keepMoney(institute);
    addSundries(institute, seed + 4, "CR", std::max(0, Vouchers - int(institute.vouchers.size())));
    number(institute);
    return institute;
}

} // namespace zel::demo
