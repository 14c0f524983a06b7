#include "platform/report/pages/page.h"

#include "platform/report/pages/typeface.h"

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

std::vector<qsizetype> placesOf(const QString &words, const QString &text) {
    std::vector<qsizetype> places;
    for (qsizetype at = 0; !words.isEmpty() && (at = text.indexOf(words, at, Qt::CaseInsensitive)) >= 0;
         at += words.size())
        places.push_back(at);
    return places;
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

std::vector<Page::Hit> Page::find(const QString &words) const {
    std::vector<Hit> hits;
    if (words.isEmpty())
        return hits;
    const Typefaces typefaces;
    for (const TextItem *item : readingOrder(texts)) {
        for (const qsizetype at : placesOf(words, item->text)) {
            const Typeface &typeface = typefaces.of(*item->font);
            Hit hit;
            for (const auto &[left, right] : typeface.spans(item->text, item->direction, at, words.size()))
                hit.emplace_back(item->x + left, item->baseline - typeface.ascent(), right - left,
                                 typeface.lineHeight());
            // What has no glyph of its own is found where its line begins.
            if (hit.empty())
                hit.emplace_back(item->x, item->baseline - typeface.ascent(), 0, typeface.lineHeight());
            hits.push_back(std::move(hit));
        }
    }
    return hits;
}

int Page::count(const QString &words) const {
    qsizetype found = 0;
    for (const TextItem &item : texts)
        found += std::ssize(placesOf(words, item.text));
    return static_cast<int>(found);
}

} // namespace zel::report
