#include "platform/report/viewer/page_view.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>
#include <cmath>

namespace zel::viewer {

namespace {

constexpr int Gap = 14; ///< pixels around a page
constexpr std::size_t KeptPages = 16;
constexpr double LeastZoom = 0.1;
constexpr double MostZoom = 6;

} // namespace

PageView::PageView(QWidget *parent) : QAbstractScrollArea(parent) {
    setObjectName(QStringLiteral("pages"));
    setAccessibleName(tr("Report pages"));
    setFocusPolicy(Qt::StrongFocus);
    setFrameShape(QFrame::NoFrame);
    viewport()->setBackgroundRole(QPalette::Mid);
    viewport()->setAutoFillBackground(true);
    verticalScrollBar()->setSingleStep(40);
    horizontalScrollBar()->setSingleStep(40);
}

void PageView::setDocument(report::DocumentPtr document, int page) {
    m_document = std::move(document);
    m_pages.clear();
    m_hit = {};
    m_current = 0;
    arrange();
    showPage(page);
    Q_EMIT currentPageChanged(m_current);
}

double PageView::scale() const {
    return m_zoom * logicalDpiX() / 25.4;
}

QSize PageView::pagePixels() const {
    const QSizeF size = m_document->pageSize() * scale();
    return {static_cast<int>(std::lround(size.width())), static_cast<int>(std::lround(size.height()))};
}

int PageView::pageTop(int page) const {
    return m_continuous ? Gap + page * (pagePixels().height() + Gap) : Gap;
}

int PageView::firstInView() const {
    if (!m_continuous)
        return m_current;
    const int step = pagePixels().height() + Gap;
    return std::clamp(verticalScrollBar()->value() / step, 0, m_document->pageCount() - 1);
}

int PageView::lastInView() const {
    if (!m_continuous)
        return m_current;
    const int step = pagePixels().height() + Gap;
    return std::clamp((verticalScrollBar()->value() + viewport()->height()) / step, 0,
                      m_document->pageCount() - 1);
}

QPoint PageView::corner(int page) const {
    const int spare = viewport()->width() - pagePixels().width();
    const int x = spare > 2 * Gap ? spare / 2 : Gap - horizontalScrollBar()->value();
    return {x, pageTop(page) - verticalScrollBar()->value()};
}

/// Sizes the pages for the fit and the scroll bars for the pages, and stays at the same place of the same
/// page.
void PageView::arrange() {
    if (m_document)
        arrange(placeInPage());
}

double PageView::placeInPage() const {
    const double height = pagePixels().height();
    return height > 0 ? (verticalScrollBar()->value() - pageTop(m_current)) / height : 0;
}

void PageView::arrange(double place) {
    if (m_arranging)
        return;
    m_arranging = true;
    const QSizeF paper = m_document->pageSize() * logicalDpiX() / 25.4;
    // As wide as it is with a scroll bar, so that the bar's coming does not change the fit.
    const double width = maximumViewportSize().width() - verticalScrollBar()->sizeHint().width() - 2 * Gap;
    const double height = maximumViewportSize().height() - 2 * Gap;
    if (m_fit != Fit::Free && width > 0 && height > 0) {
        m_zoom = width / paper.width();
        if (m_fit == Fit::Page)
            m_zoom = std::min(m_zoom, height / paper.height());
        m_zoom = std::clamp(m_zoom, LeastZoom, MostZoom);
    }
    const QSize page = pagePixels();
    const int pages = m_continuous ? m_document->pageCount() : 1;
    const QSize view = viewport()->size();
    verticalScrollBar()->setRange(0, std::max(0, Gap + pages * (page.height() + Gap) - view.height()));
    verticalScrollBar()->setPageStep(view.height());
    horizontalScrollBar()->setRange(0, std::max(0, page.width() + 2 * Gap - view.width()));
    horizontalScrollBar()->setPageStep(view.width());
    // The current page may stand low among many small ones: larger, it must not be pushed out of the view.
    const double down = place * page.height();
    verticalScrollBar()->setValue(
        pageTop(m_current) + static_cast<int>(std::lround(down < -view.height() * 2 / 3.0 ? -Gap : down)));
    m_arranging = false;
    layOutShown();
    Q_EMIT zoomChanged(m_zoom);
}

const PageView::Shown &PageView::layOut(int page) {
    const auto known = m_pages.find(page);
    if (known != m_pages.end())
        return known->second;
    Shown shown{m_document->page(page), {}};
    shown.hits = shown.page.find(m_words);
    return m_pages.insert_or_assign(page, std::move(shown)).first->second;
}

void PageView::layOutShown() {
    if (!m_document)
        return;
    const int first = firstInView();
    const int last = lastInView();
    if (m_pages.size() > KeptPages)
        std::erase_if(m_pages,
                      [&](const auto &kept) { return kept.first < first - 2 || kept.first > last + 2; });
    for (int page = first; page <= last; ++page)
        static_cast<void>(layOut(page));
    viewport()->update();
}

void PageView::showPage(int page) {
    if (!m_document)
        return;
    page = std::clamp(page, 0, m_document->pageCount() - 1);
    const bool changed = page != m_current;
    m_current = page;
    verticalScrollBar()->setValue(pageTop(page) - Gap);
    layOutShown();
    if (changed)
        Q_EMIT currentPageChanged(page);
}

void PageView::setFit(Fit fit) {
    m_fit = fit;
    arrange();
}

void PageView::setZoom(double zoom) {
    if (!m_document)
        return;
    const double place = placeInPage();
    m_fit = Fit::Free;
    m_zoom = std::clamp(zoom, LeastZoom, MostZoom);
    arrange(place);
}

void PageView::setContinuous(bool continuous) {
    const int page = m_current;
    m_continuous = continuous;
    arrange();
    showPage(page);
}

void PageView::mark(const QString &words) {
    m_words = words;
    m_hit = {};
    for (auto &[page, shown] : m_pages)
        shown.hits = shown.page.find(words);
    viewport()->update();
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
        const auto kept = m_pages.find(page);
        const std::size_t count =
            kept != m_pages.end() ? kept->second.hits.size() : m_document->page(page).find(m_words).size();
        if (count == 0)
            continue;
        if (first || step > 0)
            return goTo({page, backward ? count - 1 : 0}), true;
        if (backward ? m_hit.index > 0 : m_hit.index + 1 < count)
            return goTo({page, backward ? m_hit.index - 1 : m_hit.index + 1}), true;
    }
    return false;
}

