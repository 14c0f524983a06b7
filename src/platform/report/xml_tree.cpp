#include "platform/report/xml_tree.h"

#include "platform/base/error.h"

#include <QRegularExpression>
#include <QXmlStreamReader>

namespace zel::report {

namespace {

XmlElement readElement(QXmlStreamReader &reader, const QString &text) {
    XmlElement element;
    element.name = reader.name().toString();
    const qsizetype end = reader.characterOffset();
    element.at = text.lastIndexOf(QLatin1Char('<'), end - 1);
    element.textAt = end;
    for (const QXmlStreamAttribute &attribute : reader.attributes()) {
        XmlAttribute read{attribute.qualifiedName().toString(), attribute.value().toString(), element.at, 0};
        const QRegularExpression name(QStringLiteral("\\s(%1\\s*=\\s*[\"'])").arg(read.name));
        const auto match = name.match(text.mid(element.at, end - element.at));
        if (match.hasMatch()) {
            read.at = element.at + match.capturedStart(1);
            read.valueAt = element.at + match.capturedEnd(1);
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
