#pragma once

#include "platform/base/number_text.h"
#include "platform/base/value.h"
#include "schema/demo/records.h"

#include <initializer_list>

namespace zel::ado {
class Driver;
}

namespace zel::demo {

struct Cell {
    const char *column = nullptr;
    Value value;
};

[[nodiscard]] Value money(Cents amount);
[[nodiscard]] Value orNull(const QString &text);
[[nodiscard]] Value orNull(std::optional<Cents> amount);
/// An amount's box that was left empty is NULL.
[[nodiscard]] Value typed(Cents amount);

/// What an application and its student's account are given when they are saved.
struct Registered {
    int number;        ///< of the application
    QString head;      ///< the code of the account that students' accounts stand under
    int place;         ///< of the account below it
    std::int64_t cash; ///< the account that takes what is received
};

/// Writes the rows that the screens write for a record, column for column.
class ScreenRows {
public:
    ScreenRows(ado::Driver &driver, QString login) : m_driver(driver), m_login(std::move(login)) {}

    /// The row's identity. What a column can't hold fails as ado::fitted does.
    std::int64_t add(const char *table, std::initializer_list<Cell> cells);
    /// Accounts.RowID.
    std::int64_t writeAccount(const Account &account);
    /// With its lines, the student's account and the receipt; Accounts.RowID.
    std::int64_t writeApplication(const Application &application, const Registered &as);
    [[nodiscard]] const QString &login() const { return m_login; }

private:
    void writeReceipt(const Application &application, std::int64_t student, std::int64_t cash);

    ado::Driver &m_driver;
    QString m_login; ///< who saves
};

} // namespace zel::demo
