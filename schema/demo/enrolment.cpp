#include "schema/demo/enrolment.h"

#include "schema/demo/calendar.h"
#include "schema/demo/demo_texts.h"
#include "schema/demo/dice.h"
#include "schema/demo/people.h"
#include "schema/demo/table.h"

#include <algorithm>
#include <map>

namespace zel::demo {

namespace {

constexpr Cents RegistrationFee = 2'000'00;
constexpr Cents Note = 500'00; ///< what instalments are rounded to

class Enrolment {
public:
    Enrolment(Institute &institute, std::uint64_t seed) : m_institute(institute), m_dice(seed) {
        for (const Row &row : tableOf(names, QStringLiteral("area")))
            m_areas << row[1];
        for (const Row &row : tableOf(names, QStringLiteral("education")))
            m_educations << row[1];
    }

    void run() {
        for (int session = 1; session <= int(m_institute.sessions.size()); ++session)
            admit(session);
        takeRegistrationFees();
        for (int number = 1; number <= int(m_institute.applications.size()); ++number)
            collect(number);
        chargeFees();
        std::ranges::stable_sort(m_institute.carried, {}, &CarryForward::date);
    }

private:
    [[nodiscard]] QString digits(int count) {
        QString text;
        while (text.size() < count)
            text += QString::number(m_dice.below(10));
        return text;
    }

    void admit(int session) {
        const Session &admitting = m_institute.sessions[std::size_t(session - 1)];
        std::vector<QDate> days;
        const int span = int(admitting.from.daysTo(admitting.to)) + 1;
        for (int student = 0; student < admitting.students; ++student) {
            const int early = m_dice.below(span); // most come in the middle of the weeks of admission
            const int late = m_dice.below(span);
            days.push_back(workingDay(admitting.from.addDays((early + late) / 2)));
        }
        std::ranges::sort(days);
        for (int student = 1; student <= admitting.students; ++student)
            apply(session, days[std::size_t(student - 1)], student);
    }

    void apply(int session, QDate day, int nth) {
        const Person person = m_people.next(m_dice);
        Application application;
        application.date = day;
        application.session = session;
        application.regNo = QStringLiteral("%1-%2").arg(day.year()).arg(nth, 3, 10, QLatin1Char('0'));
        application.name = person.name;
        application.father = person.father;
        application.email = person.email;
        application.nic = QStringLiteral("42%1-").arg(digits(3));
        application.nic += digits(7) + u'-';
        application.nic += digits(1);
        application.cell = QStringLiteral("03%1-").arg(digits(2));
        application.cell += QLatin1String("555") + digits(4);
        application.residence = QStringLiteral("021-555%1").arg(digits(4));
        application.address = QStringLiteral("HOUSE %1, STREET ").arg(m_dice.between(1, 190));
        application.address += QStringLiteral("%1, ").arg(m_dice.between(1, 24));
        application.address += m_dice.of(m_areas) + QLatin1String(", KARACHI");
        application.education = m_dice.of(m_educations);
        if (m_dice.oneIn(6))
            application.firm = QStringLiteral("IRANI GILL AND COMPANY");
        application.attempt = QStringLiteral("SPRING %1").arg(day.year() + 1);
        application.part = QStringLiteral("PART %1").arg(m_dice.between(1, 2));
        application.section = QChar(u'A' + m_dice.below(3));
        application.registrationFee = RegistrationFee;
        chooseSubjects(application);
        m_institute.applications.push_back(std::move(application));
    }

    /// All subjects of a course but now and then one or two, with a concession for one in five, and the first
    /// payment, an equal part of each.
    void chooseSubjects(Application &application) {
        const Course &course = m_dice.of(m_institute.courses, &Course::weight);
        const int concession = m_dice.oneIn(5) ? m_dice.oneIn(3) ? 25 : 10 : 0;
        constexpr int FirstParts[] = {0, 30, 30, 40, 40, 50, 50, 100};
        const int first = FirstParts[m_dice.below(int(std::size(FirstParts)))];
        for (int subject = 1; subject <= int(m_institute.subjects.size()); ++subject) {
            const Subject &offered = m_institute.subjects[std::size_t(subject - 1)];
            if (&m_institute.course(offered) != &course || m_dice.oneIn(7))
                continue;
            SubjectLine line{subject, offered.fee, offered.fee * concession / 100, {}, 0};
            if (concession > 0)
                line.narration =
                    QLatin1String(concession > 10 ? "MERIT CONCESSION" : "SISTER OR BROTHER HERE");
            line.received = first == 100 ? line.net() : line.net() * first / 100 / Note * Note;
            application.lines.push_back(line);
        }
        if (application.lines.empty())
            chooseSubjects(application);
    }

