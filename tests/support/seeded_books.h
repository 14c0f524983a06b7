#pragma once

#include <QDate>

#include <cstdint>
#include <string>
#include <vector>

/// Books made from a number: the same for the same plan on every machine. Vouchers are told as a clerk types
/// them, and posted as the screens post them.
namespace zel::test {

/// Hundredths.
using Cents = std::int64_t;

enum class Kind { BP, BR, CP, CR, JV, FR, AR, CF };
[[nodiscard]] const char *codeOf(Kind kind);

struct BooksPlan {
    std::uint64_t seed = 1;

    int heads = 3;    ///< control accounts
    int subs = 30;    ///< sub-control accounts; the first holds cash and banks, the second the students
    int cash = 0;     ///< cash accounts; the first is the one set up. None: the banks serve for cash, too
    int banks = 4;    ///< bank accounts
    int students = 0; ///< accounts of students
    int others = 596; ///< all other subsidiary accounts

    int vouchers = 100'000; ///< of the kinds below, in turns
    std::vector<Kind> kinds = {Kind::BP, Kind::BR, Kind::BP, Kind::CP,
                               Kind::BP, Kind::CR, Kind::BP, Kind::JV};
    int applications = 0; ///< AR journals, one a student at most
    int fees = 0;         ///< FR vouchers
    int forwarded = 0;    ///< CF lines, which have no other side

    QDate from{2024, 1, 1}; ///< the period that the books are about
    QDate to{2025, 12, 30};
    /// Dates before, in and after the period, often on its edges; amounts of 0.00, of hundredths that no
    /// binary fraction holds and of ten digits before the point; openings of both signs and none; names with
    /// apostrophes; cash brought to a bank, and all else that a clerk may do. Else ordinary days in order.
    bool edges = false;
};

struct BookAccount {
    int id = 0; ///< RowID
    std::string parent;
    int code = 0; ///< Dcode
    std::string nodes;
    std::string name;
    const char *status = "DD";
    bool hasOpening = false; ///< else OpenBal is Null
    Cents opening = 0;
    bool bank = false;
};

/// A line as it is typed.
struct BookEntry {
    int debit = 0; ///< Accounts.RowID
    int credit = 0;
    Cents amount = 0;
    std::string cheque{};
    std::string narration{};
    std::string file{};
    std::string bill{};
    int session = 0; ///< of fees and carried amounts
    int subject = 0;
};

struct BookVoucher {
    Kind kind = Kind::BP;
    int number = 0;
    QDate date;
    std::string paidTo{};
    std::vector<BookEntry> entries; ///< on CP all credit one account, on CR all debit one
    [[nodiscard]] Cents total() const;
};

/// A row of DetJV.
struct BookLine {
    Kind kind = Kind::BP;
    int number = 0;
    int entry = 0;
    QDate date;
    int account = 0;
    int contra = 0; ///< 0: none
    Cents debit = 0;
    Cents credit = 0;
    const BookEntry *from = nullptr; ///< what was typed; a summary row's is its voucher's first
    bool summary = false;
};

/// The rows of a voucher in the order of writing; they point into it.
[[nodiscard]] std::vector<BookLine> linesOf(const BookVoucher &voucher);

/// Numbers that look random and are the same everywhere.
class Dice {
public:
    explicit Dice(std::uint64_t seed) : m_state(seed) {}
    /// 0 to limit - 1.
    [[nodiscard]] int below(int limit) {
        m_state = m_state * 6364136223846793005ULL + 1442695040888963407ULL;
        return int((m_state >> 33) % std::uint64_t(limit));
    }
    [[nodiscard]] bool oneIn(int times) { return below(times) == 0; }

private:
    std::uint64_t m_state;
};

class SeededBooks {
public:
    explicit SeededBooks(BooksPlan plan);

    [[nodiscard]] const std::vector<BookAccount> &accounts() const { return m_accounts; }
    [[nodiscard]] const std::vector<int> &cashAccounts() const { return m_cash; } ///< RowIDs
    [[nodiscard]] const std::vector<int> &banks() const { return m_banks; }
    [[nodiscard]] int studentsHead() const { return m_studentsHead; }

    /// The vouchers one after the other: `vouchers` by hand, then applications, fees and carried amounts.
    [[nodiscard]] bool atEnd() const;
    [[nodiscard]] BookVoucher next();

private:
    void addAccounts(int count, int sub, const char *name, std::vector<int> &ids, bool bank);
    void makeChart();
    [[nodiscard]] Cents opening();
    [[nodiscard]] Cents amount();
    [[nodiscard]] QDate date();
    [[nodiscard]] int otherThan(int account);
    [[nodiscard]] BookEntry entry(int debit, int credit, Kind kind);
    [[nodiscard]] BookVoucher byHand();
    [[nodiscard]] BookVoucher application();
    [[nodiscard]] BookVoucher fee();
    [[nodiscard]] BookVoucher forwarded();

    BooksPlan m_plan;
    Dice m_dice;
    std::vector<BookAccount> m_accounts;
    std::vector<int> m_subs; ///< how many accounts each sub-control account has
    std::vector<int> m_cash;
    std::vector<int> m_banks;
    std::vector<int> m_students;
    std::vector<int> m_others;
    int m_studentsHead = 0;
    int m_made = 0;
    int m_numbers[8] = {};
};

} // namespace zel::test
