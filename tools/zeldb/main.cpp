#include "schema/demo/institute.h"
#include "schema/demo/writer.h"
#include "schema/new_catalog.h"
#include "schema/refresh_catalog.h"
#include "tools/zeldb/check_shown.h"
#include "tools/zeldb/shown.h"

#include "platform/ado/drivers/sqlite_driver.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>
#include <QTextStream>

#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <optional>

using namespace zel;
using zel::tool::asJson;
using zel::tool::asTable;

namespace {

void put(std::FILE *stream, const QByteArray &text) {
    std::fwrite(text.constData(), 1, std::size_t(text.size()), stream);
    std::fflush(stream);
}

void say(const QString &text) {
    put(stdout, text.toUtf8());
}

[[noreturn]] void refuse(const QString &sentence) {
    throw Error(errors::InvalidCall, sentence);
}

std::unique_ptr<ado::SqliteDriver> openAsOwner(const QString &folder) {
    return ado::SqliteDriver::open(folder, std::nullopt);
}

/// The terminal without echo while one lives.
class SilentTerminal {
public:
    SilentTerminal() {
        tcgetattr(STDIN_FILENO, &m_before);
        termios silent = m_before;
        silent.c_lflag &= ~tcflag_t(ECHO);
        tcsetattr(STDIN_FILENO, TCSAFLUSH, &silent);
    }
    ~SilentTerminal() { tcsetattr(STDIN_FILENO, TCSAFLUSH, &m_before); }
    SilentTerminal(const SilentTerminal &) = delete;
    SilentTerminal &operator=(const SilentTerminal &) = delete;

private:
    termios m_before{};
};

QString readLine(QTextStream &input) {
    QString line = input.readLine();
    if (line.isNull())
        refuse(QStringLiteral("No password was given."));
    return line;
}

/// Typed twice on a terminal, else the first line of the standard input.
QString askPassword() {
    QTextStream input(stdin);
    if (!isatty(STDIN_FILENO))
        return readLine(input);
    const SilentTerminal silent;
    put(stderr, "New password: ");
    QString password = readLine(input);
    put(stderr, "\nOnce more: ");
    const QString again = readLine(input);
    put(stderr, "\n");
    if (password != again)
        refuse(QStringLiteral("The two passwords differ; nothing was changed."));
    return password;
}

int create(const QCommandLineParser &line, const QStringList &words) {
    schema::createCatalog(words[1], {.bare = line.isSet(QStringLiteral("bare")),
                                     .demoChart = line.isSet(QStringLiteral("chart")),
                                     .saPassword = {}});
    say(QStringLiteral("Made the catalog %1/ZEL.db; log in as \"sa\" with an empty password.\n")
            .arg(words[1]));
    return 0;
}

int demo(const QCommandLineParser &, const QStringList &words) {
    schema::NewCatalog wanted;
    wanted.filled = [](ado::Driver &driver) { demo::write(driver, demo::makeInstitute()); };
    schema::createCatalog(words[1], wanted);
    say(QStringLiteral(
            "Made the demonstration institute %1/ZEL.db; log in as \"sa\" with an empty password.\n")
            .arg(words[1]));
    return 0;
}

int refresh(const QCommandLineParser &, const QStringList &words) {
    if (schema::refreshCatalog(words[1]))
        say(QStringLiteral("Brought the procedures, work tables and indexes of %1/ZEL.db up to date.\n")
                .arg(words[1]));
    return 0;
}

int changePassword(const QCommandLineParser &, const QStringList &words) {
    const auto driver = openAsOwner(words[1]);
    driver->logins().requireLogin(words[2].toStdString());
    driver->logins().setPassword(words[2].toStdString(), askPassword().toStdString());
    say(QStringLiteral("The password of \"%1\" is changed.\n").arg(words[2]));
    return 0;
}

/// The text of -f or of the command line.
QByteArray statementText(const QCommandLineParser &line, const QStringList &words) {
    const QString name = line.value(QStringLiteral("f"));
    if (name.isEmpty() == (words.size() < 3))
        refuse(QStringLiteral("Give either one statement or a file of statements with -f."));
    if (name.isEmpty())
        return words[2].toUtf8();
    QFile file;
    const bool open = name == QLatin1String("-") ? file.open(stdin, QIODevice::ReadOnly)
                                                 : (file.setFileName(name), file.open(QIODevice::ReadOnly));
    if (!open)
        refuse(QStringLiteral("The file \"%1\" can't be read: %2.").arg(name, file.errorString()));
    QByteArray text = file.readAll();
    if (constexpr char Mark[] = "\xEF\xBB\xBF"; text.startsWith(Mark)) // some editors begin a file with it
        text.remove(0, qsizetype(sizeof Mark) - 1);
    return text;
}

/// The line that a part of a text begins on, counted from 1.
qsizetype lineOf(std::string_view part, std::string_view whole) {
    return 1 + std::count(whole.data(), part.data(), '\n');
}

/// Batches after a failed one run all the same, as the rest of its own does not.
int sql(const QCommandLineParser &line, const QStringList &words) {
    const bool json = line.isSet(QStringLiteral("json"));
    const QByteArray text = statementText(line, words);
    const auto driver = openAsOwner(words[1]);
    int status = 0;
    const std::string_view script(text.constData(), std::size_t(text.size()));
    for (const std::string_view batch : tsql::batches(script)) {
        try {
            bool told = false;
            const auto tell = [json, &told](const ado::Outcome &outcome) {
                told = true;
                put(stdout, json ? asJson(outcome) + '\n' : asTable(outcome).toUtf8());
            };
            ado::runStatements(*driver, Sql::trusted(batch), tell);
            if (json && !told)
                tell({});
        } catch (const Error &failure) {
            status = 1;
            if (json)
                put(stdout, asJson(failure) + '\n');
            else
                put(stderr, QStringLiteral("Error %1 in the batch at line %2: %3\n")
                                .arg(failure.number())
                                .arg(lineOf(batch, script))
                                .arg(failure.description())
                                .toUtf8());
        }
    }
    if (line.isSet(QStringLiteral("f")))
        driver->analyze();
    return status;
}

int check(const QCommandLineParser &line, const QStringList &words) {
    if (line.isSet(QStringLiteral("list"))) {
        say(tool::ruleList());
        return 0;
    }
    const auto driver = ado::openForReading(words[1]);
    const std::vector<tool::Finding> found = tool::findings(*driver);
    if (line.isSet(QStringLiteral("json"))) {
        for (const tool::Finding &finding : found)
            put(stdout, asJson(finding) + '\n');
    } else {
        say(tool::asReport(found));
    }
    return tool::isSound(found) ? 0 : 1;
}

struct Command {
    const char *name;
    const char *arguments;
    int least; ///< words, the command's own and those that must follow it
    int most;
    int (*run)(const QCommandLineParser &line, const QStringList &words);
};

constexpr Command Commands[] = {
    {"create", "DIR [--bare] [--chart]", 2, 2, create},
    {"demo", "DIR", 2, 2, demo},
    {"refresh", "DIR", 2, 2, refresh},
    {"passwd", "DIR LOGIN", 3, 3, changePassword},
    {"sql", "DIR (STATEMENT | -f FILE) [--json]", 2, 3, sql},
    {"check", "(DIR [--json] | --list)", 1, 2, check},
};

QString usage() {
    QString text =
        QStringLiteral("Makes, fills and checks an embedded catalog: the file ZEL.db in a folder.\n");
    for (const Command &command : Commands)
        text += QStringLiteral("\n  zeldb %1 %2")
                    .arg(QLatin1String(command.name), QLatin1String(command.arguments));
    return text;
}

int run(QCommandLineParser &line) {
    const QStringList words = line.positionalArguments();
    for (const Command &command : Commands) {
        if (words.isEmpty() || words.first() != QLatin1String(command.name))
            continue;
        if (words.size() < command.least || words.size() > command.most)
            refuse(QStringLiteral("Use: zeldb %1 %2").arg(words.first(), QLatin1String(command.arguments)));
        return command.run(line, words);
    }
    refuse(words.isEmpty()
               ? QStringLiteral("No command was given; zeldb --help lists them.")
               : QStringLiteral("There is no command \"%1\"; zeldb --help lists them.").arg(words.first()));
}

} // namespace

int main(int argc, char **argv) {
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("zeldb"));
    QCommandLineParser line;
    line.setApplicationDescription(usage());
    line.addHelpOption();
    line.addOptions(
        {{QStringLiteral("bare"), QStringLiteral("create: no tables, only the login \"sa\".")},
         {QStringLiteral("chart"), QStringLiteral("create: with a small chart of accounts.")},
         {QStringLiteral("json"), QStringLiteral("sql: one JSON object a statement, a line each.")},
         {QStringLiteral("list"), QStringLiteral("check: lists the rules.")},
         {{QStringLiteral("f"), QStringLiteral("file")},
          QStringLiteral("sql: statements of a file (- is the standard input), batches parted by GO."),
          QStringLiteral("FILE")}});
    line.process(application);
    try {
        return run(line);
    } catch (const Error &failure) {
        put(stderr, "zeldb: " + failure.description().toUtf8() + '\n');
    } catch (const std::exception &failure) {
        put(stderr, QByteArray("zeldb: ") + failure.what() + '\n');
    }
    return 1;
}
