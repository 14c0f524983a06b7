#include "commands.h"
#include "console.h"
#include "schema/refresh_catalog.h"

namespace zel::tool {

namespace {

int run(const Arguments &given) {
    if (schema::refreshCatalog(given.word(0)))
        say(QStringLiteral("Brought the procedures, work tables and indexes of %1/ZEL.db up to date.\n")
                .arg(given.word(0)));
    return 0;
}

} // namespace

const Command refresh{
    .name = "refresh",
    .words = "CATALOG",
    .summary = "brings a catalog of an earlier version up to this one",
    .help = "Brings the procedures, work tables and indexes of a catalog up to this version, all\n"
            "of them or none; what was entered stays as it is. ./run does so by itself.",
    .least = 1,
    .most = 1,
    .run = run,
};

} // namespace zel::tool