    /// One cash receipt for each day with admissions, a line a student.
    void takeRegistrationFees() {
        const AccountAt fees = m_institute.account(QStringLiteral("REGISTRATION FEES"));
        std::map<QDate, Voucher> days;
        for (const Application &application : m_institute.applications) {
            Voucher &voucher = days[application.date];
            voucher.kind = Kind::CR;
            voucher.date = application.date;
            voucher.paidTo = QStringLiteral("NEW STUDENTS");
            voucher.lines.push_back({m_institute.cash, fees, application.registrationFee,
                                     QStringLiteral("Registration fee, ") + application.name});
        }
        for (auto &[day, voucher] : days)
            m_institute.vouchers.push_back(std::move(voucher));
    }

    /// A student's instalments, and how it ends.
    void collect(int number) {
        Application &application = m_institute.applications[std::size_t(number - 1)];
        std::vector<Cents> open; // of each line
        for (const SubjectLine &line : application.lines)
            open.push_back(line.net() - line.received);
        const Cents owed = std::accumulate(open.begin(), open.end(), Cents(0));
        const int parts = m_dice.between(4, 8);
        const Cents part = roundedUp(owed / parts, Note);
        const bool byBank = m_dice.oneIn(8);
        const bool isLast = application.session == int(m_institute.sessions.size());
        const bool dropsOut = !isLast && m_dice.oneIn(12);
        const int paid = dropsOut ? m_dice.below(parts - 1) : parts;
        for (int instalment = 1; instalment <= paid; ++instalment) {
            const int delay = m_dice.between(-5, 9);
            const QDate day = workingDay(application.date.addDays(30 * instalment + delay));
            if (day <= LastDay)
                receive(number, instalment, day, part, open, byBank);
        }
        if (!isLast)
            end(number, dropsOut, open);
    }

    /// What is owed of the subjects in their order, up to `amount`.
    void receive(int number, int instalment, QDate day, Cents amount, std::vector<Cents> &open, bool byBank) {
        const Application &application = m_institute.applications[std::size_t(number - 1)];
        Voucher voucher{
            .kind = Kind::FR, .date = day, .paidTo = {}, .lines = {}, .slip = {}, .byBank = byBank};
        const QString cheque = byBank ? digits(8) : QString();
        if (!m_dice.oneIn(3))
            voucher.slip = QStringLiteral("%1/%2").arg(day.year() - 2000).arg(digits(4));
        for (std::size_t line = 0; line < open.size() && amount > 0; ++line) {
            const Cents now = std::min(open[line], amount);
            if (now == 0)
                continue;
            open[line] -= now;
            amount -= now;
            voucher.lines.push_back({.debit = byBank ? m_institute.bank : m_institute.cash,
                                     .credit = m_institute.student(number),
                                     .amount = now,
                                     .narration = QStringLiteral("INSTALMENT %1").arg(instalment),
                                     .cheque = cheque,
                                     .session = application.session,
                                     .subject = application.lines[line].subject});
        }
        if (!voucher.lines.empty())
            m_institute.vouchers.push_back(std::move(voucher));
    }

    /// Who drops out leaves the last unpaid subject for the next session, or owes what is written off; of the
    /// others some repeat a subject that is paid.
    void end(int number, bool dropsOut, const std::vector<Cents> &open) {
        Application &application = m_institute.applications[std::size_t(number - 1)];
        const Session &next = m_institute.sessions[std::size_t(application.session)];
        if (!dropsOut && !m_dice.oneIn(22))
            return;
        std::size_t line = open.size() - 1;
        while (line > 0 && (open[line] > 0) != dropsOut)
            --line;
        if ((open[line] > 0) != dropsOut)
            return;
        application.lines[line].inactive = true;
        const QDate day = workingDay(next.from.addDays(m_dice.between(1, 24)));
        if (dropsOut && m_dice.oneIn(3)) {
            m_institute.vouchers.push_back(
                {.kind = Kind::JV,
                 .date = workingDay(QDate(application.date.year() + 1, 6, 25)),
                 .paidTo = {},
                 .lines = {{m_institute.account(QStringLiteral("FEES WRITTEN OFF")),
                            m_institute.student(number), std::accumulate(open.begin(), open.end(), Cents(0)),
                            QStringLiteral("Left the institute, ") + application.name}}});
            return;
        }
        m_institute.carried.push_back(
            {day,
             number,
             {{application.lines[line].subject, application.session + 1, open[line],
               QLatin1String(dropsOut ? "COMES BACK NEXT SESSION" : "2ND ATTEMPT")}}});
    }

    /// The other side of what the students owe, which stands in no voucher: the fees' opening balances.
    void chargeFees() {
        for (const Application &application : m_institute.applications)
            for (const SubjectLine &line : application.lines) {
                const Course &course =
                    m_institute.course(m_institute.subjects[std::size_t(line.subject - 1)]);
                std::optional<Cents> &opening = m_institute.chart[std::size_t(course.income)].opening;
                opening = opening.value_or(0) - line.net();
            }
    }

    Institute &m_institute;
    Dice m_dice;
    People m_people;
    QStringList m_areas;
    QStringList m_educations;
};

} // namespace

void enrol(Institute &institute, std::uint64_t seed) {
    Enrolment(institute, seed).run();
}

} // namespace zel::demo
