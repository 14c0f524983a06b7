#include "commands.h"
#include "console.h"
#include "progress.h"
#include "tools/zeldb/check_shown.h"

#include "platform/ado/statements.h"

namespace zel::tool {

namespace {

int run(const Arguments &given) {
    if (given.isSet("list") == (given.words() > 0))
        refuse(QStringLiteral("Give either a catalog to check or --list."));
    if (given.isSet("list")) {
        say(ruleList());
        return 0;
    }
    const auto driver = ado::openForReading(given.word(0));
    std::vector<Finding> found;
    {
        Progress bar("Checking");
        found = findings(*driver, [&bar](int done, int all) { bar.tell(done, all); });
    }
    if (given.isSet("json")) {
        for (const Finding &finding : found)
            put(stdout, asJson(finding) + '\n');
    } else {
        say(asReport(found));
    }
    return isSound(found) ? 0 : 1;
}

} // namespace

const Command check{
    .name = "check",
    .words = "(CATALOG [--json] | --list)",
    .summary = "are the file and the books sound; what is wrong, and what to do",
    .help = "Holds the catalog against the rules of sound books, and has the database test\n"
            "its file. Nothing is written, and clerks may go on working: what is looked at\n"
            "is the catalog of one moment. What a save that was cut off left half done is\n"
            "named here.\n\n"
            "Status 0: sound, notes alone included; 1: not; 2: the catalog could not be\n"
            "looked at.",
    .options = {{"json", nullptr, "a JSON object a finding, a line each, for programs"},
                {"list", nullptr, "lists the rules"}},
    .least = 0,
    .most = 1,
    .run = run,
    .failed = 2,
};

} // namespace zel::tool
