#include "platform/ado/statements.h"
#include "schema/demo/institute.h"
#include "schema/demo/writer.h"
#include "schema/new_catalog.h"
#include "tests/support/book_catalog.h"
#include "tests/support/facts.h"
#include "tools/zeldb/check_shown.h"

#include <QProcess>
#include <QTemporaryDir>

using namespace zel;
using namespace zel::test;

namespace {

QStringList named(const QString &folder) {
    QStringList names;
    const auto driver = ado::openForReading(folder);
    for (const tool::Finding &finding : tool::findings(*driver)) {
        names += nameOf(finding);
        if (finding.text.contains('{'))
            names += finding.text; // a place of the sentence that no column fills
    }
    return names;
}

} // namespace

class tst_check : public QObject {
    Q_OBJECT

    QTemporaryDir m_demo; ///< as the institute's clerks left it

private Q_SLOTS:
    void initTestCase() {
        schema::NewCatalog wanted;
        wanted.filled = [](ado::Driver &driver) { demo::write(driver, demo::makeInstitute()); };
        schema::createCatalog(m_demo.path(), wanted);
    }

    /// A fault each, in a copy of the institute; those that "file:" leads are done to the file itself.
    void whatIsPlantedIsNamed_data() { rowsFrom<QString, QString>("tools/check.json"); }
    void whatIsPlantedIsNamed() {
        const auto [plant, expected] = fetched<QString, QString>();
        const QTemporaryDir folder;
        QVERIFY(QFile::copy(m_demo.filePath("ZEL.db"), folder.filePath("ZEL.db")));
        if (const QString sql = plant.section("file: ", 1); !sql.isEmpty())
            BookCatalog(folder.filePath("ZEL.db").toStdString()).run(sql.toStdString());
        else
            ado::runStatements(*ado::openAsOwner(folder.path()), Sql::trusted(plant.toStdString()),
                               [](const ado::Outcome &) {});
        QCOMPARE(named(folder.path()).join('\n'), expected);
    }

    void everyRuleHasItsFault() {
        const QJsonArray lines = facts("tools/check.json")["whatIsPlantedIsNamed"].toArray();
        QSet<QString> planted;
        for (const auto &line : lines)
            for (const auto &name : line.toArray()[2].toArray())
                planted += name.toString().section(' ', 0, 0);
        for (const tool::Rule &rule : tool::rules())
            QVERIFY2(planted.contains(rule.name), qPrintable(rule.name));
    }

    /// What programs read: the status, and the output's beginning.
    void commandLine_data() { rowsFrom<QString, QString, int, QString>("tools/check.json"); }
    void commandLine() {
        const auto [plant, words, status, told] = fetched<QString, QString, int, QString>();
        const QTemporaryDir folder;
        schema::createCatalog(folder.path());
        BookCatalog clerk(folder.filePath("ZEL.db").toStdString());
        clerk.run(plant.toStdString());
        clerk.run("begin immediate; delete from Company;"); // and is not at the end yet
        QProcess zeldb;
        zeldb.start(ZEL_BINARY_DIR "/bin/zeldb",
                    QString("check " + words).replace("CATALOG", folder.path()).split(' '));
        QVERIFY(zeldb.waitForFinished());
        QCOMPARE(zeldb.exitCode(), status);
        const QString said = zeldb.readAllStandardOutput() + zeldb.readAllStandardError();
        QVERIFY2(said.startsWith(told), qPrintable(said));
    }

    void soundCatalogs_data() {
        columns<std::function<void(const QString &)>>("make");
        using Make = std::function<void(const QString &)>;
        for (const auto &[name, wanted] :
             {std::pair("without tables", schema::NewCatalog{.bare = true, .saPassword = {}}),
              {"new", schema::NewCatalog{}},
              {"with a chart", schema::NewCatalog{.demoChart = true, .saPassword = {}}}})
            row(name,
                Make([wanted = wanted](const QString &folder) { schema::createCatalog(folder, wanted); }));
        row("the institute", Make([this](const QString &folder) {
                QVERIFY(QFile::copy(m_demo.filePath("ZEL.db"), folder + "/ZEL.db"));
            }));
        row("books made from a number", Make([](const QString &folder) {
                schema::createCatalog(folder);
                BooksPlan plan;
                plan.vouchers = 400;
                plan.edges = true;
                BookCatalog((folder + "/ZEL.db").toStdString()).fill(SeededBooks(plan));
            }));
    }
    void soundCatalogs() {
        using Make = std::function<void(const QString &)>;
        QFETCH(Make, make);
        const QTemporaryDir folder;
        make(folder.path());
        QCOMPARE(named(folder.path()).join('\n'), QString());
    }
};

QTEST_GUILESS_MAIN(tst_check)
#include "tst_check.moc"
