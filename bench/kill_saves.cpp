// Kills saves at random statements: kill_saves [KILLS]. Each kill is a process that opens a copy of one small
// institute, enters on the real screen and goes at the statement; then the check must name what the
// statements before it had left by then, and nothing else. Of the five kinds that are entered by hand
// nothing may be left, since their saves are transactions.
#include "desk.h"
#include "kill_scenarios.h"
#include "measure.h"

#include "menu_screens.h"
#include "platform/ado/statements.h"
#include "platform/controls/application.h"
#include "shell/module1.h"
#include "tests/support/office.h"
#include "tools/zeldb/check_shown.h"

#include <QRandomGenerator>
#include <QRegularExpression>

#include <sqlite3.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>

namespace {

using bench::Scenario;

/// What the killed process tells the one that waits, in memory that both have.
struct Told {
    static constexpr int Most = 2000;
    int stopAt; ///< the statement that does not begin any more, counted from 1
    int statements;
    int writes;
    int firstWrite;         ///< as a statement; 0: none yet
    char written[Most][40]; ///< verb and table of each
};
Told *told = nullptr;

constexpr int Killed = 2; ///< status

/// "insert DetJV" of a statement that writes; '' of any other.
QByteArray writeOf(const char *sql) {
    static const QRegularExpression write(
        QStringLiteral("^\\s*(insert|delete|update)\\s+(?:into\\s+|from\\s+)?[\"\\[]?(\\w+)"),
        QRegularExpression::CaseInsensitiveOption);
    const auto found = write.match(QString::fromUtf8(sql));
    if (!found.hasMatch())
        return {};
    return (found.captured(1) + ' ' + found.captured(2)).toLower().toUtf8();
}

int onStatement(unsigned, void *, void *, void *text) {
    if (++told->statements == told->stopAt)
        _exit(Killed);
    const QByteArray write = writeOf(static_cast<const char *>(text));
    if (write.isEmpty() || told->writes == Told::Most)
        return 0;
    if (told->firstWrite == 0)
        told->firstWrite = told->statements;
    std::strncpy(told->written[told->writes++], write.constData(), sizeof told->written[0] - 1);
    return 0;
}

int watch(sqlite3 *database, char **, const sqlite3_api_routines *) {
    if (told->stopAt != 0)
        sqlite3_trace_v2(database, SQLITE_TRACE_STMT, onStatement, nullptr);
    return SQLITE_OK;
}

/// Runs a scenario in a process of its own on a copy of the catalog; its status.
int play(const Scenario &scenario, const QString &folder, int stopAt) {
    std::memset(told, 0, sizeof *told);
    const pid_t child = fork();
    if (child == 0) {
        told->stopAt = stopAt;
        bench::connect(folder);
        scenario.save();
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    told->stopAt = 0;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

QString found(const QString &folder) {
    QStringList names;
    const auto driver = zel::ado::openForReading(folder);
    for (const zel::tool::Finding &finding : zel::tool::findings(*driver))
        names += nameOf(finding);
    return names.join(QStringLiteral("; "));
}

/// The scenario's order up to the last write that began before the kill; "" when it was not kept.
QString expected(const Scenario &scenario) {
    if (scenario.steps.empty())
        return {};
    const int steps = int(scenario.steps.size());
    for (int write = 0; write < told->writes; ++write)
        if (write >= steps ||
            QByteArray(scenario.steps[std::size_t(write)].statement).toLower() != told->written[write])
            return QStringLiteral("statement %1 is \"%2\"").arg(write + 1).arg(told->written[write]);
    return told->writes == 0 ? QString() : QString(scenario.steps[std::size_t(told->writes - 1)].left);
}

constexpr int Never = 1'000'000;

/// What stands wrong after a scenario that went to its end or was killed; '' when nothing does.
QString wrongAfter(const Scenario &scenario, const QString &folder, int status, int wantedStatus) {
    const QString left = found(folder);
    const QString wanted = expected(scenario);
    if (status == wantedStatus && left == wanted)
        return {};
    return QStringLiteral("  status %1, found \"%2\", not \"%3\"\n").arg(status).arg(left, wanted);
}

class Kills {
public:
    Kills() { bench::makeKillCatalog(m_base.path()); }

    /// Each once to its end, which tells how many statements it has; false when one is not as its scenario
    /// says.
    bool playAll() {
        bool asTold = true;
        for (const Scenario &scenario : m_scenarios) {
            const bench::Copy copy(m_base.path());
            const int status = play(scenario, copy.folder(), Never);
            m_ranges.emplace_back(told->firstWrite, told->statements);
            QString wrong = wrongAfter(scenario, copy.folder(), status, 0);
            if (scenario.steps.empty() ? told->writes == 0 : told->writes != int(scenario.steps.size()))
                wrong += QStringLiteral("  %1 statements wrote, not %2\n")
                             .arg(told->writes)
                             .arg(scenario.steps.size());
            std::printf("%-28s %3d statements, %d write\n%s", qPrintable(scenario.name), told->statements,
                        told->writes, qPrintable(wrong));
            asTold &= wrong.isEmpty();
        }
        return asTold;
    }

    /// One of them, killed at any statement from its first write on.
    bool killOne() {
        auto *random = QRandomGenerator::global();
        const std::size_t which = std::size_t(random->bounded(int(m_scenarios.size())));
        const Scenario &scenario = m_scenarios[which];
        const bench::Copy copy(m_base.path());
        const int stopAt = random->bounded(m_ranges[which].first, m_ranges[which].second + 1);
        const int status = play(scenario, copy.folder(), stopAt);
        const QString wrong = wrongAfter(scenario, copy.folder(), status, Killed);
        if (!wrong.isEmpty())
            std::printf("%s, killed at statement %d\n%s", qPrintable(scenario.name), stopAt,
                        qPrintable(wrong));
        return wrong.isEmpty();
    }

    [[nodiscard]] std::size_t kinds() const { return m_scenarios.size(); }

private:
    QTemporaryDir m_base;
    std::vector<Scenario> m_scenarios = bench::killScenarios();
    std::vector<std::pair<int, int>> m_ranges; ///< of the statements to kill at
};

} // namespace

int main(int argc, char **argv) {
    void *shared = mmap(nullptr, sizeof(Told), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (shared == MAP_FAILED)
        qFatal("no memory");
    told = static_cast<Told *>(shared);
    sqlite3_auto_extension(reinterpret_cast<void (*)()>(watch));
    const zel::controls::Application application(argc, argv);
    const int kills = argc > 1 ? std::atoi(argv[1]) : 300;
    zel::test::Office office;
    zel::shell::setScreens(zel::menuScreens());
    office.logIn(); // so that no child has to
    zel::shell::gCon.Close();

    Kills all;
    int wrong = all.playAll() ? 0 : 1;
    const double seconds = bench::seconds([&] {
        for (int kill = 0; kill < kills; ++kill)
            wrong += all.killOne() ? 0 : 1;
    });
    std::printf("%d kills of %zu kinds of save, %d wrong, %.0f s\n", kills, all.kinds(), wrong, seconds);
    bench::connect(office.folder()); // the screens are unloaded with a connection
    return wrong == 0 ? 0 : 1;
}
