#include "check.h"
#include "commands.h"
#include "console.h"

namespace zel::tool {

namespace {

int run(const Arguments &given) {
    const auto driver = ado::SqliteDriver::open(given.word(0), std::nullopt);
    const QStringList found = findings(*driver);
    for (const QString &finding : found)
        say(finding + u'\n');
    if (found.isEmpty())
        say(QStringLiteral("The catalog is sound.\n"));
    return found.isEmpty() ? 0 : 1;
}

} // namespace

const Command check{
    .name = "check",
    .words = "CATALOG",
    .summary = "is the file sound, do the books balance",
    .help = "Looks for damage of the file and for what breaks a rule of the books, a line each.",
    .least = 1,
    .most = 1,
    .run = run,
};

} // namespace zel::tool
