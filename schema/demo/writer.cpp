#include "schema/demo/writer.h"

#include "platform/ado/column_rules.h"
#include "platform/ado/statements.h"
#include "platform/base/number_text.h"
#include "schema/demo/calendar.h"
#include "schema/demo/demo_texts.h"

#include <array>

namespace zel::demo {

namespace {

const QString Login = QStringLiteral("sa");

/// Rows of one table, of the columns that a screen sets.
template <std::size_t N>
class Rows {
public:
    Rows(ado::Driver &driver, const char *table, const std::array<const char *, N> &columns)
        : m_driver(driver), m_table(table), m_columns(columns) {
        const tsql::Table *known = driver.table(table);
        for (std::size_t at = 0; at < N; ++at)
            for (const tsql::Column &column : known->columns)
                if (column.name == columns[at])
                    m_types[at] = column.type;
    }

    /// The row's identity.
    std::int64_t add(const std::array<Value, N> &values) {
        std::array<Value, N> held;
        std::vector<ado::Assignment> row;
        for (std::size_t at = 0; at < N; ++at) {
            held[at] = ado::fitted(values[at], m_types[at]);
            row.push_back({m_columns[at], held[at]});
        }
        return m_driver.insertRow(m_table, row);
    }

private:
    ado::Driver &m_driver;
    const char *m_table;
    std::array<const char *, N> m_columns;
    std::array<tsql::Type, N> m_types;
};

template <class... Names>
auto rowsOf(ado::Driver &driver, const char *table, Names... columns) {
    return Rows<sizeof...(Names)>(driver, table, {columns...});
}

void run(ado::Driver &driver, const Sql &statements) {
    ado::runStatements(driver, statements, [](const ado::Outcome &) {});
}

Value money(Cents amount) {
    return Decimal::fromTenThousandths(amount * 100);
}

Value orNull(const QString &text) {
    return text.isEmpty() ? Value(Null()) : Value(text);
}

Value orNull(std::optional<Cents> amount) {
    return amount ? money(*amount) : Value(Null());
}

/// NULL where nothing was typed.
Value typed(Cents amount) {
    return amount == 0 ? Value(Null()) : money(amount);
}

class Writer {
public:
    Writer(ado::Driver &driver, const Institute &institute) : m_driver(driver), m_institute(institute) {}

    /// A save of an application takes away every line whose voucher number is the number of the student's
    /// account. So that correcting one costs no voucher, the accounts' numbers begin beyond all vouchers'.
    void skipNumbers() {
        run(m_driver, "insert into Accounts (AcName) select a.Menus from Menus a cross join Menus b cross "
                      "join Menus c");
        run(m_driver, "delete from Accounts");
    }

    void writeChart() {
        auto headings =
            rowsOf(m_driver, "Accounts", "ParentID", "Dcode", "AcNodes", "AcName", "AcStatus", "OrderStatus");
        auto subsidiaries =
            rowsOf(m_driver, "Accounts", "ParentID", "Dcode", "AcNodes", "AcName", "AcStatus", "openDate",
                   "OpenBal", "BStatus", "ContactPer", "Addr", "Contact", "Email");
        for (const Account &account : m_institute.chart) {
            const auto point = account.nodes.lastIndexOf(u'.');
            const QString parent = point < 0 ? account.nodes : account.nodes.left(point);
            const QString code = point < 0 ? QStringLiteral("0") : account.nodes.mid(point + 1);
            const auto level = account.nodes.count(u'.');
            m_rowIds.push_back(
                level < 2 ? headings.add({parent, code, account.nodes, account.name, level == 0 ? "HH" : "HD",
                                          level == 0 ? Value(account.nodes) : Value(Null())})
                          : subsidiaries.add({parent, code, account.nodes, account.name, "DD", FirstDay,
                                              orNull(account.opening), orNull(account.mark),
                                              orNull(account.contactPerson), orNull(account.address),
                                              orNull(account.contact), orNull(account.email)}));
        }
        for (const std::string_view batch : tsql::batches(setup))
            run(m_driver, Sql::trusted(batch));
    }

