#pragma once

#include "platform/base/sql.h"
#include "platform/base/value.h"
#include "platform/report/pages/document.h"

#include <QDateTime>
#include <QString>

#include <functional>
#include <map>
#include <memory>
#include <vector>

namespace zel::ado {
class Connection;
}

namespace zel::report {

class Source;
class TextMetrics;
struct Definition;
struct Logon;
struct Request;

/// One item of a table's connection properties.
struct ConnectionProperty {
    QString Value;
};

/// A table of a report. Only the first table's logon counts, for the sub-reports too.
class Table {
public:
    [[nodiscard]] QString Name() const { return m_name; }
    /// "User ID", "Password", "Data Source", "Initial Catalog", "Provider"; Error 3265 for another name.
    [[nodiscard]] ConnectionProperty &ConnectionProperties(const QString &name);

private:
    friend class Report;
    QString m_name;
    std::map<QString, ConnectionProperty> m_properties;
};

class Tables {
public:
    [[nodiscard]] int Count() const { return static_cast<int>(m_tables.size()); }
    /// From 1; Error 3265 beyond the last.
    [[nodiscard]] Table &Item(int index);

private:
    friend class Report;
    std::vector<Table> m_tables;
};

class Database {
public:
    [[nodiscard]] report::Tables &Tables() { return m_tables; }

private:
    friend class Report;
    report::Tables m_tables;
};

/// A named formula of the definition: `Text` replaces what the definition says. A text formula stands in
/// double quotes, which the program writes; what it prints between them is a foreign piece.
struct FormulaField {
    QString Name;
    Sql Text;
};

/// A named parameter; it has no value until one is set.
struct ParameterField {
    QString Name;
    Value CurrentValue;
};

/// An opened report: what a print sets before the viewer shows it.
class Report {
public:
    ~Report();
    Report(const Report &) = delete;
    Report &operator=(const Report &) = delete;

    [[nodiscard]] report::Database &Database() { return m_database; }
    /// Beside the definition's own conditions; read when the report is viewed.
    Sql RecordSelectionFormula;
    /// By name, case ignored; Error 3265 when the definition has none.
    [[nodiscard]] FormulaField &FormulaFields(const QString &name);
    /// From 1 in the definition's order; Error 3265 beyond the last.
    [[nodiscard]] ParameterField &ParameterFields(int index);
    /// Without prompting a parameter that has no value is Null; this program never prompts.
    bool EnableParameterPrompting = true;
    /// By name, case ignored; Error 3265 when the definition has none.
    [[nodiscard]] Report &OpenSubreport(const QString &name);

    /// Logs on, reads the rows and finds the page breaks. Errors: a refused logon, a formula or a selection
    /// that can't be read, a failed statement. Each call reads anew.
    [[nodiscard]] DocumentPtr document();

    /// What fills the tables that the report reads from: it has run before the report is first viewed, and
    /// must run again before it is read again.
    void setRefill(std::function<void()> refill) { m_refill = std::move(refill); }
    void refill() const {
        if (m_refill)
            m_refill();
    }

    /// For tests and for programs without a database: what to read from, and what to measure with.
    void setSource(std::shared_ptr<Source> source) { m_source = std::move(source); }
    void setMetrics(std::shared_ptr<const TextMetrics> metrics) { m_metrics = std::move(metrics); }
    /// The moment that is printed as the time of printing; the clock's if it is not set.
    void setPrintTime(const QDateTime &moment) { m_printTime = moment; }

private:
    friend class Application;
    Report(std::shared_ptr<const Definition> definition, const Logon &logon);
    [[nodiscard]] Request request(const QDateTime &printTime, const QString &userName) const;

    std::shared_ptr<const Definition> m_definition;
    report::Database m_database;
    std::vector<FormulaField> m_formulas;
    std::vector<ParameterField> m_parameters;
    std::vector<std::unique_ptr<Report>> m_subreports;
    std::shared_ptr<Source> m_source;
    std::shared_ptr<const TextMetrics> m_metrics;
    QDateTime m_printTime;
    std::function<void()> m_refill;
};

/// Opens report files; made new for each print.
class Application {
public:
    Application() = default;
    /// Reports take data source, catalog and provider from the program's connection; user and password not.
    explicit Application(const ado::Connection &program);

    /// Error 53 when there is no such file, 54 with file, line and column when it is no report definition.
    /// Both "\" and "/" separate folders in the path.
    [[nodiscard]] std::shared_ptr<Report> OpenReport(const QString &path) const;

private:
    QString m_provider;
    QString m_dataSource;
    QString m_initialCatalog;
};

} // namespace zel::report
