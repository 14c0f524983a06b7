#include "platform/report/pages/page.h"

#include "platform/report/pages/text_metrics.h"

#include <QStringList>

#include <algorithm>
#include <cmath>

namespace zel::report {

namespace {

/// Baselines nearer than this, in millimetres, are one printed line.
constexpr double SameLine = 0.4;

std::vector<const TextItem *> readingOrder(const std::vector<TextItem> &texts) {
    std::vector<const TextItem *> order;
    order.reserve(texts.size());
    for (const TextItem &item : texts)
        order.push_back(&item);
    std::ranges::stable_sort(order, {}, [](const TextItem *item) { return item->baseline; });
    for (auto line = order.begin(); line != order.end();) {
        const auto end = std::find_if(line, order.end(), [&](const TextItem *item) {
            return item->baseline > (*line)->baseline + SameLine;
        });
        std::stable_sort(line, end,
                         [](const TextItem *left, const TextItem *right) { return left->x < right->x; });
        line = end;
    }
    return order;
}

} // namespace

QString Page::plainText() const {
    QString text;
    const TextItem *before = nullptr;
    for (const TextItem *item : readingOrder(texts)) {
        if (before)
            text += std::abs(item->baseline - before->baseline) <= SameLine ? QLatin1Char(' ')
                                                                            : QLatin1Char('\n');
        text += item->text;
        before = item;
    }
    return text;
}

std::vector<QRectF> Page::find(const QString &words) const {
    std::vector<QRectF> hits;
    if (words.isEmpty())
        return hits;
    const FontMetrics metrics;
    for (const TextItem *item : readingOrder(texts)) {
        for (qsizetype at = 0; (at = item->text.indexOf(words, at, Qt::CaseInsensitive)) >= 0;
             at += words.size()) {
            const double left = metrics.width(item->text.left(at), *item->font);
            const double width = metrics.width(item->text.mid(at, words.size()), *item->font);
            const double ascent = metrics.ascent(*item->font);
            hits.emplace_back(item->x + left, item->baseline - ascent, width,
                              metrics.lineHeight(*item->font));
        }
    }
    return hits;
}

} // namespace zel::report
