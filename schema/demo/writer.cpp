#include "schema/demo/writer.h"

#include "platform/ado/column_rules.h"
#include "platform/ado/statements.h"
#include "platform/base/number_text.h"
#include "schema/demo/calendar.h"
#include "schema/demo/demo_texts.h"

#include <algorithm>
#include <initializer_list>

namespace zel::demo {

namespace {

struct Cell {
    const char *column = nullptr;
    Value value;
};

Value money(Cents amount) {
    return Decimal::fromTenThousandths(amount * 100);
}

Value orNull(const QString &text) {
    return text.isEmpty() ? Value(Null()) : Value(text);
}

Value orNull(std::optional<Cents> amount) {
    return amount ? money(*amount) : Value(Null());
}

/// An amount's box that was left empty is NULL.
Value typed(Cents amount) {
    return amount == 0 ? Value(Null()) : money(amount);
}

class Writer {
public:
    Writer(ado::Driver &driver, const Institute &institute) : m_driver(driver), m_institute(institute) {}

    void writeAll() {
        skipNumbers();
        for (const Account &account : m_institute.chart)
            m_rowIds.push_back(writeAccount(account));
        for (const std::string_view batch : tsql::batches(setup))
            run(Sql::trusted(batch));
        m_cash = rowId(m_institute.cash);
        writeCourses();
        int number = 0;
        for (const Application &application : m_institute.applications)
            writeApplication(application, ++number);
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

    /// The row's identity.
    std::int64_t add(const char *table, std::initializer_list<Cell> cells) {
        const std::vector<tsql::Column> &columns = m_driver.table(table)->columns;
        std::vector<Value> values;
        std::vector<ado::Assignment> row;
        values.reserve(cells.size()); // so that none moves
        for (const Cell &cell : cells) {
            const auto column = std::ranges::find(columns, cell.column, &tsql::Column::name);
            values.push_back(ado::fitted(cell.value, column->type));
            row.push_back({cell.column, values.back()});
        }
        return m_driver.insertRow(table, row);
    }

    /// A save of an application takes away every line whose voucher number is the number of the student's
    /// account. So that correcting one costs no voucher, the accounts' numbers begin beyond all vouchers'.
    void skipNumbers() {
        run("insert into Accounts (AcName) select a.Menus from Menus a cross join Menus b cross join Menus "
            "c\n"
            "delete from Accounts");
    }

    std::int64_t writeAccount(const Account &account) {
        const auto point = account.nodes.lastIndexOf(u'.');
        const QString parent = account.nodes.left(point); // all of it where there is no point
        switch (account.nodes.count(u'.')) {
        case 0:
            return add("Accounts", {{"ParentID", account.nodes},
                                    {"Dcode", 0},
                                    {"AcNodes", account.nodes},
                                    {"AcName", account.name},
                                    {"AcStatus", "HH"},
                                    {"OrderStatus", account.nodes}});
        case 1:
            return add("Accounts", {{"ParentID", parent},
                                    {"Dcode", account.nodes.mid(point + 1)},
                                    {"AcNodes", account.nodes},
                                    {"AcStatus", "HD"},
                                    {"AcName", account.name}});
        default:
            return add("Accounts", {{"ParentID", parent},
                                    {"Dcode", account.nodes.mid(point + 1)},
                                    {"AcNodes", account.nodes},
                                    {"AcStatus", "DD"},
                                    {"openDate", FirstDay},
                                    {"AcName", account.name},
                                    {"OpenBal", orNull(account.opening)},
                                    {"BStatus", orNull(account.mark)},
                                    {"ContactPer", orNull(account.contactPerson)},
                                    {"Addr", orNull(account.address)},
                                    {"Contact", orNull(account.contact)},
                                    {"Email", orNull(account.email)}});
        }
    }

    void writeCourses() {
        int number = 0;
        for (const Session &session : m_institute.sessions)
            add("tblSession", {{"SessionId", ++number}, {"SessionName", session.name}});
        number = 0;
        for (const Course &course : m_institute.courses)
            add("tblCourse", {{"CourseId", ++number},
                              {"CourseName", course.name},
                              {"Coursedurration", course.length},
                              {"MonthYear", course.unit}});
        number = 0;
        for (const Subject &subject : m_institute.subjects)
            add("tblSubject", {{"SubId", ++number},
                               {"CourseId", subject.course},
                               {"SubName", subject.name},
                               {"TotAmt", money(subject.fee)}});
    }

    void writeApplication(const Application &application, int number) {
        const Account &head = m_institute.chart[std::size_t(m_institute.account(QStringLiteral("STUDENTS")))];
        const std::int64_t student =
            add("Accounts", {{"ParentID", head.nodes},
                             {"Dcode", number},
                             {"AcNodes", head.nodes + u'.' + QString::number(number)},
                             {"AcStatus", "DD"},
                             {"AcName", application.name},
                             {"Addr", application.address},
                             {"Contact", application.residence},
                             {"OpenBal", money(application.total())}});
        m_rowIds.push_back(student);
        add("tblMasApp", {{"AppID", number},
                          {"CusCode", student},
                          {"SessionID", application.session},
                          {"RegNo", orNull(application.regNo)},
                          {"StuName", application.name},
                          {"FatherName", orNull(application.father)},
                          {"NIC", application.nic},
                          {"CellNo", application.cell},
                          {"Contact", orNull(application.residence)},
                          {"Email", orNull(application.email)},
                          {"MailAdd", orNull(application.address)},
                          {"LastQulS", orNull(application.education)},
                          {"AudCompany", orNull(application.firm)},
                          {"ExamAtt", orNull(application.attempt)},
                          {"ModPart", orNull(application.part)},
                          {"SectionAtoZ", QString(application.section)},
                          {"AppDate", application.date},
                          {"FixDate", application.date},
                          {"RegFee", money(application.registrationFee)},
                          {"TotAmt", money(application.total())},
                          {"CashReceive", money(application.received())},
                          {"User_Name", m_login}});
        for (const SubjectLine &line : application.lines)
            add("tblDetApp", {{"AppID", number},
                              {"SubID", line.subject},
                              {"SubAmt", money(line.amount)},
                              {"Discount", money(line.discount)},
                              {"NetAmount", money(line.net())},
                              {"RecAmount", typed(line.received)},
                              {"Nerration", orNull(line.narration)},
                              {"InActive", line.inactive ? Value("1") : Value(Null())}});
        if (application.received() > 0)
            writeReceipt(application, student);
    }

    void writeReceipt(const Application &application, std::int64_t student) {
        for (const bool debit : {true, false})
            add("DetJV", {{"VouNo", student},
                          {"VouStatus", "AR"},
                          {"VouDate", application.date},
                          {"EntryNo", debit ? 1 : 2},
                          {"AcCode", debit ? m_cash : student},
                          {"DrAmt", money(debit ? application.received() : 0)},
                          {"CrAmt", money(debit ? 0 : application.received())},
                          {"Naration", debit ? QStringLiteral("App. Rec Amount (%1)").arg(application.name)
                                             : QStringLiteral("App. Rec Amount ")},
                          {"CrAc", debit ? student : m_cash}});
    }

    void writeVoucher(const Voucher &voucher) {
        const char *code = Codes[std::size_t(voucher.kind)];
        const bool fees = voucher.kind == Kind::FR;
        add("MasJV", {{"VouNo", voucher.number},
                      {"VouDate", voucher.date},
                      {"PaidReceive", voucher.paidTo},
                      {"SlipNo", orNull(voucher.slip)},
                      {"VouStatus", code},
                      {"TotalAmount", money(voucher.total())},
                      {"Login", m_login},
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
            add("DetJV", {{"VouNo", voucher.number},
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
        add("DetJV", {{"VouNo", voucher.number},
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
        add("tblMasCarryForw", {{"FormID", number}, {"FormDate", form.date}, {"AppID", form.application}});
        const Application &from = m_institute.applications[std::size_t(form.application - 1)];
        int row = 0;
        for (const CarriedLine &line : form.lines) {
            ++row;
            add("tblDetCarryForw", {{"FormID", number},
                                    {"FormDate", form.date},
                                    {"AppID", form.application},
                                    {"SubjectID", line.subject},
                                    {"SessionID", line.session},
                                    {"PreSessionID", from.session},
                                    {"ForAmt", typed(line.amount)},
                                    {"Naration", orNull(line.narration)}});
            if (line.amount > 0) // of the narration the journal has the number that it begins with
                add("DetJV", {{"VouNo", number},
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
    const Institute &m_institute;
    const QString m_login = QStringLiteral("sa");
    std::vector<std::int64_t> m_rowIds; ///< of the accounts
    std::int64_t m_cash = 0;
};

} // namespace

void write(ado::Driver &driver, const Institute &institute) {
    Writer(driver, institute).writeAll();
}

} // namespace zel::demo
