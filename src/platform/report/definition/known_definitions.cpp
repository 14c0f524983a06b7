// The definitions that were read last, as long as none of their files changes.

#include "platform/report/definition/definition.h"
#include "platform/report/definition/definition_reader.h"

#include "platform/base/error.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <deque>

namespace zel::report {

namespace {

struct FileState {
    QString path;
    qint64 changed; ///< in milliseconds since 1970
    qint64 size;

    explicit FileState(const QFileInfo &info)
        : path(info.filePath()), changed(info.lastModified().toMSecsSinceEpoch()), size(info.size()) {}
    bool operator==(const FileState &) const = default;
};

struct Known {
    std::vector<FileState> files; ///< the definition's own first
    std::shared_ptr<const Definition> definition;

    [[nodiscard]] bool stands() const {
        return std::ranges::all_of(
            files, [](const FileState &file) { return FileState(QFileInfo(file.path)) == file; });
    }
};

bool hasImages(const Definition &definition) {
    return definition.hasImages || std::ranges::any_of(definition.subreports, [](const auto &subreport) {
               return subreport.definition->hasImages;
           });
}

/// A file that was changed just now may change again without its time telling so.
bool isSettled(const FileState &file) {
    constexpr qint64 GrainMs = 2000;
    return QDateTime::currentMSecsSinceEpoch() - file.changed > GrainMs;
}

} // namespace

std::shared_ptr<const Definition> readDefinition(const QString &path) {
    constexpr std::size_t Most = 8;
    static std::deque<Known> known; // those in use last first
    const auto found =
        std::ranges::find(known, path, [](const Known &one) -> const QString & { return one.files[0].path; });
    if (found != known.end()) {
        std::rotate(known.begin(), found, found + 1);
        if (known.front().stands())
            return known.front().definition;
        known.pop_front();
    }
    QFile file(path);
    const QFileInfo info(path);
    if (!info.isFile())
        throw Error(errors::FileNotFound, QStringLiteral("File not found: %1").arg(path));
    if (!file.open(QIODevice::ReadOnly))
        throw Error(errors::BadFile, QStringLiteral("%1: %2").arg(path, file.errorString()));
    const XmlFile xml(file.readAll(), path, info.path());
    Known read{{}, readDefinition(xml)};
    for (const QString &part : xml.files())
        read.files.emplace_back(QFileInfo(part));
    if (!hasImages(*read.definition) && std::ranges::all_of(read.files, isSettled)) {
        known.push_front(read);
        known.resize(std::min(known.size(), Most));
    }
    return read.definition;
}

} // namespace zel::report
