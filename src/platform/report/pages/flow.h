#pragma once

#include "platform/report/query/run.h"

#include <compare>

namespace zel::report {

/// The rows that one printing of a report goes over, their groups and their totals, found in one pass.
class Pass {
public:
    /// `rows`: a sub-report's rows at one place; nullopt for all rows of the run.
    explicit Pass(const Run &run, std::optional<std::vector<qsizetype>> rows = std::nullopt, int copy = 0);

    [[nodiscard]] const Run &run() const { return m_run; }
    [[nodiscard]] int copy() const { return m_copy; }
    [[nodiscard]] qsizetype rowCount() const { return m_rows ? std::ssize(*m_rows) : m_run.rowCount(); }
    /// The run's row that is the `row`-th of this pass; -1 beyond the last.
    [[nodiscard]] qsizetype runRow(qsizetype row) const;
    /// The outermost group that begins with the row; the number of groups when none does. 0 beyond the last.
    [[nodiscard]] int firstNewGroup(qsizetype row) const;
    /// A total that isn't running, of the group's instance (counted from 0; the report's is 0).
    [[nodiscard]] Decimal total(int index, qsizetype instance) const;

private:
    void addRow(qsizetype row, std::vector<Value> &groupValues);

    const Run &m_run;
    std::optional<std::vector<qsizetype>> m_rows;
    int m_copy;
    std::vector<unsigned char> m_firstNew;
    std::vector<std::vector<Decimal>> m_totals; ///< by total, then instance; running ones are empty
};

enum class Phase { ReportHeader, GroupHeader, Detail, GroupFooter, ReportFooter, End };

/// Where a printing stands: before one band of one row, with the running totals up to that row.
struct Cursor {
    Phase phase = Phase::ReportHeader;
    qsizetype row = 0;
    int level = 0; ///< of a group's band
    std::size_t band = 0;
    double offset = 0;                ///< millimetres of the band that stand on earlier pages
    bool continued = false;           ///< a group's header that stands again
    std::vector<qsizetype> instances; ///< by group, counted from 0; -1 before the first
    std::vector<Decimal> running;     ///< by total; 0 for those that don't run
    std::vector<Decimal> before;      ///< the same without the current row
};

/// What formulas see at a cursor.
class PassScene final : public Scene {
public:
    PassScene(const Pass &pass, const Cursor &cursor, int pageNumber = 1, int pageCount = 1)
        : m_pass(pass), m_cursor(cursor), m_pageNumber(pageNumber), m_pageCount(pageCount) {}
    [[nodiscard]] Value column(int table, int column) const override;
    [[nodiscard]] QString columnText(int table, int column) const;
    [[nodiscard]] Value formula(int index) const override;
    [[nodiscard]] Value total(int index) const override;
    [[nodiscard]] Value parameter(int index) const override { return m_pass.run().parameter(index); }
    [[nodiscard]] Value fromSubreport(const QString &name, const QString &formula) const override;
    [[nodiscard]] std::int64_t rowNumber() const override { return m_cursor.row + 1; }
    [[nodiscard]] int pageNumber() const override { return m_pageNumber; }
    [[nodiscard]] int pageCount() const override { return m_pageCount; }
    [[nodiscard]] bool continued() const override { return m_cursor.continued; }
    [[nodiscard]] QDateTime printTime() const override { return m_pass.run().printTime(); }
    [[nodiscard]] QString userName() const override { return m_pass.run().userName(); }
    [[nodiscard]] qsizetype runRow() const { return m_pass.runRow(m_cursor.row); }

private:
    const Pass &m_pass;
    const Cursor &m_cursor;
    int m_pageNumber;
    int m_pageCount;
};

/// Goes through the bands of a pass in printing order.
class Flow {
public:
    explicit Flow(const Pass &pass) : m_pass(pass) {}

    [[nodiscard]] Cursor begin() const;
    /// The band at the cursor; nullptr at the end.
    [[nodiscard]] const BandDefinition *band(const Cursor &cursor) const;
    void advance(Cursor &cursor) const;
    /// The cursor after the last row, for what a formula says of the whole.
    [[nodiscard]] Cursor end() const;
    [[nodiscard]] int groupCount() const { return static_cast<int>(m_pass.run().definition().groups.size()); }

private:
    [[nodiscard]] const std::vector<BandDefinition> &bands(const Cursor &cursor) const;
    void nextStep(Cursor &cursor) const;
    void enterRow(Cursor &cursor) const;

    const Pass &m_pass;
};

/// Whether the band at `left` is printed before the one at `right`.
[[nodiscard]] bool isBefore(const Cursor &left, const Cursor &right);

} // namespace zel::report