void PageView::goTo(const Hit &hit) {
    m_hit = hit;
    const QRectF place = layOut(hit.page).hits[hit.index];
    if (!m_continuous)
        showPage(hit.page);
    const int top = pageTop(hit.page) + static_cast<int>(place.top() * scale());
    const int shown = verticalScrollBar()->value();
    if (top < shown || top + 40 > shown + viewport()->height())
        verticalScrollBar()->setValue(top - viewport()->height() / 3);
    if (m_continuous && m_current != hit.page) {
        m_current = hit.page;
        Q_EMIT currentPageChanged(m_current);
    }
    layOutShown();
}

void PageView::turn(int pages) {
    showPage(m_current + pages);
}

void PageView::paintEvent(QPaintEvent *) {
    if (!m_document)
        return;
    QPainter painter(viewport());
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing |
                           QPainter::SmoothPixmapTransform);
    const QSize size = pagePixels();
    for (int page = firstInView(); page <= lastInView(); ++page) {
        const QRect place(corner(page), size);
        painter.fillRect(place.translated(3, 3), QColor(0, 0, 0, 50));
        painter.fillRect(place, Qt::white);
        const auto shown = m_pages.find(page);
        if (shown == m_pages.end())
            continue;
        painter.save();
        painter.translate(place.topLeft());
        painter.setClipRect(QRect(QPoint(0, 0), size));
        for (std::size_t i = 0; i < shown->second.hits.size(); ++i) {
            const QRectF &hit = shown->second.hits[i];
            const bool current = m_hit.page == page && m_hit.index == i;
            painter.fillRect(QRectF(hit.topLeft() * scale(), hit.size() * scale()),
                             current ? QColor(255, 170, 60) : QColor(255, 235, 130));
        }
        m_painter.paint(painter, shown->second.page, scale());
        painter.restore();
    }
}

void PageView::resizeEvent(QResizeEvent *) {
    arrange();
}

void PageView::scrollContentsBy(int, int) {
    if (!m_document || m_arranging)
        return;
    layOutShown();
    if (!m_continuous)
        return;
    const int step = pagePixels().height() + Gap;
    const int page = std::clamp((verticalScrollBar()->value() + viewport()->height() / 3) / step, 0,
                                m_document->pageCount() - 1);
    if (page == m_current)
        return;
    m_current = page;
    Q_EMIT currentPageChanged(page);
}

void PageView::keyPressEvent(QKeyEvent *event) {
    if (!m_document)
        return QAbstractScrollArea::keyPressEvent(event);
    QScrollBar *bar = verticalScrollBar();
    switch (event->key()) {
    case Qt::Key_Home:
        return showPage(0);
    case Qt::Key_End:
        return showPage(m_document->pageCount() - 1);
    case Qt::Key_PageUp:
        return bar->value() == bar->minimum() ? turn(-1) : bar->triggerAction(QScrollBar::SliderPageStepSub);
    case Qt::Key_PageDown:
        return bar->value() == bar->maximum() ? turn(1) : bar->triggerAction(QScrollBar::SliderPageStepAdd);
    default:
        QAbstractScrollArea::keyPressEvent(event);
    }
}

void PageView::wheelEvent(QWheelEvent *event) {
    if (!event->modifiers().testFlag(Qt::ControlModifier))
        return QAbstractScrollArea::wheelEvent(event);
    setZoom(event->angleDelta().y() > 0 ? m_zoom * 1.1 : m_zoom / 1.1);
    event->accept();
}

} // namespace zel::viewer
