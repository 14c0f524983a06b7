#pragma once

#include "tests/support/seeded_books.h"

#include <optional>

/// Students made from a number, with what they were charged and what came of it. The accounts are those of
/// SeededBooks; the postings are told as its vouchers are.
namespace zel::test {

struct InstitutePlan {
    std::uint64_t seed = 1;
    int students = 20;
    int sessions = 3;
    int courses = 3;
    int subjects = 9; ///< spread over the courses; the last one is deleted
    int receipts = 60;
};

/// A line of an application.
struct TakenSubject {
    int subject = 0;
    Cents fee = 0;
    Cents discount = 0;
    bool charged = true; ///< else its net amount is Null
    Cents received = 0;  ///< with the application
    bool inactive = false;
    Cents paid = 0;    ///< by FR, whatever the session
    Cents carried = 0; ///< by CF

    [[nodiscard]] Cents net() const { return charged ? fee - discount : 0; }
    [[nodiscard]] Cents allReceived() const { return received + paid + carried; }
    [[nodiscard]] Cents owed() const { return charged ? net() - allReceived() : 0; }
};

/// An application; a student may have two, of different subjects.
struct Applicant {
    int id = 0; ///< AppID; registered as "R-id", named "STUDENT id"
    int account = 0;
    int session = 0;
    std::vector<TakenSubject> taken;
};

struct SeededInstitute {
    explicit SeededInstitute(const InstitutePlan &plan);

    [[nodiscard]] int courseOf(int subject) const { return subject % plan.courses + 1; }

    InstitutePlan plan;
    SeededBooks books;
    std::vector<Applicant> applicants;
    /// AR of what came with the applications; FR, also for subjects that the student doesn't take; CF of
    /// inactive subjects.
    std::vector<BookVoucher> vouchers;

private:
    [[nodiscard]] Cents amount();
    void apply(int account);
    void receive(int number);

    Dice m_dice;
};

} // namespace zel::test
