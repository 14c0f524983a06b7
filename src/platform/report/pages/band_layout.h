#pragma once

#include "platform/report/pages/flow.h"
#include "platform/report/pages/text_metrics.h"

#include <array>
#include <optional>

namespace zel::report {

/// Makes a band's placed items, and finds its height.
class BandLayout {
public:
    BandLayout(const TextMetrics &metrics, int pageNumber, int pageCount)
        : m_metrics(metrics), m_pageNumber(pageNumber), m_pageCount(pageCount) {}

    /// The band's height at the cursor; with `page` its items too, the band's corner at the page's corner.
    double layOut(const BandDefinition &band, const Pass &pass, const Cursor &cursor, Page *page) const;
    struct Extent {
        bool printed = false; ///< not left out by its `when`
        double height = 0;    ///< 0 when it is
    };
    /// What the band takes at the cursor; the pass is the same on each call. Those asked for last are
    /// remembered.
    [[nodiscard]] Extent extent(const BandDefinition &band, const Pass &pass, const Cursor &cursor) const;

private:
    struct Growth {
        double below; ///< what stands at this height or lower moves down
        double by;
    };

    /// Where a following field's text begins on the line of the one before it; nullopt when it doesn't fit.
    [[nodiscard]] std::optional<QPointF> behind(const BandDefinition &band, std::size_t follower,
                                                const QString &text, const Definition &definition,
                                                const PassScene &scene) const;
    void placeBehind(const BandDefinition &band, std::size_t follower, const std::vector<Growth> &growths,
                     const Definition &definition, const PassScene &scene, Page &page) const;
    void place(const FieldDefinition &field, const std::vector<Growth> &growths, const Definition &definition,
               const PassScene &scene, Page &page) const;
    [[nodiscard]] std::vector<Growth> growths(const BandDefinition &band, const Pass &pass,
                                              const PassScene &scene) const;
    [[nodiscard]] QString textOf(const FieldDefinition &field, const StyleDefinition &style,
                                 const PassScene &scene) const;
    double subreport(const SubreportPlace &place, const Pass &outer, const PassScene &scene,
                     Page *page) const;

    const TextMetrics &m_metrics;
    int m_pageNumber;
    int m_pageCount;

    struct Known {
        const BandDefinition *band = nullptr;
        qsizetype row = 0;
        Extent extent;
    };
    mutable std::array<Known, 16> m_known;
};

/// Adds the items of `part`, moved by x and y.
void append(Page &page, Page part, double x, double y);

} // namespace zel::report
