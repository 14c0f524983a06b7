#include "tests/support/seeded_books.h"

#include <algorithm>
#include <array>
#include <numeric>

namespace zel::test {

namespace {

constexpr std::array Codes = {"BP", "BR", "CP", "CR", "JV", "FR", "AR", "CF"};

/// What is hard on sums: hundredths that no binary fraction holds, and nothing at all.
constexpr std::array<Cents, 14> SharpAmounts = {1, 7,  10,     29, 115, 435, 0,
                                                0, 99, 100'00, 30, 257, 990, 123'456'789'01};
constexpr std::array<Cents, 3> HugeAmounts = {9'999'999'999'99, 9'876'543'210'98, 1'000'000'000'07};

constexpr std::array SharpNames = {"O'BRIEN'S STORE", "D'SOUZA & SONS", "STUDENTS' UNION [OLD] 100%",
                                   "A NAME THAT IS AS LONG AS THE COLUMN LETS IT BE, SO THAT NO REPORT "
                                   "CUTS A FIGURE FOR IT: 100 LETTERS"};

bool receives(Kind kind) {
    return kind == Kind::BR || kind == Kind::CR;
}

bool withSummary(Kind kind) {
    return kind == Kind::CP || kind == Kind::CR;
}

} // namespace

const char *codeOf(Kind kind) {
    return Codes[std::size_t(kind)];
}

Cents BookVoucher::total() const {
    return std::accumulate(entries.begin(), entries.end(), Cents(0),
                           [](Cents sum, const BookEntry &entry) { return sum + entry.amount; });
}

std::vector<BookLine> linesOf(const BookVoucher &voucher) {
    std::vector<BookLine> lines;
    const auto add = [&](int row, int account, int contra, Cents debit, Cents credit, const BookEntry &from) {
        lines.push_back(
            {voucher.kind, voucher.number, row, voucher.date, account, contra, debit, credit, &from, false});
    };
    int row = 0;
    for (const BookEntry &entry : voucher.entries) {
        ++row;
        const bool second = voucher.kind == Kind::AR; // whose two rows are numbered one by one
        if (voucher.kind != Kind::CR && voucher.kind != Kind::CF)
            add(row, entry.debit, entry.credit, entry.amount, 0, entry);
        if (voucher.kind != Kind::CP)
            add(row + (second ? 1 : 0), entry.credit, entry.debit, 0, entry.amount, entry);
    }
    if (withSummary(voucher.kind) && !voucher.entries.empty()) {
        const BookEntry &first = voucher.entries.front();
        const bool paid = voucher.kind == Kind::CP;
        add(row + 1, paid ? first.credit : first.debit, 0, paid ? 0 : voucher.total(),
            paid ? voucher.total() : 0, first);
        lines.back().summary = true;
    }
    return lines;
}

SeededBooks::SeededBooks(BooksPlan plan) : m_plan(std::move(plan)), m_dice(m_plan.seed) {
    makeChart();
    m_plan.applications = std::min(m_plan.applications, int(m_students.size()));
    if (m_students.empty())
        m_plan.fees = m_plan.forwarded = 0;
}

void SeededBooks::makeChart() {
    for (int h = 1; h <= m_plan.heads; ++h)
        m_accounts.push_back({int(m_accounts.size()) + 1, std::to_string(h), 0, std::to_string(h),
                              "CONTROL " + std::to_string(h), "HH"});
    for (int s = 0; s < m_plan.subs; ++s) {
        const std::string parent = std::to_string(s % m_plan.heads + 1);
        const int code = s / m_plan.heads + 1;
        m_accounts.push_back({int(m_accounts.size()) + 1, parent, code, parent + '.' + std::to_string(code),
                              "SUB CONTROL " + std::to_string(s), "HD"});
    }
    m_subs.resize(std::size_t(m_plan.subs));
    m_studentsHead = m_plan.heads + 2;
    addAccounts(m_plan.cash, 0, "CASH ", m_cash, false);
    addAccounts(m_plan.banks, 0, "BANK ", m_banks, true);
    if (m_cash.empty())
        m_cash = m_banks;
    addAccounts(m_plan.students, 1, "STUDENT ", m_students, false);
    addAccounts(m_plan.others, -1, "ACCOUNT OF THE LEDGER ", m_others, false);
}

/// Sub -1 spreads them over all but the first two.
void SeededBooks::addAccounts(int count, int sub, const char *name, std::vector<int> &ids, bool bank) {
    for (int i = 0; i < count; ++i) {
        const int place = sub >= 0 ? sub : 2 + i % (m_plan.subs - 2);
        const BookAccount &head = m_accounts[std::size_t(m_plan.heads) + std::size_t(place)];
        BookAccount account;
        account.id = int(m_accounts.size()) + 1;
        account.parent = head.nodes;
        account.code = ++m_subs[std::size_t(place)];
        account.nodes = account.parent + '.' + std::to_string(account.code);
        const bool sharp = m_plan.edges && sub == -1 && i < int(SharpNames.size());
        account.name = sharp ? SharpNames[std::size_t(i)] : name + std::to_string(i);
        account.bank = bank;
        account.hasOpening = !m_plan.edges || sub == 1 || !m_dice.oneIn(3);
        account.opening = !account.hasOpening ? 0 : sub == 1 ? Cents(m_dice.below(500)) * 100'00 : opening();
        ids.push_back(account.id);
        m_accounts.push_back(std::move(account));
    }
}

Cents SeededBooks::opening() {
    if (!m_plan.edges)
        return amount();
    const int which = m_dice.below(4);
    return which == 0 ? 0 : which == 1 ? -amount() : amount();
}

Cents SeededBooks::amount() {
    if (m_plan.edges && m_dice.oneIn(4))
        return SharpAmounts[std::size_t(m_dice.below(int(SharpAmounts.size())))];
    if (m_plan.edges && m_dice.oneIn(300))
        return HugeAmounts[std::size_t(m_dice.below(int(HugeAmounts.size())))];
    return m_dice.below(5'000'000) + 1;
}

QDate SeededBooks::date() {
    const int days = int(m_plan.from.daysTo(m_plan.to)) + 1;
    if (!m_plan.edges)
        return m_plan.from.addDays(std::int64_t(m_made) * days / std::max(m_plan.vouchers, m_made + 1));
    switch (m_dice.below(12)) {
    case 0:
        return m_plan.from;
    case 1:
        return m_plan.to;
    case 2:
        return m_plan.from.addDays(-1);
    case 3:
        return m_plan.to.addDays(1);
    case 4:
        return m_plan.from.addDays(-1 - m_dice.below(800));
    case 5:
        return m_plan.to.addDays(1 + m_dice.below(800));
    default:
        return m_plan.from.addDays(m_dice.below(days));
    }
}

/// Any account that a line may have on its far side. With edges the other cash accounts and the banks, too,
/// but for the cash account that is set up: a line of cash vouchers on it would stand in no cash book.
int SeededBooks::otherThan(int account) {
    if (m_plan.edges && m_dice.oneIn(5)) {
        std::vector<int> money(m_cash.begin() + 1, m_cash.end());
        money.insert(money.end(), m_banks.begin(), m_banks.end());
        const int chosen = money.empty() ? account : money[std::size_t(m_dice.below(int(money.size())))];
        if (chosen != account)
            return chosen;
    }
    return m_others[std::size_t(m_dice.below(int(m_others.size())))];
}

BookEntry SeededBooks::entry(int debit, int credit, Kind kind) {
    BookEntry entry;
    entry.debit = debit;
    entry.credit = credit;
    entry.amount = amount();
    entry.narration = "PAYMENT OF THE MONTH " + std::to_string(m_dice.below(5000));
    if (kind == Kind::BP || kind == Kind::BR)
        entry.cheque = std::to_string(100'000 + m_dice.below(900'000));
    if (m_plan.edges) {
        if (m_dice.oneIn(6))
            entry.narration = m_dice.oneIn(2) ? "" : "THE CHAIRMAN'S SHARE";
        if (m_dice.oneIn(3))
            entry.file = std::to_string(m_dice.below(99));
        if (m_dice.oneIn(3))
            entry.bill = std::to_string(m_dice.below(9999));
    }
    return entry;
}

