#include "archive.h"
#include "commands.h"
#include "console.h"
#include "progress.h"

#include "platform/ado/statements.h"
#include "platform/base/error.h"
#include "schema/half_made.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QLocale>
#include <QThread>

#include <fcntl.h>
#include <unistd.h>

namespace zel::tool {

namespace {

/// The file that is written until it is verified. Removed when this goes, unless it got its name.
class NewFile {
public:
    explicit NewFile(const QString &path) : m_path(path + QStringLiteral(".new")), m_wanted(path) {}
    ~NewFile() {
        if (!m_kept && m_ours)
            QFile::remove(m_path);
    }
    NewFile(const NewFile &) = delete;
    NewFile &operator=(const NewFile &) = delete;

    [[nodiscard]] const QString &path() const { return m_path; }
    void isOurs() { m_ours = true; }
    /// The last step, of which nothing can be seen by halves.
    void keep(bool replace) {
        const QByteArray from = QFile::encodeName(m_path);
        const QByteArray to = QFile::encodeName(m_wanted);
        const unsigned flags = replace ? 0 : RENAME_NOREPLACE;
        if (::renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), flags) != 0)
            throw Error(823, QStringLiteral("The backup \"%1\" can't get its name: %2; no backup was made.")
                                 .arg(m_wanted, qt_error_string()));
        m_kept = true;
        if (!schema::synced(QFileInfo(m_wanted).absolutePath()))
            throw Error(823, QStringLiteral("The backup \"%1\" may not outlast a power cut: %2.")
                                 .arg(m_wanted, qt_error_string()));
    }

private:
    schema::SignalsWait m_signals;
    QString m_path;
    QString m_wanted;
    bool m_ours = false;
    bool m_kept = false;
};

void write(Source &source, ArchiveWriter &archive, Progress &progress) {
    archive.begin(source.inventory());
    for (const ado::TableDefinition &table : source.inventory().tables) {
        source.readRows(table, [&](ado::Cells row) {
            archive.row(row);
            progress.step();
        });
        archive.endTable();
    }
    archive.finish();
}

/// Reads what is on the disk now; a failure unless every row is there.
void verify(const QString &path, Progress &progress) {
    ArchiveReader archive(path);
    for (const ado::TableDefinition &table : archive.inventory().tables)
        archive.readRows(table, [&](ado::Cells) { progress.step(); });
}

void backUp(const QString &catalog, const QString &path, bool replace) {
    if (!replace && QFile::exists(path))
        refuse(QStringLiteral("The file \"%1\" is there already and was left as it is; name another one, or "
                              "say --replace.")
                   .arg(path));
    const std::unique_ptr<ado::Driver> driver = ado::openAsOwner(catalog);
    CatalogSource source(*driver);
    const std::int64_t rows = rowsOf(source.inventory());
    NewFile file(path);
    Progress progress("Backing up", 2 * rows);
    ArchiveWriter archive(file.path());
    file.isOurs();
    write(source, archive, progress);
    verify(file.path(), progress);
    file.keep(replace);
    say(QStringLiteral("Backed up %1 tables with %L2 rows in \"%3\" (%4), and verified it.\n")
            .arg(source.inventory().tables.size())
            .arg(rows)
            .arg(path, QLocale::c().formattedDataSize(QFile(path).size())));
}

constexpr char DatedName[] = "'ZEL-'yyyyMMdd'T'HHmmss'Z.backup'";

/// In the order of their time, which their names tell.
QStringList datedBackups(const QDir &folder) {
    QStringList names = folder.entryList({QStringLiteral("ZEL-*.backup")}, QDir::Files, QDir::Name);
    names.removeIf(
        [](const QString &name) { return !QDateTime::fromString(name, QLatin1String(DatedName)).isValid(); });
    return names;
}

/// The older ones go only now that a newer one is verified, and what killed runs left.
void removeOlder(const QDir &folder, int keep) {
    for (const QString &name : folder.entryList({QStringLiteral("ZEL-*.backup.new")}, QDir::Files))
        if (!isBeingWritten(folder.filePath(name)))
            QFile::remove(folder.filePath(name));
    QStringList names = datedBackups(folder);
    while (names.size() > keep) {
        const QString path = folder.filePath(names.takeFirst());
        QFile old(path);
        if (!old.remove())
            refuse(QStringLiteral("The new backup is made, but the old one \"%1\" can't be removed: %2.")
                       .arg(path, old.errorString()));
    }
}

void backUpDated(const QString &catalog, const QString &folder, const QString &count) {
    bool number = false;
    const int keep = count.toInt(&number);
    if (!number || keep < 1)
        refuse(QStringLiteral("\"%1\" is no number of backups to keep; give 1 or more.").arg(count));
    const QDir place(folder);
    if (!place.exists())
        refuse(QStringLiteral("There is no folder \"%1\"; please make it.").arg(folder));
    const auto name = [] { return QDateTime::currentDateTimeUtc().toString(QLatin1String(DatedName)); };
    while (QFile::exists(place.filePath(name()))) // one a second
        QThread::msleep(50);
    backUp(catalog, place.filePath(name()), false);
    removeOlder(place, keep);
}

int run(const Arguments &given) {
    const QString keep = given.value("keep");
    if (!given.isSet("keep"))
        backUp(given.word(0), given.word(1), given.isSet("replace"));
    else
        backUpDated(given.word(0), given.word(1), keep);
    return 0;
}

} // namespace

const Command backup{
    .name = "backup",
    .words = "[--replace] CATALOG FILE | --keep N CATALOG FOLDER",
    .summary = "backs a catalog up into one file, while the program runs",
    .help = "Writes all that a catalog holds at one moment, compressed, and reads it again from\n"
            "the disk before it says so; clerks may work on meanwhile. The file has its name\n"
            "only when it is whole. It holds the books and the hashes of the passwords: only\n"
            "its owner can read it, and copies should be kept as close.\n"
            "\n"
            "With --keep, for a timer: the backup gets a dated name in FOLDER, such as\n"
            "ZEL-20260131T180000Z.backup (the hour in UTC), and when it is verified, all but\n"
            "the N newest of these go. Each catalog needs a folder of its own.",
    .options = {{"keep", "N", "keep the N newest backups of a folder"},
                {"replace", nullptr, "write over a file that is there"}},
    .least = 2,
    .most = 2,
    .run = run,
};

} // namespace zel::tool
