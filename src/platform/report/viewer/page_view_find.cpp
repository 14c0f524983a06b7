// The words that are marked, counted and gone to; the view itself stands in page_view.cpp.

#include "platform/report/viewer/page_view.h"

#include <QElapsedTimer>
#include <QScrollBar>

#include <algorithm>
#include <numeric>

namespace zel::viewer {

static constexpr int CountingMilliseconds = 15; ///< at a time

void PageView::mark(const QString &words) {
    m_words = words;
    for (auto &[page, shown] : m_pages)
        shown.hits = shown.page.find(words);
    viewport()->update();
    countAnew();
}

void PageView::countAnew() {
    m_hit = {};
    m_counts.clear();
    m_counting.stop();
    if (m_document && !m_words.isEmpty())
        countOn();
    Q_EMIT hitsChanged();
}

void PageView::countOn() {
    QElapsedTimer since;
    since.start();
    while (std::ssize(m_counts) < m_document->pageCount()) {
        if (since.elapsed() > CountingMilliseconds)
            return m_counting.start(0);
        m_counts.push_back(hitsOn(static_cast<int>(m_counts.size())));
    }
    Q_EMIT hitsChanged();
}

int PageView::hitsOn(int page) const {
    if (page < std::ssize(m_counts))
        return m_counts[static_cast<std::size_t>(page)];
    const auto kept = m_pages.find(page);
    return kept != m_pages.end() ? static_cast<int>(kept->second.hits.size())
                                 : m_document->page(page).count(m_words);
}

std::optional<PageView::Hits> PageView::hits() const {
    if (!m_document || m_words.isEmpty() || std::ssize(m_counts) < m_document->pageCount())
        return {};
    const auto before = m_counts.begin() + std::max(m_hit.page, 0);
    return Hits{m_hit.page < 0 ? 0 : std::accumulate(m_counts.begin(), before, m_hit.index + 1),
                std::accumulate(m_counts.begin(), m_counts.end(), 0)};
}

bool PageView::findNext(bool backward) {
    if (!m_document || m_words.isEmpty())
        return false;
    const int pages = m_document->pageCount();
    const bool first = m_hit.page < 0;
    const int from = first ? m_current : m_hit.page;
    // One page more than there are: the last is the first again, for the hits on its other side.
    for (int step = 0; step <= pages; ++step) {
        const int page = ((from + (backward ? -step : step)) % pages + pages) % pages;
        const int count = hitsOn(page);
        if (count == 0)
            continue;
        if (first || step > 0)
            return goTo({page, backward ? count - 1 : 0}), true;
        if (backward ? m_hit.index > 0 : m_hit.index + 1 < count)
            return goTo({page, backward ? m_hit.index - 1 : m_hit.index + 1}), true;
    }
    m_counts.assign(static_cast<std::size_t>(pages), 0);
    Q_EMIT hitsChanged();
    return false;
}

void PageView::goTo(const Hit &hit) {
    m_hit = hit;
    const QRectF place = layOut(hit.page).hits[static_cast<std::size_t>(hit.index)].front();
    if (!m_continuous)
        showPage(hit.page);
    const int top = pageTop(hit.page) + static_cast<int>(place.top() * scale());
    const int shown = verticalScrollBar()->value();
    if (top < shown || top + 40 > shown + viewport()->height())
        scrollTo(top - viewport()->height() / 3);
    const int left = static_cast<int>(place.left() * scale());
    const int from = horizontalScrollBar()->value();
    if (left < from || left + 40 > from + viewport()->width())
        horizontalScrollBar()->setValue(left - viewport()->width() / 3);
    if (m_continuous && m_current != hit.page) {
        m_current = hit.page;
        Q_EMIT currentPageChanged(m_current);
    }
    layOutShown();
    Q_EMIT hitsChanged();
}

} // namespace zel::viewer