bool SeededBooks::atEnd() const {
    return m_made >= m_plan.vouchers + m_plan.applications + m_plan.fees + m_plan.forwarded;
}

BookVoucher SeededBooks::next() {
    const int nth = m_made;
    BookVoucher voucher = nth < m_plan.vouchers                                       ? byHand()
                          : nth < m_plan.vouchers + m_plan.applications               ? application()
                          : nth < m_plan.vouchers + m_plan.applications + m_plan.fees ? fee()
                                                                                      : forwarded();
    ++m_made;
    return voucher;
}

BookVoucher SeededBooks::byHand() {
    const std::size_t turn = std::size_t(m_made) + (m_plan.edges ? m_plan.seed : 0);
    BookVoucher voucher;
    voucher.kind = m_plan.kinds[turn % m_plan.kinds.size()];
    voucher.number = ++m_numbers[int(voucher.kind)];
    voucher.date = date();
    voucher.paidTo = "PAYEE NUMBER " + std::to_string(m_dice.below(20'000));
    const bool withCash = withSummary(voucher.kind);
    const std::vector<int> &money = withCash ? m_cash : m_banks;
    // The cash account set up is the one used nearly always.
    const bool usual = withCash && m_plan.edges && !m_dice.oneIn(4);
    const int side = usual ? m_cash.front() : money[std::size_t(m_dice.below(int(money.size())))];
    const int lines = m_plan.edges ? 1 + m_dice.below(m_dice.oneIn(20) ? 40 : 4)
                      : withCash   ? 2
                                   : 1 + m_made / 2 % 2;
    for (int line = 0; line < lines; ++line) {
        const int far = otherThan(side);
        int near = side;
        if (voucher.kind == Kind::JV && m_plan.edges && m_dice.oneIn(2))
            near = m_dice.oneIn(3) ? m_cash.front() : otherThan(far);
        if (near == far)
            near = side;
        voucher.entries.push_back(receives(voucher.kind) ? entry(near, far, voucher.kind)
                                                         : entry(far, near, voucher.kind));
    }
    return voucher;
}

BookVoucher SeededBooks::application() {
    BookVoucher voucher;
    const int student = m_students[std::size_t(m_made - m_plan.vouchers)];
    voucher.kind = Kind::AR;
    voucher.number = student;
    voucher.date = date();
    voucher.entries.push_back(entry(m_cash.front(), student, Kind::AR));
    voucher.entries.back().narration = "App. Rec Amount ";
    return voucher;
}

BookVoucher SeededBooks::fee() {
    BookVoucher voucher;
    voucher.kind = Kind::FR;
    voucher.number = ++m_numbers[int(Kind::FR)];
    voucher.date = date();
    const int money = m_dice.oneIn(3) ? m_banks.front() : m_cash.front();
    for (int line = m_dice.below(3); line >= 0; --line) {
        const int student = m_students[std::size_t(m_dice.below(int(m_students.size())))];
        voucher.entries.push_back(entry(money, student, Kind::FR));
        voucher.entries.back().session = 1 + m_dice.below(3);
        voucher.entries.back().subject = 1 + m_dice.below(9);
    }
    return voucher;
}

BookVoucher SeededBooks::forwarded() {
    BookVoucher voucher;
    voucher.kind = Kind::CF;
    voucher.number = ++m_numbers[int(Kind::CF)];
    voucher.date = date();
    const int student = m_students[std::size_t(m_dice.below(int(m_students.size())))];
    voucher.entries.push_back(entry(m_cash.front(), student, Kind::CF));
    BookEntry &entry = voucher.entries.back();
    entry.amount = std::max<Cents>(entry.amount, 7); // a line without an amount posts nothing
    entry.narration = "0";
    entry.session = 2;
    entry.subject = 1 + m_dice.below(9);
    return voucher;
}

} // namespace zel::test
