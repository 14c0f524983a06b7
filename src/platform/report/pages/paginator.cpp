#include "platform/report/pages/paginator.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace zel::report {

namespace {

constexpr double Slack = 0.01;

/// The items of a page whose tops lie in [from, to).
Page slice(const Page &whole, double from, double to) {
    const auto inside = [&](double top) { return top >= from - Slack && top < to - Slack; };
    Page part;
    for (const TextItem &item : whole.texts) {
        if (inside(item.baseline))
            part.texts.push_back(item);
    }
    for (LineItem item : whole.lines) {
        if (item.y1 == item.y2 ? !inside(item.y1) : (item.y2 <= from || item.y1 >= to))
            continue;
        item.y1 = std::max(item.y1, from);
        item.y2 = std::min(item.y2, to);
        part.lines.push_back(item);
    }
    for (const BoxItem &item : whole.boxes) {
        if (inside(item.rect.top()))
            part.boxes.push_back(item);
    }
    for (const ImageItem &item : whole.images) {
        if (inside(item.rect.top()))
            part.images.push_back(item);
    }
    return part;
}

} // namespace

struct Paginator::Sheet {
    BandLayout layout;
    Page *page = nullptr; ///< nullptr when only page starts are looked for
    double x = 0;
    double top = 0; ///< of the room between page header and footer
    double y = 0;   ///< where the next band goes
    bool empty = true;
};

Paginator::Paginator(const Pass &pass, const TextMetrics &metrics)
    : m_pass(pass), m_metrics(metrics), m_flow(pass), m_definition(pass.run().definition()) {
    m_limit = m_definition.pageSize.height() - m_definition.margins.bottom();
    for (const BandDefinition &band : m_definition.pageFooters)
        m_limit -= band.height;
}

double Paginator::topOf(const Cursor &start, const BandLayout &layout) const {
    double top = m_definition.margins.top();
    for (const BandDefinition &band : m_definition.pageHeaders)
        top += layout.extent(band, m_pass, start).height;
    return top;
}

std::vector<Cursor> Paginator::pageStarts() const {
    std::vector<Cursor> starts;
    Cursor cursor = m_flow.begin();
    do {
        starts.push_back(cursor);
        Sheet sheet{BandLayout(m_metrics, static_cast<int>(starts.size()), 1), nullptr, 0, 0, 0};
        sheet.y = sheet.top = topOf(edge(cursor), sheet.layout);
        fill(cursor, sheet);
    } while (cursor.phase != Phase::End);
    return starts;
}

Page Paginator::page(const Cursor &start, int pageNumber, int pageCount) const {
    Page page;
    page.size = m_definition.pageSize;
    if (m_pass.run().isBlank())
        return page;
    const double left = m_definition.margins.left();
    Sheet sheet{BandLayout(m_metrics, pageNumber, pageCount), &page, left, 0, m_definition.margins.top()};
    addBands(m_definition.pageHeaders, edge(start), sheet);
    sheet.top = sheet.y;
    sheet.empty = true;
    Cursor cursor = start;
    fill(cursor, sheet);
    const Cursor foot = edge(cursor);
    sheet.y = m_definition.pageSize.height() - m_definition.margins.bottom();
    for (const BandDefinition &band : m_definition.pageFooters)
        sheet.y -= sheet.layout.extent(band, m_pass, foot).height;
    addBands(m_definition.pageFooters, foot, sheet);
    return page;
}

Cursor Paginator::edge(const Cursor &cursor) const {
    Cursor edge = cursor;
    bool begun = cursor.phase != Phase::GroupHeader && (cursor.phase != Phase::Detail || cursor.offset > 0);
    if (cursor.phase == Phase::Detail) {
        for (std::size_t band = 0; band < cursor.band; ++band)
            begun = begun || isPrinted(m_definition.details[band], cursor);
    }
    if (!begun)
        edge.running = cursor.before;
    return edge;
}

bool Paginator::isPrinted(const BandDefinition &band, const Cursor &cursor) const {
    return !band.when || holds(band.when, PassScene(m_pass, cursor));
}

void Paginator::addBand(const BandDefinition &band, const Cursor &cursor, Sheet &sheet) const {
    const auto [printed, extent] = sheet.layout.extent(band, m_pass, cursor);
    if (!printed)
        return;
    Page part;
    const double height = sheet.page ? sheet.layout.layOut(band, m_pass, cursor, &part) : extent;
    if (sheet.page)
        append(*sheet.page, std::move(part), sheet.x, sheet.y);
    sheet.y += height;
    sheet.empty = false;
}

