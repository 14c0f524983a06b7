#include "platform/report/report.h"

#include "platform/ado/connection.h"
#include "platform/report/pages/document_content.h"
#include "platform/report/query/source.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace zel::report {

namespace {

constexpr const char *propertyNames[] = {"User ID", "Password", "Data Source", "Initial Catalog", "Provider"};

[[noreturn]] void notFound(const QString &what, const QString &name) {
    throw Error(errors::ItemNotFound, QStringLiteral("%1 '%2' not found in the report.").arg(what, name));
}

template <typename Items>
auto &itemAt(Items &items, int index, const QString &what) {
    if (index < 1 || index > std::ssize(items))
        notFound(what, QString::number(index));
    return items[static_cast<std::size_t>(index - 1)];
}

/// The definition with the formulas' texts that were set. A formula keeps its kind, since others build on it.
std::shared_ptr<const Definition> withFormulas(const Definition &definition,
                                               const std::vector<FormulaField> &formulas) {
    auto changed = std::make_shared<Definition>(definition);
    for (std::size_t i = 0; i < formulas.size(); ++i) {
        FormulaDefinition &formula = changed->formulas[i];
        const std::string_view text = formulas[i].Text.text();
        if (text == formula.text)
            continue;
        const QString what = QStringLiteral("Formula %1 of %2").arg(formula.name, definition.name);
        try {
            Definition above = *changed;
            above.formulas.resize(i);
            const std::size_t totals = above.totals.size();
            ExpressionPtr made = report::bind(parse(formulas[i].Text), above);
            if (made->kind != formula.expression->kind && made->kind != Kind::Null)
                throw FormulaError(errors::TypeMismatch,
                                   QStringLiteral("This must be %1, not %2.")
                                       .arg(nameOf(formula.expression->kind), nameOf(made->kind)),
                                   0);
            changed->totals.insert(changed->totals.end(),
                                   above.totals.begin() + static_cast<std::ptrdiff_t>(totals),
                                   above.totals.end());
            formula.text = text;
            formula.expression = std::move(made);
        } catch (const FormulaError &error) {
            throw located(error, text, what);
        }
    }
    return changed;
}

} // namespace

ConnectionProperty &Table::ConnectionProperties(const QString &name) {
    for (const char *known : propertyNames) {
        if (name.compare(QLatin1String(known), Qt::CaseInsensitive) == 0)
            return m_properties[QString::fromLatin1(known)];
    }
    notFound(QStringLiteral("Connection property"), name);
}

Table &Tables::Item(int index) {
    return itemAt(m_tables, index, QStringLiteral("Table"));
}

Report::Report(std::shared_ptr<const Definition> definition, const Logon &logon)
    : m_definition(std::move(definition)) {
    for (const TableDefinition &table : m_definition->tables) {
        Table made;
        made.m_name = table.name;
        made.ConnectionProperties(QStringLiteral("Provider")).Value = logon.provider;
        made.ConnectionProperties(QStringLiteral("Data Source")).Value = logon.dataSource;
        made.ConnectionProperties(QStringLiteral("Initial Catalog")).Value = logon.initialCatalog;
        m_database.m_tables.m_tables.push_back(std::move(made));
    }
    for (const FormulaDefinition &formula : m_definition->formulas)
        m_formulas.push_back({formula.name, Sql::trusted(formula.text)});
    for (const ParameterDefinition &parameter : m_definition->parameters)
        m_parameters.push_back({parameter.name, {}});
    for (const SubreportDefinition &subreport : m_definition->subreports)
        m_subreports.push_back(std::unique_ptr<Report>(new Report(subreport.definition, logon)));
}

Report::~Report() = default;

FormulaField &Report::FormulaFields(const QString &name) {
    const int index = m_definition->formula(name);
    if (index < 0)
        notFound(QStringLiteral("Formula"), name);
    return m_formulas[static_cast<std::size_t>(index)];
}

ParameterField &Report::ParameterFields(int index) {
    return itemAt(m_parameters, index, QStringLiteral("Parameter"));
}

Report &Report::OpenSubreport(const QString &name) {
    const int index = m_definition->subreport(name);
    if (index < 0)
        notFound(QStringLiteral("Sub-report"), name);
    return *m_subreports[static_cast<std::size_t>(index)];
}

Request Report::request(const QDateTime &printTime, const QString &userName) const {
    Request made;
    auto definition = std::make_shared<Definition>(*withFormulas(*m_definition, m_formulas));
    made.selection = RecordSelectionFormula;
    for (std::size_t i = 0; i < m_parameters.size(); ++i)
        made.parameters.push_back(coerced(m_parameters[i].CurrentValue, definition->parameters[i].kind));
    for (std::size_t i = 0; i < m_subreports.size(); ++i) {
        made.subreports.push_back(m_subreports[i]->request(printTime, userName));
        // The sub-report as it was set, not as the file has it: its formulas are asked through here.
        definition->subreports[i].definition =
            std::make_shared<Definition>(*made.subreports.back().definition);
    }
    made.definition = std::move(definition);
    made.printTime = printTime;
    made.userName = userName;
    return made;
}

DocumentPtr Report::document() {
    const QDateTime printTime = m_printTime.isValid() ? m_printTime : QDateTime::currentDateTime();
    Table &first = m_database.Tables().Item(1);
    const auto property = [&](const char *name) {
        return first.ConnectionProperties(QString::fromLatin1(name)).Value;
    };
    const QString user = property("User ID");
    const Request made = request(printTime, user);
    std::shared_ptr<Source> source = m_source;
    if (!source)
        source = openSource({property("Provider"), property("Data Source"), property("Initial Catalog"), user,
                             property("Password")});
    auto metrics = m_metrics ? m_metrics : std::make_shared<FontMetrics>();
    return std::make_shared<Document>(std::make_unique<Document::Private>(made, *source, std::move(metrics)));
}

Application::Application(const ado::Connection &program)
    : m_provider(program.Provider), m_dataSource(program.property(QStringLiteral("Data Source"))),
      m_initialCatalog(program.property(QStringLiteral("Initial Catalog"))) {}

std::shared_ptr<Report> Application::OpenReport(const QString &path) const {
    QString local = path;
    local.replace(QLatin1Char('\\'), QLatin1Char('/'));
    const Logon logon{m_provider, m_dataSource, m_initialCatalog, {}, {}};
    return std::shared_ptr<Report>(new Report(readDefinition(local), logon));
}

} // namespace zel::report
