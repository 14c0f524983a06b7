#include "platform/report/definition/definition_reader.h"

#include "platform/report/definition/statement_writer.h"

#include <algorithm>
#include <array>

namespace zel::report {

namespace {

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
        m_definition->drawn = outer->drawn;
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

/// What `make` makes of a formula's text; what it refuses is refused at its place in the file.
template <typename Make>
auto DefinitionReader::inPlace(const QString &text, qsizetype at, Make make) const {
    try {
        return make();
    } catch (const FormulaError &error) {
        const QString before = QString::fromStdString(text.toStdString().substr(0, error.offset()));
        m_file.refuse(m_file.placeIn(at, before.size()), error.description());
    }
}

ExpressionPtr DefinitionReader::formula(const QString &text, qsizetype at, Definition &scope) {
    return inPlace(text, at, [&] { return report::bind(parse(Sql::trusted(text.toStdString())), scope); });
}

ExpressionPtr DefinitionReader::pushed(const QString &text, qsizetype at) {
    ExpressionPtr made = formula(text, at, *m_definition);
    inPlace(text, at, [&] { checkInStatement(*made, *m_definition); });
    return made;
}

ExpressionPtr DefinitionReader::pushedCondition(const QString &text, qsizetype at) {
    ExpressionPtr made = condition(text, at);
    inPlace(text, at, [&] { checkInStatement(*made, *m_definition); });
    return made;
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
    m_definition->where = pushedCondition(element.text, element.textAt);
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
    using Function = TotalDefinition::Function;
    static const std::pair<QString, Function> ways[] = {{QStringLiteral("sum"), Function::Sum},
                                                        {QStringLiteral("running"), Function::Sum},
                                                        {QStringLiteral("min"), Function::Min},
                                                        {QStringLiteral("max"), Function::Max},
                                                        {QStringLiteral("count"), Function::Count}};
    static const QString oneOf =
        QStringLiteral("A total is one of sum, running, min, max, count and groups.");
    TotalDefinition total;
    total.name = name;
    const XmlAttribute *what = nullptr;
    for (const auto &[way, function] : ways) {
        const XmlAttribute *given = attributes.find(way);
        if (!given)
            continue;
        if (what)
            m_file.refuse(given->at, oneOf);
        what = given;
        total.of = formula(given->value, given->valueAt, *m_definition);
        total.running = way == QStringLiteral("running");
        total.function = function;
        if (function != Function::Count && total.of->kind != Kind::Number)
            m_file.refuse(given->valueAt, QStringLiteral("Only numbers can be summed and compared."));
        if (total.of->stage > Stage::Row)
            m_file.refuse(given->valueAt, QStringLiteral("A total is taken over what rows hold."));
    }
    if (const XmlAttribute *groups = attributes.find(QStringLiteral("groups"))) {
        if (what)
            m_file.refuse(groups->at, oneOf);
        what = groups;
        total.function = Function::Groups;
        total.counted = groupIn(groups);
    }
    if (!what)
        m_file.refuse(element.at, oneOf);
    total.group = groupIn(attributes.find(QStringLiteral("over")));
    attributes.done();
    m_definition->totals.push_back(std::move(total));
}

void DefinitionReader::readGroup(const XmlElement &element) {
    Attributes attributes(m_file, element);
    GroupDefinition group;
    group.name = freshName(attributes);
    const XmlAttribute &by = attributes.required(QStringLiteral("by"));
    group.by = pushed(by.value, by.valueAt);
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
    sort.by = pushed(by.value, by.valueAt);
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
    DefinitionReader inner(m_file);
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
    m_definition->linked.push_back(link.inner);
    m_links.push_back(std::move(link));
}

std::shared_ptr<Definition> readDefinition(const XmlFile &file) {
    if (file.root().name != QStringLiteral("report"))
        file.refuse(file.root().at, QStringLiteral("This is no <report>."));
    return DefinitionReader(file).read(file.root(), nullptr);
}

std::shared_ptr<Definition> readDefinition(const QByteArray &xml, const QString &fileName,
                                           const QString &folder) {
    return readDefinition(XmlFile(xml, fileName, folder));
}

} // namespace zel::report
