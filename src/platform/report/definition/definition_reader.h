#pragma once

#include "platform/report/definition/definition.h"
#include "platform/report/definition/xml_tree.h"

#include <map>

namespace zel::report {

/// Letters, digits and "_", a letter first.
[[nodiscard]] bool isIdentifier(const QString &name);
/// "number", "text" and "date".
[[nodiscard]] const std::map<QString, Kind> &kinds();

/// The attributes of an element, each asked for by name; done() refuses those that nobody asked for.
class Attributes {
public:
    Attributes(const XmlFile &file, const XmlElement &element) : m_file(file), m_element(element) {}

    /// nullptr when it isn't given.
    [[nodiscard]] const XmlAttribute *find(const QString &name);
    [[nodiscard]] QString text(const QString &name, const QString &otherwise = {});
    /// Refuses an element without it.
    [[nodiscard]] const XmlAttribute &required(const QString &name);
    /// "N%" is that share of `whole`, where one is given; another number that is given is scaled.
    [[nodiscard]] double number(const QString &name, double otherwise, double whole = 0, double scale = 1);
    [[nodiscard]] bool flag(const QString &name, bool otherwise = false);
    [[nodiscard]] QColor color(const QString &name, const QColor &otherwise);
    template <typename Choice>
    [[nodiscard]] Choice choice(const QString &name, const std::map<QString, Choice> &choices,
                                Choice otherwise) {
        const XmlAttribute *given = find(name);
        if (!given)
            return otherwise;
        const auto found = choices.find(given->value);
        if (found == choices.end())
            m_file.refuse(given->valueAt, QStringLiteral("\"%1\" is no %2.").arg(given->value, name));
        return found->second;
    }
    void done() const;

private:
    const XmlFile &m_file;
    const XmlElement &m_element;
    std::vector<QString> m_known;
};

/// Fills a definition from an element: what is declared first, in the file's order, so that each formula
/// names only what stands above it; then the bands, which may name all of it.
class DefinitionReader {
public:
    explicit DefinitionReader(const XmlFile &file) : m_file(file) {}

    /// `outer` is the report of a sub-report.
    [[nodiscard]] std::shared_ptr<Definition> read(const XmlElement &report, Definition *outer);

private:
    using Handler = void (DefinitionReader::*)(const XmlElement &);

    void readPage(const XmlElement &element);
    void readStyle(const XmlElement &element);
    void readTable(const XmlElement &element);
    void readColumns(TableDefinition &table, const XmlElement &element);
    void readParameter(const XmlElement &element);
    void readWhere(const XmlElement &element);
    void readFormula(const XmlElement &element);
    void readTotal(const XmlElement &element);
    void readGroup(const XmlElement &element);
    void readSort(const XmlElement &element);
    void readSubreport(const XmlElement &element);
    void readLink(const XmlElement &element);

    void readBands(const XmlElement &report);
    [[nodiscard]] BandDefinition readBand(const XmlElement &element);
    /// A length across the page: a share of its width, or told for the width that the report is drawn for.
    [[nodiscard]] double across(Attributes &attributes, const QString &name, double otherwise) const;
    [[nodiscard]] FieldDefinition readField(const XmlElement &element);
    [[nodiscard]] LineDefinition readLine(const XmlElement &element);
    [[nodiscard]] BoxDefinition readBox(const XmlElement &element);
    [[nodiscard]] ImageDefinition readImage(const XmlElement &element);
    [[nodiscard]] SubreportPlace readPlace(const XmlElement &element);

    [[nodiscard]] ExpressionPtr formula(const QString &text, qsizetype at, Definition &scope);
    [[nodiscard]] ExpressionPtr condition(const QString &text, qsizetype at);
    /// One that stands in the report's statement: a group or sort key, or a condition on rows.
    [[nodiscard]] ExpressionPtr pushed(const QString &text, qsizetype at);
    [[nodiscard]] ExpressionPtr pushedCondition(const QString &text, qsizetype at);
    template <typename Make>
    [[nodiscard]] auto inPlace(const QString &text, qsizetype at, Make make) const;
    [[nodiscard]] ExpressionPtr optional(Attributes &attributes, const QString &name);
    [[nodiscard]] ExpressionPtr when(Attributes &attributes);
    [[nodiscard]] QString freshName(Attributes &attributes);
    void refuseChildren(const XmlElement &element) const;

    const XmlFile &m_file;
    std::shared_ptr<Definition> m_definition;
    Definition *m_outer = nullptr;
    SubreportDefinition *m_subreport = nullptr; ///< whose links are read
    std::vector<LinkDefinition> m_links;
};

[[nodiscard]] std::shared_ptr<Definition> readDefinition(const XmlFile &file);

} // namespace zel::report
