#include "tests/support/seeded_institute.h"

#include <algorithm>

namespace zel::test {

namespace {

const QDate Day(2025, 9, 1);

BooksPlan booksOf(const InstitutePlan &plan) {
    BooksPlan books;
    books.seed = plan.seed;
    books.cash = 1;
    books.banks = 1;
    books.students = plan.students;
    books.others = 1;
    books.vouchers = 0;
    return books;
}

} // namespace

SeededInstitute::SeededInstitute(const InstitutePlan &wanted)
    : plan(wanted), books(booksOf(wanted)), m_dice(wanted.seed) {
    const std::string &head = books.accounts().at(std::size_t(books.studentsHead() - 1)).nodes;
    for (const BookAccount &account : books.accounts()) {
        if (account.parent != head || account.status != std::string("DD"))
            continue;
        apply(account.id);
        if (m_dice.oneIn(6))
            apply(account.id);
    }
    for (int number = 1; number <= plan.receipts; ++number)
        receive(number);
    int form = 0;
    for (Applicant &one : applicants) {
        for (TakenSubject &taken : one.taken) {
            if (!taken.inactive || !taken.charged || m_dice.oneIn(3))
                continue;
            taken.carried = amount() + 7;
            vouchers.push_back({Kind::CF, ++form, Day, {}, {}});
            vouchers.back().entries.push_back(
                {0, one.account, taken.carried, {}, "0", {}, {}, 2, taken.subject});
        }
    }
}

Cents SeededInstitute::amount() {
    if (m_dice.oneIn(40))
        return 9'999'999'999'99;
    return m_dice.oneIn(4) ? m_dice.below(8) : m_dice.below(3'000'000);
}

void SeededInstitute::apply(int account) {
    const bool again = !applicants.empty() && applicants.back().account == account;
    Applicant one{int(applicants.size()) + 1, account, 1 + m_dice.below(plan.sessions), {}};
    Cents received = 0;
    for (int subject = 1; subject <= plan.subjects; ++subject) {
        const bool had =
            again && std::ranges::any_of(applicants.back().taken,
                                         [&](const TakenSubject &taken) { return taken.subject == subject; });
        if (had || m_dice.oneIn(2))
            continue;
        TakenSubject taken;
        taken.subject = subject;
        taken.charged = !m_dice.oneIn(12);
        taken.fee = amount();
        taken.discount = m_dice.oneIn(3) ? taken.fee / 7 : 0;
        taken.received = taken.charged && m_dice.oneIn(2) ? taken.net() / 3 : 0;
        taken.inactive = m_dice.oneIn(4);
        received += taken.received;
        one.taken.push_back(taken);
    }
    if (received > 0) {
        vouchers.push_back({Kind::AR, account, Day, {}, {}});
        vouchers.back().entries.push_back(
            {books.cashAccounts().front(), account, received, {}, "App. Rec Amount ", {}, {}, one.session});
    }
    applicants.push_back(std::move(one));
}

void SeededInstitute::receive(int number) {
    BookVoucher voucher{Kind::FR, number, Day, {}, {}};
    for (int line = m_dice.below(3); line >= 0; --line) {
        Applicant &one = applicants[std::size_t(m_dice.below(int(applicants.size())))];
        TakenSubject stray;
        stray.subject = plan.subjects + 1;
        const bool strays = one.taken.empty() || m_dice.oneIn(10);
        TakenSubject &taken = strays ? stray : one.taken[std::size_t(m_dice.below(int(one.taken.size())))];
        if (!taken.charged)
            continue;
        const Cents paid = amount();
        taken.paid += paid;
        voucher.entries.push_back({books.cashAccounts().front(),
                                   one.account,
                                   paid,
                                   {},
                                   "FEE",
                                   {},
                                   {},
                                   1 + m_dice.below(plan.sessions),
                                   taken.subject});
    }
    vouchers.push_back(std::move(voucher));
}

} // namespace zel::test
