#pragma once

#include "platform/report/output/paint.h"
#include "platform/report/pages/document.h"

#include <QAbstractScrollArea>
#include <QTimer>

#include <map>
#include <optional>

namespace zel::viewer {

/// Pages one below the other, or one at a time, on a grey ground. Pages are laid out when they come into
/// view, never in a paint event; a few are kept.
class PageView : public QAbstractScrollArea {
    Q_OBJECT
public:
    enum class Fit { Free, Width, Page };
    /// 1 is the size on paper.
    struct Zoom {
        Fit fit = Fit::Free;
        double factor = 1;
    };
    /// What the reader chose last, with which documents open for the rest of the run. Until then a document
    /// of one page opens as a whole, any other as wide as the view but not larger than 125%.
    inline static std::optional<Zoom> chosen;

    explicit PageView(QWidget *parent = nullptr);

    /// Shows the document from its first page on, or from `page`.
    void setDocument(report::DocumentPtr document, int page = 0);
    [[nodiscard]] const report::DocumentPtr &document() const { return m_document; }
    /// From 0: the page that was gone to last as long as it stands whole in the view; else the nearest that
    /// does, or the one in the upper third where none has room.
    [[nodiscard]] int currentPage() const { return m_current; }
    void showPage(int page);

    [[nodiscard]] Fit fit() const { return m_fit; }
    void setFit(Fit fit);
    [[nodiscard]] double zoom() const { return m_zoom; }
    void setZoom(double zoom);
    [[nodiscard]] bool isContinuous() const { return m_continuous; }
    void setContinuous(bool continuous);

    /// Marks every place of the words on the pages in view.
    void mark(const QString &words);
    /// Goes to the next place of the marked words, or the one before; round the document's end. Whether there
    /// is one.
    bool findNext(bool backward);
    struct Hits {
        int current = 0; ///< from 1; 0 before the first findNext()
        int all = 0;
    };
    /// The places of the marked words; nullopt without words, and until all pages are counted, which goes on
    /// beside other work.
    [[nodiscard]] std::optional<Hits> hits() const;

Q_SIGNALS:
    void currentPageChanged(int page);
    void zoomChanged(double zoom);
    void hitsChanged();

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;
    void keyPressEvent(QKeyEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    struct Shown {
        report::Page page;
        std::vector<report::Page::Hit> hits;
    };
    struct Hit {
        int page = -1;
        int index = 0;
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
    [[nodiscard]] double fittingZoom() const;
    void open(const Zoom &zoom);
    void scrollTo(int top);
    [[nodiscard]] int pageInView() const;
    void layOutShown();
    const Shown &layOut(int page);
    void countAnew();
    void countOn();
    [[nodiscard]] int hitsOn(int page) const;
    void goTo(const Hit &hit);
    void turn(int pages);

    report::DocumentPtr m_document;
    std::map<int, Shown> m_pages;
    report::PagePainter m_painter;
    QString m_words;
    Hit m_hit;
    std::vector<int> m_counts; ///< of hits, of the pages that are counted
    QTimer m_counting;
    int m_current = 0;
    double m_zoom = 1;
    Fit m_fit = Fit::Width;
    bool m_opening = true; ///< no zoom was chosen yet
    bool m_continuous = true;
    bool m_arranging = false;
};

} // namespace zel::viewer
