#include "institute/subject_balance.h"
#include "tests/reports/books_desk.h"
#include "tests/support/rows.h"
#include "tests/support/test_program.h"

#include <QTest>

using namespace zel;
using namespace zel::test;

/// What students owe is one truth: the printed reports, the statement of the receipt screen, the ledger and
/// the trial balance all tell it.

namespace {

/// Of each application and subject its amounts, as the report's columns show them.
using Fees = std::map<std::pair<int, int>, Columns>;

struct Chosen {
    int session = 0;
    int course = 0; ///< 0: all
    int subject = 0;
};

report::DocumentPtr printedFees(const QString &file, const Chosen &chosen, const Sql &selection = {}) {
    const auto report = report::Application(shell::gCon).OpenReport(ZEL_SOURCE_DIR "/rpt/" + file);
    report->Database().Tables().Item(1).ConnectionProperties("User ID").Value = shell::gUserName;
    if (selection.text().empty())
        report->ParameterFields(1).CurrentValue = Value(chosen.session);
    else
        report->RecordSelectionFormula = selection;
    if (chosen.course != 0)
        report->FormulaFields("Course").Text = "\"COURSE\""_sql;
    if (chosen.subject != 0)
        report->FormulaFields("Subject").Text = "\"SUBJECT\""_sql;
    return report->document();
}

/// Reads a report's lines and holds its totals against them.
Fees feesOf(const report::Document &document, const QStringList &headings, int subject = 0) {
    static const QRegularExpression Student("^R-(\\d+)");
    static const QRegularExpression Taken("^(?:SUBJECT |Deleted subject no. )(\\d+)");
    Fees fees;
    Columns ofStudent;
    Columns ofCourse(headings.size());
    Columns all(headings.size());
    bool ended = false;
    int student = 0;
    for (const PrintedLine &line : linesUnder(document, headings, "Student and subject")) {
        const QString text = line.code + line.name;
        const auto found = Student.match(text);
        const auto taken = Taken.match(text);
        if (found.hasMatch() && !text.contains("(continued)")) {
            student = found.captured(1).toInt();
            ofStudent.assign(std::size_t(headings.size()), 0);
        }
        if (line.amounts.empty())
            continue;
        if (taken.hasMatch() || found.hasMatch()) {
            const bool fresh =
                fees.try_emplace({student, taken.hasMatch() ? taken.captured(1).toInt() : subject},
                                 line.amounts)
                    .second;
            if (!fresh)
                qFatal("twice: %s", qPrintable(text));
            for (Columns *sum : {&ofStudent, &ofCourse, &all})
                add(*sum, line.amounts);
        } else {
            const bool grand = text.startsWith("Grand total");
            const bool course = text.startsWith("Total COURSE") || text.startsWith("Total (no course)");
            if (line.amounts != (grand ? all : course ? ofCourse : ofStudent))
                qFatal("wrong sum: %s", qPrintable(text));
            if (course)
                ofCourse.assign(std::size_t(headings.size()), 0);
            ended |= grand;
        }
    }
    if (!ended)
        qFatal("no grand total");
    return fees;
}

const QStringList Detail = {"Fee", "Discount", "Charged", "Received", "Outstanding"};
const QStringList Session = {"Charged", "With application", "Fee receipts", "Carried forward", "Outstanding"};

Fees studentWise(const Chosen &chosen, bool inactive) {
    const QString form = chosen.subject != 0 ? "Subject" : chosen.course != 0 ? "Course" : "Detail";
    return feesOf(*printedFees("rpt" + QString(inactive ? "" : "Act") + "StudentWise" + form + ".rpt", chosen,
                               inactive ? "{rptStudentDetail.inactive} = '1'"_sql
                                        : "IsNull({rptStudentDetail.inactive})"_sql),
                  Detail, chosen.subject);
}

Cents cents(const QString &text) {
    return qRound64(text.toDouble() * 100);
}

} // namespace

