#include "commands.h"
#include "console.h"
#include "shown.h"

#include "platform/ado/statements.h"

#include <QFile>

#include <algorithm>

namespace zel::tool {

namespace {

/// The text of -f or of the command line.
QByteArray statementText(const Arguments &given) {
    const QString name = given.value("f");
    if (name.isEmpty() == (given.words() < 2))
        refuse(QStringLiteral("Give either one statement or a file of statements with -f."));
    if (name.isEmpty())
        return given.word(1).toUtf8();
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
int run(const Arguments &given) {
    const bool json = given.isSet("json");
    const QByteArray text = statementText(given);
    const auto driver = ado::openAsOwner(given.word(0));
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
    if (given.isSet("f"))
        driver->analyze();
    return status;
}

} // namespace

const Command sql{
    .name = "sql",
    .words = "[--json] CATALOG (STATEMENT | -f FILE)",
    .summary = "runs statements of the program's dialect",
    .help = "Runs one statement, or those of a file, and shows what they give. A batch that\n"
            "fails does not stop the next one, but the status is 1.",
    .options = {{"json", nullptr, "one JSON object a statement, a line each"},
                {"f", "FILE", "the statements of a file, batches parted by GO; - is the standard input"}},
    .least = 1,
    .most = 2,
    .run = run,
};

} // namespace zel::tool
