#include "platform/ado/drivers/catalog_sharing.h"

#include <QFile>
#include <QFileInfo>

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zel::ado {

namespace {

bool isShared(const QString &folder) {
    constexpr mode_t Shared = S_ISGID | S_IRWXG;
    struct stat found {};
    return ::stat(QFile::encodeName(folder).constData(), &found) == 0 && (found.st_mode & Shared) == Shared;
}

QString ownLogin() {
    const passwd *own = ::getpwuid(::geteuid());
    return own ? QString::fromLocal8Bit(own->pw_name) : QStringLiteral("NAME");
}

} // namespace

mode_t catalogMode(const QString &folder) {
    return isShared(folder) ? S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP : S_IRUSR | S_IWUSR;
}

QString whoMayEnter(const QString &folder) {
    const QFileInfo place(folder);
    if (!isShared(folder))
        return QStringLiteral("The folder \"%1\" belongs to \"%2\", who alone may use it.")
            .arg(folder, place.owner());
    return QStringLiteral(
               "The books in \"%1\" are for the members of the group \"%2\". An administrator makes "
               "you one by \"sudo adduser %3 %2\"; then log in to this computer anew.")
        .arg(folder, place.group(), ownLogin());
}

} // namespace zel::ado
