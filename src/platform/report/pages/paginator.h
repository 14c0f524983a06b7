#pragma once

#include "platform/report/pages/band_layout.h"

namespace zel::report {

/// Fits a pass's bands to pages: the first time only to find where pages begin, then for one page at a time.
class Paginator {
public:
    Paginator(const Pass &pass, const TextMetrics &metrics);

    /// Where each page begins; at least one page.
    [[nodiscard]] std::vector<Cursor> pageStarts() const;
    /// The page that begins at `start`.
    [[nodiscard]] Page page(const Cursor &start, int pageNumber, int pageCount) const;

private:
    struct Sheet; ///< the page that is being filled

    /// Fills a page from the cursor on and leaves the cursor where the next one begins.
    void fill(Cursor &cursor, Sheet &sheet) const;
    void repeatGroupHeaders(const Cursor &cursor, Sheet &sheet) const;
    void addBands(const std::vector<BandDefinition> &bands, const Cursor &cursor, Sheet &sheet) const;
    void addBand(const BandDefinition &band, const Cursor &cursor, Sheet &sheet) const;
    /// Puts as much of a band on the page as there is room for; whether that was all.
    [[nodiscard]] bool addPart(const BandDefinition &band, Cursor &cursor, Sheet &sheet) const;
    [[nodiscard]] bool beginsPage(const BandDefinition &band, const Cursor &cursor) const;
    /// The height that must be free to begin with this band: with what must not be parted from it.
    [[nodiscard]] double wantedHeight(const Cursor &cursor, const Sheet &sheet) const;
    [[nodiscard]] bool isLastButOne(const Cursor &cursor) const;
    [[nodiscard]] double restHeight(Cursor cursor, const BandLayout &layout) const;
    /// Where the room under the page's headers begins: what is left out of them takes none.
    [[nodiscard]] double topOf(const Cursor &start, const BandLayout &layout) const;
    [[nodiscard]] double groupHeight(Cursor cursor, const BandLayout &layout, double most) const;
    [[nodiscard]] bool isRow(const Cursor &cursor) const;
    [[nodiscard]] double headersHeight(Cursor cursor, const BandLayout &layout) const;
    [[nodiscard]] double rowHeight(Cursor cursor, const BandLayout &layout) const;
    /// Whether the row is the last of a group, or of all.
    [[nodiscard]] bool closesGroup(qsizetype row) const;
    [[nodiscard]] double closingHeight(Cursor cursor, const BandLayout &layout) const;
    [[nodiscard]] double bottomHeight(Cursor cursor, const BandLayout &layout) const;
    [[nodiscard]] double heightOf(const Cursor &cursor, const BandLayout &layout) const;
    [[nodiscard]] bool isPrinted(const BandDefinition &band, const Cursor &cursor) const;
    /// The cursor of a page's edge, with the running totals of the rows that stand before the edge: a row
    /// that is parted by it counts as standing before.
    [[nodiscard]] Cursor edge(const Cursor &cursor) const;

    const Pass &m_pass;
    const TextMetrics &m_metrics;
    Flow m_flow;
    const Definition &m_definition;
    double m_limit = 0; ///< the foot of the room for rows
};

} // namespace zel::report
