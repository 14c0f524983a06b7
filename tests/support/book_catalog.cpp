#include "tests/support/book_catalog.h"

#include <sqlite3.h>

#include <cstdio>
#include <cstdlib>
#include <optional>

namespace zel::test {

namespace {

/// A value as it is handed to SQLite, which makes a number of it where the column holds numbers; none is
/// NULL.
using Text = std::optional<std::string>;

Text orNull(const std::string &text) {
    return text.empty() ? Text() : Text(text);
}

Text orNull(int number) {
    return number == 0 ? Text() : Text(std::to_string(number));
}

Text money(Cents cents) {
    char text[32];
    const Cents size = cents < 0 ? -cents : cents;
    std::snprintf(text, sizeof text, "%s%lld.%02d", cents < 0 ? "-" : "", static_cast<long long>(size / 100),
                  static_cast<int>(size % 100));
    return text;
}

} // namespace

class BookCatalog::Insert {
public:
    Insert(BookCatalog &catalog, const char *sql) : m_catalog(catalog) {
        catalog.check(sqlite3_prepare_v2(catalog.m_db, sql, -1, &m_statement, nullptr));
    }
    ~Insert() { sqlite3_finalize(m_statement); }
    Insert(const Insert &) = delete;
    Insert &operator=(const Insert &) = delete;

