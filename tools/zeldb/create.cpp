#include "commands.h"
#include "console.h"
#include "schema/demo/institute.h"
#include "schema/demo/writer.h"
#include "schema/new_catalog.h"

namespace zel::tool {

namespace {

int runCreate(const Arguments &given) {
    schema::createCatalog(given.word(0),
                          {.bare = given.isSet("bare"), .demoChart = given.isSet("chart"), .saPassword = {}});
    say(QStringLiteral("Made the catalog %1/ZEL.db; log in as \"sa\" with an empty password.\n")
            .arg(given.word(0)));
    return 0;
}

int runDemo(const Arguments &given) {
    schema::NewCatalog wanted;
    wanted.filled = [](ado::Driver &driver) { demo::write(driver, demo::makeInstitute()); };
    schema::createCatalog(given.word(0), wanted);
    say(QStringLiteral(
            "Made the demonstration institute %1/ZEL.db; log in as \"sa\" with an empty password.\n")
            .arg(given.word(0)));
    return 0;
}

} // namespace

const Command create{
    .name = "create",
    .words = "[--bare | --chart] CATALOG",
    .summary = "makes a new catalog",
    .help = "Makes a new catalog with tables, procedures and the first rows, and its folder when\n"
            "only that is missing. Never over an old one. Log in as \"sa\"; the password is\n"
            "empty until \"zeldb passwd\" sets one.",
    .options = {{"bare", nullptr, "without tables, only the login \"sa\""},
                {"chart", nullptr, "with a small chart of accounts"}},
    .least = 1,
    .most = 1,
    .run = runCreate,
};

const Command demo{
    .name = "demo",
    .words = "CATALOG",
    .summary = "makes a new catalog with the demonstration institute",
    .help = "Makes a new catalog with an institute of 200 students and two years of its books,\n"
            "the same each time. Never over an old one.",
    .least = 1,
    .most = 1,
    .run = runDemo,
};

} // namespace zel::tool
