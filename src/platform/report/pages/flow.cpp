#include "platform/report/pages/flow.h"

#include <algorithm>
#include <tuple>

namespace zel::report {

namespace {

bool sameGroupValue(const Value &left, const Value &right) {
    if (left.isNull() || right.isNull())
        return left.isNull() && right.isNull();
    if (std::holds_alternative<std::string>(left.storage()) &&
        std::holds_alternative<std::string>(right.storage())) {
        QString one = left.text();
        QString two = right.text();
        while (one.endsWith(QLatin1Char(' ')))
            one.chop(1);
        while (two.endsWith(QLatin1Char(' ')))
            two.chop(1);
        return one.compare(two, Qt::CaseInsensitive) == 0;
    }
    return left == right ||
           (!std::holds_alternative<DateTime>(left.storage()) && left.decimal() == right.decimal());
}

/// What a row adds to a total.
Decimal contribution(const TotalDefinition &total, const Scene &scene) {
    if (total.function != TotalDefinition::Function::Count)
        return evaluate(*total.of, scene).decimal();
    return total.of && evaluate(*total.of, scene).isNull() ? Decimal() : Decimal::fromInteger(1);
}

/// `first`: the row is the first of what the total is over.
void addTo(Decimal &sum, const TotalDefinition &total, const Scene &scene, bool first) {
    const Decimal more = contribution(total, scene);
    if (total.function == TotalDefinition::Function::Min)
        sum = first ? more : std::min(sum, more);
    else if (total.function == TotalDefinition::Function::Max)
        sum = first ? more : std::max(sum, more);
    else
        sum += more;
}

} // namespace

Pass::Pass(const Run &run, std::optional<std::vector<qsizetype>> rows, int copy)
    : m_run(run), m_rows(std::move(rows)), m_copy(copy) {
    const Definition &definition = m_run.definition();
    m_totals.resize(definition.totals.size());
    for (std::size_t i = 0; i < m_totals.size(); ++i) {
        if (definition.totals[i].group < 0)
            m_totals[i].resize(1);
    }
    m_firstNew.reserve(definition.groups.empty() ? 0 : static_cast<std::size_t>(rowCount()));
    std::vector<Value> groupValues(definition.groups.size());
    if (definition.groups.empty() && definition.totals.empty())
        return;
    for (qsizetype row = 0; row < rowCount(); ++row)
        addRow(row, groupValues);
}

void Pass::addRow(qsizetype row, std::vector<Value> &groupValues) {
    const Definition &definition = m_run.definition();
    Cursor cursor;
    cursor.row = row;
    const PassScene scene(*this, cursor);
    const int groups = static_cast<int>(definition.groups.size());
    int first = groups;
    for (int level = groups - 1; level >= 0; --level) {
        const auto at = static_cast<std::size_t>(level);
        Value value = evaluate(*definition.groups[at].by, scene);
        if (row == 0 || !sameGroupValue(value, groupValues[at]))
            first = level;
        groupValues[at] = std::move(value);
    }
    if (groups > 0)
        m_firstNew.push_back(static_cast<unsigned char>(first));
    for (std::size_t i = 0; i < m_totals.size(); ++i) {
        const TotalDefinition &total = definition.totals[i];
        if (total.running)
            continue;
        if (total.group >= first)
            m_totals[i].emplace_back();
        if (total.function != TotalDefinition::Function::Groups)
            addTo(m_totals[i].back(), total, scene, row == 0 || total.group >= first);
        else if (total.counted >= first && !groupValues[static_cast<std::size_t>(total.counted)].isNull())
            m_totals[i].back() += Decimal::fromInteger(1);
    }
}

qsizetype Pass::runRow(qsizetype row) const {
    if (row < 0 || row >= rowCount())
        return -1;
    return m_rows ? (*m_rows)[static_cast<std::size_t>(row)] : row;
}

int Pass::firstNewGroup(qsizetype row) const {
    if (row >= rowCount())
        return 0;
    return m_firstNew.empty() ? 0 : m_firstNew[static_cast<std::size_t>(row)];
}

Decimal Pass::total(int index, qsizetype instance) const {
    const auto &values = m_totals[static_cast<std::size_t>(index)];
    return instance >= 0 && instance < std::ssize(values) ? values[static_cast<std::size_t>(instance)]
                                                          : Decimal();
}

Value PassScene::column(int table, int column) const {
    return m_pass.run().value(runRow(), table, column, m_pass.copy());
}

QString PassScene::columnText(int table, int column) const {
    return m_pass.run().text(runRow(), table, column, m_pass.copy());
}

Value PassScene::formula(int index) const {
    return evaluate(*m_pass.run().definition().formulas[static_cast<std::size_t>(index)].expression, *this);
}

Value PassScene::total(int index) const {
    const TotalDefinition &total = m_pass.run().definition().totals[static_cast<std::size_t>(index)];
    if (total.running)
        return static_cast<std::size_t>(index) < m_cursor.running.size()
                   ? m_cursor.running[static_cast<std::size_t>(index)]
                   : Decimal();
    const auto group = static_cast<std::size_t>(total.group);
    return m_pass.total(index, total.group < 0 ? 0 : m_cursor.instances[group]);
}

Value PassScene::fromSubreport(const QString &name, const QString &formula) const {
    const Run &run = m_pass.run();
    const Run &inner = run.subreport(run.definition().subreport(name));
    return inner.lastValue(inner.definition().formula(formula), m_pass.copy());
}

Value Run::lastValue(int formula, int copy) const {
    const auto known = m_lastValues.find({formula, copy});
    if (known != m_lastValues.end())
        return known->second;
    const Pass pass(*this, std::nullopt, copy);
    const Cursor last = Flow(pass).end();
    return m_lastValues[{formula, copy}] = PassScene(pass, last).formula(formula);
}

Cursor Flow::begin() const {
    Cursor cursor;
    cursor.instances.assign(static_cast<std::size_t>(groupCount()), -1);
    cursor.running.assign(m_pass.run().definition().totals.size(), Decimal());
    cursor.before = cursor.running;
    cursor.phase = m_pass.run().isBlank() ? Phase::End : Phase::ReportHeader;
    if (!band(cursor))
        advance(cursor);
    return cursor;
}

Cursor Flow::end() const {
    Cursor cursor = begin();
    const auto &totals = m_pass.run().definition().totals;
    if (std::ranges::any_of(totals, &TotalDefinition::running) || groupCount() > 0) {
        for (qsizetype row = 0; row < m_pass.rowCount(); ++row) {
            cursor.row = row;
            enterRow(cursor);
        }
    }
    cursor.phase = Phase::End;
    cursor.row = std::max<qsizetype>(m_pass.rowCount() - 1, 0);
    return cursor;
}

const std::vector<BandDefinition> &Flow::bands(const Cursor &cursor) const {
    static const std::vector<BandDefinition> none;
    const Definition &definition = m_pass.run().definition();
    switch (cursor.phase) {
    case Phase::ReportHeader:
        return definition.reportHeaders;
    case Phase::GroupHeader:
        return definition.groups[static_cast<std::size_t>(cursor.level)].headers;
    case Phase::Detail:
        return definition.details;
    case Phase::GroupFooter:
        return definition.groups[static_cast<std::size_t>(cursor.level)].footers;
    case Phase::ReportFooter:
        return definition.reportFooters;
    default:
        return none;
    }
}

const BandDefinition *Flow::band(const Cursor &cursor) const {
    const auto &all = bands(cursor);
    return cursor.band < all.size() ? &all[cursor.band] : nullptr;
}

void Flow::advance(Cursor &cursor) const {
    cursor.offset = 0;
    ++cursor.band;
    while (!band(cursor) && cursor.phase != Phase::End) {
        nextStep(cursor);
        cursor.band = 0;
    }
}

void Flow::nextStep(Cursor &cursor) const {
    const qsizetype rows = m_pass.rowCount();
    switch (cursor.phase) {
    case Phase::ReportHeader:
        if (rows == 0) {
            cursor.phase = Phase::ReportFooter;
            return;
        }
        cursor.row = 0;
        return enterRow(cursor);
    case Phase::GroupHeader:
        if (++cursor.level == groupCount())
            cursor.phase = Phase::Detail;
        return;
    case Phase::Detail:
        cursor.phase = Phase::GroupFooter;
        cursor.level = groupCount();
        [[fallthrough]];
    case Phase::GroupFooter:
        if (--cursor.level >= m_pass.firstNewGroup(cursor.row + 1))
            return;
        if (cursor.row + 1 < rows) {
            ++cursor.row;
            return enterRow(cursor);
        }
        cursor.phase = Phase::ReportFooter;
        cursor.level = 0;
        return;
    default:
        cursor.phase = Phase::End;
    }
}

void Flow::enterRow(Cursor &cursor) const {
    const int first = m_pass.firstNewGroup(cursor.row);
    for (int level = first; level < groupCount(); ++level)
        ++cursor.instances[static_cast<std::size_t>(level)];
    cursor.before = cursor.running;
    const auto &totals = m_pass.run().definition().totals;
    for (std::size_t i = 0; i < totals.size(); ++i) {
        if (!totals[i].running)
            continue;
        if (totals[i].group >= first)
            cursor.running[i] = Decimal();
        cursor.running[i] += contribution(totals[i], PassScene(m_pass, cursor));
    }
    cursor.phase = first < groupCount() ? Phase::GroupHeader : Phase::Detail;
    cursor.level = first < groupCount() ? first : 0;
}

bool isBefore(const Cursor &left, const Cursor &right) {
    const auto place = [](const Cursor &cursor) {
        const qsizetype row = cursor.phase == Phase::ReportHeader ? -1
                              : cursor.phase == Phase::ReportFooter || cursor.phase == Phase::End
                                  ? cursor.row + 1
                                  : cursor.row;
        const int level = cursor.phase == Phase::GroupFooter ? -cursor.level : cursor.level;
        return std::tuple(row, cursor.phase, level, cursor.band, cursor.offset);
    };
    return place(left) < place(right);
}

} // namespace zel::report
