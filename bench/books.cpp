#include "books.h"

#include <sqlite3.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string_view>

namespace bench {

namespace {

class Database {
public:
    explicit Database(const std::string &path) {
        check(sqlite3_open_v2(path.c_str(), &m_db, SQLITE_OPEN_READWRITE, nullptr));
    }
    ~Database() { sqlite3_close_v2(m_db); }
    Database(const Database &) = delete;
    Database &operator=(const Database &) = delete;

    void run(const char *sql) { check(sqlite3_exec(m_db, sql, nullptr, nullptr, nullptr)); }
    void check(int code) const {
        if (code == SQLITE_OK || code == SQLITE_DONE || code == SQLITE_ROW)
            return;
        std::fprintf(stderr, "books: %s\n", sqlite3_errmsg(m_db));
        std::exit(1);
    }
    sqlite3 *handle() const { return m_db; }

private:
    sqlite3 *m_db = nullptr;
};

class Insert {
public:
    Insert(Database &db, const char *sql) : m_db(db) {
        db.check(sqlite3_prepare_v2(db.handle(), sql, -1, &m_statement, nullptr));
    }
    ~Insert() { sqlite3_finalize(m_statement); }
    Insert(const Insert &) = delete;
    Insert &operator=(const Insert &) = delete;

    template <class... Values>
    void operator()(const Values &...values) {
        int at = 0;
        (bind(++at, values), ...);
        m_db.check(sqlite3_step(m_statement));
        sqlite3_reset(m_statement);
    }

private:
    void bind(int at, int value) { sqlite3_bind_int(m_statement, at, value); }
    void bind(int at, std::nullptr_t) { sqlite3_bind_null(m_statement, at); }
    void bind(int at, double value) { sqlite3_bind_double(m_statement, at, value); }
    void bind(int at, const std::string &value) {
        sqlite3_bind_text(m_statement, at, value.data(), int(value.size()), SQLITE_TRANSIENT);
    }

    Database &m_db;
    sqlite3_stmt *m_statement = nullptr;
};

/// A small generator of our own, so that the books are the same on every standard library.
class Random {
public:
    int below(int limit) {
        m_state = m_state * 6364136223846793005ULL + 1442695040888963407ULL;
        return int((m_state >> 33) % std::uint64_t(limit));
    }

private:
    std::uint64_t m_state = 20240101;
};

std::string dayText(int day) {
    // Days from civil 2024-01-01, 30.44 days a month is enough: every text must be a real date.
    const int year = 2024 + day / 360;
    const int month = day % 360 / 30 + 1;
    const int date = day % 30 % 28 + 1;
    char text[40];
    std::snprintf(text, sizeof text, "%04d-%02d-%02d", year, month, date);
    return text;
}

double cents(Random &random) {
    return double(random.below(5'000'000) + 1) / 100;
}

} // namespace

void fillBooks(const std::string &database, const Size &size) {
    Database db(database);
    db.run("begin; delete from Accounts; delete from MasJV; delete from DetJV;");
    Random random;

    Insert account(
        db, "insert into Accounts(RowID,ParentID,Dcode,AcNodes,AcName,AcStatus,OpenBal,openDate,BStatus)"
            " values(?,?,?,?,?,?,?,?,?)");
    constexpr int heads = 3;
    constexpr int subs = 30;
    int id = 0;
    for (int h = 1; h <= heads; ++h)
        account(++id, std::to_string(h), 0, std::to_string(h), "CONTROL " + std::to_string(h),
                std::string("HH"), nullptr, nullptr, nullptr);
    for (int s = 0; s < subs; ++s) {
        const std::string parent = std::to_string(s % heads + 1);
        account(++id, parent, s / heads + 1, parent + '.' + std::to_string(s / heads + 1),
                "SUB CONTROL " + std::to_string(s), std::string("HD"), nullptr, nullptr, nullptr);
    }
    const int first = id + 1;
    for (int a = 0; a < size.accounts; ++a) {
        const int s = a % subs;
        const std::string parent = std::to_string(s % heads + 1) + '.' + std::to_string(s / heads + 1);
        const int code = a / subs + 1;
        const bool bank = a < 4;
        const std::string name = (bank ? "BANK " : "ACCOUNT OF THE LEDGER ") + std::to_string(a);
        if (bank)
            account(++id, parent, code, parent + '.' + std::to_string(code), name, std::string("DD"),
                    cents(random), std::string("2024-01-01"), std::string("B"));
        else
            account(++id, parent, code, parent + '.' + std::to_string(code), name, std::string("DD"),
                    cents(random), std::string("2024-01-01"), nullptr);
    }

    Insert header(
        db,
        "insert into MasJV(VouNo,VouStatus,VouDate,PaidReceive,TotalAmount,Login) values(?,?,?,?,?,'sa')");
    Insert line(db,
                "insert into DetJV(VouNo,VouStatus,VouDate,EntryNo,AcCode,CrAc,DrAmt,CrAmt,ChecqNo,Naration)"
                " values(?,?,?,?,?,?,?,?,?,?)");
    constexpr const char *kinds[] = {"BP", "BR", "CP", "CR", "JV"};
    int numbers[5] = {};
    for (int v = 0; v < size.vouchers; ++v) {
        const int k = v % 2 == 0 ? 0 : 1 + v / 2 % 4;
        const std::string kind = kinds[k];
        const int number = ++numbers[k];
        const std::string date = dayText(int(std::int64_t(v) * size.days / size.vouchers) % 720);
        const int bank = first + random.below(4);
        const bool cash = k == 2 || k == 3; // lines and one summary row instead of pairs
        const int lines = cash ? 2 : 1 + v / 2 % 2;
        double total = 0;
        std::string narration;
        for (int l = 1; l <= lines; ++l) {
            const int other = first + 4 + random.below(size.accounts - 4);
            const double amount = cents(random);
            const bool pays = k == 0 || k == 2 || k == 4;
            narration = "PAYMENT OF THE MONTH " + std::to_string(random.below(5000));
            const std::string cheque = k < 2 ? std::to_string(100000 + random.below(900000)) : std::string();
            total += amount;
            if (cash) {
                line(number, kind, date, l, other, bank, pays ? amount : 0.0, pays ? 0.0 : amount, cheque,
                     narration);
                continue;
            }
            line(number, kind, date, l, pays ? other : bank, pays ? bank : other, amount, 0, cheque,
                 narration);
            line(number, kind, date, l, pays ? bank : other, pays ? other : bank, 0, amount, cheque,
                 narration);
        }
        if (cash)
            line(number, kind, date, lines + 1, bank, nullptr, k == 3 ? total : 0.0, k == 2 ? total : 0.0,
                 nullptr, narration);
        header(number, kind, date, "PAYEE NUMBER " + std::to_string(random.below(20000)), total);
    }
    db.run("commit; analyze;");
}

} // namespace bench
