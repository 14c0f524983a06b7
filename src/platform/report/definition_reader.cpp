#include "platform/report/definition_reader.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>
#include <array>

namespace zel::report {

namespace {

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

const std::map<QString, bool> &directions() {
    static const std::map<QString, bool> names{{QStringLiteral("asc"), false},
                                               {QStringLiteral("desc"), true}};
    return names;
}

} // namespace

std::shared_ptr<Definition> DefinitionReader::read(const XmlElement &report, Definition *outer) {
    static const std::map<QString, Handler> handlers{
        {QStringLiteral("page"), &DefinitionReader::readPage},
        {QStringLiteral("style"), &DefinitionReader::readStyle},
        {QStringLiteral("table"), &DefinitionReader::readTable},
        {QStringLiteral("parameter"), &DefinitionReader::readParameter},
        {QStringLiteral("where"), &DefinitionReader::readWhere},
        {QStringLiteral("formula"), &DefinitionReader::readFormula},
        {QStringLiteral("total"), &DefinitionReader::readTotal},
        {QStringLiteral("group"), &DefinitionReader::readGroup},
        {QStringLiteral("sort"), &DefinitionReader::readSort},
        {QStringLiteral("subreport"), &DefinitionReader::readSubreport},
        {QStringLiteral("link"), &DefinitionReader::readLink},
    };
    static const std::array bands{QStringLiteral("reportHeader"), QStringLiteral("pageHeader"),
                                  QStringLiteral("detail"), QStringLiteral("reportFooter"),
                                  QStringLiteral("pageFooter")};
    m_definition = std::make_shared<Definition>();
    m_outer = outer;
    Attributes attributes(m_file, report);
    m_definition->name = attributes.required(QStringLiteral("name")).value;
    m_definition->title = attributes.text(QStringLiteral("title"));
    m_definition->blankWhenEmpty = attributes.choice<bool>(
        QStringLiteral("empty"), {{QStringLiteral("blank"), true}, {QStringLiteral("bands"), false}}, false);
    attributes.done();
    if (outer) {
        m_definition->pageSize = outer->pageSize;
        m_definition->margins = outer->margins;
        m_definition->styles = outer->styles;
    } else {
        m_definition->styles.emplace_back();
        m_definition->styles.front().name = QStringLiteral("default");
        m_definition->styles.front().font = std::make_shared<Font>();
    }
    for (const XmlElement &child : report.children) {
        const auto handler = handlers.find(child.name);
        if (handler != handlers.end())
            (this->*handler->second)(child);
        else if (std::ranges::find(bands, child.name) == bands.end())
            m_file.refuse(child.at, QStringLiteral("A report has no <%1>.").arg(child.name));
    }
    if (m_definition->tables.empty())
        m_file.refuse(report.at, QStringLiteral("The report has no table."));
    readBands(report);
    return m_definition;
}

ExpressionPtr DefinitionReader::formula(const QString &text, qsizetype at, Definition &scope) {
    const std::string bytes = text.toStdString();
    try {
        return report::bind(parse(Sql::trusted(bytes)), scope);
    } catch (const FormulaError &error) {
        const QString before = QString::fromStdString(bytes.substr(0, error.offset()));
        m_file.refuse(m_file.placeIn(at, before.size()), error.description());
    }
}

ExpressionPtr DefinitionReader::condition(const QString &text, qsizetype at) {
    ExpressionPtr made = formula(text, at, *m_definition);
    if (made->kind != Kind::Boolean)
        m_file.refuse(at, QStringLiteral("This must be a condition, not %1.").arg(nameOf(made->kind)));
    return made;
}

ExpressionPtr DefinitionReader::optional(Attributes &attributes, const QString &name) {
    const XmlAttribute *given = attributes.find(name);
    return given ? formula(given->value, given->valueAt, *m_definition) : nullptr;
}

ExpressionPtr DefinitionReader::when(Attributes &attributes) {
    const XmlAttribute *given = attributes.find(QStringLiteral("when"));
    return given ? condition(given->value, given->valueAt) : nullptr;
}

void DefinitionReader::refuseChildren(const XmlElement &element) const {
    if (!element.children.empty())
        m_file.refuse(element.children.front().at,
                      QStringLiteral("<%1> has no <%2>.").arg(element.name, element.children.front().name));
}

/// A name that no formula, total, parameter, table, group or sub-report of the report has yet.
QString DefinitionReader::freshName(Attributes &attributes) {
    const XmlAttribute &given = attributes.required(QStringLiteral("name"));
    const auto taken = [&](const auto &things) {
        return std::ranges::any_of(things, [&](const auto &thing) {
            return thing.name.compare(given.value, Qt::CaseInsensitive) == 0;
        });
    };
    if (!isIdentifier(given.value))
        m_file.refuse(given.valueAt, QStringLiteral("\"%1\" is no name.").arg(given.value));
    if (taken(m_definition->formulas) || taken(m_definition->totals) || taken(m_definition->parameters) ||
        taken(m_definition->tables) || taken(m_definition->groups) || taken(m_definition->subreports))
        m_file.refuse(given.valueAt, QStringLiteral("The name %1 is taken.").arg(given.value));
    return given.value;
}

void DefinitionReader::readPage(const XmlElement &element) {
    Attributes attributes(m_file, element);
    refuseChildren(element);
    if (m_outer)
        m_file.refuse(element.at, QStringLiteral("A sub-report has no page of its own."));
    m_definition->pageSize = attributes.choice<QSizeF>(QStringLiteral("size"),
                                                       {{QStringLiteral("A4"), QSizeF(210, 297)},
                                                        {QStringLiteral("A5"), QSizeF(148, 210)},
                                                        {QStringLiteral("Letter"), QSizeF(215.9, 279.4)}},
                                                       QSizeF(210, 297));
    const bool landscape = attributes.choice<bool>(
        QStringLiteral("orientation"),
        {{QStringLiteral("portrait"), false}, {QStringLiteral("landscape"), true}}, false);
    if (landscape)
        m_definition->pageSize.transpose();
    QMarginsF &margins = m_definition->margins;
    margins.setLeft(attributes.number(QStringLiteral("left"), margins.left()));
    margins.setTop(attributes.number(QStringLiteral("top"), margins.top()));
    margins.setRight(attributes.number(QStringLiteral("right"), margins.right()));
    margins.setBottom(attributes.number(QStringLiteral("bottom"), margins.bottom()));
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
    style.blankZero = attributes.flag(QStringLiteral("blankZero"), style.blankZero);
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
    table.join = attributes.choice<Join>(
        QStringLiteral("join"),
        {{QStringLiteral("inner"), Join::Inner}, {QStringLiteral("left"), Join::Left}}, Join::None);
    const XmlAttribute *on = attributes.find(QStringLiteral("on"));
    const XmlAttribute *where = attributes.find(QStringLiteral("where"));
    attributes.done();
    if ((on != nullptr) != (table.join != Join::None))
        m_file.refuse(element.at, QStringLiteral("join and on belong together."));
    if (m_definition->tables.empty() && (on || where))
        m_file.refuse(element.at, QStringLiteral("The first table has no join and no where of its own."));
    if (where && on)
        m_file.refuse(where->at, QStringLiteral("Only a table joined to nothing has a where of its own."));
    readColumns(table, element);
    m_definition->tables.push_back(std::move(table));
    if (on)
        m_definition->tables.back().on = condition(on->value, on->valueAt);
    if (where)
        m_definition->tables.back().where = condition(where->value, where->valueAt);
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

void DefinitionReader::readParameter(const XmlElement &element) {
    Attributes attributes(m_file, element);
    refuseChildren(element);
    ParameterDefinition parameter;
    parameter.name = freshName(attributes);
    parameter.kind = attributes.choice(QStringLiteral("kind"), kinds(), Kind::Number);
    attributes.done();
    m_definition->parameters.push_back(std::move(parameter));
}

void DefinitionReader::readWhere(const XmlElement &element) {
    Attributes(m_file, element).done();
    refuseChildren(element);
    if (m_definition->where)
        m_file.refuse(element.at, QStringLiteral("The report has a <where> already."));
    m_definition->where = condition(element.text, element.textAt);
}

void DefinitionReader::readFormula(const XmlElement &element) {
    Attributes attributes(m_file, element);
    refuseChildren(element);
    FormulaDefinition made;
    made.name = freshName(attributes);
    attributes.done();
    made.text = element.text.toStdString();
    made.expression = formula(element.text, element.textAt, *m_definition);
    m_definition->formulas.push_back(std::move(made));
}

void DefinitionReader::readTotal(const XmlElement &element) {
    Attributes attributes(m_file, element);
    refuseChildren(element);
    const QString name = freshName(attributes);
    const auto groupIn = [&](const XmlAttribute *given) {
        const int group = given ? m_definition->group(given->value) : -1;
        if (given && group < 0)
            m_file.refuse(given->valueAt, QStringLiteral("There is no group %1 above.").arg(given->value));
        return group;
    };
    TotalDefinition total;
    total.name = name;
    const XmlAttribute *what = nullptr;
    for (const auto &way : {QStringLiteral("sum"), QStringLiteral("count"), QStringLiteral("running")}) {
        const XmlAttribute *given = attributes.find(way);
        if (!given)
            continue;
        if (what)
            m_file.refuse(given->at, QStringLiteral("A total is one of sum, count, running and groups."));
        what = given;
        total.of = formula(given->value, given->valueAt, *m_definition);
        total.running = way == QStringLiteral("running");
        if (way == QStringLiteral("count"))
            total.function = TotalDefinition::Function::Count;
        else if (total.of->kind != Kind::Number)
            m_file.refuse(given->valueAt, QStringLiteral("Only numbers can be summed."));
        if (total.of->stage > Stage::Row)
            m_file.refuse(given->valueAt, QStringLiteral("A total is taken over what rows hold."));
    }
    if (const XmlAttribute *groups = attributes.find(QStringLiteral("groups"))) {
        if (what)
            m_file.refuse(groups->at, QStringLiteral("A total is one of sum, count, running and groups."));
        what = groups;
        total.function = TotalDefinition::Function::Groups;
        total.counted = groupIn(groups);
    }
    if (!what)
        m_file.refuse(element.at, QStringLiteral("A total is one of sum, count, running and groups."));
    total.group = groupIn(attributes.find(QStringLiteral("over")));
    attributes.done();
    m_definition->totals.push_back(std::move(total));
}

void DefinitionReader::readGroup(const XmlElement &element) {
    Attributes attributes(m_file, element);
    GroupDefinition group;
    group.name = freshName(attributes);
    const XmlAttribute &by = attributes.required(QStringLiteral("by"));
    group.by = formula(by.value, by.valueAt, *m_definition);
    if (group.by->stage > Stage::Row)
        m_file.refuse(by.valueAt, QStringLiteral("Rows can be grouped only by what they hold."));
    group.title = optional(attributes, QStringLiteral("title"));
    group.descending = attributes.choice(QStringLiteral("order"), directions(), false);
    group.repeat = attributes.flag(QStringLiteral("repeat"));
    group.keep = attributes.flag(QStringLiteral("keep"));
    group.newPage = attributes.flag(QStringLiteral("newPage"));
    attributes.done();
    for (const XmlElement &child : element.children) {
        if (child.name != QStringLiteral("header") && child.name != QStringLiteral("footer"))
            m_file.refuse(child.at, QStringLiteral("A group has no <%1>.").arg(child.name));
    }
    m_definition->groups.push_back(std::move(group));
}

void DefinitionReader::readSort(const XmlElement &element) {
    Attributes attributes(m_file, element);
    refuseChildren(element);
    const XmlAttribute &by = attributes.required(QStringLiteral("by"));
    SortDefinition sort;
    sort.by = formula(by.value, by.valueAt, *m_definition);
    if (sort.by->stage > Stage::Row)
        m_file.refuse(by.valueAt, QStringLiteral("Rows can be sorted only by what they hold."));
    sort.descending = attributes.choice(QStringLiteral("order"), directions(), false);
    attributes.done();
    m_definition->sort.push_back(std::move(sort));
}

void DefinitionReader::readSubreport(const XmlElement &element) {
    if (m_outer)
        m_file.refuse(element.at, QStringLiteral("A sub-report has no sub-reports."));
    Attributes attributes(m_file, element);
    SubreportDefinition subreport;
    subreport.name = freshName(attributes);
    DefinitionReader inner(m_file, m_folder);
    subreport.definition = inner.read(element, m_definition.get());
    subreport.links = std::move(inner.m_links);
    m_definition->subreports.push_back(std::move(subreport));
}

void DefinitionReader::readLink(const XmlElement &element) {
    if (!m_outer)
        m_file.refuse(element.at, QStringLiteral("Only a sub-report is linked."));
    Attributes attributes(m_file, element);
    refuseChildren(element);
    const XmlAttribute &outer = attributes.required(QStringLiteral("outer"));
    const XmlAttribute &inner = attributes.required(QStringLiteral("inner"));
    attributes.done();
    LinkDefinition link{formula(outer.value, outer.valueAt, *m_outer),
                        formula(inner.value, inner.valueAt, *m_definition)};
    if (link.outer->op != Op::Column || link.inner->op != Op::Column || link.outer->kind != link.inner->kind)
        m_file.refuse(element.at, QStringLiteral("A link holds two fields of one kind against each other."));
    m_links.push_back(std::move(link));
}

std::shared_ptr<Definition> readDefinition(const QByteArray &xml, const QString &fileName,
                                           const QString &folder) {
    const XmlFile file(xml, fileName);
    if (file.root().name != QStringLiteral("report"))
        file.refuse(file.root().at, QStringLiteral("This is no <report>."));
    return DefinitionReader(file, folder).read(file.root(), nullptr);
}

std::shared_ptr<Definition> readDefinition(const QString &path) {
    QFile file(path);
    const QFileInfo info(path);
    if (!info.isFile())
        throw Error(errors::FileNotFound, QStringLiteral("File not found: %1").arg(path));
    if (!file.open(QIODevice::ReadOnly))
        throw Error(errors::BadFile, QStringLiteral("%1: %2").arg(path, file.errorString()));
    return readDefinition(file.readAll(), path, info.path());
}

} // namespace zel::report
