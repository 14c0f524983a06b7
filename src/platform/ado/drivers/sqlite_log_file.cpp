#include "platform/ado/drivers/sqlite_log_file.h"

#include "platform/ado/drivers/sqlite_page_memory.h"

#include <sqlite3.h>

#include <cstring>
#include <new>
#include <utility>

namespace zel::ado {

namespace {

/// The most that the standard VFS takes at once (it masks the length with this): 31 pages, about what a
/// voucher touches.
constexpr int MostWaiting = 0x1ffff;

/// An open log. The standard VFS's own file lies behind it in the memory that SQLite gives for both.
struct LogFile {
    sqlite3_file base;
    char *waiting; ///< MostWaiting bytes
    int count;     ///< how many of them wait to be written
    sqlite3_int64 at;
    bool commits; ///< the next piece is the page that ends a commit

    [[nodiscard]] sqlite3_file *own() { return reinterpret_cast<sqlite3_file *>(this + 1); }
    /// What could not be written goes on waiting: SQLite counts on it, as it was told that it is written.
    int writeOut() {
        if (count == 0)
            return SQLITE_OK;
        const int code = own()->pMethods->xWrite(own(), waiting, count, at);
        if (code == SQLITE_OK)
            count = 0;
        return code;
    }
};

LogFile &logOf(sqlite3_file *file) {
    return *reinterpret_cast<LogFile *>(file);
}

/// After what waits was written out, the file's own method.
template <auto Method, class... Arguments>
int then(sqlite3_file *file, Arguments... arguments) {
    LogFile &log = logOf(file);
    const int code = log.writeOut();
    return code != SQLITE_OK ? code : (log.own()->pMethods->*Method)(log.own(), arguments...);
}

int write(sqlite3_file *file, const void *bytes, int count, sqlite3_int64 at) {
    LogFile &log = logOf(file);
    // A page comes behind a header of its own, whose second word is 0 but for the last page of a commit.
    constexpr int HeaderSize = 24;
    const bool ends =
        std::exchange(log.commits, count == HeaderSize &&
                                       std::memcmp(static_cast<const char *>(bytes) + 4, "\0\0\0\0", 4) != 0);
    if (log.count > 0 && (at != log.at + log.count || count > MostWaiting - log.count))
        if (const int code = log.writeOut(); code != SQLITE_OK)
            return code;
    if (count > MostWaiting)
        return log.own()->pMethods->xWrite(log.own(), bytes, count, at);
    if (log.count == 0)
        log.at = at;
    std::memcpy(log.waiting + log.count, bytes, std::size_t(count));
    log.count += count;
    return ends ? log.writeOut() : SQLITE_OK;
}

/// What waits is only written out where it is read, so that the disk may be full while older pages are read.
int read(sqlite3_file *file, void *bytes, int count, sqlite3_int64 at) {
    LogFile &log = logOf(file);
    if (at < log.at + log.count && log.at < at + count)
        if (const int code = log.writeOut(); code != SQLITE_OK)
            return code;
    return log.own()->pMethods->xRead(log.own(), bytes, count, at);
}

/// SQLite has the header on the disk before the pages, since these may lie on older ones of another header.
/// In an empty log nothing is old: the header goes with the first pages, and to the disk with the first
/// commit that waits for that.
int sync(sqlite3_file *file, int flags) {
    constexpr int HeaderSize = 32;
    LogFile &log = logOf(file);
    sqlite3_int64 written = 0;
    if (log.at == 0 && log.count == HeaderSize &&
        log.own()->pMethods->xFileSize(log.own(), &written) == SQLITE_OK && written == 0)
        return SQLITE_OK;
    return then<&sqlite3_io_methods::xSync>(file, flags);
}

int close(sqlite3_file *file) {
    LogFile &log = logOf(file);
    const int written = log.writeOut();
    const int closed = log.own()->pMethods->xClose(log.own());
    delete[] log.waiting;
    return written != SQLITE_OK ? written : closed;
}

/// Locks and shared memory are the catalog's, never the log's.
const sqlite3_io_methods methods = {
    1,
    close,
    read,
    write,
    then<&sqlite3_io_methods::xTruncate, sqlite3_int64>,
    sync,
    then<&sqlite3_io_methods::xFileSize, sqlite3_int64 *>,
    then<&sqlite3_io_methods::xLock, int>,
    then<&sqlite3_io_methods::xUnlock, int>,
    then<&sqlite3_io_methods::xCheckReservedLock, int *>,
    then<&sqlite3_io_methods::xFileControl, int, void *>,
    [](sqlite3_file *file) { return logOf(file).own()->pMethods->xSectorSize(logOf(file).own()); },
    [](sqlite3_file *file) { return logOf(file).own()->pMethods->xDeviceCharacteristics(logOf(file).own()); },
    nullptr,
    nullptr,
    nullptr,
    nullptr,
    nullptr,
    nullptr,
};

sqlite3_vfs *standard = nullptr;

int open(sqlite3_vfs *, const char *name, sqlite3_file *file, int flags, int *outFlags) {
    if ((flags & SQLITE_OPEN_WAL) == 0)
        return standard->xOpen(standard, name, file, flags, outFlags);
    LogFile &log = logOf(file);
    log = LogFile{{nullptr}, new (std::nothrow) char[MostWaiting], 0, 0, false};
    if (log.waiting == nullptr)
        return SQLITE_NOMEM;
    const int code = standard->xOpen(standard, name, log.own(), flags, outFlags);
    // SQLite closes a file with methods, also one that failed to open.
    if (log.own()->pMethods != nullptr)
        log.base.pMethods = &methods;
    else
        delete[] log.waiting;
    return code;
}

/// Called when the transaction's lock is given back already, and before anything else is written.
void dropWaiting(void *db) {
    sqlite3_file *file = nullptr;
    sqlite3_file_control(static_cast<sqlite3 *>(db), "main", SQLITE_FCNTL_JOURNAL_POINTER, &file);
    if (file != nullptr && file->pMethods == &methods)
        logOf(file).count = 0;
}

} // namespace

void dropUndonePages(sqlite3 *db) {
    sqlite3_rollback_hook(db, dropWaiting, db);
}

const char *gatheringVfs() {
    static sqlite3_vfs gathering;
    // Nobody asks how much memory SQLite holds; counting it takes a lock at each allocation. Refused, and no
    // matter, where SQLite is in use already.
    static const int uncounted = sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0);
    (void)uncounted;
    static const bool large = (useLargePageMemory(), true);
    (void)large;
    sqlite3_initialize();
    if (sqlite3_vfs *now = sqlite3_vfs_find(nullptr); now != standard) {
        if (standard != nullptr)
            sqlite3_vfs_unregister(&gathering);
        standard = now;
        gathering = *standard;
        gathering.pNext = nullptr;
        gathering.zName = "gathering";
        gathering.szOsFile = int(sizeof(LogFile)) + standard->szOsFile;
        gathering.xOpen = open;
        if (sqlite3_vfs_register(&gathering, 0) != SQLITE_OK)
            return nullptr;
    }
    return gathering.zName;
}

} // namespace zel::ado
