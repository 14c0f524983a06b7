#pragma once

#include <QString>

#include <functional>
#include <map>

class QObject;

/// A test program of screens: the program's own application object instead of Qt Test's.
namespace zel::test {

/// What may end the program runs in a process of its own: this test program, started again with one scene.
using Scenes = std::map<QString, std::function<void()>>;

/// Runs such a test. The failure box of a scene is answered at once.
int run(int argc, char *argv[], QObject &tests, const Scenes &scenes = {});

struct Ended {
    int status = -1;     ///< exit status; 0 when the scene came to its end, -1 for a crash
    QString errorStream; ///< what it printed there
    QString box;         ///< text of the failure box; '' when none came
};
/// Plays a scene of this program and waits for its end.
[[nodiscard]] Ended play(const QString &scene);

/// Holds that a scene ends by a failure: with status 1, its box beginning so ("Error 53:"), its number on the
/// error stream, too.
void expectEnd(const QString &scene, const QString &box, const char *file = __builtin_FILE(),
               int line = __builtin_LINE());

} // namespace zel::test

/// The main function of a test class, with the scenes of which its tests play some.
#define ZEL_TEST_MAIN(TestClass, ...)                                                                        \
    int main(int argc, char *argv[]) {                                                                       \
        TestClass tests;                                                                                     \
        return zel::test::run(argc, argv, tests __VA_OPT__(, ) __VA_ARGS__);                                 \
    }
