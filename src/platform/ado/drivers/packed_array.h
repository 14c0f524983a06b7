#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <type_traits>

namespace zel::ado {

/// A growing array of plain values. Growing and trimming use realloc, which moves pages instead of bytes
/// where the array is large; that is a quarter of the time of reading a long result.
template <class T>
class PackedArray {
    static_assert(std::is_trivially_copyable_v<T>);

public:
    void append(T value) {
        if (m_size == m_capacity)
            reserve(m_size + 1);
        m_data.get()[m_size++] = value;
    }
    void append(const T *values, std::size_t count) {
        if (m_capacity - m_size < count)
            reserve(m_size + count);
        if (count > 0)
            std::memcpy(m_data.get() + m_size, values, count * sizeof(T));
        m_size += count;
    }
    void trim() {
        if (m_size < m_capacity)
            resizeStorage(std::max<std::size_t>(m_size, 1));
    }

    [[nodiscard]] std::size_t size() const { return m_size; }
    [[nodiscard]] const T *data() const { return m_data.get(); }
    [[nodiscard]] T operator[](std::size_t index) const { return m_data.get()[index]; }

private:
    struct Free {
        void operator()(T *data) const { std::free(data); }
    };
    void reserve(std::size_t least) { resizeStorage(std::max({least, m_capacity * 2, std::size_t(64)})); }
    void resizeStorage(std::size_t capacity) {
        auto *moved = static_cast<T *>(std::realloc(m_data.get(), capacity * sizeof(T)));
        if (!moved)
            throw std::bad_alloc();
        (void)m_data.release();
        m_data.reset(moved);
        m_capacity = capacity;
    }

    std::unique_ptr<T, Free> m_data;
    std::size_t m_size = 0;
    std::size_t m_capacity = 0;
};

} // namespace zel::ado