    void operator()(const std::vector<Text> &values) {
        int at = 0;
        for (const Text &value : values)
            sqlite3_bind_text(m_statement, ++at, value ? value->c_str() : nullptr, -1, SQLITE_TRANSIENT);
        m_catalog.check(sqlite3_step(m_statement));
        sqlite3_reset(m_statement);
    }

private:
    BookCatalog &m_catalog;
    sqlite3_stmt *m_statement = nullptr;
};

BookCatalog::BookCatalog(const std::string &path) {
    check(sqlite3_open_v2(path.c_str(), &m_db, SQLITE_OPEN_READWRITE, nullptr));
    sqlite3_busy_timeout(m_db, 5000);
}

BookCatalog::~BookCatalog() {
    m_header.reset();
    m_line.reset();
    sqlite3_close_v2(m_db);
}

void BookCatalog::check(int code) const {
    if (code == SQLITE_OK || code == SQLITE_DONE || code == SQLITE_ROW)
        return;
    std::fprintf(stderr, "books: %s\n", sqlite3_errmsg(m_db));
    std::exit(1);
}

void BookCatalog::run(const std::string &sql) {
    check(sqlite3_exec(m_db, sql.c_str(), nullptr, nullptr, nullptr));
}

std::vector<std::vector<std::string>> BookCatalog::ask(const std::string &sql) {
    sqlite3_stmt *statement = nullptr;
    check(sqlite3_prepare_v2(m_db, sql.c_str(), -1, &statement, nullptr));
    std::vector<std::vector<std::string>> rows;
    int code = SQLITE_OK;
    while ((code = sqlite3_step(statement)) == SQLITE_ROW) {
        auto &row = rows.emplace_back();
        for (int column = 0; column < sqlite3_column_count(statement); ++column) {
            const auto *text = reinterpret_cast<const char *>(sqlite3_column_text(statement, column));
            row.emplace_back(text ? text : "");
        }
    }
    sqlite3_finalize(statement);
    check(code);
    return rows;
}

void BookCatalog::open(const SeededBooks &books) {
    run("delete from Accounts; delete from MasJV; delete from DetJV;");
    Insert account(
        *this, "insert into Accounts(RowID,ParentID,Dcode,AcNodes,AcName,AcStatus,OpenBal,openDate,BStatus)"
               " values(?,?,?,?,?,?,?,?,?)");
    for (const BookAccount &one : books.accounts()) {
        const bool posts = one.status == std::string("DD");
        account({std::to_string(one.id), one.parent, std::to_string(one.code), one.nodes, one.name,
                 one.status, posts && one.hasOpening ? money(one.opening) : Text(),
                 posts ? Text("2024-01-01") : Text(), one.bank ? Text("B") : Text()});
    }
    const std::string cash = std::to_string(books.cashAccounts().front());
    run("update VouSetting set AcCode = '" + cash + "' where VouStatus in ('CP','CR','RI')");
    run("update VouSetting set AcCode = '" + std::to_string(books.studentsHead()) +
        "' where VouStatus = 'IR'");
}

void BookCatalog::post(const BookVoucher &voucher) {
    if (!m_header) {
        m_header = std::make_unique<Insert>(
            *this, "insert into MasJV(VouNo,VouStatus,VouDate,PaidReceive,TotalAmount,Login,IRStatus)"
                   " values(?,?,?,?,?,'sa',?)");
        m_line = std::make_unique<Insert>(
            *this, "insert into DetJV(VouNo,VouStatus,VouDate,EntryNo,AcCode,CrAc,DrAmt,CrAmt,ChecqNo,"
                   "Naration,FileNo,BillNo,SessionID,SubID) values(?,?,?,?,?,?,?,?,?,?,?,?,?,?)");
    }
    const std::string kind = codeOf(voucher.kind);
    const std::string day = voucher.date.toString(Qt::ISODate).toStdString();
    const std::string number = std::to_string(voucher.number);
    for (const BookLine &one : linesOf(voucher)) {
        const bool bare = one.summary; // which bears a narration and no more
        (*m_line)({number, kind, day, std::to_string(one.entry), std::to_string(one.account),
                   orNull(one.contra), money(one.debit), money(one.credit),
                   bare ? Text() : Text(one.from->cheque), one.from->narration,
                   bare ? Text() : orNull(one.from->file), bare ? Text() : orNull(one.from->bill),
                   orNull(one.from->session), orNull(one.from->subject)});
    }
    if (voucher.kind != Kind::AR && voucher.kind != Kind::CF)
        (*m_header)({number, kind, day, voucher.paidTo, money(voucher.total()),
                     voucher.kind == Kind::FR ? Text("CASH") : Text()});
}

void BookCatalog::enroll(const SeededInstitute &institute) {
    const InstitutePlan &plan = institute.plan;
    run("begin");
    const auto name = [&](const char *table, const char *columns, int count, const auto &row) {
        Insert insert(*this, (std::string("insert into ") + table + columns).c_str());
        for (int id = 1; id <= count; ++id)
            insert(row(std::to_string(id)));
    };
    using Texts = std::vector<Text>;
    name("tblSession", "(SessionId,SessionName) values(?,?)", plan.sessions, [](const std::string &id) {
        return Texts{id, "SESSION " + id};
    });
    name("tblCourse", "(CourseId,CourseName) values(?,?)", plan.courses, [](const std::string &id) {
        return Texts{id, "COURSE " + id};
    });
    name("tblSubject", "(SubId,CourseId,SubName) values(?,?,?)", plan.subjects - 1,
         [&](const std::string &id) {
             return Texts{id, std::to_string(institute.courseOf(std::stoi(id))), "SUBJECT " + id};
         });
    Insert application(*this,
                       "insert into tblMasApp(AppID,CusCode,SessionID,RegNo,StuName,FatherName,FixDate)"
                       " values(?,?,?,?,?,'SOMEBODY','2025-09-01')");
    Insert line(*this, "insert into tblDetApp(AppID,SubID,SubAmt,Discount,NetAmount,RecAmount,InActive)"
                       " values(?,?,?,?,?,?,?)");
    for (const Applicant &one : institute.applicants) {
        const std::string id = std::to_string(one.id);
        application(
            {id, std::to_string(one.account), std::to_string(one.session), "R-" + id, "STUDENT " + id});
        for (const TakenSubject &taken : one.taken)
            line({id, std::to_string(taken.subject), money(taken.fee), money(taken.discount),
                  taken.charged ? Text(money(taken.net())) : Text(),
                  taken.received == 0 ? Text() : Text(money(taken.received)),
                  taken.inactive ? Text("1") : Text()});
    }
    run("update Accounts set OpenBal = (select round(sum(NetAmount), 2) from tblMasApp join tblDetApp using "
        "(AppID)"
        " where CusCode = RowID) where RowID in (select CusCode from tblMasApp)");
    for (const BookVoucher &voucher : institute.vouchers)
        post(voucher);
    run("commit; analyze;");
}

void BookCatalog::fill(SeededBooks books) {
    run("begin");
    open(books);
    while (!books.atEnd())
        post(books.next());
    run("commit; analyze;");
}

} // namespace zel::test
