#include "commands.h"
#include "console.h"

#include "platform/ado/drivers/sqlite_driver.h"

namespace zel::tool {

namespace {

int run(const Arguments &given) {
    const auto driver = ado::SqliteDriver::open(given.word(0), std::nullopt);
    const std::string login = given.word(1).toStdString();
    driver->logins().requireLogin(login);
    driver->logins().setPassword(login, askPassword().toStdString());
    say(QStringLiteral("The password of \"%1\" is changed.\n").arg(given.word(1)));
    return 0;
}

} // namespace

const Command passwd{
    .name = "passwd",
    .words = "CATALOG LOGIN",
    .summary = "sets a login's password",
    .help = "Asks for the new password twice on a terminal, else takes the first line of the\n"
            "standard input. The old one is not asked for.",
    .least = 2,
    .most = 2,
    .run = run,
};

} // namespace zel::tool
