#include "platform/report/definition/definition_reader.h"

#include <QRegularExpression>

#include <algorithm>

namespace zel::report {

bool isIdentifier(const QString &name) {
    static const QRegularExpression shape(QStringLiteral("^[A-Za-z_][A-Za-z0-9_]*$"));
    return shape.match(name).hasMatch();
}

const std::map<QString, Kind> &kinds() {
    static const std::map<QString, Kind> names{{QStringLiteral("number"), Kind::Number},
                                               {QStringLiteral("text"), Kind::Text},
                                               {QStringLiteral("date"), Kind::Date}};
    return names;
}

void DefinitionReader::readPage(const XmlElement &element) {
    Attributes attributes(m_file, element);
    refuseChildren(element);
    if (m_outer)
        m_file.refuse(element.at, QStringLiteral("A sub-report has no page of its own."));
    QSizeF &paper = m_definition->pageSize;
    paper = attributes.choice<QSizeF>(QStringLiteral("size"),
                                      {{QStringLiteral("A4"), QSizeF(210, 297)},
                                       {QStringLiteral("A5"), QSizeF(148, 210)},
                                       {QStringLiteral("Letter"), QSizeF(215.9, 279.4)},
                                       {QStringLiteral("Legal"), QSizeF(215.9, 355.6)}},
                                      paper);
    paper = {attributes.number(QStringLiteral("width"), paper.width()),
             attributes.number(QStringLiteral("height"), paper.height())};
    const bool landscape = attributes.choice<bool>(
        QStringLiteral("orientation"),
        {{QStringLiteral("portrait"), false}, {QStringLiteral("landscape"), true}}, false);
    if (landscape)
        paper.transpose();
    QMarginsF &margins = m_definition->margins;
    margins.setLeft(attributes.number(QStringLiteral("left"), margins.left()));
    margins.setTop(attributes.number(QStringLiteral("top"), margins.top()));
    margins.setRight(attributes.number(QStringLiteral("right"), margins.right()));
    margins.setBottom(attributes.number(QStringLiteral("bottom"), margins.bottom()));
    m_definition->drawn = attributes.number(QStringLiteral("drawn"), m_definition->drawn);
    attributes.done();
    if (m_definition->bodyWidth() < 10 || m_definition->bodyHeight() < 10)
        m_file.refuse(element.at, QStringLiteral("The margins leave no room on the page."));
}

void DefinitionReader::readStyle(const XmlElement &element) {
    Attributes attributes(m_file, element);
    refuseChildren(element);
    const XmlAttribute &name = attributes.required(QStringLiteral("name"));
    auto &styles = m_definition->styles;
    const auto known = [&](const QString &wanted) {
        return std::ranges::find(styles, wanted, &StyleDefinition::name);
    };
    const XmlAttribute *like = attributes.find(QStringLiteral("like"));
    if (like && known(like->value) == styles.end())
        m_file.refuse(like->valueAt, QStringLiteral("There is no style %1 above.").arg(like->value));
    StyleDefinition style = like ? *known(like->value) : styles.front();
    Font font = *style.font;
    font.family = attributes.text(QStringLiteral("font"), font.family);
    font.points = attributes.number(QStringLiteral("size"), font.points);
    font.bold = attributes.flag(QStringLiteral("bold"), font.bold);
    font.italic = attributes.flag(QStringLiteral("italic"), font.italic);
    font.color = attributes.color(QStringLiteral("color"), font.color);
    style.name = name.value;
    style.font = std::make_shared<Font>(font);
    style.align = attributes.choice<Align>(QStringLiteral("align"),
                                           {{QStringLiteral("left"), Align::Left},
                                            {QStringLiteral("center"), Align::Center},
                                            {QStringLiteral("right"), Align::Right}},
                                           style.align);
    style.picture = attributes.text(QStringLiteral("picture"), style.picture);
    style.dateFormat = attributes.text(QStringLiteral("date"), style.dateFormat);
    if (const XmlAttribute *zero = attributes.find(QStringLiteral("zero")))
        style.zero = zero->value;
    attributes.done();
    const bool again = known(name.value) != styles.end();
    if (again && (name.value != styles.front().name || styles.size() > 1))
        m_file.refuse(name.valueAt, QStringLiteral("The style %1 is there already.").arg(name.value));
    if (again)
        styles.front() = std::move(style);
    else
        styles.push_back(std::move(style));
}

void DefinitionReader::readTable(const XmlElement &element) {
    Attributes attributes(m_file, element);
    refuseChildren(element);
    TableDefinition table;
    table.name = freshName(attributes);
    table.source = attributes.text(QStringLiteral("source"), table.name);
    if (!isIdentifier(table.source))
        m_file.refuse(element.at, QStringLiteral("\"%1\" is no table.").arg(table.source));
    const Join join = attributes.choice<Join>(QStringLiteral("join"),
                                              {{QStringLiteral("inner"), Join::Inner},
                                               {QStringLiteral("left"), Join::Left},
                                               {QStringLiteral("sum"), Join::Sum}},
                                              Join::None);
    const XmlAttribute *on = attributes.find(QStringLiteral("on"));
    const XmlAttribute *where = attributes.find(QStringLiteral("where"));
    attributes.done();
    if ((on != nullptr) != (join != Join::None))
        m_file.refuse(element.at, QStringLiteral("join and on belong together."));
    if (m_definition->tables.empty() && (on || where))
        m_file.refuse(element.at, QStringLiteral("The first table has no join and no where of its own."));
    if (where && on)
        m_file.refuse(where->at, QStringLiteral("Only a table joined to nothing has a where of its own."));
    readColumns(table, element);
    m_definition->tables.push_back(std::move(table));
    if (on)
        m_definition->tables.back().on = pushedCondition(on->value, on->valueAt);
    m_definition->tables.back().join = join;
    if (where)
        m_definition->tables.back().where = pushedCondition(where->value, where->valueAt);
}

void DefinitionReader::readColumns(TableDefinition &table, const XmlElement &element) {
    static const QRegularExpression shape(QStringLiteral("\\s*([^\\s,]+)[ \\t]+([^\\s,]+)\\s*(,|$)"));
    for (qsizetype at = 0; at < element.text.size();) {
        if (element.text.mid(at).trimmed().isEmpty())
            break;
        const auto match = shape.match(element.text, at, QRegularExpression::NormalMatch,
                                       QRegularExpression::AnchorAtOffsetMatchOption);
        if (!match.hasMatch())
            m_file.refuse(m_file.placeIn(element.textAt, at),
                          QStringLiteral("Fields are written as: name kind, name kind."));
        const QString name = match.captured(1);
        const auto kind = kinds().find(match.captured(2));
        if (!isIdentifier(name))
            m_file.refuse(m_file.placeIn(element.textAt, match.capturedStart(1)),
                          QStringLiteral("\"%1\" is no name.").arg(name));
        if (kind == kinds().end())
            m_file.refuse(
                m_file.placeIn(element.textAt, match.capturedStart(2)),
                QStringLiteral("\"%1\" is no kind; kinds are number, text and date.").arg(match.captured(2)));
        table.columns.push_back({name, kind->second});
        at = match.capturedEnd();
    }
}

} // namespace zel::report
