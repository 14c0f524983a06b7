#include "schema/demo/office.h"

#include "schema/demo/calendar.h"
#include "schema/demo/demo_texts.h"
#include "schema/demo/dice.h"
#include "schema/demo/table.h"

#include <algorithm>

namespace zel::demo {

namespace {

/// The columns of schedule.txt.
enum Scheduled {
    KindCode,
    Debit,
    Credit,
    First,
    Every,
    Times,
    Day,
    Least,
    Most,
    To,
    Rises,
    CreditDays,
    File,
    PaidTo,
    Narration
};
/// The columns of sundries.txt.
enum Sundry { SundryKind, Weight, SundryAccount, SundryLeast, SundryMost, Who, What };

const QDate Rise{2025, 7, 1};
constexpr std::size_t MostLines = 3; ///< of a small voucher

Kind kindOf(const QString &code) {
    const auto found = std::ranges::find(Codes, code, [](const char *known) { return QLatin1String(known); });
    return Kind(found - std::begin(Codes));
}

class Schedule {
public:
    Schedule(Institute &institute, std::uint64_t seed) : m_institute(institute), m_dice(seed) {}

    void run() {
        const QList<Row> rows = tableOf(schedule);
        for (qsizetype first = 0; first < rows.size();) {
            qsizetype end = first + 1;
            while (end < rows.size() && rows[end][KindCode] == u'+')
                ++end;
            repeat(rows.mid(first, end - first));
            first = end;
        }
    }

private:
    /// `rows` are the lines of one voucher.
    void repeat(const QList<Row> &rows) {
        const Row &head = rows.first();
        const QDate first = QDate::fromString(head[First] + QLatin1String("-01"), Qt::ISODate);
        const int times = head[Times].isEmpty() ? 24 : head.number(Times);
        for (int time = 0; time < times; ++time) {
            const QDate month = first.addMonths(time * head.number(Every));
            if (month > LastDay)
                return;
            const int day = std::min(head.number(Day), month.daysInMonth());
            enter(rows, workingDay(month.addDays(day - 1)));
        }
    }

    void enter(const QList<Row> &rows, QDate day) {
        const Row &head = rows.first();
        Voucher voucher{.kind = kindOf(head[KindCode]), .date = day, .paidTo = head[PaidTo], .lines = {}};
        const bool onCredit = head.number(CreditDays) > 0;
        const QString bill = onCredit ? QString::number(m_dice.between(1000, 9999)) : QString();
        for (const Row &row : rows)
            voucher.lines.push_back({.debit = m_institute.account(row[Debit]),
                                     .credit = m_institute.account(row[Credit]),
                                     .amount = amount(row, day),
                                     .narration = told(row[Narration], day),
                                     .file = row[File],
                                     .bill = bill});
        if (onCredit)
            settle(voucher, workingDay(day.addDays(head.number(CreditDays))));
        m_institute.vouchers.push_back(std::move(voucher));
    }

    void settle(const Voucher &bought, QDate day) {
        if (day > LastDay)
            return;
        const Line &line = bought.lines.front();
        m_institute.vouchers.push_back(
            {.kind = Kind::BP,
             .date = day,
             .paidTo = bought.paidTo,
             .lines = {{.debit = line.credit,
                        .credit = m_institute.bank,
                        .amount = bought.total(),
                        .narration = QStringLiteral("Bill %1 of %2").arg(line.bill, monthOf(bought.date)),
                        .file = line.file,
                        .bill = line.bill}}});
    }

    [[nodiscard]] Cents amount(const Row &row, QDate day) {
        const Cents to = row.number(To);
        const int least = int(row.cents(Least) / to);
        const Cents base = m_dice.between(least, int(row.cents(Most) / to)) * to;
        return row[Rises].isEmpty() || day < Rise ? base : base + base / 10;
    }

    [[nodiscard]] static QString told(QString narration, QDate day) {
        return narration.replace(QLatin1String("{month}"), monthOf(day))
            .replace(QLatin1String("{last}"), monthOf(day.addMonths(-1)));
    }

    Institute &m_institute;
    Dice m_dice;
};

/// Small vouchers in cash, of the rows of one kind.
class Sundries {
public:
    Sundries(Institute &institute, std::uint64_t seed, const char *kind)
        : m_institute(institute), m_dice(seed), m_rows(tableOf(sundries, QLatin1String(kind))) {}

    void enter() {
        const int days = int(FirstDay.daysTo(LastDay)) + 1;
        const QDate day = workingDay(FirstDay.addDays(m_dice.below(days)));
        const Row first = draw();
        Voucher voucher{
            .kind = kindOf(first[SundryKind]), .date = day, .paidTo = first[Who], .lines = {line(first)}};
        while (voucher.lines.size() < MostLines && m_dice.oneIn(3))
            voucher.lines.push_back(line(draw()));
        m_institute.vouchers.push_back(std::move(voucher));
    }

private:
    [[nodiscard]] const Row &draw() {
        return m_dice.of(m_rows, [](const Row &row) { return row.number(Weight); });
    }

    [[nodiscard]] Line line(const Row &row) {
        const AccountAt other = m_institute.account(row[SundryAccount]);
        const Cents amount =
            m_dice.between(row.number(SundryLeast) / 5, row.number(SundryMost) / 5) * Cents(5'00);
        const bool paid = row[SundryKind] == QLatin1String("CP");
        return {paid ? other : m_institute.cash, paid ? m_institute.cash : other, amount, row[What]};
    }

    Institute &m_institute;
    Dice m_dice;
    QList<Row> m_rows;
};

} // namespace

void keepOffice(Institute &institute, std::uint64_t seed) {
    Schedule(institute, seed).run();
}

void addSundries(Institute &institute, std::uint64_t seed, const char *kind, int count) {
    Sundries vouchers(institute, seed, kind);
    for (int voucher = 0; voucher < count; ++voucher)
        vouchers.enter();
}

} // namespace zel::demo
