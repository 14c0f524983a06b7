#include "platform/ado/drivers/sqlite_page_memory.h"

#include <sqlite3.h>
#include <sys/mman.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <mutex>
#include <utility>

namespace zel::ado {

namespace {

constexpr std::size_t Large = std::size_t(2) << 20;
/// Addresses alone, until they are written to: what the caches of two connections may hold.
constexpr std::size_t Reserved = std::size_t(96) << 20;

/// Equal slots, one behind the other. Those that were given back are the first to be taken again.
class Slots {
public:
    /// Null when there is no room, or while slots of another size are taken.
    void *take(std::size_t bytes) {
        const std::lock_guard lock(m_mutex);
        if (m_begin == nullptr && !reserve())
            return nullptr;
        if (bytes != m_size && m_taken > 0)
            return nullptr;
        if (bytes != m_size) {
            m_size = bytes;
            m_next = m_begin;
            m_free = nullptr;
        }
        void *slot = m_free;
        if (slot != nullptr)
            std::memcpy(&m_free, slot, sizeof m_free);
        else if (std::size_t(m_end - m_next) >= m_size)
            slot = std::exchange(m_next, m_next + m_size);
        m_taken += slot != nullptr ? 1 : 0;
        return slot;
    }
    void give(void *slot) {
        const std::lock_guard lock(m_mutex);
        std::memcpy(slot, &m_free, sizeof m_free);
        m_free = slot;
        --m_taken;
    }
    [[nodiscard]] bool holds(const void *memory) const {
        const auto *const at = static_cast<const std::byte *>(memory);
        return at >= m_begin && at < m_end;
    }
    [[nodiscard]] std::size_t size() const { return m_size; }

private:
    bool reserve() {
        void *const memory = ::mmap(nullptr, Reserved + Large, PROT_READ | PROT_WRITE,
                                    MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
        if (memory == MAP_FAILED)
            return false;
        // What most connections read has room before the first large page.
        constexpr std::size_t Usual = std::size_t(256) << 10;
        const std::size_t behind = reinterpret_cast<std::uintptr_t>(memory) % Large;
        std::byte *const large = static_cast<std::byte *>(memory) + (Large - behind);
        m_begin = Large - behind < Usual ? large : large - Usual;
        m_end = large + Reserved - Large;
        (void)::madvise(large, Reserved - Large, MADV_HUGEPAGE);
        return true;
    }

    std::mutex m_mutex;
    std::byte *m_begin = nullptr;
    std::byte *m_next = nullptr;
    std::byte *m_end = nullptr;
    void *m_free = nullptr;
    std::size_t m_size = 0;
    std::size_t m_taken = 0;
};

Slots slots;
sqlite3_mem_methods standard;
int pageHeader = 0; ///< what SQLite keeps before or behind each page of a cache

bool isPage(int bytes) {
    constexpr int Least = 4096;
    const int page = bytes - pageHeader;
    return page >= Least && (page & (page - 1)) == 0;
}

void *allocate(int bytes) {
    void *const slot = isPage(bytes) ? slots.take(std::size_t(bytes)) : nullptr;
    return slot != nullptr ? slot : standard.xMalloc(bytes);
}

void release(void *memory) {
    if (slots.holds(memory))
        slots.give(memory);
    else
        standard.xFree(memory);
}

int sizeOf(void *memory) {
    return memory != nullptr && slots.holds(memory) ? int(slots.size()) : standard.xSize(memory);
}

void *resize(void *memory, int bytes) {
    if (memory == nullptr || !slots.holds(memory))
        return standard.xRealloc(memory, bytes);
    void *const moved = allocate(bytes);
    if (moved != nullptr) {
        std::memcpy(moved, memory, std::min(std::size_t(bytes), slots.size()));
        release(memory);
    }
    return moved;
}

} // namespace

void useLargePageMemory() {
    if (sqlite3_config(SQLITE_CONFIG_GETMALLOC, &standard) != SQLITE_OK || standard.xMalloc == nullptr ||
        sqlite3_config(SQLITE_CONFIG_PCACHE_HDRSZ, &pageHeader) != SQLITE_OK)
        return;
    sqlite3_mem_methods ours = standard;
    ours.xMalloc = allocate;
    ours.xFree = release;
    ours.xRealloc = resize;
    ours.xSize = sizeOf;
    (void)sqlite3_config(SQLITE_CONFIG_MALLOC, &ours);
}

} // namespace zel::ado