    void writeCourses() {
        auto sessions = rowsOf(m_driver, "tblSession", "SessionId", "SessionName");
        auto courses =
            rowsOf(m_driver, "tblCourse", "CourseId", "CourseName", "Coursedurration", "MonthYear");
        auto subjects = rowsOf(m_driver, "tblSubject", "SubId", "CourseId", "SubName", "TotAmt");
        int number = 0;
        for (const Session &session : m_institute.sessions)
            sessions.add({++number, session.name});
        number = 0;
        for (const Course &course : m_institute.courses)
            courses.add({++number, course.name, course.length, course.unit});
        number = 0;
        for (const Subject &subject : m_institute.subjects)
            subjects.add({++number, subject.course, subject.name, money(subject.fee)});
    }

    void writeApplications() {
        const Account &head = m_institute.chart[std::size_t(m_institute.account(QStringLiteral("STUDENTS")))];
        const Value cash = rowId(m_institute.account(QStringLiteral("CASH IN HAND")));
        auto headers = rowsOf(m_driver, "tblMasApp", "AppID", "CusCode", "SessionID", "RegNo", "StuName",
                              "FatherName", "NIC", "CellNo", "Contact", "Email", "MailAdd", "LastQulS",
                              "AudCompany", "ExamAtt", "ModPart", "SectionAtoZ", "AppDate", "FixDate",
                              "RegFee", "TotAmt", "CashReceive", "User_Name");
        auto lines = rowsOf(m_driver, "tblDetApp", "AppID", "SubID", "SubAmt", "Discount", "NetAmount",
                            "RecAmount", "Nerration", "InActive");
        auto accounts = rowsOf(m_driver, "Accounts", "ParentID", "Dcode", "AcNodes", "AcStatus", "OpenBal",
                               "AcName", "Addr", "Contact");
        auto journal = rowsOf(m_driver, "DetJV", "VouNo", "VouStatus", "VouDate", "EntryNo", "AcCode",
                              "DrAmt", "CrAmt", "Naration", "CrAc");
        int number = 0;
        for (const Application &a : m_institute.applications) {
            ++number;
            const std::int64_t student =
                accounts.add({head.nodes, number, head.nodes + u'.' + QString::number(number), "DD",
                              money(a.total()), a.name, a.address, a.residence});
            m_rowIds.push_back(student);
            headers.add({number,
                         student,
                         a.session,
                         a.regNo,
                         a.name,
                         orNull(a.father),
                         a.nic,
                         a.cell,
                         orNull(a.residence),
                         orNull(a.email),
                         orNull(a.address),
                         orNull(a.education),
                         orNull(a.firm),
                         orNull(a.attempt),
                         orNull(a.part),
                         QString(a.section),
                         a.date,
                         a.date,
                         money(a.registrationFee),
                         money(a.total()),
                         money(a.received()),
                         Login});
            for (const SubjectLine &line : a.lines)
                lines.add({number, line.subject, money(line.amount), money(line.discount), money(line.net()),
                           typed(line.received), orNull(line.narration),
                           line.inactive ? Value("1") : Value(Null())});
            if (a.received() == 0)
                continue;
            journal.add({student, "AR", a.date, 1, cash, money(a.received()), 0,
                         QStringLiteral("App. Rec Amount (%1)").arg(a.name), student});
            journal.add(
                {student, "AR", a.date, 2, student, 0, money(a.received()), "App. Rec Amount ", cash});
        }
    }

    void writeVouchers() {
        auto headers =
            rowsOf(m_driver, "MasJV", "VouNo", "VouDate", "PaidReceive", "VouStatus", "TotalAmount", "Login");
        auto feeHeaders = rowsOf(m_driver, "MasJV", "VouNo", "VouDate", "PaidReceive", "SlipNo", "VouStatus",
                                 "TotalAmount", "Login", "IRStatus");
        auto summaries = rowsOf(m_driver, "DetJV", "VouNo", "EntryNo", "AcCode", "DrAmt", "CrAmt", "Naration",
                                "VouStatus", "VouDate");
        for (const Voucher &v : m_institute.vouchers) {
            const char *code = Codes[std::size_t(v.kind)];
            if (v.kind == Kind::FR)
                feeHeaders.add({v.number, v.date, v.paidTo, orNull(v.slip), code, money(v.total()), Login,
                                v.byBank ? "BANK" : "CASH"});
            else
                headers.add({v.number, v.date, v.paidTo, code, money(v.total()), Login});
            int row = 0;
            for (const Line &line : v.lines) {
                ++row;
                if (v.kind != Kind::CR)
                    writeLine(v, line, row, true);
                if (v.kind != Kind::CP)
                    writeLine(v, line, row, false);
            }
            const Line &first = v.lines.front();
            if (v.kind == Kind::CP)
                summaries.add({v.number, row + 1, rowId(first.credit), 0, money(v.total()), first.narration,
                               code, v.date});
            if (v.kind == Kind::CR)
                summaries.add({v.number, row + 1, rowId(first.debit), money(v.total()), 0, first.narration,
                               code, v.date});
        }
    }

