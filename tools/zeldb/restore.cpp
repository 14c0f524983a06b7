#include "archive.h"
#include "commands.h"
#include "console.h"
#include "progress.h"

#include "schema/new_catalog.h"

namespace zel::tool {

namespace {

int run(const Arguments &given) {
    ArchiveReader archive(given.word(0));
    const std::int64_t rows = rowsOf(archive.inventory());
    Progress progress("Restoring", 2 * rows);
    const QString kept =
        schema::replaceCatalog(given.word(1), [&](ado::Driver &driver) { fill(driver, archive, progress); });
    say(QStringLiteral("Restored %1 tables with %L2 rows as they were on %3.\n")
            .arg(archive.inventory().tables.size())
            .arg(rows)
            .arg(archive.taken()));
    if (!kept.isEmpty())
        say(QStringLiteral("What was there before is kept as \"%1\".\n").arg(kept));
    return 0;
}

} // namespace

const Command restore{
    .name = "restore",
    .words = "FILE CATALOG",
    .summary = "puts a backup in a catalog's place, and keeps what was there",
    .help = "Makes a catalog from a backup, reads it again, and only then puts it in the place\n"
            "of the one that is there, in one step: stopped at any moment it leaves the old one\n"
            "or the new one, whole. The old one is kept beside it as ZEL.db.before-DATE; to go\n"
            "back to it, close all programs and give it the name ZEL.db again. Close all\n"
            "programs first: a catalog that is open is not replaced.",
    .least = 2,
    .most = 2,
    .run = run,
};

} // namespace zel::tool
