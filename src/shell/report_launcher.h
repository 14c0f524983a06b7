#pragma once

#include "platform/base/sql.h"
#include "platform/base/value.h"

#include <QString>

#include <memory>
#include <optional>
#include <vector>

namespace zel::report {
class Report;
}

namespace zel::shell {

/// Whose login a report reads with: the one logged in, or "sa" with an empty password.
enum class Logon { User, Fixed };

/// What a screen sets on a report before it is shown.
struct ReportSettings {
    struct Formula {
        QString name;
        Sql text; ///< a text stands in double quotes: "\""_sql + batch + "\""
    };
    struct SubReport {
        QString name;
        Sql selection;
    };

    Logon logon = Logon::User;
    /// Without prompting a parameter that has no value is Null.
    bool prompting = true;
    /// The values of the first parameters, in the definition's order.
    std::vector<Value> parameters;
    /// The record selection formula; none leaves the definition's own.
    std::optional<Sql> selection;
    std::vector<Formula> formulas;
    std::vector<SubReport> subReports;
};

/// The printing of one screen: it opens the definition, sets it up and hands it to the one viewer. A screen
/// keeps it as a member. Every step raises Error when the file is missing, the logon refused or a formula
/// rejected.
class ReportLauncher {
public:
    ReportLauncher();
    ~ReportLauncher();
    ReportLauncher(const ReportLauncher &) = delete;
    ReportLauncher &operator=(const ReportLauncher &) = delete;

    /// Opens the definition of that name beside the executable ("rptBP.rpt", "Wrd_Report/rpt_User_Name.rpt").
    /// Error 53 when there is none.
    void OpenReport(const QString &file);
    /// Logon, parameters, prompting, selection, formula fields, sub-reports, in this order, on the report
    /// opened last.
    void prepare(const ReportSettings &settings);
    /// Shows the report in frmVeiwer, in place of the one before.
    void view();

    /// The report opened last, for what a single screen sets beside the settings.
    [[nodiscard]] report::Report &report() const { return *m_report; }

    /// All three in a row.
    void print(const QString &file, const ReportSettings &settings);

private:
    std::shared_ptr<report::Report> m_report;
};

} // namespace zel::shell
