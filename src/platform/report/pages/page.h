#pragma once

#include "platform/report/definition/font.h"

#include <QColor>
#include <QImage>
#include <QRectF>
#include <QSizeF>
#include <QString>

#include <memory>
#include <vector>

namespace zel::report {

/// Placed things of a page. All lengths are millimetres from the page's upper left corner.

/// One line of text, already cut, wrapped and aligned: `x` is where its first letter stands.
struct TextItem {
    double x = 0;
    double baseline = 0;
    double width = 0;
    QString text;
    FontPtr font;
    /// Of the paragraph that the line belongs to; LayoutDirectionAuto: by the line's own first letter that
    /// has one.
    Qt::LayoutDirection direction = Qt::LayoutDirectionAuto;
};

struct LineItem {
    double x1 = 0, y1 = 0, x2 = 0, y2 = 0;
    double thickness = 0.15;
    QColor color = Qt::black;
};

struct BoxItem {
    QRectF rect;
    double thickness = 0.15; ///< 0: no frame
    QColor frame = Qt::black;
    QColor fill = Qt::transparent;
};

struct ImageItem {
    QRectF rect;
    std::shared_ptr<const QImage> image;
};

/// A laid-out page: plain values, nothing more to decide when it is painted.
struct Page {
    QSizeF size{210, 297};
    std::vector<BoxItem> boxes;
    std::vector<ImageItem> images;
    std::vector<LineItem> lines;
    std::vector<TextItem> texts;

    /// A printed line a line; the texts of a line from left to right, joined by one blank.
    [[nodiscard]] QString plainText() const;
    /// A found text: one place, or several from left to right when a change of direction parts it.
    using Hit = std::vector<QRectF>;
    /// Where `words` stand on the page, case ignored, in reading order; a hit lies within one text item.
    [[nodiscard]] std::vector<Hit> find(const QString &words) const;
    /// How many hits there are.
    [[nodiscard]] int count(const QString &words) const;
};

} // namespace zel::report
