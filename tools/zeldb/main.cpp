#include "commands.h"
#include "console.h"

#include "platform/base/error.h"

#include <QCoreApplication>

#include <algorithm>
#include <exception>

using namespace zel;

namespace {

const std::vector<const tool::Command *> &commands() {
    static const std::vector<const tool::Command *> all = {
        &tool::create, &tool::demo,   &tool::refresh, &tool::backup, &tool::restore,
        &tool::copy,   &tool::import, &tool::passwd,  &tool::sql,    &tool::check,
    };
    return all;
}

const tool::Command &commandOf(const QString &name) {
    const auto &all = commands();
    const auto found = std::ranges::find(
        all, name, [](const tool::Command *command) { return QLatin1String(command->name); });
    if (found == all.end())
        tool::refuse(QStringLiteral("There is no command \"%1\"; zeldb help lists them.").arg(name));
    return **found;
}

bool asksForHelp(const QString &word) {
    return word == QLatin1String("--help") || word == QLatin1String("-h");
}

/// Runs what was typed; `failed` becomes the status that a failure of the command has.
int run(QStringList typed, int &failed) {
    if (typed.isEmpty())
        tool::refuse(QStringLiteral("No command was given; zeldb help lists them."));
    const QString first = typed.takeFirst();
    if (asksForHelp(first) || first == QLatin1String("help")) {
        tool::say(typed.isEmpty() ? tool::helpOf(commands()) : tool::helpOf(commandOf(typed.first())));
        return 0;
    }
    const tool::Command &command = commandOf(first);
    if (std::ranges::any_of(typed, asksForHelp)) {
        tool::say(tool::helpOf(command));
        return 0;
    }
    failed = command.failed;
    return command.run(tool::Arguments(command, typed));
}

} // namespace

int main(int argc, char **argv) {
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("zeldb"));
    int failed = 1;
    try {
        return run(QCoreApplication::arguments().mid(1), failed);
    } catch (const Error &failure) {
        tool::put(stderr, "zeldb: " + failure.description().toUtf8() + '\n');
    } catch (const std::exception &failure) {
        tool::put(stderr, QByteArray("zeldb: ") + failure.what() + '\n');
    }
    return failed;
}
