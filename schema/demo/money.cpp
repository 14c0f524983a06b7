#include "schema/demo/calendar.h"
#include "schema/demo/office.h"

#include <algorithm>
#include <map>
#include <span>

namespace zel::demo {

namespace {

/// What the cashier goes by.
constexpr Cents MostCash = 60'000'00;    ///< at the end of a day
constexpr Cents CashFloat = 15'000'00;   ///< what is kept when the rest is banked
constexpr Cents LeastCash = 4'000'00;    ///< after the day's payments
constexpr Cents CashDrawn = 20'000'00;   ///< beyond what the day needs
constexpr Cents LeastBank = 60'000'00;   ///< in the current account after the day's payments
constexpr Cents MostBank = 1'700'000'00; ///< in the current account at the end of a day
constexpr Cents Saved = 500'000'00;

class Cashier {
public:
    explicit Cashier(Institute &institute) : m_institute(institute) {
        for (const AccountAt account : {institute.cash, institute.bank, institute.savings})
            m_balances[account] = institute.chart[std::size_t(account)].opening.value_or(0);
    }

    void run() {
        std::vector<Voucher> all;
        all.swap(m_institute.vouchers);
        std::ranges::stable_sort(all, {}, &Voucher::date);
        std::vector<Application> &applications = m_institute.applications;
        auto application = applications.cbegin();
        auto voucher = all.begin();
        for (QDate day = FirstDay; day <= LastDay; day = day.addDays(1)) {
            const auto end =
                std::find_if(voucher, all.end(), [day](const Voucher &v) { return v.date > day; });
            for (; application != applications.cend() && application->date <= day; ++application)
                m_cash += application->received();
            const auto payments =
                std::stable_partition(voucher, end, [this](const Voucher &v) { return !takesMoney(v); });
            for (; voucher != payments; ++voucher)
                post(std::move(*voucher));
            provide(day, {payments, end});
            for (; voucher != end; ++voucher)
                post(std::move(*voucher));
            putAway(day);
        }
    }

private:
    [[nodiscard]] bool takesMoney(const Voucher &voucher) const {
        return std::ranges::any_of(voucher.lines,
                                   [this](const Line &l) { return m_balances.contains(l.credit); });
    }

    void post(Voucher &&voucher) {
        for (const Line &line : voucher.lines) {
            if (const auto taking = m_balances.find(line.debit); taking != m_balances.end())
                taking->second += line.amount;
            if (const auto giving = m_balances.find(line.credit); giving != m_balances.end())
                giving->second -= line.amount;
        }
        m_institute.vouchers.push_back(std::move(voucher));
    }

    void move(QDate day, Kind kind, const char *who, AccountAt to, AccountAt from, Cents amount,
              const char *why) {
        post({.kind = kind,
              .date = day,
              .paidTo = QLatin1String(who),
              .lines = {{.debit = to, .credit = from, .amount = amount, .narration = QLatin1String(why)}}});
    }

    /// Before the day's payments.
    void provide(QDate day, std::span<const Voucher> payments) {
        std::map<AccountAt, Cents> needed;
        for (const Voucher &voucher : payments)
            for (const Line &line : voucher.lines)
                needed[line.credit] += line.amount;
        const Cents drawn = m_cash < needed[m_institute.cash] + LeastCash
                                ? roundedUp(needed[m_institute.cash] + CashDrawn - m_cash, 5'000'00)
                                : 0;
        const Cents fromBank = needed[m_institute.bank] + drawn;
        if (m_bank < fromBank + LeastBank && m_savings > 0)
            move(day, Kind::BP, "UNITED CITY BANK", m_institute.bank, m_institute.savings,
                 std::min(roundedUp(fromBank + LeastBank - m_bank, 100'000'00), m_savings), "From savings");
        if (drawn > 0)
            move(day, Kind::BP, "SELF", m_institute.cash, m_institute.bank, drawn,
                 "Cash drawn for the office");
    }

    /// At the end of the day.
    void putAway(QDate day) {
        if (m_cash > MostCash)
            move(day, Kind::BR, "MR. NABEEL SOOMRO", m_institute.bank, m_institute.cash,
                 (m_cash - CashFloat) / 1'000'00 * 1'000'00, "Cash brought to the bank");
        if (m_bank > MostBank)
            move(day, Kind::BP, "CRESCENT SAVINGS BANK", m_institute.savings, m_institute.bank, Saved,
                 "To savings");
    }

    Institute &m_institute;
    std::map<AccountAt, Cents> m_balances;
    Cents &m_cash = m_balances[m_institute.cash];
    Cents &m_bank = m_balances[m_institute.bank];
    Cents &m_savings = m_balances[m_institute.savings];
};

} // namespace

void keepMoney(Institute &institute) {
    Cashier(institute).run();
}

} // namespace zel::demo
