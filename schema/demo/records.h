#pragma once

#include <QDate>
#include <QString>

#include <cstdint>
#include <numeric>
#include <optional>
#include <vector>

/// What the clerks of the demonstration institute entered, as they entered it.
namespace zel::demo {

/// Hundredths of a rupee.
using Cents = std::int64_t;
[[nodiscard]] constexpr Cents roundedUp(Cents amount, Cents to) {
    return (amount + to - 1) / to * to;
}

/// A subsidiary account: its place in Institute::chart, the students' behind its end in the order of their
/// applications.
using AccountAt = int;

/// An account of any level; nodes tell which.
struct Account {
    QString nodes;
    QString name;
    QString mark; ///< "B", "S" or ''
    std::optional<Cents> opening;
    QString contactPerson;
    QString address;
    QString contact;
    QString email;
    QDate opened{};  ///< of a subsidiary account
    QString order{}; ///< of a control account among the others
    QString address2{};
    QString fax{};
    QString website{};
    QString location{};
    QString gst{};
    QString ntn{};
};

/// Sessions, courses and subjects bear the numbers 1, 2, ... in the order of their lists.
struct Session {
    QString name;
    QDate from; ///< of its admissions
    QDate to;
    int students;
};

struct Course {
    QString name;
    QString length;
    QString unit;
    int weight; ///< how often it is chosen, against the others
    AccountAt income;
};

struct Subject {
    int course;
    QString name;
    Cents fee;
};

struct SubjectLine {
    int subject;
    Cents amount;
    Cents discount;
    QString narration;
    Cents received;
    bool inactive = false;

    [[nodiscard]] Cents net() const { return amount - discount; }
};

struct Application {
    QDate date;
    int session;
    QString regNo;
    QString name;
    QString father;
    QString nic;
    QString cell;
    QString residence;
    QString address;
    QString email;
    QString education;
    QString firm;
    QString attempt;
    QString part;
    QChar section;
    Cents registrationFee;
    std::vector<SubjectLine> lines;
    QString office{};

    [[nodiscard]] Cents total() const {
        return std::accumulate(lines.begin(), lines.end(), Cents(0),
                               [](Cents sum, const SubjectLine &line) { return sum + line.net(); });
    }
    [[nodiscard]] Cents received() const {
        return std::accumulate(lines.begin(), lines.end(), Cents(0),
                               [](Cents sum, const SubjectLine &line) { return sum + line.received; });
    }
};

enum class Kind { BP, BR, CP, CR, JV, FR };
inline constexpr const char *Codes[] = {"BP", "BR", "CP", "CR", "JV", "FR"};

struct Line {
    AccountAt debit;
    AccountAt credit;
    Cents amount;
    QString narration;
    QString cheque{};
    QString file{};
    QString bill{};
    int session = 0; ///< these two of fee receipts
    int subject = 0;
};

struct Voucher {
    Kind kind;
    QDate date;
    QString paidTo; ///< or received from
    std::vector<Line> lines;
    QString slip{}; ///< these two of fee receipts
    bool byBank = false;
    int number = 0;

    [[nodiscard]] Cents total() const {
        return std::accumulate(lines.begin(), lines.end(), Cents(0),
                               [](Cents sum, const Line &line) { return sum + line.amount; });
    }
};

struct CarriedLine {
    int subject;
    int session;  ///< carried to
    Cents amount; ///< 0: none was typed
    QString narration;
};

/// A carry forward form; they bear the numbers 1, 2, ...
struct CarryForward {
    QDate date;
    int application;
    std::vector<CarriedLine> lines;
};

struct Institute {
    std::vector<Account> chart;
    AccountAt cash;    ///< in hand
    AccountAt bank;    ///< the current account
    AccountAt savings; ///< the other
    std::vector<Session> sessions;
    std::vector<Course> courses;
    std::vector<Subject> subjects;
    std::vector<Application> applications; ///< numbered 1, 2, ...
    std::vector<Voucher> vouchers;         ///< in the order of entry
    std::vector<CarryForward> carried;

    /// The account of that title, which must be in the chart.
    [[nodiscard]] AccountAt account(const QString &name) const;
    [[nodiscard]] const Course &course(const Subject &subject) const {
        return courses[std::size_t(subject.course - 1)];
    }
    /// Of the application with that number.
    [[nodiscard]] AccountAt student(int application) const { return int(chart.size()) + application - 1; }
};

} // namespace zel::demo