void Paginator::addBands(const std::vector<BandDefinition> &bands, const Cursor &cursor, Sheet &sheet) const {
    for (const BandDefinition &band : bands)
        addBand(band, cursor, sheet);
}

void Paginator::repeatGroupHeaders(const Cursor &cursor, Sheet &sheet) const {
    if (cursor.phase != Phase::GroupHeader && cursor.phase != Phase::Detail &&
        cursor.phase != Phase::GroupFooter)
        return;
    const int begun = cursor.phase == Phase::Detail ? m_flow.groupCount() : cursor.level;
    const bool midRow = cursor.phase != Phase::GroupHeader;
    Cursor again = cursor;
    again.continued = true;
    for (int level = 0; level < begun; ++level) {
        const GroupDefinition &group = m_definition.groups[static_cast<std::size_t>(level)];
        const bool fresh = !midRow && level >= m_pass.firstNewGroup(cursor.row);
        if (group.repeat && !fresh)
            addBands(group.headers, again, sheet);
    }
    sheet.empty = true;
}

void Paginator::fill(Cursor &cursor, Sheet &sheet) const {
    repeatGroupHeaders(cursor, sheet);
    while (const BandDefinition *band = m_flow.band(cursor)) {
        if (!sheet.layout.extent(*band, m_pass, cursor).printed) {
            m_flow.advance(cursor);
            continue;
        }
        if (!sheet.empty && cursor.offset == 0 &&
            (beginsPage(*band, cursor) || sheet.y + wantedHeight(cursor, sheet) > m_limit + Slack))
            return;
        if (band->bottom && cursor.offset == 0)
            sheet.y = std::max(sheet.y, m_limit - bottomHeight(cursor, sheet.layout));
        if (!addPart(*band, cursor, sheet))
            return;
        m_flow.advance(cursor);
    }
}

bool Paginator::addPart(const BandDefinition &band, Cursor &cursor, Sheet &sheet) const {
    const double room = m_limit - sheet.y;
    if (cursor.offset == 0 && sheet.layout.extent(band, m_pass, cursor).height <= room + Slack) {
        addBand(band, cursor, sheet);
        return true;
    }
    Page whole;
    const double height = sheet.layout.layOut(band, m_pass, cursor, &whole);
    double cut = std::min(height, cursor.offset + room);
    if (cut < height - Slack) {
        // Cut above the first line of text that would hang over the foot.
        for (const TextItem &item : whole.texts) {
            const double top = item.baseline - m_metrics.ascent(*item.font);
            const double foot = top + m_metrics.lineHeight(*item.font);
            if (top > cursor.offset + Slack && top < cut && foot > cut + Slack)
                cut = top;
        }
    }
    if (sheet.page)
        append(*sheet.page, slice(whole, cursor.offset, cut), sheet.x, sheet.y - cursor.offset);
    sheet.y += cut - cursor.offset;
    sheet.empty = false;
    cursor.offset = cut;
    return cut >= height - Slack;
}

bool Paginator::beginsPage(const BandDefinition &band, const Cursor &cursor) const {
    if (band.newPage)
        return true;
    if (cursor.phase != Phase::GroupHeader || cursor.band != 0 || cursor.row == 0)
        return false;
    return m_definition.groups[static_cast<std::size_t>(cursor.level)].newPage;
}

double Paginator::heightOf(const Cursor &cursor, const BandLayout &layout) const {
    const BandDefinition *band = m_flow.band(cursor);
    return band ? layout.extent(*band, m_pass, cursor).height : 0;
}

double Paginator::wantedHeight(const Cursor &cursor, const Sheet &sheet) const {
    const BandLayout &layout = sheet.layout;
    const double page = m_limit - sheet.top;
    double wanted = heightOf(cursor, layout);
    if (isLastButOne(cursor)) {
        const double rest = restHeight(cursor, layout);
        if (rest <= page + Slack)
            return rest;
    }
    if (cursor.phase == Phase::GroupHeader) {
        if (cursor.band == 0 && m_definition.groups[static_cast<std::size_t>(cursor.level)].keep) {
            const double group = groupHeight(cursor, layout, page);
            if (group <= page + Slack)
                return group;
        }
        wanted = headersHeight(cursor, layout);
    } else if (cursor.phase == Phase::ReportFooter || (isRow(cursor) && closesGroup(cursor.row))) {
        wanted = closingHeight(cursor, layout);
    } else if (cursor.phase == Phase::Detail && cursor.band + 1 < m_definition.details.size()) {
        wanted = rowHeight(cursor, layout);
    }
    return wanted <= page + Slack ? wanted : heightOf(cursor, layout);
}

