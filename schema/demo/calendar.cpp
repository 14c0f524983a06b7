#include "schema/demo/calendar.h"

#include <QLocale>

#include <algorithm>

namespace zel::demo {

namespace {

struct Holiday {
    int month;
    int day;
};
constexpr Holiday Holidays[] = {{2, 5}, {3, 23}, {5, 1}, {8, 14}, {11, 9}, {12, 25}};

bool isOpen(QDate day) {
    return day.dayOfWeek() != Qt::Sunday && std::ranges::none_of(Holidays, [day](const Holiday &holiday) {
               return holiday.month == day.month() && holiday.day == day.day();
           });
}

} // namespace

QDate workingDay(QDate day) {
    const int step = day.day() < 27 ? 1 : -1;
    while (!isOpen(day))
        day = day.addDays(step);
    return day;
}

QString monthOf(QDate day) {
    return QLocale::c().toString(day, QStringLiteral("MMMM yyyy"));
}

} // namespace zel::demo
