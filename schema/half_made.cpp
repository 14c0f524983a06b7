#include "schema/half_made.h"

#include "platform/base/error.h"

#include <QDir>
#include <QFile>
#include <QUuid>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace zel::schema {

bool synced(const QString &folder) {
    const int opened = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (opened < 0)
        return true;
    const int failure = ::fsync(opened) == 0 ? 0 : errno;
    ::close(opened);
    errno = failure;
    return failure == 0 || failure == EINVAL || failure == ENOTSUP;
}

SignalsWait::SignalsWait() {
    sigset_t waiting;
    sigemptyset(&waiting);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        sigaddset(&waiting, signal);
    pthread_sigmask(SIG_BLOCK, &waiting, &m_before);
}

SignalsWait::~SignalsWait() {
    pthread_sigmask(SIG_SETMASK, &m_before, nullptr);
}

HalfMade::HalfMade(const QString &folder, bool madeFolder) : m_folder(folder), m_madeFolder(madeFolder) {
    m_path = folder + QStringLiteral("/ZEL.db.") + QUuid::createUuid().toString(QUuid::Id128) +
             QStringLiteral(".new");
}

HalfMade::~HalfMade() {
    if (m_kept)
        return;
    for (const char *end : {"", "-wal", "-shm", "-journal"})
        QFile::remove(m_path + QLatin1String(end));
    if (m_madeFolder)
        QDir().rmdir(m_folder);
}

void refuseSecond(const QString &folder) {
    throw Error(1802,
                QStringLiteral("The folder \"%1\" holds a catalog ZEL.db already; it was left as it is.")
                    .arg(folder));
}

void HalfMade::keepAs(const QString &path) {
    const QByteArray from = QFile::encodeName(m_path);
    const QByteArray to = QFile::encodeName(path);
    if (::link(from.constData(), to.constData()) == 0)
        ::unlink(from.constData());
    else if (errno == EEXIST)
        refuseSecond(m_folder);
    else if (::renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE) != 0)
        throw Error(823,
                    QStringLiteral("The catalog \"%1\" can't be made: %2.").arg(path, qt_error_string()));
    if (!synced(m_folder)) {
        const QString reason = qt_error_string();
        ::unlink(to.constData());
        throw Error(823, QStringLiteral("The catalog \"%1\" can't be made: %2.").arg(path, reason));
    }
    m_kept = true;
}

void HalfMade::keepInPlaceOf(const QString &path, const QString &kept, bool withLogs) {
    const auto must = [&](bool done) {
        if (!done)
            throw Error(823, QStringLiteral("The catalog \"%1\" can't be replaced: %2; it is as it was.")
                                 .arg(path, qt_error_string()));
    };
    const QByteArray to = QFile::encodeName(path);
    const QByteArray old = QFile::encodeName(kept);
    for (const char *end : {"", "-wal", "-journal"})
        must((*end != '\0' && !withLogs) || ::link((to + end).constData(), (old + end).constData()) == 0 ||
             errno == ENOENT);
    must(synced(m_folder));
    // A log of the old file would be taken for the new one's.
    for (const char *end : {"-wal", "-shm", "-journal"})
        must(::unlink((to + end).constData()) == 0 || errno == ENOENT);
    must(synced(m_folder));
    must(::rename(QFile::encodeName(m_path).constData(), to.constData()) == 0);
    m_kept = true;
    if (!synced(m_folder))
        throw Error(823, QStringLiteral("The catalog \"%1\" was replaced, but a power cut may undo it: %2.")
                             .arg(path, qt_error_string()));
}

} // namespace zel::schema
