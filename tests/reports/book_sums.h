#pragma once

#include "tests/reports/printed.h"
#include "tests/support/book_catalog.h"

#include <map>
#include <span>

namespace zel::test {

inline const Period Year{QDate(2025, 1, 1), QDate(2025, 12, 31)};

inline BooksPlan planOf(int vouchers, bool forwarded) {
    BooksPlan plan;
    plan.seed = std::uint64_t(vouchers);
    plan.heads = 3;
    plan.subs = 31; // the eleventh of a control account is numbered 1.11
    plan.cash = 2;
    plan.banks = 3;
    plan.students = 3 + vouchers / 100;
    plan.others = 7 + vouchers / 40;
    plan.vouchers = vouchers;
    plan.kinds = {Kind::BP, Kind::BR, Kind::CP, Kind::CR, Kind::JV};
    plan.applications = vouchers / 4;
    plan.fees = vouchers / 3;
    plan.forwarded = forwarded ? 1 + vouchers / 9 : 0;
    plan.from = Year.from;
    plan.to = Year.to;
    plan.edges = true;
    return plan;
}

/// A balance in a debit and a credit column.
inline Columns sides(Cents balance) {
    return balance > 0 ? Columns{balance, 0} : Columns{0, -balance};
}

/// What the rows say of one account, in a period; a debit is positive.
struct Sums {
    Cents opening = 0;
    Cents debits = 0;
    Cents credits = 0;
    int rows = 0;
    // And what those rows say that name it as the other side.
    Cents contraDebits = 0;
    Cents contraCredits = 0;
    int contraRows = 0;
    /// By how much its book closes above its ledger, from the rules of posting alone.
    Cents gap = 0;

    [[nodiscard]] Cents closing() const { return opening + debits - credits; }
    [[nodiscard]] Cents bookClosing() const { return opening + contraCredits - contraDebits; }
    /// Its row in a balance with opening.
    [[nodiscard]] Columns row() const {
        const Columns begin = sides(opening), end = sides(closing());
        return {begin[0], begin[1], debits, credits, end[0], end[1]};
    }
    friend bool operator==(const Sums &, const Sums &) = default;
};

/// All books in memory, for sums of the test's own.
struct Held {
    explicit Held(const BooksPlan &plan) : books(plan) {
        SeededBooks source = books;
        while (!source.atEnd())
            vouchers.push_back(source.next());
        for (const BookVoucher &voucher : vouchers)
            for (const BookLine &line : linesOf(voucher))
                lines.push_back(line);
    }

    /// A book lists the rows that name its account as the other side, a ledger the account's own rows. Pairs
    /// (BP, BR, JV, FR, AR) are in both. Of CP and CR the cash account has one row in the ledger for all the
    /// lines in the book; but a line's own account is in its ledger alone, since the cash row names no other
    /// side. A CF row stands in its account's ledger and, as a receipt, in the cash book, and nowhere else.
    /// So a book closes as the ledger does unless lines of CP or CR were posted to its account, or CF rows
    /// bear it on either side.
    [[nodiscard]] std::map<int, Sums> sums(const Period &period) const {
        std::map<int, Sums> all;
        for (const BookAccount &account : books.accounts())
            if (account.status == std::string("DD"))
                all[account.id].opening = account.opening;
        for (const BookLine &line : lines) {
            const Cents change = line.debit - line.credit;
            if (line.date < period.from)
                all[line.account].opening += change;
            if (!period.holds(line.date))
                continue;
            Sums &own = all[line.account];
            own.debits += line.debit;
            own.credits += line.credit;
            ++own.rows;
            if (line.contra != 0) {
                Sums &other = all[line.contra];
                other.contraDebits += line.debit;
                other.contraCredits += line.credit;
                ++other.contraRows;
            }
            if ((line.kind == Kind::CP || line.kind == Kind::CR) && !line.summary)
                own.gap -= change;
            if (line.kind == Kind::CF) {
                own.gap += line.credit;
                all[line.contra].gap += line.credit;
            }
        }
        return all;
    }
    [[nodiscard]] Cents forwarded(const Period &period) const {
        Cents sum = 0;
        for (const BookLine &line : lines)
            if (line.kind == Kind::CF && period.holds(line.date))
                sum += line.credit;
        return sum;
    }

    SeededBooks books;
    std::vector<BookVoucher> vouchers;
    std::vector<BookLine> lines;
};

/// What a balance with opening lacks for openings without a counterpart, where these are its sums.
inline Columns lackingOpenings(const Columns &whole) {
    const Columns opening = sides(whole[1] - whole[0]);
    return {opening[0], opening[1], 0, 0, opening[0], opening[1]};
}

inline void add(Columns &sum, const Columns &more) {
    sum.resize(more.size());
    for (std::size_t i = 0; i < more.size(); ++i)
        sum[i] += more[i];
}

inline bool isZero(const Columns &amounts) {
    return std::ranges::all_of(amounts, [](Cents amount) { return amount == 0; });
}

inline void post(BookCatalog &catalog, std::span<const BookVoucher> vouchers) {
    catalog.run("begin");
    for (const BookVoucher &voucher : vouchers)
        catalog.post(voucher);
    catalog.run("commit; analyze");
}

} // namespace zel::test
