#pragma once

#include "measure.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <string>
#include <vector>

/// Whole programs against one another: time and peak memory, the output thrown away.
namespace bench {

struct Cost {
    double seconds = 0;
    double megabytes = 0;
};

using Command = std::vector<std::string>;

/// Runs a program once; the measurement ends when it fails.
inline Cost run(const Command &command) {
    std::vector<char *> words;
    for (const std::string &word : command)
        words.push_back(const_cast<char *>(word.c_str()));
    words.push_back(nullptr);
    rusage used{};
    int status = 0;
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    int failure = 0;
    const double took = seconds([&] {
        pid_t child = 0;
        failure = posix_spawnp(&child, words[0], &files, nullptr, words.data(), environ);
        if (failure == 0)
            wait4(child, &status, 0, &used);
    });
    posix_spawn_file_actions_destroy(&files);
    if (failure != 0 || status != 0) {
        std::fprintf(stderr, "%s: status %d\n", words[0], status);
        std::exit(1);
    }
    return {took, double(used.ru_maxrss) / 1024};
}

/// Two programs in turns, each run once before it counts: the medians of the paired ratios, and of each.
struct Paired {
    Cost ratio; ///< of the second to the first
    Cost first;
    Cost second;
};

inline Paired inTurns(const Command &first, const Command &second, int turns) {
    run(first);
    run(second);
    std::vector<double> times[3];
    std::vector<double> sizes[3];
    for (int turn = 0; turn < turns; ++turn) {
        const Cost one = run(first);
        const Cost two = run(second);
        const double ratios[] = {one.seconds, two.seconds, two.seconds / one.seconds};
        const double memory[] = {one.megabytes, two.megabytes, two.megabytes / one.megabytes};
        for (int i = 0; i < 3; ++i) {
            times[i].push_back(ratios[i]);
            sizes[i].push_back(memory[i]);
        }
    }
    return {{median(times[2]), median(sizes[2])},
            {median(times[0]), median(sizes[0])},
            {median(times[1]), median(sizes[1])}};
}

} // namespace bench
