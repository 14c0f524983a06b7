// Kills saves at random statements: kill_saves [KILLS]. Each kill is a process that opens a copy of one small
// institute, enters on the real screen and goes at the statement; then the check must name what the told
// order of the statements had left by then, and nothing else. Of the five kinds that are entered by hand
// nothing may be left, since their saves are transactions.
#include "desk.h"
#include "kill_scenarios.h"

#include "menu_screens.h"
#include "platform/ado/statements.h"
#include "platform/controls/application.h"
#include "shell/module1.h"
#include "tests/support/office.h"
#include "tools/zeldb/check.h"

#include <QRandomGenerator>
#include <QRegularExpression>

#include <sqlite3.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstring>

namespace {

using bench::Scenario;
using bench::Step;

/// What the killed process tells the one that waits, in memory that both have.
struct Told {
    static constexpr int Most = 2000;
    int stopAt; ///< the statement that does not begin any more, counted from 1
    int statements;
    int writes;
    int firstWrite; ///< as a statement; 0: none yet
    int lastWrite;
    char written[Most][40]; ///< verb and table of each
};
Told *told = nullptr;

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
        _exit(2);
    const QByteArray write = writeOf(static_cast<const char *>(text));
    if (write.isEmpty() || told->writes == Told::Most)
        return 0;
    if (told->firstWrite == 0)
        told->firstWrite = told->statements;
    told->lastWrite = told->statements;
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
    for (const zel::tool::Finding &finding : zel::tool::findings(*driver)) {
        QString name = finding.rule->name;
        for (const auto &[key, value] : finding.keys)
            name += ' ' + key + '=' + value.text();
        names += name;
    }
    return names.join(QStringLiteral("; "));
}

/// The told order up to the last write that began before the kill; "" when it was not kept.
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

constexpr int Endless = 1'000'000;

} // namespace

int main(int argc, char **argv) {
    told = static_cast<Told *>(
        mmap(nullptr, sizeof(Told), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
    sqlite3_auto_extension(reinterpret_cast<void (*)()>(watch));
    zel::controls::Application application(argc, argv);
    const int kills = argc > 1 ? std::atoi(argv[1]) : 300;
    const zel::test::Office office;
    zel::shell::setScreens(zel::menuScreens());
    const_cast<zel::test::Office &>(office).logIn();
    zel::shell::gCon.Close();
    const QTemporaryDir base;
    bench::makeKillCatalog(base.path());

    const auto start = std::chrono::steady_clock::now();
    const std::vector<Scenario> scenarios = bench::killScenarios();
    int wrong = 0;
    std::vector<std::pair<int, int>> ranges; // of the statements to kill at
    for (const Scenario &scenario : scenarios) {
        const bench::Copy copy(base.path());
        const int status = play(scenario, copy.folder(), Endless);
        ranges.emplace_back(told->firstWrite, told->statements);
        const QString left = found(copy.folder());
        const QString wanted = expected(scenario);
        std::printf("%-30s %d statements, %d write\n", qPrintable(scenario.name), told->statements,
                    told->writes);
        if (status != 0 || left != wanted ||
            (!scenario.steps.empty() && told->writes != int(scenario.steps.size()))) {
            ++wrong;
            std::printf("  status %d, found \"%s\", not \"%s\"\n", status, qPrintable(left),
                        qPrintable(wanted));
            for (int i = 0; i < told->writes; ++i)
                std::printf("    %s\n", told->written[i]);
        }
    }
    for (int kill = 0; kill < kills; ++kill) {
        auto *random = QRandomGenerator::global();
        const std::size_t at = std::size_t(random->bounded(int(scenarios.size())));
        const Scenario &scenario = scenarios[at];
        const bench::Copy copy(base.path());
        const int stopAt = random->bounded(ranges[at].first, ranges[at].second + 1);
        const int status = play(scenario, copy.folder(), stopAt);
        const QString left = found(copy.folder());
        const QString wanted = expected(scenario);
        if (status != 2 || left != wanted) {
            ++wrong;
            std::printf("%s killed at statement %d (status %d): found \"%s\", not \"%s\"\n",
                        qPrintable(scenario.name), stopAt, status, qPrintable(left), qPrintable(wanted));
        }
    }
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    std::printf("%d kills of %zu kinds of save, %d wrong, %.1f s\n", kills, scenarios.size(), wrong, seconds);
    std::fflush(stdout);
    _exit(wrong == 0 ? 0 : 1);
}