class tst_student_fees : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void agree_data() {
        QTest::addColumn<int>("students");
        for (const int students : {1, 2, 5, 12, 30, 80})
            fill(QTest::addRow("%d students", students), students);
    }

    void agree() {
        QFETCH(int, students);
        InstitutePlan plan;
        plan.seed = std::uint64_t(students);
        plan.students = students;
        plan.receipts = students * 3;
        const SeededInstitute institute(plan);
        const Held held(BooksPlan{});
        BooksOffice office(held);
        office.catalog.open(institute.books);
        office.catalog.enroll(institute);
        office.connect();
        std::vector<Chosen> choices;
        for (int session = 1; session <= plan.sessions; ++session) {
            choices.push_back({session});
            choices.push_back({session, 1 + session % plan.courses});
            const int subject = 1 + (students + session) % (plan.subjects - 1);
            choices.push_back({session, institute.courseOf(subject), subject});
        }
        for (const Chosen &chosen : choices) {
            Fees active;
            Fees inactive;
            Fees session;
            for (const Applicant &one : institute.applicants) {
                for (const TakenSubject &taken : one.taken) {
                    const bool deleted = taken.subject == plan.subjects;
                    if (one.session != chosen.session ||
                        (chosen.subject != 0 && taken.subject != chosen.subject) ||
                        (chosen.course != 0 &&
                         (deleted || institute.courseOf(taken.subject) != chosen.course)))
                        continue;
                    (taken.inactive ? inactive : active)[{one.id, taken.subject}] = {
                        taken.fee, taken.discount, taken.net(), taken.allReceived(), taken.owed()};
                    session[{one.id, taken.subject}] = {taken.net(), taken.received, taken.paid,
                                                        taken.carried, taken.owed()};
                }
            }
            shell::gCon.Execute("exec CreatStuWiseDet "_sql + chosen.session + ", " + chosen.course + ", " +
                                chosen.subject);
            QVERIFY(studentWise(chosen, false) == active);
            QVERIFY(studentWise(chosen, true) == inactive);
            if (chosen.course == 0)
                QVERIFY(feesOf(*printedFees("rptFeeDetail.rpt", chosen), Session) == session);
        }

        // The receipt screen's statement, in which all sessions count.
        std::map<int, Cents> ofAccount;
        for (const Applicant &one : institute.applicants) {
            for (const TakenSubject &taken : one.taken) {
                ofAccount[one.account] += taken.owed();
                const QStringList shown = office.office.rows(institute::subjectBalance(
                    QString::number(one.account), QString::number(taken.subject), one.id));
                QCOMPARE(shown.size(), 1);
                QCOMPARE(cents(shown[0].section('|', 0, 0)), taken.owed());
                QCOMPARE(cents(shown[0].section('|', 1)), taken.allReceived());
            }
        }
        // A question of the test's own, past the program.
        Cents owed = 0;
        for (const auto &[account, amount] : ofAccount)
            owed += amount;
        QCOMPARE(office.catalog.ask(
                     "select sum(ifnull(cast(round(NetAmount * 100) as integer)"
                     " - ifnull(cast(round(RecAmount * 100) as integer), 0) - (select"
                     " ifnull(sum(cast(round(CrAmt * 100) as integer)), 0) from DetJV where AcCode = CusCode"
                     " and DetJV.SubID = tblDetApp.SubID and VouStatus in ('FR','CF')), 0))"
                     " from tblMasApp join tblDetApp using (AppID)"),
                 (std::vector<std::vector<std::string>>{{std::to_string(owed)}}));
        // The ledger: a student's account stands at what is owed, less what was paid for subjects not taken.
        for (const BookVoucher &voucher : institute.vouchers)
            for (const BookEntry &entry : voucher.entries)
                if (voucher.kind == Kind::FR && entry.subject > plan.subjects)
                    ofAccount[entry.credit] -= entry.amount;
        const Balance whole(*printedBalance("3", Year));
        for (const BookAccount &account : institute.books.accounts()) {
            const auto row = whole.rows.find(QString::fromStdString(account.nodes));
            if (ofAccount.contains(account.id) && row != whole.rows.end())
                QCOMPARE(row->second[4] - row->second[5], ofAccount.at(account.id));
        }
        for (std::size_t pair = 0; pair < 6; pair += 2)
            QCOMPARE(whole.grand[pair], whole.grand[pair + 1]);
    }
};

ZEL_TEST_MAIN(tst_student_fees)

#include "tst_student_fees.moc"
