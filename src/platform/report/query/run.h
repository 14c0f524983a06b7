#pragma once

#include "platform/base/rows.h"
#include "platform/report/definition/definition.h"
#include "platform/report/formula/evaluate.h"
#include "platform/report/query/select.h"

#include <QHash>

#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace zel::report {

class Source;

/// Rows as read, and in which of their columns each {Table.Column} stands.
struct RowTable {
    RowsPtr rows;
    std::vector<std::vector<int>> places; ///< by table, then column; -1: not read

    [[nodiscard]] Value value(qsizetype row, int table, int column, Kind kind) const;
    [[nodiscard]] QString text(qsizetype row, int table, int column) const; ///< Null as ''
};

/// What a report was asked to show, from the objects that a screen sets.
struct Request {
    std::shared_ptr<const Definition> definition; ///< with the formulas' texts of this run
    Sql selection;
    Parameters parameters;
    std::vector<Request> subreports; ///< in the definition's order
    QDateTime printTime;
    QString userName;
};

/// A definition with everything read that it shows. Immutable once it is made.
class Run {
public:
    /// Reads lookups, rows and sub-reports: one statement each.
    Run(const Request &request, Source &source);

    [[nodiscard]] const Definition &definition() const { return *m_definition; }
    /// Nothing is printed: a lookup that the selection asks for found no row, or there is none and none is
    /// wanted.
    [[nodiscard]] bool isBlank() const { return m_blank; }
    /// How often the report is printed: once for each row that a lookup found.
    [[nodiscard]] int copies() const { return m_copies; }
    [[nodiscard]] qsizetype rowCount() const { return m_table.rows ? m_table.rows->rowCount() : 0; }
    /// Row -1 and rows beyond the last hold Null.
    [[nodiscard]] Value value(qsizetype row, int table, int column, int copy) const;
    /// The same as text, Null as ''.
    [[nodiscard]] QString text(qsizetype row, int table, int column, int copy) const;
    [[nodiscard]] Value parameter(int index) const { return m_parameters[static_cast<std::size_t>(index)]; }
    [[nodiscard]] const QDateTime &printTime() const { return m_printTime; }
    [[nodiscard]] const QString &userName() const { return m_userName; }

    [[nodiscard]] const Run &subreport(int index) const {
        return *m_subreports[static_cast<std::size_t>(index)];
    }
    /// The sub-report's rows that belong to a row of this one; nullopt: all of them, since it isn't linked.
    [[nodiscard]] std::optional<std::vector<qsizetype>> linkedRows(int subreport, qsizetype row) const;
    /// What a formula says after the last row; found once.
    [[nodiscard]] Value lastValue(int formula, int copy) const;

private:
    using Links = QHash<QString, std::vector<qsizetype>>;

    Run(const Request &request, Source &source, const Sql &extra);
    /// The rows that a table's columns stand in, and which of them is that of `row`.
    [[nodiscard]] std::pair<const RowTable *, qsizetype> place(qsizetype row, int table, int copy) const;
    void readLookups(const Selection &selection, Source &source);
    void readSubreports(const Request &request, const Selection &selection, Source &source);

    std::shared_ptr<const Definition> m_definition;
    Parameters m_parameters;
    RowTable m_table;
    std::map<int, RowTable> m_lookups;
    std::vector<std::unique_ptr<Run>> m_subreports;
    std::vector<Links> m_links;
    QDateTime m_printTime;
    QString m_userName;
    mutable std::map<std::pair<int, int>, Value> m_lastValues;
    bool m_blank = false;
    int m_copies = 1;
};

} // namespace zel::report
