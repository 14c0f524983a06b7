#include "schema/demo/writer.h"

#include "platform/ado/statements.h"
#include "platform/base/number_text.h"
#include "schema/demo/demo_texts.h"
#include "schema/demo/screen_rows.h"

namespace zel::demo {

namespace {

class Writer {
public:
    Writer(ado::Driver &driver, const Institute &institute)
        : m_driver(driver), m_rows(driver, QStringLiteral("sa")), m_institute(institute) {}

    void writeAll() {
        skipNumbers();
        for (const Account &account : m_institute.chart)
            m_rowIds.push_back(m_rows.writeAccount(account));
        for (const std::string_view batch : tsql::batches(setup))
            run(Sql::trusted(batch));
        m_cash = rowId(m_institute.cash);
        writeCourses();
        int number = 0;
        const QString students =
            m_institute.chart[std::size_t(m_institute.account(QStringLiteral("STUDENTS")))].nodes;
        for (const Application &application : m_institute.applications)
            m_rowIds.push_back(m_rows.writeApplication(application, {++number, students, number, m_cash}));
        for (const Voucher &voucher : m_institute.vouchers)
            writeVoucher(voucher);
        number = 0;
        for (const CarryForward &form : m_institute.carried)
            writeCarried(form, ++number);
    }

private:
    void run(const Sql &statements) {
        ado::runStatements(m_driver, statements, [](const ado::Outcome &) {});
    }

    /// A save of an application takes away every line whose voucher number is the number of the student's
    /// account. So that correcting one costs no voucher, the accounts' numbers begin beyond all vouchers'.
    void skipNumbers() {
        run("insert into Accounts (AcName) select a.Menus from Menus a cross join Menus b cross join Menus "
            "c\n"
            "delete from Accounts");
    }

    void writeCourses() {
        int number = 0;
        for (const Session &session : m_institute.sessions)
            m_rows.add("tblSession", {{"SessionId", ++number}, {"SessionName", session.name}});
        number = 0;
        for (const Course &course : m_institute.courses)
            m_rows.add("tblCourse", {{"CourseId", ++number},
                                     {"CourseName", course.name},
                                     {"Coursedurration", course.length},
                                     {"MonthYear", course.unit}});
        number = 0;
        for (const Subject &subject : m_institute.subjects)
            m_rows.add("tblSubject", {{"SubId", ++number},
                                      {"CourseId", subject.course},
                                      {"SubName", subject.name},
                                      {"TotAmt", money(subject.fee)}});
    }

    void writeVoucher(const Voucher &voucher) {
        const char *code = Codes[std::size_t(voucher.kind)];
        const bool fees = voucher.kind == Kind::FR;
        m_rows.add("MasJV", {{"VouNo", voucher.number},
                             {"VouDate", voucher.date},
                             {"PaidReceive", voucher.paidTo},
                             {"SlipNo", orNull(voucher.slip)},
                             {"VouStatus", code},
                             {"TotalAmount", money(voucher.total())},
                             {"Login", m_rows.login()},
                             {"IRStatus", !fees            ? Value(Null())
                                          : voucher.byBank ? Value("BANK")
                                                           : Value("CASH")}});
        int row = 0;
        for (const Line &line : voucher.lines) {
            ++row;
            if (voucher.kind != Kind::CR)
                writeLine(voucher, line, row, true);
            if (voucher.kind != Kind::CP)
                writeLine(voucher, line, row, false);
        }
        // Of cash there is one row more, the sum, in place of one for each line.
        const bool paid = voucher.kind == Kind::CP;
        const Line &first = voucher.lines.front();
        if (paid || voucher.kind == Kind::CR)
            m_rows.add("DetJV", {{"VouNo", voucher.number},
                                 {"EntryNo", row + 1},
                                 {"AcCode", rowId(paid ? first.credit : first.debit)},
                                 {"DrAmt", money(paid ? 0 : voucher.total())},
                                 {"CrAmt", money(paid ? voucher.total() : 0)},
                                 {"Naration", first.narration},
                                 {"VouStatus", code},
                                 {"VouDate", voucher.date}});
    }

    /// One of a line's two rows.
    void writeLine(const Voucher &voucher, const Line &line, int row, bool debit) {
        m_rows.add("DetJV", {{"VouNo", voucher.number},
                             {"EntryNo", row},
                             {"AcCode", rowId(debit ? line.debit : line.credit)},
                             {"DrAmt", money(debit ? line.amount : 0)},
                             {"CrAmt", money(debit ? 0 : line.amount)},
                             {"ChecqNo", line.cheque},
                             {"Naration", line.narration},
                             {"CrAc", rowId(debit ? line.credit : line.debit)},
                             {"FileNo", orNull(line.file)},
                             {"BillNo", orNull(line.bill)},
                             {"SessionID", line.session ? Value(line.session) : Value(Null())},
                             {"SubID", line.subject ? Value(line.subject) : Value(Null())},
                             {"VouStatus", Codes[std::size_t(voucher.kind)]},
                             {"VouDate", voucher.date}});
    }

    void writeCarried(const CarryForward &form, int number) {
        m_rows.add("tblMasCarryForw",
                   {{"FormID", number}, {"FormDate", form.date}, {"AppID", form.application}});
        const Application &from = m_institute.applications[std::size_t(form.application - 1)];
        int row = 0;
        for (const CarriedLine &line : form.lines) {
            ++row;
            m_rows.add("tblDetCarryForw", {{"FormID", number},
                                           {"FormDate", form.date},
                                           {"AppID", form.application},
                                           {"SubjectID", line.subject},
                                           {"SessionID", line.session},
                                           {"PreSessionID", from.session},
                                           {"ForAmt", typed(line.amount)},
                                           {"Naration", orNull(line.narration)}});
            if (line.amount > 0) // of the narration the journal has the number that it begins with
                m_rows.add("DetJV", {{"VouNo", number},
                                     {"VouStatus", "CF"},
                                     {"VouDate", form.date},
                                     {"SubID", line.subject},
                                     {"SessionID", line.session},
                                     {"AcCode", rowId(m_institute.student(form.application))},
                                     {"CrAc", m_cash},
                                     {"EntryNo", row},
                                     {"DrAmt", 0},
                                     {"CrAmt", money(line.amount)},
                                     {"Naration", leadingNumber(line.narration)}});
        }
    }

    [[nodiscard]] std::int64_t rowId(AccountAt account) const { return m_rowIds.at(std::size_t(account)); }

    ado::Driver &m_driver;
    ScreenRows m_rows;
    const Institute &m_institute;
    std::vector<std::int64_t> m_rowIds; ///< of the accounts
    std::int64_t m_cash = 0;
};

} // namespace

void write(ado::Driver &driver, const Institute &institute) {
    Writer(driver, institute).writeAll();
}

} // namespace zel::demo
