#include "platform/report/query/run.h"

#include "platform/report/query/source.h"

#include <algorithm>

namespace zel::report {

namespace {

RowTable read(const Select &select, const Definition &definition, Source &source) {
    RowTable table;
    table.rows = source.rows(select.text);
    for (const TableDefinition &each : definition.tables)
        table.places.emplace_back(each.columns.size(), -1);
    for (std::size_t place = 0; place < select.columns.size(); ++place) {
        const auto &[from, column] = select.columns[place];
        table.places[static_cast<std::size_t>(from)][static_cast<std::size_t>(column)] =
            static_cast<int>(place);
    }
    return table;
}

/// What two linked values have in common: numbers by value, texts without case and trailing blanks.
QString keyOf(const Value &value) {
    if (std::holds_alternative<std::string>(value.storage())) {
        QString text = value.text().toCaseFolded();
        while (text.endsWith(QLatin1Char(' ')))
            text.chop(1);
        return text;
    }
    if (std::holds_alternative<DateTime>(value.storage()))
        return value.text();
    return QString::fromStdString(value.decimal().toString());
}

ExpressionPtr selectionFormula(const Sql &text, const Definition &definition) {
    if (text.text().find_first_not_of(" \t\r\n") == std::string::npos && text.pieces().empty())
        return nullptr;
    Definition scope = definition;
    ExpressionPtr condition = report::bind(parse(text), scope);
    if (condition->kind != Kind::Boolean)
        throw FormulaError(
            errors::TypeMismatch,
            QStringLiteral("A selection must be a condition, not %1.").arg(nameOf(condition->kind)), 0);
    return condition;
}

} // namespace

Value RowTable::value(qsizetype row, int table, int column, Kind kind) const {
    if (row < 0 || !rows || row >= rows->rowCount())
        return {};
    const int place = places[static_cast<std::size_t>(table)][static_cast<std::size_t>(column)];
    return place < 0 ? Value() : coerced(rows->value(row, place), kind);
}

QString RowTable::text(qsizetype row, int table, int column) const {
    if (row < 0 || !rows || row >= rows->rowCount())
        return {};
    const int place = places[static_cast<std::size_t>(table)][static_cast<std::size_t>(column)];
    return place < 0 ? QString() : rows->text(row, place);
}

Run::Run(const Request &request, Source &source) : Run(request, source, Sql()) {}

Run::Run(const Request &request, Source &source, const Sql &extra)
    : m_definition(request.definition), m_parameters(request.parameters), m_printTime(request.printTime),
      m_userName(request.userName) {
    try {
        const Selection selection =
            selectionOf(*m_definition, selectionFormula(request.selection, *m_definition));
        readLookups(selection, source);
        if (m_blank)
            return;
        m_table = read(rowsSelect(*m_definition, selection, m_parameters, extra), *m_definition, source);
        m_blank = m_definition->blankWhenEmpty && rowCount() == 0;
        readSubreports(request, selection, source);
    } catch (const FormulaError &error) {
        throw located(error, request.selection.text(),
                      QStringLiteral("Selection formula of %1").arg(m_definition->name));
    }
}

void Run::readLookups(const Selection &selection, Source &source) {
    for (int table = 1; table < static_cast<int>(m_definition->tables.size()); ++table) {
        if (m_definition->tables[static_cast<std::size_t>(table)].join != Join::None)
            continue;
        const Select select = lookupSelect(*m_definition, table, selection, m_parameters);
        const bool wanted = selection.lookups.contains(table);
        if (!wanted && select.columns.empty())
            continue;
        RowTable found = read(select, *m_definition, source);
        if (wanted && found.rows->rowCount() == 0)
            m_blank = true;
        if (wanted && m_copies == 1)
            m_copies = std::max(1, static_cast<int>(found.rows->rowCount()));
        m_lookups.emplace(table, std::move(found));
    }
}

void Run::readSubreports(const Request &request, const Selection &selection, Source &source) {
    const auto &subreports = m_definition->subreports;
    m_links.resize(subreports.size());
    for (std::size_t i = 0; i < subreports.size(); ++i) {
        const SubreportDefinition &each = subreports[i];
        const Request &inner = request.subreports[i];
        const Sql extra = linkCondition(each, *m_definition, selection, inner.parameters, m_parameters);
        m_subreports.push_back(std::unique_ptr<Run>(new Run(inner, source, extra)));
        const Run &run = *m_subreports.back();
        for (qsizetype row = 0; !each.links.empty() && row < run.rowCount(); ++row) {
            QString key;
            for (const LinkDefinition &link : each.links)
                key += keyOf(run.value(row, link.inner->table, link.inner->index, 0)) + QChar(0x1f);
            m_links[i][key].push_back(row);
        }
    }
}

std::pair<const RowTable *, qsizetype> Run::place(qsizetype row, int table, int copy) const {
    const auto lookup = m_lookups.find(table);
    if (lookup == m_lookups.end())
        return {&m_table, row};
    const qsizetype found = lookup->second.rows->rowCount();
    return {&lookup->second, std::min<qsizetype>(copy, found - 1)};
}

Value Run::value(qsizetype row, int table, int column, int copy) const {
    const Kind kind =
        m_definition->tables[static_cast<std::size_t>(table)].columns[static_cast<std::size_t>(column)].kind;
    const auto [rows, at] = place(row, table, copy);
    return rows->value(at, table, column, kind);
}

QString Run::text(qsizetype row, int table, int column, int copy) const {
    const auto [rows, at] = place(row, table, copy);
    return rows->text(at, table, column);
}

std::optional<std::vector<qsizetype>> Run::linkedRows(int subreport, qsizetype row) const {
    const auto &links = m_definition->subreports[static_cast<std::size_t>(subreport)].links;
    if (links.empty())
        return std::nullopt;
    QString key;
    for (const LinkDefinition &link : links) {
        const Value value = this->value(row, link.outer->table, link.outer->index, 0);
        if (value.isNull())
            return std::vector<qsizetype>();
        key += keyOf(value) + QChar(0x1f);
    }
    return m_links[static_cast<std::size_t>(subreport)].value(key);
}

} // namespace zel::report
