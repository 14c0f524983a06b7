#include "shell/server_file.h"

#include "platform/base/error.h"

#include <QFile>

#include <algorithm>

namespace zel::shell {

QString firstItem(const QString &path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw Error(errors::FileNotFound, "File not found: " + path);
    QString text = QString::fromUtf8(file.readAll());
    if (text.startsWith(QChar(QChar::ByteOrderMark)))
        text.remove(0, 1);
    if (text.isEmpty())
        throw Error(errors::InputPastEnd, "Input past end of file: " + path);

    const auto isBlank = [](QChar c) { return c == ' ' || c == '\t'; };
    const auto begin = std::find_if_not(text.cbegin(), text.cend(), isBlank);
    if (begin != text.cend() && *begin == '"')
        return QString(begin + 1, std::find(begin + 1, text.cend(), '"') - (begin + 1));
    const auto endsItem = [](QChar c) { return c == ',' || c == '\r' || c == '\n'; };
    const auto end = std::find_if(begin, text.cend(), endsItem);
    return QString(begin, end - begin).trimmed();
}

} // namespace zel::shell
