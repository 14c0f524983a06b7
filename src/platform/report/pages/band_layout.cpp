#include "platform/report/pages/band_layout.h"

#include <algorithm>
#include <cmath>

namespace zel::report {

namespace {

double shiftAt(double y, const auto &growths) {
    double shift = 0;
    for (const auto &growth : growths) {
        if (y >= growth.below - 0.01)
            shift = std::max(shift, growth.by);
    }
    return shift;
}

double alignedX(const FieldDefinition &field, Align align, double width) {
    if (align == Align::Left)
        return field.x;
    return field.x + (field.width - width) / (align == Align::Center ? 2 : 1);
}

/// The font itself, or a smaller one, down to half its size, in which the text fits; in steps, so that few
/// sizes are made.
FontPtr fittingFont(const QString &text, double width, const FontPtr &font, const TextMetrics &metrics) {
    const double wanted = metrics.width(text, *font);
    if (wanted <= width)
        return font;
    constexpr double step = 0.25;
    Font smaller = *font;
    smaller.points = std::floor(font->points * std::max(width / wanted, 0.5) / step) * step;
    return std::make_shared<Font>(smaller);
}

bool isShown(const ExpressionPtr &when, const Scene &scene) {
    return !when || holds(when, scene);
}

} // namespace

void append(Page &page, Page part, double x, double y) {
    for (TextItem &item : part.texts) {
        item.x += x;
        item.baseline += y;
        page.texts.push_back(std::move(item));
    }
    for (LineItem item : part.lines) {
        item.x1 += x;
        item.x2 += x;
        item.y1 += y;
        item.y2 += y;
        page.lines.push_back(item);
    }
    for (BoxItem item : part.boxes) {
        item.rect.translate(x, y);
        page.boxes.push_back(item);
    }
    for (ImageItem &item : part.images) {
        item.rect.translate(x, y);
        page.images.push_back(std::move(item));
    }
}

QString BandLayout::textOf(const FieldDefinition &field, const StyleDefinition &style,
                           const PassScene &scene) const {
    if (!field.expression)
        return field.literal;
    if (field.expression->op == Op::Column && field.expression->kind == Kind::Text)
        return scene.columnText(field.expression->table, field.expression->index);
    const Value value = evaluate(*field.expression, scene);
    if (style.zero && field.expression->kind == Kind::Number && value.decimal() == Decimal())
        return *style.zero;
    return shown(value, field.expression->kind, style.picture, style.dateFormat);
}

double BandLayout::subreport(const SubreportPlace &place, const Pass &outer, const PassScene &scene,
                             Page *page) const {
    const Run &run = outer.run().subreport(place.subreport);
    const Pass pass(run, outer.run().linkedRows(place.subreport, scene.runRow()), outer.copy());
    const Flow flow(pass);
    double height = 0;
    for (Cursor cursor = flow.begin(); const BandDefinition *band = flow.band(cursor); flow.advance(cursor)) {
        if (!isShown(band->when, PassScene(pass, cursor, m_pageNumber, m_pageCount)))
            continue;
        Page part;
        const double bandHeight = layOut(*band, pass, cursor, page ? &part : nullptr);
        if (page)
            append(*page, std::move(part), place.x, place.y + height);
        height += bandHeight;
    }
    return height;
}

std::vector<BandLayout::Growth> BandLayout::growths(const BandDefinition &band, const Pass &pass,
                                                    const PassScene &scene) const {
    std::vector<Growth> found;
    const Definition &definition = pass.run().definition();
    for (std::size_t i = 0; i < band.items.size(); ++i) {
        const ItemDefinition &item = band.items[i];
        if (const auto *field = std::get_if<FieldDefinition>(&item); field && field->grow) {
            const StyleDefinition &style = definition.styles[static_cast<std::size_t>(field->style)];
            if (!isShown(field->when, scene))
                continue;
            const QString text = textOf(*field, style, scene);
            if (field->follow && (text.isEmpty() || behind(band, i, text, definition, scene)))
                continue;
            const double line = m_metrics.lineHeight(*style.font);
            if (!field->follow && !text.contains(QLatin1Char('\n')) &&
                m_metrics.width(text, *style.font) <= field->width)
                continue;
            const auto lines = wrapped(text, field->width, *style.font, m_metrics).size();
            // A line of its own is no part of the band's height.
            const auto more = static_cast<double>(field->follow ? lines : lines - 1) * line;
            if (more > 0)
                found.push_back({field->y + (field->follow ? 0.02 : line), more + shiftAt(field->y, found)});
        } else if (const auto *place = std::get_if<SubreportPlace>(&item)) {
            if (isShown(place->when, scene))
                found.push_back(
                    {place->y + 0.02, subreport(*place, pass, scene, nullptr) + shiftAt(place->y, found)});
        }
    }
    return found;
}

std::optional<QPointF> BandLayout::behind(const BandDefinition &band, std::size_t follower,
                                          const QString &text, const Definition &definition,
                                          const PassScene &scene) const {
    const auto &leader = std::get<FieldDefinition>(band.items[follower - 1]);
    const auto &field = std::get<FieldDefinition>(band.items[follower]);
    const Font &font = *definition.styles[static_cast<std::size_t>(field.style)].font;
    const StyleDefinition &style = definition.styles[static_cast<std::size_t>(leader.style)];
    const QString before = isShown(leader.when, scene) ? textOf(leader, style, scene) : QString();
    QStringList lines(before);
    if (leader.grow && !before.isEmpty())
        lines = wrapped(before, leader.width, *style.font, m_metrics);
    const double last = m_metrics.width(lines.back(), *style.font);
    const double gap = last > 0 ? m_metrics.width(QStringLiteral("mm"), font) : 0;
    if (last + gap + m_metrics.width(text, font) > leader.width || text.contains(QLatin1Char('\n')))
        return std::nullopt;
    const double down = static_cast<double>(lines.size() - 1) * m_metrics.lineHeight(*style.font);
    return QPointF(leader.x + last + gap, leader.y + down + m_metrics.ascent(*style.font));
}

void BandLayout::placeBehind(const BandDefinition &band, std::size_t follower,
                             const std::vector<Growth> &growths, const Definition &definition,
                             const PassScene &scene, Page &page) const {
    const auto &field = std::get<FieldDefinition>(band.items[follower]);
    const StyleDefinition &style = definition.styles[static_cast<std::size_t>(field.style)];
    const QString text = textOf(field, style, scene);
    const auto at = behind(band, follower, text, definition, scene);
    if (!at)
        return place(field, growths, definition, scene, page);
    const auto &leader = std::get<FieldDefinition>(band.items[follower - 1]);
    if (!text.isEmpty())
        page.texts.push_back({at->x(), at->y() + shiftAt(leader.y, growths),
                              m_metrics.width(text, *style.font), text, style.font});
}

void BandLayout::place(const FieldDefinition &field, const std::vector<Growth> &growths,
                       const Definition &definition, const PassScene &scene, Page &page) const {
    const StyleDefinition &style = definition.styles[static_cast<std::size_t>(field.style)];
    QString text = textOf(field, style, scene);
    if (text.isEmpty())
        return;
    double baseline = field.y + shiftAt(field.y, growths) + m_metrics.ascent(*style.font);
    FontPtr font = style.font;
    // The lines of a wrapped text have its direction, whatever letters they begin with.
    const Qt::LayoutDirection direction = text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight;
    const auto add = [&](const QString &line) {
        const double width = m_metrics.width(line, *font);
        if (!line.isEmpty())
            page.texts.push_back(
                {alignedX(field, style.align, width), baseline, width, line, font, direction});
        baseline += m_metrics.lineHeight(*font);
    };
    if (field.grow) {
        for (const QString &line : wrapped(text, field.width, *font, m_metrics))
            add(line);
        return;
    }
    text.replace(QLatin1Char('\n'), QLatin1Char(' '));
    const bool number = field.expression && field.expression->kind == Kind::Number;
    if (number || field.shrink)
        font = fittingFont(text, field.width, font, m_metrics);
    if (!number || m_metrics.width(text, *font) <= field.width)
        return add(fitted(text, field.width, *font, m_metrics));
    // A number that was cut would be a wrong number.
    const double mark = m_metrics.width(QStringLiteral("#"), *font);
    add(QString(std::max(1, static_cast<int>(field.width / mark)), QLatin1Char('#')));
}

BandLayout::Extent BandLayout::extent(const BandDefinition &band, const Pass &pass,
                                      const Cursor &cursor) const {
    if (band.fixed && !band.when)
        return {true, band.height};
    const auto slot = cursor.band + static_cast<std::size_t>(cursor.row) * 4;
    Known &known = m_known[slot % m_known.size()];
    if (known.band != &band || known.row != cursor.row || cursor.continued) {
        const bool printed = isShown(band.when, PassScene(pass, cursor, m_pageNumber, m_pageCount));
        const Extent extent{printed, printed ? layOut(band, pass, cursor, nullptr) : 0};
        if (cursor.continued)
            return extent;
        known = {&band, cursor.row, extent};
    }
    return known.extent;
}

double BandLayout::layOut(const BandDefinition &band, const Pass &pass, const Cursor &cursor,
                          Page *page) const {
    if (!page && band.fixed)
        return band.height;
    const PassScene scene(pass, cursor, m_pageNumber, m_pageCount);
    const std::vector<Growth> grown = band.fixed ? std::vector<Growth>() : growths(band, pass, scene);
    double growth = 0;
    for (const Growth &each : grown)
        growth = std::max(growth, each.by);
    const double height = band.height + growth;
    if (!page)
        return height;
    for (std::size_t i = 0; i < band.items.size(); ++i) {
        const ItemDefinition &item = band.items[i];
        if (const auto *field = std::get_if<FieldDefinition>(&item)) {
            if (!isShown(field->when, scene))
                continue;
            if (field->follow)
                placeBehind(band, i, grown, pass.run().definition(), scene, *page);
            else
                place(*field, grown, pass.run().definition(), scene, *page);
        } else if (const auto *line = std::get_if<LineDefinition>(&item)) {
            if (!isShown(line->when, scene))
                continue;
            const double y2 = line->toFoot ? height : line->y2 + shiftAt(line->y2, grown);
            page->lines.push_back(
                {line->x1, line->y1 + shiftAt(line->y1, grown), line->x2, y2, line->thickness, line->color});
        } else if (const auto *box = std::get_if<BoxDefinition>(&item)) {
            if (isShown(box->when, scene))
                page->boxes.push_back({box->rect.translated(0, shiftAt(box->rect.top(), grown)),
                                       box->thickness, box->color, box->fill});
        } else if (const auto *image = std::get_if<ImageDefinition>(&item)) {
            page->images.push_back(
                {image->rect.translated(0, shiftAt(image->rect.top(), grown)), image->image});
        } else if (const auto *inner = std::get_if<SubreportPlace>(&item)) {
            SubreportPlace moved = *inner;
            moved.y += shiftAt(inner->y, grown);
            if (isShown(inner->when, scene))
                subreport(moved, pass, scene, page);
        }
    }
    return height;
}

} // namespace zel::report
