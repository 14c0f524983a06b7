#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace zel::report {

/// An XML file as read, with the files that it includes, every part with its place, so that what a definition
/// can't use is refused where it stands. A place counts through the texts of all files that were read.
struct XmlAttribute {
    QString name;
    QString value;
    qsizetype at = 0;      ///< of the name
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
    /// In place of each `<include src="FILE"/>` stands what FILE, from the including file's folder, holds in
    /// its root `<parts>`. Error 54 "FILE:LINE:COLUMN: what" for what is no well-formed XML, and for a file
    /// that is missing or includes itself.
    XmlFile(const QByteArray &bytes, const QString &fileName, const QString &folder);

    [[nodiscard]] const XmlElement &root() const { return m_root; }
    /// Its own name first, then the included files' paths.
    [[nodiscard]] std::vector<QString> files() const;
    /// Throws Error 54 with the place.
    [[noreturn]] void refuse(qsizetype at, const QString &what) const;
    /// Of the file that the place is in.
    [[nodiscard]] const QString &folder(qsizetype at) const { return textAt(at).folder; }
    /// The place of the `decoded`-th character of a value that begins at `at` (entities count as one).
    [[nodiscard]] qsizetype placeIn(qsizetype at, qsizetype decoded) const;

private:
    struct Text {
        QString fileName;
        QString folder;
        qsizetype begin; ///< of its first character among all
    };

    [[nodiscard]] const Text &textAt(qsizetype at) const;
    /// `within`: the files that are being read, the including ones.
    [[nodiscard]] XmlElement read(const QByteArray &bytes, const Text &file, const QStringList &within);
    void include(std::vector<XmlElement> &children, const QStringList &within);
    [[nodiscard]] std::vector<XmlElement> included(const XmlElement &include, const QStringList &within);

    std::vector<Text> m_texts;
    QString m_text;
    XmlElement m_root;
};

} // namespace zel::report
