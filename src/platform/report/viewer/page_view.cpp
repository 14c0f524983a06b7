// Pages, zoom and keys; the words that are found stand in page_view_find.cpp.

#include "platform/report/viewer/page_view.h"

#include "platform/report/viewer/viewer_keys.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>
#include <cmath>
#include <utility>

namespace zel::viewer {

namespace {

constexpr int Gap = 14; ///< pixels around a page
constexpr std::size_t KeptPages = 16;
constexpr double LeastZoom = 0.1;
constexpr double MostZoom = 6;
constexpr double MostOpeningZoom = 1.25;

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
    m_counting.setSingleShot(true);
    connect(&m_counting, &QTimer::timeout, this, &PageView::countOn);
}

void PageView::setDocument(report::DocumentPtr document, int page) {
    m_document = std::move(document);
    m_pages.clear();
    m_current = 0;
    m_opening = !chosen;
    if (chosen) {
        m_fit = chosen->fit;
        m_zoom = chosen->factor;
    } else {
        m_fit = m_document->pageCount() == 1 ? Fit::Page : Fit::Width;
    }
    arrange();
    showPage(page);
    Q_EMIT currentPageChanged(m_current);
    countAnew();
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

double PageView::fittingZoom() const {
    const QSizeF paper = m_document->pageSize() * logicalDpiX() / 25.4;
    // As wide as it is with a scroll bar, so that the bar's coming does not change the fit.
    const double width = maximumViewportSize().width() - verticalScrollBar()->sizeHint().width() - 2 * Gap;
    const double height = maximumViewportSize().height() - 2 * Gap;
    if (width <= 0 || height <= 0)
        return m_zoom;
    double zoom = width / paper.width();
    if (m_fit == Fit::Page)
        zoom = std::min(zoom, height / paper.height());
    else if (m_opening)
        zoom = std::min(zoom, MostOpeningZoom);
    return std::clamp(zoom, LeastZoom, MostZoom);
}

void PageView::arrange(double place) {
    if (m_arranging)
        return;
    m_arranging = true;
    if (m_fit != Fit::Free)
        m_zoom = fittingZoom();
    const QSize page = pagePixels();
    const int pages = m_continuous ? m_document->pageCount() : 1;
    const QSize view = viewport()->size();
    verticalScrollBar()->setRange(0, std::max(0, Gap + pages * (page.height() + Gap) - view.height()));
    verticalScrollBar()->setPageStep(view.height());
    horizontalScrollBar()->setRange(0, std::max(0, page.width() + 2 * Gap - view.width()));
    horizontalScrollBar()->setPageStep(view.width());
    verticalScrollBar()->setValue(pageTop(m_current) + static_cast<int>(std::lround(place * page.height())));
    // The current page may stand low among many small ones: larger, it must not be pushed out of the view.
    if (m_continuous && pageInView() != m_current)
        verticalScrollBar()->setValue(pageTop(m_current) - Gap);
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
    scrollTo(pageTop(page) - Gap);
    layOutShown();
    if (changed)
        Q_EMIT currentPageChanged(page);
}

/// The page that was gone to is the current one, though the view may not begin with it.
void PageView::scrollTo(int top) {
    const bool arranging = std::exchange(m_arranging, true);
    verticalScrollBar()->setValue(top);
    m_arranging = arranging;
}

int PageView::pageInView() const {
    const int top = verticalScrollBar()->value();
    const int height = pagePixels().height();
    const int step = height + Gap;
    const int firstWhole = (top + step - 1 - Gap) / step;
    const int lastWhole = (top + viewport()->height() - step) / step;
    const int page = firstWhole <= lastWhole ? std::clamp(m_current, firstWhole, lastWhole)
                                             : (top + viewport()->height() / 3) / step;
    return std::clamp(page, 0, m_document->pageCount() - 1);
}

void PageView::open(const Zoom &zoom) {
    if (!m_document)
        return;
    const double place = placeInPage();
    chosen = zoom;
    m_opening = false;
    m_fit = zoom.fit;
    m_zoom = zoom.factor;
    arrange(place);
}

void PageView::setFit(Fit fit) {
    open({fit, m_zoom});
}

void PageView::setZoom(double zoom) {
    open({Fit::Free, std::clamp(zoom, LeastZoom, MostZoom)});
}

void PageView::setContinuous(bool continuous) {
    const int page = m_current;
    m_continuous = continuous;
    arrange();
    showPage(page);
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
            const bool current = m_hit.page == page && m_hit.index == static_cast<int>(i);
            for (const QRectF &part : shown->second.hits[i])
                painter.fillRect(QRectF(part.topLeft() * scale(), part.size() * scale()),
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
    const int page = pageInView();
    if (page == m_current)
        return;
    m_current = page;
    Q_EMIT currentPageChanged(page);
}

void PageView::keyPressEvent(QKeyEvent *event) {
    if (!m_document)
        return QAbstractScrollArea::keyPressEvent(event);
    QScrollBar *bar = verticalScrollBar();
    if (keys::FirstPage.is(event))
        showPage(0);
    else if (keys::LastPage.is(event))
        showPage(m_document->pageCount() - 1);
    else if (keys::ScrollUp.is(event))
        bar->value() == bar->minimum() ? turn(-1) : bar->triggerAction(QScrollBar::SliderPageStepSub);
    else if (keys::ScrollDown.is(event))
        bar->value() == bar->maximum() ? turn(1) : bar->triggerAction(QScrollBar::SliderPageStepAdd);
    else
        QAbstractScrollArea::keyPressEvent(event);
}

void PageView::wheelEvent(QWheelEvent *event) {
    if (!event->modifiers().testFlag(Qt::ControlModifier))
        return QAbstractScrollArea::wheelEvent(event);
    setZoom(event->angleDelta().y() > 0 ? m_zoom * 1.1 : m_zoom / 1.1);
    event->accept();
}

} // namespace zel::viewer
