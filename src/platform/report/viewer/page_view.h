#pragma once

#include "platform/report/output/paint.h"
#include "platform/report/pages/document.h"

#include <QAbstractScrollArea>

#include <map>

namespace zel::viewer {

/// Pages one below the other, or one at a time, on a grey ground. Pages are laid out when they come into
/// view, never in a paint event; a few are kept.
class PageView : public QAbstractScrollArea {
    Q_OBJECT
public:
    enum class Fit { Free, Width, Page };

    explicit PageView(QWidget *parent = nullptr);

    /// Shows the document from its first page on, or from `page`.
    void setDocument(report::DocumentPtr document, int page = 0);
    [[nodiscard]] const report::DocumentPtr &document() const { return m_document; }
    [[nodiscard]] int currentPage() const { return m_current; } ///< from 0
    void showPage(int page);

    [[nodiscard]] Fit fit() const { return m_fit; }
    void setFit(Fit fit);
    /// 1 is the size on paper.
    [[nodiscard]] double zoom() const { return m_zoom; }
    void setZoom(double zoom);
    [[nodiscard]] bool isContinuous() const { return m_continuous; }
    void setContinuous(bool continuous);

    /// Marks every place of the words on the pages in view.
    void mark(const QString &words);
    /// Goes to the next place of the marked words, or the one before; round the document's end. Whether there
    /// is one.
    bool findNext(bool backward);

Q_SIGNALS:
    void currentPageChanged(int page);
    void zoomChanged(double zoom);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;
    void keyPressEvent(QKeyEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    struct Shown {
        report::Page page;
        std::vector<QRectF> hits;
    };
    struct Hit {
        int page = -1;
        std::size_t index = 0;
    };

    [[nodiscard]] double scale() const; ///< pixels to the millimetre
    [[nodiscard]] QSize pagePixels() const;
    [[nodiscard]] int pageTop(int page) const; ///< in the content
    [[nodiscard]] int firstInView() const;
    [[nodiscard]] int lastInView() const;
    [[nodiscard]] QPoint corner(int page) const; ///< in the viewport
    /// How far the view's top lies below the current page's, in pages; negative above it.
    [[nodiscard]] double placeInPage() const;
    void arrange();
    void arrange(double place);
    void layOutShown();
    const Shown &layOut(int page);
    void goTo(const Hit &hit);
    void turn(int pages);

    report::DocumentPtr m_document;
    std::map<int, Shown> m_pages;
    report::PagePainter m_painter;
    QString m_words;
    Hit m_hit;
    int m_current = 0;
    double m_zoom = 1;
    Fit m_fit = Fit::Width;
    bool m_continuous = true;
    bool m_arranging = false;
};

} // namespace zel::viewer
