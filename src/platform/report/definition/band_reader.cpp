#include "platform/report/definition/definition_reader.h"

#include <QFileInfo>

#include <algorithm>

namespace zel::report {

namespace {

/// Height of a line of text in a band whose height the file doesn't give: that of the usual fonts.
double usualLineHeight(const Font &font) {
    return font.points * 25.4 / 72 * 1.36;
}

} // namespace

const XmlAttribute *Attributes::find(const QString &name) {
    m_known.push_back(name);
    const auto found = std::ranges::find(m_element.attributes, name, &XmlAttribute::name);
    return found == m_element.attributes.end() ? nullptr : &*found;
}

QString Attributes::text(const QString &name, const QString &otherwise) {
    const XmlAttribute *given = find(name);
    return given ? given->value : otherwise;
}

const XmlAttribute &Attributes::required(const QString &name) {
    const XmlAttribute *given = find(name);
    if (!given)
        m_file.refuse(m_element.at, QStringLiteral("<%1> needs %2.").arg(m_element.name, name));
    return *given;
}

double Attributes::number(const QString &name, double otherwise, double whole, double scale) {
    const XmlAttribute *given = find(name);
    if (!given)
        return otherwise;
    bool good = false;
    const bool share = whole > 0 && given->value.endsWith(QLatin1Char('%'));
    const double value = given->value.chopped(share ? 1 : 0).toDouble(&good);
    if (!good || !(value >= 0 && value <= 5000))
        m_file.refuse(given->valueAt, QStringLiteral("\"%1\" is no length.").arg(given->value));
    return share ? value * whole / 100 : value * scale;
}

bool Attributes::flag(const QString &name, bool otherwise) {
    return choice<bool>(name, {{QStringLiteral("yes"), true}, {QStringLiteral("no"), false}}, otherwise);
}

QColor Attributes::color(const QString &name, const QColor &otherwise) {
    const XmlAttribute *given = find(name);
    if (!given)
        return otherwise;
    const QColor color(given->value);
    if (!color.isValid())
        m_file.refuse(given->valueAt, QStringLiteral("\"%1\" is no colour.").arg(given->value));
    return color;
}

void Attributes::done() const {
    for (const XmlAttribute &given : m_element.attributes) {
        if (std::ranges::find(m_known, given.name) == m_known.end())
            m_file.refuse(given.at, QStringLiteral("<%1> has no %2.").arg(m_element.name, given.name));
    }
}

void DefinitionReader::readBands(const XmlElement &report) {
    std::size_t group = 0;
    for (const XmlElement &child : report.children) {
        if (child.name == QStringLiteral("reportHeader"))
            m_definition->reportHeaders.push_back(readBand(child));
        else if (child.name == QStringLiteral("pageHeader"))
            m_definition->pageHeaders.push_back(readBand(child));
        else if (child.name == QStringLiteral("detail"))
            m_definition->details.push_back(readBand(child));
        else if (child.name == QStringLiteral("reportFooter"))
            m_definition->reportFooters.push_back(readBand(child));
        else if (child.name == QStringLiteral("pageFooter"))
            m_definition->pageFooters.push_back(readBand(child));
        if (child.name != QStringLiteral("group"))
            continue;
        for (const XmlElement &band : child.children) {
            auto &place = band.name == QStringLiteral("header") ? m_definition->groups[group].headers
                                                                : m_definition->groups[group].footers;
            place.push_back(readBand(band));
        }
        ++group;
    }
    double repeated = 0;
    for (const auto *bands : {&m_definition->pageHeaders, &m_definition->pageFooters}) {
        for (const BandDefinition &band : *bands) {
            repeated += band.height;
            if (!band.fixed || m_outer)
                m_file.refuse(report.at, m_outer
                                             ? QStringLiteral("A sub-report has no page headers and footers.")
                                             : QStringLiteral("Nothing grows in a page header or footer."));
        }
    }
    if (repeated > m_definition->bodyHeight() - 10)
        m_file.refuse(report.at, QStringLiteral("Page header and footer leave no room on the page."));
}

BandDefinition DefinitionReader::readBand(const XmlElement &element) {
    Attributes attributes(m_file, element);
    BandDefinition band;
    band.when = when(attributes);
    if (band.when && band.when->stage == Stage::Pages && element.name == QStringLiteral("pageHeader"))
        m_file.refuse(element.at, QStringLiteral("The room of a page header can't hang on PageCount."));
    band.newPage = attributes.flag(QStringLiteral("newPage"));
    if (element.name == QStringLiteral("reportFooter"))
        band.bottom = attributes.flag(QStringLiteral("bottom"));
    double foot = 0;
    for (const XmlElement &child : element.children) {
        if (child.name == QStringLiteral("text") || child.name == QStringLiteral("field")) {
            FieldDefinition field = readField(child);
            const Font &font = *m_definition->styles[static_cast<std::size_t>(field.style)].font;
            if (field.follow &&
                (band.items.empty() || !std::holds_alternative<FieldDefinition>(band.items.back())))
                m_file.refuse(child.at, QStringLiteral("There is no field before this one to follow."));
            if (!field.follow)
                foot = std::max(foot, field.y + usualLineHeight(font));
            band.fixed = band.fixed && !field.grow;
            band.items.emplace_back(std::move(field));
        } else if (child.name == QStringLiteral("line")) {
            LineDefinition line = readLine(child);
            foot = std::max({foot, line.y1, line.y2});
            band.items.emplace_back(std::move(line));
        } else if (child.name == QStringLiteral("box")) {
            BoxDefinition box = readBox(child);
            foot = std::max(foot, box.rect.bottom());
            band.items.emplace_back(std::move(box));
        } else if (child.name == QStringLiteral("image")) {
            ImageDefinition image = readImage(child);
            foot = std::max(foot, image.rect.bottom());
            band.items.emplace_back(std::move(image));
        } else if (child.name == QStringLiteral("place")) {
            band.items.emplace_back(readPlace(child));
            band.fixed = false;
        } else {
            m_file.refuse(child.at, QStringLiteral("A band has no <%1>.").arg(child.name));
        }
        refuseChildren(child);
    }
    band.height = attributes.number(QStringLiteral("height"), foot);
    attributes.done();
    if (band.height > m_definition->bodyHeight())
        m_file.refuse(element.at, QStringLiteral("The band is higher than the page."));
    return band;
}

double DefinitionReader::across(Attributes &attributes, const QString &name, double otherwise) const {
    const double width = m_definition->bodyWidth();
    return attributes.number(name, otherwise, width,
                             m_definition->drawn > 0 ? width / m_definition->drawn : 1);
}

FieldDefinition DefinitionReader::readField(const XmlElement &element) {
    Attributes attributes(m_file, element);
    FieldDefinition field;
    field.x = across(attributes, QStringLiteral("x"), 0);
    field.y = attributes.number(QStringLiteral("y"), 0);
    field.width = across(attributes, QStringLiteral("w"), std::max(m_definition->bodyWidth() - field.x, 0.0));
    field.follow = attributes.flag(QStringLiteral("follow"));
    field.grow = attributes.flag(QStringLiteral("grow"), field.follow);
    field.shrink = attributes.flag(QStringLiteral("shrink"));
    field.when = when(attributes);
    if (const XmlAttribute *style = attributes.find(QStringLiteral("style"))) {
        const auto found = std::ranges::find(m_definition->styles, style->value, &StyleDefinition::name);
        if (found == m_definition->styles.end())
            m_file.refuse(style->valueAt, QStringLiteral("There is no style %1.").arg(style->value));
        field.style = static_cast<int>(found - m_definition->styles.begin());
    }
    attributes.done();
    if (field.x + field.width > m_definition->bodyWidth() + 0.01)
        m_file.refuse(element.at, QStringLiteral("This reaches over the right margin."));
    if (element.name == QStringLiteral("text"))
        field.literal = element.text;
    else
        field.expression = formula(element.text, element.textAt, *m_definition);
    return field;
}

LineDefinition DefinitionReader::readLine(const XmlElement &element) {
    Attributes attributes(m_file, element);
    LineDefinition line;
    line.x1 = across(attributes, QStringLiteral("x"), 0);
    line.y1 = attributes.number(QStringLiteral("y"), 0);
    const double height = attributes.number(QStringLiteral("h"), 0);
    line.toFoot = attributes.flag(QStringLiteral("toFoot"));
    const bool upright = height > 0 || line.toFoot;
    const double width =
        across(attributes, QStringLiteral("w"), upright ? 0 : m_definition->bodyWidth() - line.x1);
    line.x2 = line.x1 + width;
    line.y2 = line.y1 + height;
    line.thickness = attributes.number(QStringLiteral("thickness"), line.thickness);
    line.color = attributes.color(QStringLiteral("color"), line.color);
    line.when = when(attributes);
    attributes.done();
    return line;
}

BoxDefinition DefinitionReader::readBox(const XmlElement &element) {
    Attributes attributes(m_file, element);
    BoxDefinition box;
    const double x = across(attributes, QStringLiteral("x"), 0);
    const double y = attributes.number(QStringLiteral("y"), 0);
    const double width = across(attributes, QStringLiteral("w"), m_definition->bodyWidth() - x);
    box.rect = QRectF(x, y, width, attributes.number(QStringLiteral("h"), 5));
    box.thickness = attributes.number(QStringLiteral("thickness"), box.thickness);
    box.color = attributes.color(QStringLiteral("color"), box.color);
    box.fill = attributes.color(QStringLiteral("fill"), box.fill);
    box.when = when(attributes);
    attributes.done();
    return box;
}

ImageDefinition DefinitionReader::readImage(const XmlElement &element) {
    Attributes attributes(m_file, element);
    ImageDefinition image;
    const XmlAttribute &source = attributes.required(QStringLiteral("src"));
    const QImage loaded(m_file.folder(source.at) + QLatin1Char('/') + source.value);
    if (loaded.isNull())
        m_file.refuse(source.valueAt, QStringLiteral("There is no image %1.").arg(source.value));
    image.image = std::make_shared<QImage>(loaded);
    m_definition->hasImages = true;
    const double width = attributes.number(QStringLiteral("w"), 20);
    image.rect =
        QRectF(across(attributes, QStringLiteral("x"), 0), attributes.number(QStringLiteral("y"), 0), width,
               attributes.number(QStringLiteral("h"), width * loaded.height() / loaded.width()));
    attributes.done();
    return image;
}

SubreportPlace DefinitionReader::readPlace(const XmlElement &element) {
    Attributes attributes(m_file, element);
    SubreportPlace place;
    const XmlAttribute &name = attributes.required(QStringLiteral("subreport"));
    place.x = across(attributes, QStringLiteral("x"), 0);
    place.y = attributes.number(QStringLiteral("y"), 0);
    place.when = when(attributes);
    attributes.done();
    place.subreport = m_definition->subreport(name.value);
    if (place.subreport < 0)
        m_file.refuse(name.valueAt, QStringLiteral("The report has no sub-report %1.").arg(name.value));
    return place;
}

} // namespace zel::report