/// To the end of the group that begins at the cursor, with the footers of outer groups that its last row bears,
/// and of the last group with the report's, if they fit; `most` or more is as good as endless.
double Paginator::groupHeight(Cursor cursor, const BandLayout &layout, double most) const {
    const int level = cursor.level;
    const qsizetype first = cursor.row;
    double height = 0;
    std::optional<double> own;
    while (height <= most && cursor.phase != Phase::End && cursor.phase != Phase::ReportFooter) {
        if (cursor.row != first && m_pass.firstNewGroup(cursor.row) <= level)
            break;
        if (cursor.phase == Phase::GroupFooter && cursor.level < level && !own)
            own = height;
        height += heightOf(cursor, layout);
        m_flow.advance(cursor);
    }
    double closed = height;
    if (cursor.phase == Phase::ReportFooter && !m_flow.band(cursor)->newPage)
        closed += bottomHeight(cursor, layout);
    return closed <= most ? closed : own.value_or(height);
}

/// Whether a row begins here; where rows have no bands of their own, the innermost footers are the rows.
bool Paginator::isRow(const Cursor &cursor) const {
    return cursor.phase == Phase::Detail ||
           (cursor.phase == Phase::GroupFooter && m_definition.details.empty());
}

/// A group's headers with the first row under them.
double Paginator::headersHeight(Cursor cursor, const BandLayout &layout) const {
    double height = 0;
    for (; cursor.phase == Phase::GroupHeader; m_flow.advance(cursor))
        height += heightOf(cursor, layout);
    return height + (closesGroup(cursor.row) ? closingHeight(cursor, layout) : rowHeight(cursor, layout));
}

bool Paginator::closesGroup(qsizetype row) const {
    return row + 1 >= m_pass.rowCount() || m_pass.firstNewGroup(row + 1) < m_flow.groupCount();
}

/// Whether the last row but one begins here, which the last page is to begin with at the latest.
bool Paginator::isLastButOne(const Cursor &cursor) const {
    if (cursor.row == 0 || cursor.row + 2 != m_pass.rowCount() || cursor.band > 0)
        return false;
    if (cursor.phase == Phase::Detail)
        return m_pass.firstNewGroup(cursor.row) >= m_flow.groupCount();
    return cursor.phase == Phase::GroupHeader && cursor.level == m_pass.firstNewGroup(cursor.row);
}

/// All that is left, or what stands before a page begins.
double Paginator::restHeight(Cursor cursor, const BandLayout &layout) const {
    double height = 0;
    for (; const BandDefinition *band = m_flow.band(cursor); m_flow.advance(cursor)) {
        if (height > 0 && beginsPage(*band, cursor))
            break;
        height += heightOf(cursor, layout);
    }
    return height;
}

/// The bands of one row, from the cursor on.
double Paginator::rowHeight(Cursor cursor, const BandLayout &layout) const {
    double height = 0;
    for (; cursor.phase == Phase::Detail && m_flow.band(cursor); ++cursor.band)
        height += heightOf(cursor, layout);
    return height;
}

/// A last row with the footers under it, or footers of the report with one another.
double Paginator::closingHeight(Cursor cursor, const BandLayout &layout) const {
    const qsizetype row = cursor.row;
    double height = 0;
    for (; cursor.phase != Phase::End && cursor.phase != Phase::GroupHeader && cursor.row == row;
         m_flow.advance(cursor)) {
        if (cursor.phase == Phase::ReportFooter && m_flow.band(cursor)->newPage && height > 0)
            break;
        height += heightOf(cursor, layout);
    }
    return height;
}

double Paginator::bottomHeight(Cursor cursor, const BandLayout &layout) const {
    double height = 0;
    for (; cursor.phase == Phase::ReportFooter; m_flow.advance(cursor))
        height += heightOf(cursor, layout);
    return height;
}

} // namespace zel::report
