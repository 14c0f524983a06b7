#pragma once

#include <QString>

#include <vector>

namespace zel::report {

/// An XML file as read, every part with its place, so that what a definition can't use is refused where it
/// stands.
struct XmlAttribute {
    QString name;
    QString value;
    qsizetype at = 0;      ///< of the name, in the file's text
    qsizetype valueAt = 0; ///< of the value's first character
};

struct XmlElement {
    QString name;
    qsizetype at = 0; ///< of its '<'
    QString text;     ///< its own characters, those of children not
    qsizetype textAt = 0;
    std::vector<XmlAttribute> attributes;
    std::vector<XmlElement> children;
};

class XmlFile {
public:
    /// Error 54 "FILE:LINE:COLUMN: what" when it is no well-formed XML.
    XmlFile(const QByteArray &bytes, QString fileName);

    [[nodiscard]] const XmlElement &root() const { return m_root; }
    /// Throws Error 54 with the place.
    [[noreturn]] void refuse(qsizetype at, const QString &what) const;
    /// The place of the `decoded`-th character of a value that begins at `at` (entities count as one).
    [[nodiscard]] qsizetype placeIn(qsizetype at, qsizetype decoded) const;

private:
    QString m_fileName;
    QString m_text;
    XmlElement m_root;
};

} // namespace zel::report
