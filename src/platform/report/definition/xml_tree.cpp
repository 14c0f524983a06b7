#include "platform/report/definition/xml_tree.h"

#include "platform/base/error.h"

#include <QXmlStreamReader>

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

XmlElement readElement(QXmlStreamReader &reader, const QString &text) {
    XmlElement element;
    element.name = reader.name().toString();
    const qsizetype end = reader.characterOffset();
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
            element.children.push_back(readElement(reader, text));
        else if (token == QXmlStreamReader::Characters)
            element.text += reader.text();
    }
    return element;
}

} // namespace

XmlFile::XmlFile(const QByteArray &bytes, QString fileName)
    : m_fileName(std::move(fileName)), m_text(QString::fromUtf8(bytes)) {
    QXmlStreamReader reader(m_text);
    if (reader.readNextStartElement())
        m_root = readElement(reader, m_text);
    while (!reader.atEnd())
        reader.readNext();
    if (reader.hasError())
        refuse(reader.characterOffset(), reader.errorString());
}

void XmlFile::refuse(qsizetype at, const QString &what) const {
    const QString before = m_text.left(at);
    const auto line = before.count(QLatin1Char('\n')) + 1;
    const auto column = at - before.lastIndexOf(QLatin1Char('\n'));
    throw Error(errors::BadFile,
                QStringLiteral("%1:%2:%3: %4").arg(m_fileName).arg(line).arg(column).arg(what));
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
