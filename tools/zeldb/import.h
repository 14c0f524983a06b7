#pragma once

#include "csv.h"

#include "schema/demo/screen_rows.h"

#include "platform/ado/drivers/driver.h"

#include <map>
#include <set>

namespace zel::tool {

/// The chart as it stands while accounts are added to it.
class Chart {
public:
    explicit Chart(ado::Driver &driver);

    /// An account by its code or its title.
    struct Found {
        QString code;
        QString status; ///< "HH", "HD" or "DD"
    };
    /// RefusedRow when there is none or several bear the title.
    [[nodiscard]] Found account(const QString &codeOrTitle) const;
    /// Titles that differ by blanks and case alone are one.
    [[nodiscard]] bool hasTitle(const QString &title) const;

    [[nodiscard]] int nextControl() const { return m_lastControl + 1; }
    /// RefusedRow when the numbers are used up.
    [[nodiscard]] int nextBelow(const QString &code) const;
    void added(const QString &code, const QString &parent, int number, const QString &title,
               const QString &status);

private:
    std::map<QString, QString> m_status;        ///< by code
    std::map<std::string, QStringList> m_codes; ///< by title
    std::map<QString, int> m_last;              ///< numbers, by parent
    int m_lastControl = 0;
};

/// The rows that a statement gives.
[[nodiscard]] std::shared_ptr<const ado::RowSet> ask(ado::Driver &driver, const Sql &statement);

/// What a kind of file may hold, and what becomes of its rows.
struct ImportKind {
    const char *name;
    std::vector<std::pair<const char *, std::vector<const char *>>> columns; ///< by table
    std::vector<const char *> needed;                                        ///< columns
    /// Writes the rows; those that are refused go to `refused`, by line. How many were written.
    int (*write)(ado::Driver &driver, const Csv &table, std::map<qsizetype, QString> &refused);
};

extern const ImportKind importedAccounts;
extern const ImportKind importedStudents;

} // namespace zel::tool
