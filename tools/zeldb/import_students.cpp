// Students as the application form saves them: a row with a name begins an application, rows without one add
// further subjects to it.

#include "import.h"

#include "platform/base/error.h"

namespace zel::tool {

namespace {

using demo::Cents;

/// What applications refer to, by number and by name.
class Names {
public:
    Names(ado::Driver &driver, const Sql &statement) {
        const auto rows = ask(driver, statement);
        for (qsizetype row = 0; row < rows->rowCount(); ++row) {
            const int number = int(rows->value(row, 0).integer());
            m_numbers[rows->text(row, 1).toCaseFolded()].insert(number);
            m_amounts[number] = rows->value(row, 2).decimal().tenThousandths() / 100;
        }
    }
    [[nodiscard]] int number(const QString &given, const char *what) const {
        bool isNumber = false;
        const int number = given.toInt(&isNumber);
        if (isNumber && m_amounts.contains(number))
            return number;
        const auto found = m_numbers.find(given.toCaseFolded());
        if (found == m_numbers.end())
            throw RefusedRow{QStringLiteral("there is no %1 \"%2\"").arg(QLatin1String(what), given)};
        if (found->second.size() > 1)
            throw RefusedRow{QStringLiteral("several are named \"%2\"; give the %1's number")
                                 .arg(QLatin1String(what), given)};
        return *found->second.begin();
    }
    [[nodiscard]] Cents amount(int number) const { return m_amounts.at(number); }

private:
    std::map<QString, std::set<int>> m_numbers;
    std::map<int, Cents> m_amounts;
};

class Students {
public:
    Students(ado::Driver &driver, const Csv &table, std::map<qsizetype, QString> &refused)
        : m_table(table), m_refused(refused), m_chart(driver),
          m_sessions(driver, "select SessionId, SessionName, 0 from tblSession"),
          m_subjects(driver, "select SubId, SubName, isnull(TotAmt, 0) from tblSubject"),
          m_rows(driver, QStringLiteral("sa")) {
        const auto head = ask(
            driver, "select rtrim(a.AcNodes) from VouSetting v join Accounts a on rtrim(a.RowID) = v.AcCode "
                    "where v.VouStatus = 'IR' and a.AcStatus = 'HD'");
        if (head->rowCount() > 0)
            m_head = head->text(0, 0);
        const auto cash = ask(driver, "select AcCode from VouSetting where VouStatus = 'CR'");
        if (cash->rowCount() > 0)
            m_cash = cash->value(0, 0).integer();
        m_number = int(ask(driver, "select isnull(max(AppID),0) from tblMasApp")->value(0, 0).integer());
    }

    int write() {
        int written = 0;
        for (qsizetype at = 0; at < m_table.rows.size();) {
            qsizetype end = at + 1;
            while (end < m_table.rows.size() && Record(m_table, m_table.rows[end]).text("StuName").isEmpty())
                ++end;
            written += writeOne(at, end) ? 1 : 0;
            at = end;
        }
        return written;
    }

private:
    /// The student on the rows from `begin` to before `end`.
    bool writeOne(qsizetype begin, qsizetype end) {
        const qsizetype before = qsizetype(m_refused.size());
        qsizetype at = begin;
        demo::Application application;
        for (; at < end; ++at) {
            if (m_refused.contains(m_table.rows[at].line))
                continue;
            try {
                const Record record(m_table, m_table.rows[at]);
                if (at == begin)
                    application = student(record);
                application.lines.push_back(subject(record, application));
            } catch (const RefusedRow &refused) {
                m_refused[m_table.rows[at].line] = refused.why;
            }
        }
        if (qsizetype(m_refused.size()) > before || m_refused.contains(m_table.rows[begin].line))
            return false;
        try {
            enter(application);
            return true;
        } catch (const RefusedRow &refused) {
            m_refused[m_table.rows[begin].line] = refused.why;
        } catch (const Error &failure) { // of a column that can't hold the value
            m_refused[m_table.rows[begin].line] = failure.description();
        }
        return false;
    }

    void enter(const demo::Application &application) {
        if (application.received() > 0 && m_cash == 0)
            throw RefusedRow{
                QStringLiteral("no cash account is set up for what was received (Voucher Setup, CR)")};
        const int place = m_chart.nextBelow(m_head);
        m_rows.writeApplication(application, {++m_number, m_head, place, m_cash});
        m_chart.added(m_head + u'.' + QString::number(place), m_head, place, application.name,
                      QStringLiteral("DD"));
    }