    void writeCarried() {
        auto headers = rowsOf(m_driver, "tblMasCarryForw", "FormID", "FormDate", "AppID");
        auto lines = rowsOf(m_driver, "tblDetCarryForw", "FormID", "FormDate", "AppID", "SubjectID",
                            "SessionID", "PreSessionID", "ForAmt", "Naration");
        auto journal = rowsOf(m_driver, "DetJV", "VouNo", "VouStatus", "VouDate", "SubID", "SessionID",
                              "AcCode", "CrAc", "EntryNo", "DrAmt", "CrAmt", "Naration");
        const Value cash = rowId(m_institute.account(QStringLiteral("CASH IN HAND")));
        int number = 0;
        for (const CarryForward &form : m_institute.carried) {
            ++number;
            headers.add({number, form.date, form.application});
            const Application &from = m_institute.applications[std::size_t(form.application - 1)];
            int row = 0;
            for (const CarriedLine &line : form.lines) {
                ++row;
                lines.add({number, form.date, form.application, line.subject, line.session, from.session,
                           typed(line.amount), orNull(line.narration)});
                if (line.amount > 0) // the journal has of the narration the number that it begins with
                    journal.add({number, "CF", form.date, line.subject, line.session,
                                 rowId(m_institute.student(form.application)), cash, row, 0,
                                 money(line.amount), leadingNumber(line.narration)});
            }
        }
    }

private:
    [[nodiscard]] Value rowId(AccountAt account) const { return m_rowIds.at(std::size_t(account)); }

    /// One of a line's two rows.
    void writeLine(const Voucher &v, const Line &line, int row, bool debit) {
        const Value account = rowId(debit ? line.debit : line.credit);
        const Value other = rowId(debit ? line.credit : line.debit);
        const char *code = Codes[std::size_t(v.kind)];
        const Value dr = money(debit ? line.amount : 0);
        const Value cr = money(debit ? 0 : line.amount);
        if (v.kind == Kind::FR)
            m_feeLines.add({v.number, row, account, dr, cr, line.cheque, line.narration, other, line.session,
                            line.subject, code, v.date});
        else
            m_lines.add({v.number, row, account, dr, cr, line.cheque, line.narration, other,
                         orNull(line.file), orNull(line.bill), code, v.date});
    }

    ado::Driver &m_driver;
    const Institute &m_institute;
    std::vector<std::int64_t> m_rowIds; ///< of the accounts
    Rows<12> m_lines = rowsOf(m_driver, "DetJV", "VouNo", "EntryNo", "AcCode", "DrAmt", "CrAmt", "ChecqNo",
                              "Naration", "CrAc", "FileNo", "BillNo", "VouStatus", "VouDate");
    Rows<12> m_feeLines = rowsOf(m_driver, "DetJV", "VouNo", "EntryNo", "AcCode", "DrAmt", "CrAmt", "ChecqNo",
                                 "Naration", "CrAc", "SessionID", "SubID", "VouStatus", "VouDate");
};

} // namespace

void writeChart(ado::Driver &driver, const Institute &institute) {
    Writer writer(driver, institute);
    writer.skipNumbers();
    writer.writeChart();
}

void write(ado::Driver &driver, const Institute &institute) {
    Writer writer(driver, institute);
    writer.skipNumbers();
    writer.writeChart();
    writer.writeCourses();
    writer.writeApplications();
    writer.writeVouchers();
    writer.writeCarried();
}

} // namespace zel::demo
