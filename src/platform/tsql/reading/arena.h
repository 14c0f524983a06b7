#pragma once

#include <array>
#include <cstddef>
#include <cstring>
#include <memory>
#include <new>
#include <string_view>
#include <type_traits>
#include <vector>

namespace zel::tsql {

/// Memory for the trees of one translation: handed out bump by bump, freed at once. Nothing in it is
/// destroyed, so only types that need no destruction may live there.
class Arena { // NOLINT(cppcoreguidelines-pro-type-member-init): see m_first
public:
    Arena() = default; // NOLINT(cppcoreguidelines-pro-type-member-init): see m_first
    Arena(const Arena &) = delete;
    Arena &operator=(const Arena &) = delete;

    template <typename T>
    [[nodiscard]] T *make(T value = T()) {
        static_assert(std::is_trivially_destructible_v<T> && alignof(T) <= Alignment);
        return new (take(sizeof(T))) T(value);
    }
    /// A copy of the text that lives as long as the arena.
    [[nodiscard]] std::string_view keep(std::string_view text) {
        if (text.empty())
            return {};
        char *copy = static_cast<char *>(take(text.size()));
        std::memcpy(copy, text.data(), text.size());
        return {copy, text.size()};
    }
    /// Room for `size` characters, to be filled by the caller.
    [[nodiscard]] char *characters(std::size_t size) { return static_cast<char *>(take(size)); }

    /// Everything goes; the first block serves again.
    void reset() {
        m_blocks.clear();
        m_next = m_first.data();
        m_end = m_first.data() + m_first.size();
    }

private:
    static constexpr std::size_t Alignment = alignof(void *);
    static constexpr std::size_t BlockSize = std::size_t(32) * 1024;

    void *take(std::size_t size) {
        size = (size + Alignment - 1) / Alignment * Alignment;
        if (size > static_cast<std::size_t>(m_end - m_next)) {
            const std::size_t block = size > BlockSize ? size : BlockSize;
            m_blocks.push_back(std::make_unique_for_overwrite<std::byte[]>(block));
            m_next = m_blocks.back().get();
            m_end = m_next + block;
        }
        std::byte *place = m_next;
        m_next += size;
        return place;
    }

    alignas(Alignment)
        std::array<std::byte, std::size_t(12) * 1024> m_first; // left uninitialised: most statements fit here
    std::byte *m_next = m_first.data();
    std::byte *m_end = m_first.data() + m_first.size();
    std::vector<std::unique_ptr<std::byte[]>> m_blocks;
};

} // namespace zel::tsql
