#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

namespace bench {

/// Seconds that `work` takes, once.
template <class Work>
double seconds(Work &&work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

inline double median(std::vector<double> values) {
    std::nth_element(values.begin(), values.begin() + static_cast<long>(values.size() / 2), values.end());
    return values[values.size() / 2];
}

/// Ours against a peer, taken in turns in one run so that a busy machine slows both. Prints the median of the
/// paired ratios with both medians; says whether it is within `limit`. `before` makes each turn ready,
/// untimed.
template <class Ours, class Peer, class Before = void (*)()>
bool compare(
    const char *what, double limit, int turns, Ours &&ours, Peer &&peer, Before &&before = [] {}) {
    before();
    ours();
    peer();
    std::vector<double> ratios;
    std::vector<double> mine;
    std::vector<double> theirs;
    for (int i = 0; i < turns; ++i) {
        before();
        theirs.push_back(seconds(peer));
        mine.push_back(seconds(ours));
        ratios.push_back(mine.back() / theirs.back());
    }
    const double ratio = median(ratios);
    const bool within = ratio <= limit;
    std::printf("%-58s ratio %6.2f  limit %5.2f  %s   (ours %.3f ms, peer %.3f ms, %d turns)\n", what, ratio,
                limit, within ? "ok  " : "OVER", median(mine) * 1e3, median(theirs) * 1e3, turns);
    std::fflush(stdout);
    return within;
}

} // namespace bench