    demo::Application student(const Record &record) const {
        const auto require = [&](const char *column) {
            if (record.text(column).isEmpty())
                throw RefusedRow{QStringLiteral("%1 is empty").arg(QLatin1String(column))};
            return record.upper(column);
        };
        if (m_head.isEmpty())
            throw RefusedRow{QStringLiteral("no account for students is set up (Voucher Setup, IR)")};
        demo::Application made;
        made.name = require("StuName");
        made.cell = require("CellNo");
        // The form takes the first account of that name for the student's, wherever it stands.
        if (m_chart.hasTitle(made.name))
            throw RefusedRow{QStringLiteral("an account \"%1\" is there already").arg(made.name)};
        made.session = m_sessions.number(require("SessionID"), "session");
        made.date = record.date("AppDate");
        made.regNo = record.upper("RegNo");
        made.father = record.upper("FatherName");
        made.nic = record.masked("NIC", "#####-#######-#");
        if (made.nic.isEmpty())
            made.nic = QStringLiteral("_____-_______-_"); // as the empty box saves it
        made.residence = record.upper("Contact");
        made.office = record.upper("Office");
        made.email = record.upper("Email");
        made.address = record.upper("MailAdd");
        made.education = record.upper("LastQulS");
        made.firm = record.upper("AudCompany");
        made.attempt = record.upper("ExamAtt");
        if (made.attempt.size() > 12)
            throw RefusedRow{QStringLiteral("ExamAtt has more than 12 characters")};
        made.part = record.upper("ModPart");
        const QString section =
            record.text("SectionAtoZ").isEmpty() ? QStringLiteral("A") : record.upper("SectionAtoZ");
        if (section.size() != 1 || section[0] < u'A' || section[0] > u'Z')
            throw RefusedRow{QStringLiteral("SectionAtoZ is no letter from A to Z: \"%1\"").arg(section)};
        made.section = section[0];
        made.registrationFee = positive(record, "RegFee").value_or(0);
        return made;
    }

    static std::optional<Cents> positive(const Record &record, const char *column) {
        const auto amount = record.cents(column);
        if (amount.value_or(0) < 0)
            throw RefusedRow{QStringLiteral("%1 is below 0").arg(QLatin1String(column))};
        return amount;
    }

    demo::SubjectLine subject(const Record &record, const demo::Application &application) const {
        if (record.text("SubID").isEmpty())
            throw RefusedRow{QStringLiteral("SubID is empty; every student takes a subject")};
        demo::SubjectLine line{};
        line.subject = m_subjects.number(record.text("SubID"), "subject");
        for (const demo::SubjectLine &other : application.lines)
            if (other.subject == line.subject)
                throw RefusedRow{QStringLiteral("the subject \"%1\" stands twice for this student")
                                     .arg(record.text("SubID"))};
        line.amount = positive(record, "SubAmt").value_or(m_subjects.amount(line.subject));
        line.discount = positive(record, "Discount").value_or(0);
        line.received = positive(record, "RecAmount").value_or(0);
        line.narration = record.upper("Nerration");
        const QString inactive = record.text("InActive");
        line.inactive = inactive == QLatin1String("1");
        if (!inactive.isEmpty() && inactive != QLatin1String("0") && !line.inactive)
            throw RefusedRow{QStringLiteral("InActive is 1, 0 or empty, not \"%1\"").arg(inactive)};
        if (line.amount == 0)
            throw RefusedRow{QStringLiteral("the subject has no fee, and SubAmt is empty or 0")};
        if (line.discount > line.amount)
            throw RefusedRow{QStringLiteral("Discount is more than the amount")};
        if (line.received > line.net())
            throw RefusedRow{QStringLiteral("RecAmount is more than the net amount")};
        return line;
    }

    const Csv &m_table;
    std::map<qsizetype, QString> &m_refused;
    Chart m_chart;
    Names m_sessions;
    Names m_subjects;
    demo::ScreenRows m_rows;
    QString m_head;
    std::int64_t m_cash = 0;
    int m_number = 0; ///< of the last application
};

int write(ado::Driver &driver, const Csv &table, std::map<qsizetype, QString> &refused) {
    return Students(driver, table, refused).write();
}

} // namespace

const ImportKind importedStudents{
    .name = "students",
    .columns = {{"tblMasApp",
                 {"StuName", "CellNo", "SessionID", "AppDate", "RegNo", "FatherName", "NIC", "Contact",
                  "Office", "Email", "MailAdd", "LastQulS", "AudCompany", "ExamAtt", "ModPart", "SectionAtoZ",
                  "RegFee"}},
                {"tblDetApp", {"SubID", "SubAmt", "Discount", "RecAmount", "Nerration", "InActive"}}},
    .needed = {"StuName", "CellNo", "SessionID", "SubID"},
    .write = write,
};

} // namespace zel::tool
