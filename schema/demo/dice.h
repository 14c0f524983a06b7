#pragma once

#include <cstdint>
#include <functional>

namespace zel::demo {

/// Random numbers that are the same with every compiler and library: SplitMix64 (Steele, Lea and Flood, "Fast
/// splittable pseudorandom number generators", 2014). One throw a statement: the order of two in one is the
/// compiler's.
class Dice {
public:
    explicit Dice(std::uint64_t seed) : m_state(seed) {}

    /// 0 to limit - 1; limit at least 1.
    [[nodiscard]] int below(int limit) { return int(((next() >> 32) * std::uint64_t(limit)) >> 32); }
    /// least to most.
    [[nodiscard]] int between(int least, int most) { return least + below(most - least + 1); }
    [[nodiscard]] bool oneIn(int times) { return below(times) == 0; }
    /// One of a list.
    template <class Choices>
    [[nodiscard]] const auto &of(const Choices &choices) {
        return choices[decltype(choices.size())(below(int(choices.size())))];
    }
    /// One of a list, the more often the greater the number that `weight` gives of it.
    template <class Choices, class Weight>
    [[nodiscard]] const auto &of(const Choices &choices, Weight weight) {
        int weights = 0;
        for (const auto &choice : choices)
            weights += std::invoke(weight, choice);
        int drawn = below(weights);
        auto choice = choices.begin();
        for (; drawn >= std::invoke(weight, *choice); ++choice)
            drawn -= std::invoke(weight, *choice);
        return *choice;
    }

private:
    std::uint64_t next() {
        std::uint64_t z = m_state += 0x9e3779b97f4a7c15ULL;
        z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9ULL;
        z = (z ^ (z >> 27)) * 0x94d049bb133111ebULL;
        return z ^ (z >> 31);
    }

    std::uint64_t m_state;
};

} // namespace zel::demo
