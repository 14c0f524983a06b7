#include "fault_vfs.h"

#include <algorithm>
#include <limits>

namespace zel::test::faulty_disk {

namespace {

constexpr sqlite3_int64 Roomy = std::numeric_limits<sqlite3_int64>::max();
sqlite3_int64 room = Roomy;
bool hasFailed = false;
sqlite3_vfs *system = nullptr;

/// Our file, with the system's own behind it in the same allocation.
struct File {
    sqlite3_file base;
    sqlite3_file *own;
};

sqlite3_file *own(sqlite3_file *file) {
    return reinterpret_cast<File *>(file)->own;
}

int write(sqlite3_file *file, const void *bytes, int count, sqlite3_int64 at) {
    const int fits = int(std::min<sqlite3_int64>(room, count));
    const int code = fits == 0 ? SQLITE_OK : own(file)->pMethods->xWrite(own(file), bytes, fits, at);
    if (room != Roomy)
        room -= fits;
    if (fits == count)
        return code;
    hasFailed = true;
    return SQLITE_FULL;
}

const sqlite3_io_methods methods = {
    3,
    [](sqlite3_file *f) { return own(f)->pMethods->xClose(own(f)); },
    [](sqlite3_file *f, void *to, int count, sqlite3_int64 at) {
        return own(f)->pMethods->xRead(own(f), to, count, at);
    },
    write,
    [](sqlite3_file *f, sqlite3_int64 size) { return own(f)->pMethods->xTruncate(own(f), size); },
    [](sqlite3_file *f, int flags) { return own(f)->pMethods->xSync(own(f), flags); },
    [](sqlite3_file *f, sqlite3_int64 *size) { return own(f)->pMethods->xFileSize(own(f), size); },
    [](sqlite3_file *f, int lock) { return own(f)->pMethods->xLock(own(f), lock); },
    [](sqlite3_file *f, int lock) { return own(f)->pMethods->xUnlock(own(f), lock); },
    [](sqlite3_file *f, int *out) { return own(f)->pMethods->xCheckReservedLock(own(f), out); },
    [](sqlite3_file *f, int op, void *argument) {
        return own(f)->pMethods->xFileControl(own(f), op, argument);
    },
    [](sqlite3_file *f) { return own(f)->pMethods->xSectorSize(own(f)); },
    [](sqlite3_file *f) { return own(f)->pMethods->xDeviceCharacteristics(own(f)); },
    [](sqlite3_file *f, int page, int size, int extend, void volatile **map) {
        return own(f)->pMethods->xShmMap(own(f), page, size, extend, map);
    },
    [](sqlite3_file *f, int offset, int n, int flags) {
        return own(f)->pMethods->xShmLock(own(f), offset, n, flags);
    },
    [](sqlite3_file *f) { own(f)->pMethods->xShmBarrier(own(f)); },
    [](sqlite3_file *f, int remove) { return own(f)->pMethods->xShmUnmap(own(f), remove); },
    [](sqlite3_file *f, sqlite3_int64 at, int count, void **map) {
        return own(f)->pMethods->xFetch(own(f), at, count, map);
    },
    [](sqlite3_file *f, sqlite3_int64 at, void *map) { return own(f)->pMethods->xUnfetch(own(f), at, map); },
};

int open(sqlite3_vfs *, const char *name, sqlite3_file *file, int flags, int *outFlags) {
    auto *ours = reinterpret_cast<File *>(file);
    ours->own = reinterpret_cast<sqlite3_file *>(ours + 1);
    const int code = system->xOpen(system, name, ours->own, flags, outFlags);
    ours->base.pMethods = ours->own->pMethods ? &methods : nullptr;
    return code;
}

} // namespace

void install() {
    static sqlite3_vfs faulty;
    system = sqlite3_vfs_find(nullptr);
    faulty = *system;
    faulty.pNext = nullptr;
    faulty.zName = "faulty";
    faulty.szOsFile = int(sizeof(File)) + system->szOsFile;
    faulty.xOpen = open;
    sqlite3_vfs_register(&faulty, 1);
}

void fullAfter(sqlite3_int64 bytes) {
    room = bytes;
    hasFailed = false;
}

void roomy() {
    room = Roomy;
}

bool failed() {
    return hasFailed;
}

} // namespace zel::test::faulty_disk
