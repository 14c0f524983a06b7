#include "platform/report/definition/xml_tree.h"

#include "platform/base/error.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QXmlStreamReader>

#include <algorithm>
#include <iterator>

namespace zel::report {

namespace {

/// Where a start tag, the text of which is given, names an attribute, and where its value begins behind the
/// quotation mark.
std::pair<qsizetype, qsizetype> attributePlace(QStringView tag, const QString &name) {
    for (qsizetype at = 0; (at = tag.indexOf(name, at + 1)) > 0;) {
        qsizetype end = at + name.size();
        while (end < tag.size() && tag[end].isSpace())
            ++end;
        if (!tag[at - 1].isSpace() || end >= tag.size() || tag[end] != QLatin1Char('='))
            continue;
        do
            ++end;
        while (end < tag.size() && tag[end].isSpace());
        if (end < tag.size() && (tag[end] == QLatin1Char('"') || tag[end] == QLatin1Char('\'')))
            return {at, end + 1};
    }
    return {0, 0};
}

/// `text` ends with the file's own, which begins at `begin`.
XmlElement readElement(QXmlStreamReader &reader, const QString &text, qsizetype begin) {
    XmlElement element;
    element.name = reader.name().toString();
    const qsizetype end = begin + reader.characterOffset();
    element.at = text.lastIndexOf(QLatin1Char('<'), end - 1);
    element.textAt = end;
    const QStringView tag = QStringView(text).mid(element.at, end - element.at);
    for (const QXmlStreamAttribute &attribute : reader.attributes()) {
        XmlAttribute read{attribute.qualifiedName().toString(), attribute.value().toString(), element.at, 0};
        if (const auto [at, value] = attributePlace(tag, read.name); at > 0) {
            read.at = element.at + at;
            read.valueAt = element.at + value;
        }
        element.attributes.push_back(std::move(read));
    }
    while (!reader.atEnd()) {
        const auto token = reader.readNext();
        if (token == QXmlStreamReader::EndElement)
            break;
        if (token == QXmlStreamReader::StartElement)
            element.children.push_back(readElement(reader, text, begin));
        else if (token == QXmlStreamReader::Characters)
            element.text += reader.text();
    }
    return element;
}

} // namespace

XmlFile::XmlFile(const QByteArray &bytes, const QString &fileName, const QString &folder)
    : m_root(read(bytes, {fileName, folder, 0}, {QFileInfo(fileName).absoluteFilePath()})) {}

XmlElement XmlFile::read(const QByteArray &bytes, const Text &file, const QStringList &within) {
    const QString own = QString::fromUtf8(bytes);
    m_texts.push_back(file);
    m_text += own;
    QXmlStreamReader reader(own);
    XmlElement root;
    if (reader.readNextStartElement())
        root = readElement(reader, m_text, file.begin);
    while (!reader.atEnd())
        reader.readNext();
    if (reader.hasError())
        refuse(file.begin + reader.characterOffset(), reader.errorString());
    include(root.children, within);
    return root;
}

void XmlFile::include(std::vector<XmlElement> &children, const QStringList &within) {
    std::vector<XmlElement> all;
    for (XmlElement &child : children) {
        include(child.children, within);
        if (child.name != QStringLiteral("include")) {
            all.push_back(std::move(child));
            continue;
        }
        std::vector<XmlElement> parts = included(child, within);
        std::ranges::move(parts, std::back_inserter(all));
    }
    children = std::move(all);
}

std::vector<XmlElement> XmlFile::included(const XmlElement &include, const QStringList &within) {
    if (include.attributes.size() != 1 || include.attributes.front().name != QStringLiteral("src"))
        refuse(include.at, QStringLiteral("<include> has src and nothing else."));
    const XmlAttribute &source = include.attributes.front();
    const QString path = QDir::cleanPath(folder(source.at) + QLatin1Char('/') + source.value);
    const QFileInfo info(path);
    if (within.contains(info.absoluteFilePath()))
        refuse(source.valueAt, QStringLiteral("%1 includes itself.").arg(source.value));
    QFile file(path);
    if (!info.isFile() || !file.open(QIODevice::ReadOnly))
        refuse(source.valueAt, QStringLiteral("There is no file %1.").arg(source.value));
    XmlElement root = read(file.readAll(), {path, info.path(), m_text.size()},
                           QStringList(within) << info.absoluteFilePath());
    if (root.name != QStringLiteral("parts"))
        refuse(root.at, QStringLiteral("What is included must be <parts>."));
    return std::move(root.children);
}

std::vector<QString> XmlFile::files() const {
    std::vector<QString> files;
    for (const Text &text : m_texts)
        files.push_back(text.fileName);
    return files;
}

const XmlFile::Text &XmlFile::textAt(qsizetype at) const {
    const auto after = std::ranges::upper_bound(m_texts, at, {}, &Text::begin);
    return *(after - 1);
}

void XmlFile::refuse(qsizetype at, const QString &what) const {
    const Text &file = textAt(at);
    const QString before = m_text.mid(file.begin, at - file.begin);
    const auto line = before.count(QLatin1Char('\n')) + 1;
    const auto column = before.size() - before.lastIndexOf(QLatin1Char('\n'));
    throw Error(errors::BadFile,
                QStringLiteral("%1:%2:%3: %4").arg(file.fileName).arg(line).arg(column).arg(what));
}

qsizetype XmlFile::placeIn(qsizetype at, qsizetype decoded) const {
    static const QString cdata = QStringLiteral("<![CDATA[");
    for (;; --decoded) {
        if (QStringView(m_text).mid(at).startsWith(cdata))
            at += cdata.size();
        if (decoded <= 0 || at >= m_text.size())
            return at;
        const qsizetype end = m_text[at] == QLatin1Char('&') ? m_text.indexOf(QLatin1Char(';'), at) : -1;
        at = end >= 0 ? end + 1 : at + 1;
    }
}

} // namespace zel::report
