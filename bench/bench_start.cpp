// From the start of the process to the painted login, against a bare window with a menu and one query: time
// and peak memory, on the filled catalog and on an empty one.
#include "measure.h"

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

namespace {

struct Run {
    double seconds;
    double megabytes;
};

Run start(const char *program, const std::string &folder) {
    const std::string path = std::string(ZEL_BIN "/") + program;
    rusage used{};
    int status = 0;
    const double seconds = bench::seconds([&] {
        const pid_t child = vfork();
        if (child == 0) {
            execl(path.c_str(), path.c_str(), folder.c_str(), nullptr);
            _exit(127);
        }
        wait4(child, &status, 0, &used);
    });
    if (status != 0) {
        std::fprintf(stderr, "%s: status %d\n", program, status);
        std::exit(1);
    }
    return {seconds, double(used.ru_maxrss) / 1024};
}

bool say(const char *what, double ours, double peer, double limit, const char *unit) {
    const bool within = ours / peer <= limit;
    std::printf("%-58s ratio %6.2f  limit %5.2f  %s   (ours %.1f %s, peer %.1f %s)\n", what, ours / peer,
                limit, within ? "ok  " : "OVER", ours, unit, peer, unit);
    std::fflush(stdout);
    return within;
}

struct Medians {
    double seconds[2];
    double megabytes[2];
};

/// Two programs in turns; the first of each is not counted.
Medians inTurns(const char *ours, const std::string &oursFolder, const char *peer,
                const std::string &peerFolder) {
    std::vector<double> seconds[2];
    std::vector<double> megabytes[2];
    for (int turn = 0; turn <= 15; ++turn) {
        const Run runs[] = {start(ours, oursFolder), start(peer, peerFolder)};
        for (int i = 0; turn > 0 && i < 2; ++i) {
            seconds[i].push_back(runs[i].seconds);
            megabytes[i].push_back(runs[i].megabytes);
        }
    }
    using bench::median;
    return {{median(seconds[0]), median(seconds[1])}, {median(megabytes[0]), median(megabytes[1])}};
}

} // namespace

int main(int, char **argv) {
    const std::string filled = argv[1];
    const std::string empty = filled + "/empty";
    const Medians bare = inTurns("start_login", filled, "start_bare", filled);
    bool within =
        say("start to the painted login: time", bare.seconds[0] * 1e3, bare.seconds[1] * 1e3, 2, "ms");
    within &= say("start to the painted login: peak memory", bare.megabytes[0], bare.megabytes[1], 2, "MB");
    const Medians sizes = inTurns("start_login", filled, "start_login", empty);
    within &= say("  filled against empty catalog: time", sizes.seconds[0] * 1e3, sizes.seconds[1] * 1e3, 1.1,
                  "ms");
    within &=
        say("  filled against empty catalog: peak memory", sizes.megabytes[0], sizes.megabytes[1], 1.1, "MB");
    return within ? 0 : 1;
}
