#include "institute.h"

#include "tests/support/book_catalog.h"

namespace bench {

namespace {

/// What the statements are written with: numbers in place of their names in braces.
std::string filled(std::string sql, const std::string &name, int number) {
    const std::string mark = "{" + name + "}";
    for (std::size_t at = sql.find(mark); at != std::string::npos; at = sql.find(mark, at))
        sql.replace(at, mark.size(), std::to_string(number));
    return sql;
}

// `s` counts students, `k` subjects of one, `r` receipts.
constexpr auto Tables = R"(
create temp table s as with recursive c(s) as (select 1 union all select s + 1 from c where s < {students}) select s from c;
create temp table k as with recursive c(k) as (select 1 union all select k + 1 from c where k < {subjects}) select k from c;
create temp table r as with recursive c(r) as (select 0 union all select r + 1 from c where r < {receipts} - 1)
    select r, {last} + 1 + r * 7919 % {students} as account, (r * 7919 % {students} + 1) % 8 * 5 + 1 + r / {students} % {subjects} as subject,
           date('2025-01-01', (r % 330) || ' days') as day, 500 + r % 7 * 250 as amount from c;

insert into tblSession (SessionId, SessionName)
    with recursive c(n) as (select 1 union all select n + 1 from c where n < {sessions}) select n, 'SESSION ' || n from c;
insert into tblCourse (CourseId, CourseName, Coursedurration, MonthYear)
    with recursive c(n) as (select 1 union all select n + 1 from c where n < 8) select n, 'COURSE ' || n, '2', 'Year' from c;
insert into tblSubject (SubId, CourseId, SubName, TotAmt)
    with recursive c(n) as (select 1 union all select n + 1 from c where n < 40)
    select n, (n + 4) / 5, 'SUBJECT ' || n, 5000 + n % 5 * 500 from c;

insert into Accounts (RowID, ParentID, Dcode, AcNodes, AcName, AcStatus, OpenBal)
    select {last} + s, '2.1', s, '2.1.' || s, 'STUDENT ' || s || ' OF THE INSTITUTE', 'DD', (select sum(5000 + k % 5 * 500) from k) from s;
insert into tblMasApp (AppID, CusCode, SessionID, RegNo, StuName, FatherName, CellNo, AppDate, FixDate, TotAmt, CashReceive)
    select s, {last} + s, 1 + s % {sessions}, 'R-' || s, 'STUDENT ' || s || ' OF THE INSTITUTE', 'FATHER OF ' || s,
           '0300-' || (1000000 + s), '2025-01-01', '2025-01-01', (select sum(5000 + k % 5 * 500) from k), 1000 * {subjects} from s;
insert into tblDetApp (AppID, SubID, SubAmt, Discount, NetAmount, RecAmount, InActive)
    select s, s % 8 * 5 + k, 5000 + (k % 5) * 500, 0, 5000 + (k % 5) * 500, 1000, case when s % 50 = 0 and k = 1 then '1' end
    from s, k;
insert into DetJV (VouNo, VouStatus, VouDate, EntryNo, AcCode, CrAc, DrAmt, CrAmt, Naration)
    select {last} + s, 'AR', '2025-01-01', 2 - side, iif(side, 34, {last} + s), iif(side, {last} + s, 34), iif(side, 1000 * {subjects}, 0),
           iif(side, 0, 1000 * {subjects}), 'App. Rec Amount ' from s, (select 1 as side union all select 0);
insert into tblMasCarryForw (FormID, FormDate, AppID) select s / 50, '2025-06-01', s from s where s % 50 = 0;
insert into tblDetCarryForw (FormID, FormDate, AppID, SubjectID, SessionID, PreSessionID, ForAmt)
    select s / 50, '2025-06-01', s, s % 8 * 5 + 1, {sessions}, 1 + s % {sessions}, 700 from s where s % 50 = 0;

insert into MasJV (VouNo, VouStatus, VouDate, PaidReceive, TotalAmount, Login, IRStatus)
    select {first} + r, 'FR', day, '', amount, 'sa', 'CASH' from r;
insert into DetJV (VouNo, VouStatus, VouDate, EntryNo, AcCode, CrAc, DrAmt, CrAmt, ChecqNo, Naration, SessionID, SubID)
    select {first} + r, 'FR', day, 1, iif(side, account, 34), iif(side, 34, account), iif(side, 0, amount), iif(side, amount, 0), '',
           'FEE', 1 + r % {sessions}, subject from r, (select 0 as side union all select 1);
insert into DetJV (VouNo, VouStatus, VouDate, EntryNo, AcCode, CrAc, DrAmt, CrAmt, Naration, SessionID, SubID)
    select s / 50, 'CF', '2025-06-01', 1, {last} + s, 34, 0, 700, '0', {sessions}, s % 8 * 5 + 1 from s where s % 50 = 0;
)";

} // namespace

int fillInstitute(const std::string &database, const InstituteSize &size) {
    zel::test::BookCatalog catalog(database);
    const int last = std::stoi(catalog.ask("select ifnull(max(RowID), 0) from Accounts").at(0).at(0));
    std::string sql = Tables;
    for (const auto &[name, number] : {std::pair{"students", size.students},
                                       {"subjects", size.subjects},
                                       {"receipts", size.receipts},
                                       {"sessions", size.sessions},
                                       {"first", size.firstReceipt},
                                       {"last", last}})
        sql = filled(std::move(sql), name, number);
    catalog.run("begin;" + sql + "commit; analyze;");
    return last + 1;
}

} // namespace bench
